#include "apps/moxel/ProgressBar.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace moxel {

ProgressBar::ProgressBar(std::ostream& terminal)
    : terminal_(terminal)
{
}

ProgressBar::~ProgressBar()
{
    if (shown_ >= 0) {
        terminal_ << "\r\033[K" << std::flush;
    }
}

void ProgressBar::show(double percent)
{
    constexpr int width = 50;
    int const whole = static_cast<int>(std::clamp(percent, 0.0, 100.0));
    if (whole == shown_) {
        return;
    }
    shown_ = whole;
    auto const done = static_cast<std::size_t>(whole * width / 100);
    terminal_ << "\r[" << std::string(done, '=') << std::string(width - done, ' ') << "] " << whole << " %"
              << std::flush;
}

} // namespace moxel

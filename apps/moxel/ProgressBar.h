#pragma once

#include <iosfwd>

namespace moxel {

/// One line that is drawn over and over, and wiped in the end.
class ProgressBar {
public:
    explicit ProgressBar(std::ostream& terminal);
    ProgressBar(ProgressBar const&) = delete;
    ProgressBar& operator=(ProgressBar const&) = delete;
    ~ProgressBar();

    void show(double percent);

private:
    std::ostream& terminal_;
    int shown_ = -1;
};

} // namespace moxel

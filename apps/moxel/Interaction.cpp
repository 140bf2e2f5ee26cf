#include "apps/moxel/Interaction.h"

#include "apps/moxel/Interrupt.h"

namespace moxel {

Interaction::Interaction(ProgressBar* bar)
    : bar_(bar)
{
}

void Interaction::notifyProgress(double percent)
{
    if (bar_ != nullptr) {
        bar_->show(percent);
    }
}

bool Interaction::isCancelRequested()
{
    return interrupt::isRequested();
}

unsigned short Interaction::getProgressPeriod()
{
    return 50;
}

unsigned short Interaction::getCancelPeriod()
{
    return 20;
}

} // namespace moxel

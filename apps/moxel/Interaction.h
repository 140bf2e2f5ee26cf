#pragma once

#include <Moxelcore/Core/InteractionInterface.h>

#include "apps/moxel/ProgressBar.h"

namespace moxel {

/// Watches a run for the user: draws the bar, if there is one, and passes on the request to stop.
class Interaction final : public mox::algorithms::InteractionInterface {
public:
    /// The bar may be null.
    explicit Interaction(ProgressBar* bar);

    void notifyProgress(double percent) override;
    bool isCancelRequested() override;
    unsigned short getProgressPeriod() override;
    unsigned short getCancelPeriod() override;

private:
    ProgressBar* bar_;
};

} // namespace moxel

#pragma once

#include <Moxelcore/Core/InteractionInterface.h>

#include <algorithm>
#include <stdexcept>
#include <thread>
#include <vector>

namespace mox::testing {

/// Remembers what a run told it, and cancels or throws when told to.
class RecordingInteraction final : public algorithms::InteractionInterface {
public:
    unsigned short progressPeriod = 0;
    unsigned short cancelPeriod = 0;
    int cancelAtPoll = 0; ///< counted from 1; 0 is never
    int throwAtPoll = 0;

    std::vector<double> notified;
    int numOfPolls = 0;

    void notifyProgress(double percent) override
    {
        threads_.push_back(std::this_thread::get_id());
        notified.push_back(percent);
    }

    bool isCancelRequested() override
    {
        threads_.push_back(std::this_thread::get_id());
        ++numOfPolls;
        if (numOfPolls == throwAtPoll) {
            throw std::runtime_error("the interaction failed");
        }
        return numOfPolls == cancelAtPoll;
    }

    unsigned short getProgressPeriod() override { return progressPeriod; }
    unsigned short getCancelPeriod() override { return cancelPeriod; }

    bool onlyOnThread(std::thread::id thread) const
    {
        return std::all_of(threads_.begin(), threads_.end(), [&](std::thread::id id) { return id == thread; });
    }

private:
    std::vector<std::thread::id> threads_;
};

} // namespace mox::testing

#include "apps/moxel/Interrupt.h"

#include <atomic>
#include <csignal>

#include "apps/moxel/Errors.h"

namespace moxel::interrupt {

namespace {

std::atomic<bool> requested = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

void request(int)
{
    requested = true;
}

} // namespace

void watch()
{
    requested = false;
    struct sigaction action = {};
    action.sa_handler = request;
    action.sa_flags = SA_RESTART; // a file operation under way is not cut short
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
    struct sigaction hangUp = {};
    sigaction(SIGHUP, nullptr, &hangUp);
    if (hangUp.sa_handler != SIG_IGN) { // as nohup has it
        sigaction(SIGHUP, &action, nullptr);
    }
    std::signal(SIGXFSZ, SIG_IGN); // the write that goes too far fails instead, and its file is taken away
}

bool isRequested()
{
    return requested;
}

void check()
{
    if (isRequested()) {
        throw Cancelled();
    }
}

} // namespace moxel::interrupt

#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/Integers.h>

namespace mox {

class BaseAlgorithm;

namespace algorithms {

struct RunRecord;

/// Base of whatever executes one run: carries its progress and its cancel flag. Both lie in a record that is
/// shared with the algorithm object, so that a thread that watches the run may ask at any time.
class MOXELCORE_API AbstractPrivateImplementation {
public:
    /// Attaches itself to the owner, which may be null. From here on `cancelExecution` may be called, before the
    /// concrete class is whole: one that another thread may cancel starts with `AttachLater`.
    explicit AbstractPrivateImplementation(BaseAlgorithm* owner);
    AbstractPrivateImplementation(AbstractPrivateImplementation const&) = delete;
    AbstractPrivateImplementation& operator=(AbstractPrivateImplementation const&) = delete;
    virtual ~AbstractPrivateImplementation();

    /// Sets the cancel flag and returns true. A concrete class overrides it, calls this body, then cancels its own
    /// parallel work, and calls `detach` first thing in its destructor.
    virtual bool cancelExecution() = 0;

    void setMaxProgress(uint64 max);
    void incrementProgress(uint64 step);
    /// Percent; 0 while the maximum is 0. Not clamped.
    double getProgress() const;
    bool isExecutionCancelled() const;
    BaseAlgorithm* getPublicInterface() const;

protected:
    struct AttachLater {};

    /// Leaves it to the concrete class to call `attach` once it is whole.
    AbstractPrivateImplementation(BaseAlgorithm* owner, AttachLater);
    /// One pass of a run of several: shares the run's progress and cancel flag, attaches nothing.
    explicit AbstractPrivateImplementation(AbstractPrivateImplementation& run);

    void attach();
    /// After this no thread calls `cancelExecution` any more.
    void detach();

private:
    RunRecord* record_;
    BaseAlgorithm* owner_;
    bool attached_;
};

} // namespace algorithms
} // namespace mox

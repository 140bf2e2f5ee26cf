#pragma once

#include <Moxelcore/Core/AbstractPrivateImplementation.h>

#include <memory>

#include "Core/private/access/Region.h"
#include "Core/private/filters/LeafWork.h"
#include "Core/private/filters/Reduction.h"

namespace mox {

/// Whether an image is a sequence of independent planes or of volumes.
struct Filter2dTag {};
struct Filter3dTag {};

namespace filters {

/// What one parallel loop covers: a volume of one time and spectral index, in 2D one of its plans.
struct Slice {
    unsigned int timeSeries = 0;
    unsigned int spectralSeries = 0;
    unsigned int plan = 0; ///< used in 2D only
};

/// What all filters share whatever their voxel types: progress, cancelling, and the parallel loop over the leaves
/// of an image.
class Filter : public algorithms::AbstractPrivateImplementation {
public:
    ~Filter() override;

    /// Sets the flag and stops the scheduler from starting further leaves.
    bool cancelExecution() override;

    /// By request, or because the task group that the run is part of was cancelled.
    bool isStopped() const;

protected:
    /// A run of its own. The owner may be null.
    explicit Filter(BaseAlgorithm* owner);
    /// One pass of a longer run, to which progress and cancelling belong.
    explicit Filter(Filter& run);

    /// Attaches the run, which must be whole, to the owner with its amount of work. A pass leaves that to its run.
    /// The concrete class calls `detach` first thing in its destructor.
    void announce(uint64 numOfVoxels);

    /// Runs the work over the leaves of a slice of a region, by default the whole image; an empty one has none. What a
    /// leaf throws stops the loop and is thrown here.
    void forEachLeaf(Filter2dTag, access::Region const& region, Slice const& slice, LeafWork& work);
    void forEachLeaf(Filter3dTag, access::Region const& region, Slice const& slice, LeafWork& work);

    /// Gathers the leaves of a slice. Which leaves there are and how they are joined follows from the region alone.
    void reduceLeaves(Filter2dTag, access::Region const& region, Slice const& slice, Reduction& result);
    void reduceLeaves(Filter3dTag, access::Region const& region, Slice const& slice, Reduction& result);

    /// Both in the plane over bands, leaves as wide as the region and at most `rows` high, always the same ones.
    void forEachBand(access::Region const& region, Slice const& slice, unsigned int rows, LeafWork& work);
    void reduceBands(access::Region const& region, Slice const& slice, unsigned int rows, Reduction& result);

    /// Calls `work` for each slice, one after the other, until the run is stopped; the time index is outermost.
    template <class Dimensions, class Work>
    void forEachSlice(Dimensions, access::Region const& region, Work&& work)
    {
        for (unsigned int t = region.getBeginTimeSeries(); t < region.getEndTimeSeries(); ++t) {
            for (unsigned int s = region.getBeginSpectralSeries(); s < region.getEndSpectralSeries(); ++s) {
                forEachPlan(Dimensions(), region, t, s, work);
            }
        }
    }

    /// The same with the spectral index outermost.
    template <class Dimensions, class Work>
    void forEachSliceBySpectrum(Dimensions, access::Region const& region, Work&& work)
    {
        for (unsigned int s = region.getBeginSpectralSeries(); s < region.getEndSpectralSeries(); ++s) {
            for (unsigned int t = region.getBeginTimeSeries(); t < region.getEndTimeSeries(); ++t) {
                forEachPlan(Dimensions(), region, t, s, work);
            }
        }
    }

private:
    template <class Work>
    void forEachPlan(Filter2dTag, access::Region const& region, unsigned int t, unsigned int s, Work& work)
    {
        for (unsigned int plan = region.getBeginPlan(); plan < region.getEndPlan() && !isStopped(); ++plan) {
            work(Slice{t, s, plan});
        }
    }

    template <class Work>
    void forEachPlan(Filter3dTag, access::Region const&, unsigned int t, unsigned int s, Work& work)
    {
        if (!isStopped()) {
            work(Slice{t, s, 0});
        }
    }

    struct Context;
    std::shared_ptr<Context> context_;
    bool isPass_;
};

/// A run of several filters one after the other: one progress over all of them, one cancel. Passes are constructed
/// with it, and are not started once `isStopped`.
class PassSequence final : public Filter {
public:
    PassSequence(BaseAlgorithm* owner, uint64 numOfVoxels)
        : Filter(owner)
    {
        announce(numOfVoxels);
    }
    ~PassSequence() override { detach(); }
};

} // namespace filters
} // namespace mox

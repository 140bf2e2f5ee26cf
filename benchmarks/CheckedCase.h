#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/InMemoryImage.h>

#include "benchmarks/Cases.h"

namespace mox::benchmarks {

/// A case made ready to run. The algorithm is made by name, as a host does.
class CheckedCase {
public:
    /// Throws `std::runtime_error` when the algorithm's result on a small crop is not that of the reference.
    explicit CheckedCase(Case const& row);

    void run() { algorithm_->run(); }

    std::size_t numOfVoxels() const { return numOfVoxels_; }
    /// Read and written in a run.
    std::size_t numOfBytes() const { return numOfBytes_; }

private:
    void prepare(Case const& row, Size const& size);
    void check(Case const& row);

    boost::shared_ptr<BaseAlgorithm> algorithm_;
    memory::InMemoryImage input_;
    memory::InMemoryImage output_;
    std::size_t numOfVoxels_ = 0;
    std::size_t numOfBytes_ = 0;
};

} // namespace mox::benchmarks

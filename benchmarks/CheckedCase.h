#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/InMemoryImage.h>

#include <memory>
#include <vector>

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
    std::vector<double> results();

    boost::shared_ptr<BaseAlgorithm> algorithm_;
    std::vector<std::unique_ptr<memory::InMemoryImage>> inputs_;
    bool hasOutputImage_ = false;
    memory::InMemoryImage output_;
    std::size_t numOfVoxels_ = 0;
    std::size_t numOfBytes_ = 0;
};

} // namespace mox::benchmarks

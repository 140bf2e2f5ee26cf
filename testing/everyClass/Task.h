#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <memory>
#include <string>
#include <vector>

#include "testing/everyClass/Place.h"

namespace mox::testing {

/// An algorithm made by its name, with inputs, places for its outputs and values that make a run do real work. It can
/// be run any number of times.
class Task {
public:
    /// Throws `std::out_of_range` for a class that the catalogue does not have.
    explicit Task(std::string const& className, TaskForm const& form = {});

    BaseAlgorithm& algorithm() const { return *algorithm_; }
    Entry const& entry() const { return entry_; }

    /// Makes all results what no run gives, in one of several ways; those that a run changes, as they were at first.
    void soil(unsigned char pattern) const;
    /// All results.
    Bytes results() const;

    /// The results of a run from soiled outputs.
    Bytes run(unsigned char pattern = 0) const;

private:
    Entry const& entry_;
    boost::shared_ptr<BaseAlgorithm> algorithm_;
    std::vector<std::unique_ptr<Place>> places_;
};

} // namespace mox::testing

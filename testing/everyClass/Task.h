#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "testing/everyClass/Place.h"

namespace mox::testing {

/// An enumerator for one of a task's properties, or none.
struct Choice {
    std::string property;
    int enumerator = 0;
};

/// None, then each enumerator of each property of the class.
std::vector<Choice> choicesOf(std::string const& className);

std::ostream& operator<<(std::ostream& out, Choice const& choice);

/// An algorithm made by its name, with inputs, places for its outputs and values that make a run do real work. It can
/// be run any number of times.
class Task {
public:
    /// Throws `std::out_of_range` for a class that the catalogue does not have.
    explicit Task(std::string const& className, TaskForm const& form = {}, Choice const& choice = {});

    BaseAlgorithm& algorithm() const { return *algorithm_; }
    Entry const& entry() const { return entry_; }

    /// The inputs, and what a class does not name as such.
    std::vector<BaseProperty*> parameters() const;

    /// Makes all results what no run gives, in one of several ways; those that a run changes, as they were at first.
    void soil(unsigned char pattern) const;
    /// All results.
    Bytes results() const;

    /// The results of a run from soiled outputs.
    Bytes run(unsigned char pattern = 0) const;

    /// The same where the class works in place: the first input image becomes the result.
    Bytes runInPlace() const;

private:
    Entry const& entry_;
    boost::shared_ptr<BaseAlgorithm> algorithm_;
    std::vector<std::unique_ptr<Place>> places_;
};

} // namespace mox::testing

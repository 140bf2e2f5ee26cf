#include "testing/everyClass/Task.h"

#include <stdexcept>

#include "testing/AlgorithmTests.h"

namespace mox::testing {

Task::Task(std::string const& className, TaskForm const& form)
    : entry_(entryOf(className))
    , algorithm_(AlgoInfo::fromName(className.c_str()).createInstance())
{
    for (auto const& [name, text] : entry_.values) {
        BaseProperty* const property = algorithm_->getPropertyfromName(name.c_str());
        String echo;
        if (property == nullptr || !property->read(text.c_str(), echo)) {
            throw std::logic_error(className + " takes no value for " + name + ": " + text);
        }
    }
    for (BaseProperty* property : inputsOf(*algorithm_)) {
        places_.push_back(makePlace(*property, false, entry_, form));
    }
    for (BaseProperty* property : outputsOf(*algorithm_)) {
        places_.push_back(makePlace(*property, true, entry_, form));
    }
    std::erase(places_, nullptr);
}

void Task::soil(unsigned char pattern) const
{
    for (auto const& place : places_) {
        place->soil(pattern);
    }
}

Bytes Task::results() const
{
    Bytes bytes;
    for (auto const& place : places_) {
        place->appendTo(bytes);
    }
    return bytes;
}

Bytes Task::run(unsigned char pattern) const
{
    soil(pattern);
    algorithm_->run();
    return results();
}

} // namespace mox::testing

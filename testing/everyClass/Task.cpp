#include "testing/everyClass/Task.h"

#include <Moxelcore/Core/PropertyEnumeration.h>
#include <Moxelcore/PointOperations/BitShift.h>

#include <stdexcept>

#include "testing/AlgorithmTests.h"
#include "testing/everyClass/imagePlaces.h"
#include "testing/everyClass/visitValue.h"

namespace mox::testing {

std::vector<Choice> choicesOf(std::string const& className)
{
    std::vector<Choice> choices(1);
    auto const algorithm = AlgoInfo::fromName(className.c_str()).createInstance();
    for (BaseProperty* input : inputsOf(*algorithm)) {
        auto const* const property = dynamic_cast<PropertyEnumeration*>(input);
        for (int i = 0; property != nullptr && i < property->getEnumInfo().size(); ++i) {
            choices.push_back({property->getName().c_str(), property->getEnumInfo().getEnumByIndex(i)});
        }
    }
    return choices;
}

std::ostream& operator<<(std::ostream& out, Choice const& choice)
{
    return choice.property.empty() ? out << "defaults" : out << choice.property << ' ' << choice.enumerator;
}

Task::Task(std::string const& className, TaskForm const& form, Choice const& choice)
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
    if (!choice.property.empty()) {
        auto* const property = algorithm_->getPropertyfromName(choice.property.c_str());
        dynamic_cast<PropertyEnumeration&>(*property).set(choice.enumerator);
    }
    for (BaseProperty* property : inputsOf(*algorithm_)) {
        places_.push_back(makePlace(*property, false, entry_, form));
    }
    for (BaseProperty* property : outputsOf(*algorithm_)) {
        places_.push_back(makePlace(*property, true, entry_, form));
    }
    std::erase(places_, nullptr);
}

std::vector<BaseProperty*> Task::parameters() const
{
    auto parameters = inputsOf(*algorithm_);
    if (auto* const bitShift = dynamic_cast<point_operations::BitShift*>(algorithm_.get())) {
        parameters.push_back(&bitShift->shiftCount);
        parameters.push_back(&bitShift->shiftDirection);
    }
    return parameters;
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

Bytes Task::runInPlace() const
{
    ImageModel* image = nullptr;
    for (BaseProperty* property : propertiesOf(*algorithm_)) {
        visitAs<ImageModel const*>(*property, [&](auto& input) {
            image = image == nullptr ? const_cast<ImageModel*>(input.get()) : image; // which is the task's
        });
        visitAs<ImageModel*>(*property, [&](auto& output) { output = image; });
    }
    algorithm_->run();
    Bytes bytes;
    append(bytes, *image);
    return bytes;
}

} // namespace mox::testing

#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <boost/make_shared.hpp>

#include <tuple>
#include <utility>

#include "Core/private/AlgoInfoAccess.h"
#include "Core/private/PropertyValue.h"
#include "Core/private/Rules/RuleIsAnEnumOfType.h"
#include "Core/private/Rules/RuleWhenGiven.h"

// What the lines of an algorithm's `init` are made of. A line reads like a row of the property table:
//
//     declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));

namespace mox {

/// A rule to attach to the property of the line; its class is a template over the property's value type.
template <template <class> class Rule, class... Argument>
auto rule(Argument const&... arguments)
{
    return [bound = std::tuple<Argument const&...>(arguments...)](auto& property) {
        using Value = typename std::remove_reference_t<decltype(property)>::Value;
        std::apply(
            [&](auto const&... a) { PropertyAccess::addRule<Value>(property, boost::make_shared<Rule<Value>>(a...)); },
            bound);
    };
}

/// The same for a property that may be null, to which the rule is then not applied.
template <template <class> class Rule, class... Argument>
auto ruleWhenGiven(Argument const&... arguments)
{
    return [bound = std::tuple<Argument const&...>(arguments...)](auto& property) {
        using Value = typename std::remove_reference_t<decltype(property)>::Value;
        using Guarded = RuleWhenGiven<Value, Rule<Value>>;
        std::apply(
            [&](auto const&... a) { PropertyAccess::addRule<Value>(property, boost::make_shared<Guarded>(a...)); },
            bound);
    };
}

/// A rule of one value type.
template <class Rule, class... Argument>
auto rule(Argument const&... arguments)
{
    return [bound = std::tuple<Argument const&...>(arguments...)](auto& property) {
        using Value = typename std::remove_reference_t<decltype(property)>::Value;
        std::apply([&](auto const&... a) { PropertyAccess::addRule<Value>(property, boost::make_shared<Rule>(a...)); },
                   bound);
    };
}

/// The names of an enumeration without a check of the value.
template <class Enumeration>
auto hasNamesOf()
{
    return [](PropertyEnumeration& property) { PropertyAccess::setEnumInfo(property, getEnumInfo<Enumeration>()); };
}

/// The names of an enumeration, and the rule that the value is one of them.
template <class Enumeration>
auto isAnEnumOf()
{
    return [](PropertyEnumeration& property) {
        PropertyAccess::setEnumInfo(property, getEnumInfo<Enumeration>());
        PropertyAccess::addRule<int>(property, boost::make_shared<RuleIsAnEnumOfType>(getEnumInfo<Enumeration>()));
    };
}

namespace detail {

template <class P, class V, class... Rule>
void describe(P& property, char const* name, V const& defaultValue, Rule const&... rules)
{
    property.set(static_cast<typename P::Value>(defaultValue));
    PropertyAccess::setName<typename P::Value>(property, name);
    (rules(property), ...);
}

} // namespace detail

template <class P, class V, class... Rule>
void BaseAlgorithm::declareInput(P& property, char const* name, V const& defaultValue, Rule const&... rules)
{
    addInput(&property);
    detail::describe(property, name, defaultValue, rules...);
}

template <class P, class V, class... Rule>
void BaseAlgorithm::declareOutput(P& property, char const* name, V const& defaultValue, Rule const&... rules)
{
    addOutput(&property);
    detail::describe(property, name, defaultValue, rules...);
}

} // namespace mox

/// The members that `MOX_DECLARE_ALGORITHM` declares, but for `init` and `getAlgoBorderInfluence`.
#define MOX_DEFINE_ALGORITHM(Class)                                                                                    \
    Class::Class() = default;                                                                                          \
                                                                                                                       \
    boost::shared_ptr<Class> Class::New()                                                                              \
    {                                                                                                                  \
        boost::shared_ptr<Class> algorithm(new Class);                                                                 \
        algorithm->init();                                                                                             \
        return algorithm;                                                                                              \
    }                                                                                                                  \
                                                                                                                       \
    boost::shared_ptr<mox::BaseAlgorithm> Class::NewBase()                                                             \
    {                                                                                                                  \
        return New();                                                                                                  \
    }                                                                                                                  \
                                                                                                                       \
    mox::AlgoInfo* Class::getClassInfo()                                                                               \
    {                                                                                                                  \
        static mox::AlgoInfo info(#Class, "Moxelcore", &Class::NewBase);                                               \
        return &info;                                                                                                  \
    }                                                                                                                  \
                                                                                                                       \
    mox::AlgoInfo* Class::getInfo() const                                                                              \
    {                                                                                                                  \
        return getClassInfo();                                                                                         \
    }

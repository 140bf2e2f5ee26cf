#pragma once

#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

#include <boost/shared_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <utility>
#include <vector>

namespace mox {

template <class T>
class Rules;

/// What a property holds; shared by its copies.
template <class T>
struct PropertyValue : boost::intrusive_ref_counter<PropertyValue<T>> {
    T value = T();
    std::vector<boost::shared_ptr<Rules<T>>> rules;
    String name;
};

/// A condition on the value of one property, or a change that the value asks for. Held by `boost::shared_ptr`,
/// which remembers the concrete class.
template <class T>
class Rules {
public:
    virtual void apply(PropertyValue<T>& property) = 0;

protected:
    ~Rules() = default;
};

/// What the library may do with a property and an application may not.
struct PropertyAccess {
    /// Stores a result while the property is locked by the run that computes it.
    template <class T, class V>
    static void write(Property<T>& property, V const& value)
    {
        property.value_->value = value;
    }

    template <class T>
    static void setName(Property<T>& property, char const* name)
    {
        property.value_->name = name;
    }

    template <class T>
    static void addRule(Property<T>& property, boost::shared_ptr<Rules<T>> rule)
    {
        property.value_->rules.push_back(std::move(rule));
    }

    template <class T>
    static void removeLastRule(Property<T>& property)
    {
        property.value_->rules.pop_back();
    }

    static void setEnumInfo(PropertyEnumeration& property, EnumInfo const& info) { property.info_ = &info; }
};

} // namespace mox

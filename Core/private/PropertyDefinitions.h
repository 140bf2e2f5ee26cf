#pragma once

#include <Moxelcore/Core/Exception.h>

#include "Core/private/Helper/text.h"
#include "Core/private/PropertyValue.h"
#include "Core/private/TextForm.h"

namespace mox {

template <class T>
Property<T>::Property()
    : value_(new PropertyValue<T>)
{
    intrusive_ptr_add_ref(value_);
}

template <class T>
Property<T>::Property(Property const& other)
    : BaseProperty(other)
    , value_(other.value_)
{
    intrusive_ptr_add_ref(value_);
}

template <class T>
Property<T>& Property<T>::operator=(Property const& other)
{
    BaseProperty::operator=(other);
    intrusive_ptr_add_ref(other.value_);
    intrusive_ptr_release(value_);
    value_ = other.value_;
    return *this;
}

template <class T>
Property<T>::~Property()
{
    intrusive_ptr_release(value_);
}

template <class T>
void Property<T>::set(T value)
{
    if (!isLocked()) {
        value_->value = value;
    }
}

template <class T>
T Property<T>::operator=(T const& value)
{
    set(value);
    return get();
}

template <class T>
T Property<T>::get() const
{
    return value_->value;
}

template <class T>
Property<T>::operator T() const
{
    return get();
}

template <class T>
void Property<T>::applyRules()
{
    for (std::size_t i = 0; i < value_->rules.size(); ++i) {
        auto const rule = value_->rules[i]; // kept alive while it is applied
        try {
            rule->apply(*value_);
        } catch (RuleException& exception) {
            Exception::exceptionInfo info;
            info.message = helper::composeText("Rule error in property ", value_->name).c_str();
            exception.addInfoLevel(info);
            throw;
        }
    }
}

template <class T>
String Property<T>::getName() const
{
    return value_->name;
}

template <class T>
bool Property<T>::read(String const& text, String& echo)
{
    if (isLocked()) {
        return false;
    }
    echo = text;
    return readText(text, value_->value);
}

} // namespace mox

#pragma once

#include <Moxelcore/Core/Vector.h>

#include <vector>

namespace mox {

template <class T>
struct Vector<T>::Elements {
    std::vector<T> items;
};

template <class T>
Vector<T>::Vector()
    : elements_(new Elements)
{
}

template <class T>
Vector<T>::Vector(std::size_t size)
    : elements_(new Elements{std::vector<T>(size)})
{
}

template <class T>
Vector<T>::Vector(Vector const& other)
    : elements_(new Elements(*other.elements_))
{
}

template <class T>
Vector<T>::~Vector()
{
    delete elements_;
}

template <class T>
Vector<T>& Vector<T>::operator=(Vector const& other)
{
    *elements_ = *other.elements_;
    return *this;
}

template <class T>
bool Vector<T>::operator==(Vector const& other) const
{
    return elements_->items == other.elements_->items;
}

template <class T>
bool Vector<T>::operator!=(Vector const& other) const
{
    return !(*this == other);
}

template <class T>
T& Vector<T>::operator[](std::size_t index)
{
    return elements_->items[index];
}

template <class T>
T const& Vector<T>::operator[](std::size_t index) const
{
    return elements_->items[index];
}

template <class T>
std::size_t Vector<T>::size() const
{
    return elements_->items.size();
}

template <class T>
bool Vector<T>::empty() const
{
    return elements_->items.empty();
}

template <class T>
void Vector<T>::reserve(std::size_t capacity)
{
    elements_->items.reserve(capacity);
}

template <class T>
void Vector<T>::resize(std::size_t size)
{
    elements_->items.resize(size);
}

template <class T>
void Vector<T>::clear()
{
    elements_->items.clear();
}

template <class T>
void Vector<T>::push_back(T const& element)
{
    elements_->items.push_back(element);
}

template <class T>
T* Vector<T>::begin()
{
    return data();
}

template <class T>
T* Vector<T>::end()
{
    return data() + size();
}

template <class T>
T const* Vector<T>::begin() const
{
    return data();
}

template <class T>
T const* Vector<T>::end() const
{
    return data() + size();
}

template <class T>
T* Vector<T>::data()
{
    return elements_->items.data();
}

template <class T>
T const* Vector<T>::data() const
{
    return elements_->items.data();
}

} // namespace mox

#pragma once

#include <Moxelcore/Core/Api.h>

#include <cmath>

namespace mox::math {

/// What the vectors of 2, 3 and 4 components share; `Vector` is the concrete class.
///
/// Components of a default vector are 0. Integer components are scaled by a `double` in double and truncated, by an
/// `int` in their own arithmetic; `length` of an integer vector is truncated. Indices are not checked.
template <class Vector, class T, unsigned int N>
class BasicVector {
public:
    Vector& setValue(Vector const& other) { return self() = other; }
    Vector& setValue(T const* components)
    {
        return forEach([&](unsigned int i) { components_[i] = components[i]; });
    }

    T& operator[](unsigned int index) { return components_[index]; }
    T const& operator[](unsigned int index) const { return components_[index]; }
    T& operator()(unsigned int index) { return components_[index]; }
    T const& operator()(unsigned int index) const { return components_[index]; }

    friend bool operator==(Vector const& a, Vector const& b)
    {
        for (unsigned int i = 0; i < N; ++i) {
            if (a[i] != b[i]) {
                return false;
            }
        }
        return true;
    }
    friend bool operator!=(Vector const& a, Vector const& b) { return !(a == b); }

    Vector operator+(Vector const& other) const { return Vector(self()) += other; }
    Vector operator-(Vector const& other) const { return Vector(self()) -= other; }
    Vector operator*(double factor) const { return Vector(self()) *= factor; }
    Vector operator*(int factor) const { return Vector(self()) *= factor; }
    Vector operator/(double divisor) const { return Vector(self()) /= divisor; }
    Vector operator/(int divisor) const { return Vector(self()) /= divisor; }

    Vector& operator+=(Vector const& other)
    {
        return forEach([&](unsigned int i) { components_[i] += other[i]; });
    }
    Vector& operator-=(Vector const& other)
    {
        return forEach([&](unsigned int i) { components_[i] -= other[i]; });
    }
    Vector& operator*=(double factor)
    {
        return forEach([&](unsigned int i) { components_[i] = T(static_cast<double>(components_[i]) * factor); });
    }
    Vector& operator*=(int factor)
    {
        return forEach([&](unsigned int i) { components_[i] *= static_cast<T>(factor); });
    }
    Vector& operator/=(double divisor)
    {
        return forEach([&](unsigned int i) { components_[i] = T(static_cast<double>(components_[i]) / divisor); });
    }
    Vector& operator/=(int divisor)
    {
        return forEach([&](unsigned int i) { components_[i] /= static_cast<T>(divisor); });
    }

    T dot(Vector const& other) const
    {
        T sum = T();
        for (unsigned int i = 0; i < N; ++i) {
            sum += components_[i] * other[i];
        }
        return sum;
    }
    T squaredLength() const { return dot(self()); }
    T length() const
    {
        double sum = 0.0; // of squares that T may be too narrow for
        for (T const component : components_) {
            sum += static_cast<double>(component) * static_cast<double>(component);
        }
        return T(std::sqrt(sum));
    }

    T const* data() const { return components_; }
    unsigned int dim() const { return N; }

protected:
    BasicVector() = default;

private:
    template <class Operation>
    Vector& forEach(Operation const& operation)
    {
        for (unsigned int i = 0; i < N; ++i) {
            operation(i);
        }
        return self();
    }

    Vector& self() { return static_cast<Vector&>(*this); }
    Vector const& self() const { return static_cast<Vector const&>(*this); }

    T components_[N] = {};
};

} // namespace mox::math

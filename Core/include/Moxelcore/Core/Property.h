#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/BaseProperty.h>
#include <Moxelcore/Core/Integers.h>
#include <Moxelcore/Core/String.h>
#include <Moxelcore/Core/Vector.h>

namespace mox {

class ImageModel;
template <class T>
struct PropertyValue;

/// A parameter of type T. Image pointers are borrowed: the caller keeps owning the images.
///
/// Copies share one value, so that a copied algorithm object is a second handle to the same parameters.
///
/// `read` takes numbers as streams do, `Vector` and `math` vectors as elements separated by white space (elements
/// of `unsigned char` are numbers), `String` as the whole text. Types without a text form (images, models,
/// transformations, matrices) return false and keep their value.
///
/// Instantiated in the library for `bool`, `int`, `unsigned int`, `int64`, `uint64`, `double`, `String`,
/// `ImageModel*`, `ImageModel const*`, for `Vector` of the six numeric types and of `math::Vector2<int>`, and, for
/// N = 2, 3, 4 and E = `int`, `unsigned int`, `int64`, `uint64`, `double`, for `math::VectorN<E>` and for pointers
/// to `Vector<math::VectorN<E>>` and `Vector<math::VectorN<E>> const`; for `math::Matrix2` and `math::Matrix3` of
/// `float` and `double`.
template <class T>
class MOXELCORE_API Property : public BaseProperty {
public:
    using Value = T;

    Property();
    Property(Property const& other);
    Property& operator=(Property const& other);
    ~Property() override;

    /// Stores the value. Does nothing on a locked property.
    void set(T value);
    /// The same. Returns the value held afterwards.
    T operator=(T const& value);

    T get() const;
    operator T() const;

    void applyRules() override;
    String getName() const override;
    bool read(String const& text, String& echo) override;

private:
    friend struct PropertyAccess;
    PropertyValue<T>* value_;
};

extern template class MOXELCORE_API Property<bool>;
extern template class MOXELCORE_API Property<int>;
extern template class MOXELCORE_API Property<unsigned int>;
extern template class MOXELCORE_API Property<int64>;
extern template class MOXELCORE_API Property<uint64>;
extern template class MOXELCORE_API Property<double>;
extern template class MOXELCORE_API Property<String>;
extern template class MOXELCORE_API Property<ImageModel*>;
extern template class MOXELCORE_API Property<ImageModel const*>;
extern template class MOXELCORE_API Property<Vector<unsigned char>>;
extern template class MOXELCORE_API Property<Vector<int>>;
extern template class MOXELCORE_API Property<Vector<unsigned int>>;
extern template class MOXELCORE_API Property<Vector<int64>>;
extern template class MOXELCORE_API Property<Vector<uint64>>;
extern template class MOXELCORE_API Property<Vector<double>>;

} // namespace mox

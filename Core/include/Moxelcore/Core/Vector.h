#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/Enum/TextureFeatureTypes.h>
#include <Moxelcore/Core/Integers.h>

#include <cstddef>

namespace mox {

/// Sequence at the library's border: one pointer to a private standard vector. Copies are deep.
///
/// Instantiated in the library for `unsigned char`, `int`, `unsigned int`, `int64`, `uint64`, `double`,
/// `segmentation::TextureFeatureTypes` and for `math::Vector2`, `math::Vector3`, `math::Vector4` of `int`,
/// `unsigned int`, `int64`, `uint64` and `double`.
template <class T>
class MOXELCORE_API Vector {
public:
    Vector();
    explicit Vector(std::size_t size);
    Vector(Vector const& other);
    virtual ~Vector();

    Vector& operator=(Vector const& other);

    /// Sizes first, then element by element.
    bool operator==(Vector const& other) const;
    bool operator!=(Vector const& other) const;

    /// Unchecked.
    T& operator[](std::size_t index);
    T const& operator[](std::size_t index) const;

    std::size_t size() const;
    bool empty() const;
    void reserve(std::size_t capacity);
    /// New elements are value-initialised.
    void resize(std::size_t size);
    void clear();
    void push_back(T const& element);

    T* begin();
    T* end();
    T const* begin() const;
    T const* end() const;
    T* data();
    T const* data() const;

private:
    struct Elements;
    Elements* elements_;
};

extern template class MOXELCORE_API Vector<unsigned char>;
extern template class MOXELCORE_API Vector<int>;
extern template class MOXELCORE_API Vector<unsigned int>;
extern template class MOXELCORE_API Vector<int64>;
extern template class MOXELCORE_API Vector<uint64>;
extern template class MOXELCORE_API Vector<double>;
extern template class MOXELCORE_API Vector<segmentation::TextureFeatureTypes>;

} // namespace mox

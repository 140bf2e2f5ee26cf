#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Math/Vector2.h>
#include <Moxelcore/Math/Vector3.h>

#include <cstddef>

namespace mox::geometry {

/// Maps points. Its parameters, as a flat list, are what registration estimates.
template <class Point>
class MOXELCORE_API Transformation {
public:
    virtual ~Transformation() = default;

    /// Throws `RuntimeError` "bad precision." where there is no image of the point, which is then left as it was.
    virtual void map(Point& point) const = 0;
    /// From first to last: when one cannot be mapped, those before it are.
    virtual void map(Point* points, std::size_t count) const = 0;

    virtual unsigned int getNumOfParameter() const = 0;
    /// Indices beyond the number of parameters lead to what else the class holds; where there is nothing left, both
    /// throw `BadIndex`.
    virtual double getParam(unsigned int index) const = 0;
    virtual void setParam(unsigned int index, double value) = 0;

protected:
    Transformation() = default;
    Transformation(Transformation const&) = default;
    Transformation& operator=(Transformation const&) = default;
};

using Transformation2D = Transformation<math::Vector2<double>>;
using Transformation3D = Transformation<math::Vector3<double>>;

extern template class MOXELCORE_API Transformation<math::Vector2<double>>;
extern template class MOXELCORE_API Transformation<math::Vector3<double>>;

} // namespace mox::geometry

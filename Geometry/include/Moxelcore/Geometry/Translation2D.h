#pragma once

#include <Moxelcore/Geometry/MatrixTransformation.h>

namespace mox::geometry {

/// Moves points. Its 2 parameters are the translation.
class MOXELCORE_API Translation2D final : public MatrixTransformation<2> {
public:
    Translation2D();
    explicit Translation2D(math::Vector2<double> const& translation);
};

} // namespace mox::geometry

#pragma once

#include <Moxelcore/Core/AlgoBorderInfluence.h>
#include <Moxelcore/Core/Integers.h>

#include <vector>

#include "Core/private/access/Sizes.h"
#include "Morphology/private/neighborhoods.h"

namespace mox::morphology {

using OffsetList2D = std::vector<kernel::Offset2D>;
using OffsetList3D = std::vector<kernel::Offset3D>;

// Lists are cut to what matters on an image of the given sizes: all voxels beyond it read the same, so that of the
// offsets that leave it from everywhere, a few that keep the list's meaning are enough. Size 0 is the origin alone.

/// Offsets (a, b) with a^2 + b^2 <= radius^2, a outermost.
OffsetList2D diskOffsets(unsigned int radius, access::Sizes const& sizes);

/// Offsets (a, b, c) with a^2 + b^2 + c^2 <= radius^2, a outermost.
OffsetList3D ballOffsets(unsigned int radius, access::Sizes const& sizes);

/// A digital line from the origin on, of `length` voxels: steps of one along the axis of its larger component. Degrees;
/// a positive angle goes up the image.
class Line2D {
public:
    Line2D(double angle, unsigned int length);

    OffsetList2D offsets(access::Sizes const& sizes) const;
    AlgoBorderInfluence influence() const;

private:
    int64 column(unsigned int i) const;
    int64 row(unsigned int i) const;

    double cosine_;
    double sine_;
    unsigned int length_;
};

/// A digital line from the origin on in the direction (cos theta sin phi, sin theta sin phi, cos phi). Degrees.
class Line3D {
public:
    Line3D(double theta, double phi, unsigned int length);

    OffsetList3D offsets(access::Sizes const& sizes) const;
    AlgoBorderInfluence influence() const;

private:
    int64 component(unsigned int axis, unsigned int i) const;

    double direction_[3];
    unsigned int dominant_;
    unsigned int length_;
};

/// A disk in the plane that is spanned by (cos phi cos theta, cos phi sin theta, -sin phi) and
/// (-sin theta, cos theta, 0). Degrees.
class TiltedDisk {
public:
    TiltedDisk(double theta, double phi, unsigned int radius);

    OffsetList3D offsets(access::Sizes const& sizes) const;
    AlgoBorderInfluence influence() const;

private:
    struct Point {
        int64 column, row, plan;
    };
    Point at(int64 u, int64 v) const;

    double cosTheta_, sinTheta_;
    double cosPhi_, sinPhi_;
    unsigned int radius_;
};

/// The list with each offset negated, in the same order.
template <class Offset>
std::vector<Offset> reflected(std::vector<Offset> offsets)
{
    for (Offset& offset : offsets) {
        if constexpr (std::is_same_v<Offset, kernel::Offset2D>) {
            offset = {-offset.column, -offset.row};
        } else {
            offset = {-offset.column, -offset.row, -offset.plan};
        }
    }
    return offsets;
}

} // namespace mox::morphology

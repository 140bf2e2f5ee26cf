#pragma once

#include <Moxelcore/Core/BaseProperty.h>

#include <cstddef>
#include <memory>
#include <vector>

#include "testing/everyClass/catalogue.h"

namespace mox::testing {

using Bytes = std::vector<std::byte>;

/// What the images of a task are made of.
struct TaskForm {
    VoxelTypes voxelType = MOX_UINT8;
    /// Cut into several leaves; else of some dozens of voxels.
    bool isLarge = false;
    /// Other numbers of columns and rows, where not 0.
    unsigned int columns = 0;
    unsigned int rows = 0;
    /// Whether floating voxels are NaN and infinite at times.
    bool hasSpecialVoxels = false;
    unsigned int seed = 1;
};

/// What a property of a task points to, owned by the task, or where its result comes to stand.
class Place {
public:
    virtual ~Place() = default;

    /// Makes a result what no run gives, or takes it away.
    virtual void soil(unsigned char) {}
    /// The result; of an input nothing.
    virtual void appendTo(Bytes&) const {}
};

/// Sets the property to a place of its own. Null for an input that holds its value itself. Throws
/// `std::logic_error` for a property of a type that is not known.
std::unique_ptr<Place> makePlace(BaseProperty& property, bool isOutput, Entry const& entry, TaskForm const& form);

} // namespace mox::testing

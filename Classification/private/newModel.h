#pragma once

#include <Moxelcore/Core/Exception.h>

#include <memory>
#include <new>

#include "Classification/private/TextureClassificationModelPrivate.h"
#include "Core/private/Helper/raise.h"

namespace mox::classification {

/// Throws `MemoryError`.
inline std::unique_ptr<TextureClassificationModel> newModel(char const* source)
{
    try {
        return std::make_unique<TextureClassificationModel>();
    } catch (std::bad_alloc const&) {
        helper::raise<MemoryError>(source, "Impossible to allocate a new TextureClassificationModel.");
    }
}

} // namespace mox::classification

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
        if (auto* const model = new (std::nothrow) TextureClassificationModel()) {
            return std::unique_ptr<TextureClassificationModel>(model);
        }
    } catch (std::bad_alloc const&) {
        helper::raise<MemoryError>(source, "Invalid private implementation of the new TextureClassificationModel.");
    }
    helper::raise<MemoryError>(source, "Impossible to allocate a new TextureClassificationModel.");
}

} // namespace mox::classification

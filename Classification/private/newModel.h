#pragma once

#include <Moxelcore/Core/Exception.h>

#include <memory>
#include <new>

#include "Classification/private/TextureClassificationModelPrivate.h"
#include "Core/private/Helper/raise.h"

namespace mox::classification {

/// Throws `MemoryError`, and tells whether it was the model or its content that found no memory.
inline std::unique_ptr<TextureClassificationModel> newModel(char const* source)
{
    auto const release = [](void* memory) { ::operator delete(memory); };
    std::unique_ptr<void, decltype(release)> memory(nullptr, release);
    try {
        memory.reset(::operator new(sizeof(TextureClassificationModel)));
    } catch (std::bad_alloc const&) {
        helper::raise<MemoryError>(source, "Impossible to allocate a new TextureClassificationModel.");
    }
    try {
        std::unique_ptr<TextureClassificationModel> model(new (memory.get()) TextureClassificationModel());
        static_cast<void>(memory.release()); // the model owns it now
        return model;
    } catch (std::bad_alloc const&) {
        helper::raise<MemoryError>(source, "Invalid private implementation of the new TextureClassificationModel.");
    }
}

} // namespace mox::classification

#pragma once

#include <Moxelcore/Classification/TextureClassificationModel.h>

#include <memory>

#include "testing/everyClass/Place.h"

namespace mox::testing {

/// A trained model.
std::unique_ptr<Place> placeOf(Property<classification::TextureClassificationModel const*>& property);
/// A model that is to learn.
std::unique_ptr<Place> placeOf(Property<classification::TextureClassificationModel*>& property);
/// None.
std::unique_ptr<Place> placeOf(Property<classification::TextureClassificationModel**>& property);

} // namespace mox::testing

#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

#include <functional>

namespace mox::testing {

/// An algorithm whose one scalar runner does what a test wants. Not in the registry.
class TestAlgorithm final : public BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(TestAlgorithm)

    Property<ImageModel const*> input;
    Property<double> number;
    Property<ImageModel*> output;

    std::function<void(TestAlgorithm&)> work = [](TestAlgorithm&) {};
};

} // namespace mox::testing

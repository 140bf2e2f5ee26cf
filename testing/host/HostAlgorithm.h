#pragma once

#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/PropertyEnumeration.h>
#include <Moxelcore/Math/MathProperty.h>

#include <functional>

namespace moxel::testing {

/// An algorithm with a property of every kind, that does what a test wants. Not in the registry.
class HostAlgorithm final : public mox::BaseAlgorithm {
    MOX_DECLARE_ALGORITHM(HostAlgorithm)

    mox::Property<mox::ImageModel const*> input;
    mox::PropertyEnumeration mode;
    mox::Property<bool> flag;
    mox::Property<int> count;
    mox::Property<mox::uint64> large;
    mox::Property<mox::String> label;
    mox::Property<mox::Vector<unsigned char>> lut;
    mox::Property<mox::math::Vector3<double>> centre;
    mox::Property<mox::Vector<mox::math::Vector2<int>> const*> points;
    mox::Property<mox::math::Matrix3<double>> transform;
    mox::Property<mox::ImageModel*> output;
    mox::Property<mox::ImageModel*> second;
    mox::Property<double> mean;
    mox::Property<mox::Vector<mox::math::Vector2<double>>*> extrema;
    mox::Property<mox::math::Matrix2<double>> moments;

    std::function<void(HostAlgorithm&)> work = [](HostAlgorithm&) {};
};

/// Stores a result, as a runner does while the properties are locked.
void setMean(HostAlgorithm& algorithm, double mean);

} // namespace moxel::testing

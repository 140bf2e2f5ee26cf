#pragma once

#include <Moxelcore/Core/InMemoryImage.h>

#include <atomic>
#include <functional>
#include <stdexcept>

namespace mox::testing {

/// An image as an application might bring, that behaves as a test wants: without row pointers, failing at the k-th
/// row operation, refusing to change.
class TestImage final : public ImageModel {
public:
    enum class Fault { returnsFalse, throws };

    bool givesPointers = false;
    bool allocates = true;
    bool interprets = true;
    bool calibrates = true;
    std::function<void()> beforeRowOperation = [] {};

    /// The k-th row operation from now on fails, counted from 1. 0 is none.
    void failAt(int k, Fault fault)
    {
        countdown_ = k;
        fault_ = fault;
    }

    int numOfRowOperations() const { return operations_; }

    unsigned int getSize(ImageDimension const& dimension) const override { return memory_.getSize(dimension); }
    VoxelTypes getVoxelType() const override { return memory_.getVoxelType(); }
    bool setCalibrationOrigin(ImageDimension const& dimension, double origin) override
    {
        return calibrates && memory_.setCalibrationOrigin(dimension, origin);
    }
    double getCalibrationOrigin(ImageDimension const& dimension) const override
    {
        return memory_.getCalibrationOrigin(dimension);
    }
    bool setCalibrationStep(ImageDimension const& dimension, double step) override
    {
        return calibrates && memory_.setCalibrationStep(dimension, step);
    }
    double getCalibrationStep(ImageDimension const& dimension) const override
    {
        return memory_.getCalibrationStep(dimension);
    }
    bool setDescription(String const& description) override { return memory_.setDescription(description); }
    String getDescription() const override { return memory_.getDescription(); }
    bool setUnit(String const& unit) override { return memory_.setUnit(unit); }
    String getUnit() const override { return memory_.getUnit(); }
    ImageInterpretation getInterpretation() const override { return memory_.getInterpretation(); }
    bool setInterpretation(ImageInterpretation const& interpretation) override
    {
        return interprets && memory_.setInterpretation(interpretation);
    }
    bool lockRegion(int, int, int, int, int) override { return true; }

    bool readRowAt(unsigned int count, void* buffer, unsigned int x, unsigned int y, unsigned int z, unsigned int t,
                   unsigned int s) const override
    {
        return succeeds() && memory_.readRowAt(count, buffer, x, y, z, t, s);
    }
    bool writeRowAt(unsigned int count, void const* buffer, unsigned int x, unsigned int y, unsigned int z,
                    unsigned int t, unsigned int s) override
    {
        return succeeds() && memory_.writeRowAt(count, buffer, x, y, z, t, s);
    }
    bool getRowPointerAt(unsigned int count, void*& pointer, unsigned int x, unsigned int y, unsigned int z,
                         unsigned int t, unsigned int s) override
    {
        return givesPointers && memory_.getRowPointerAt(count, pointer, x, y, z, t, s);
    }
    bool getConstRowPointerAt(unsigned int count, void const*& pointer, unsigned int x, unsigned int y, unsigned int z,
                              unsigned int t, unsigned int s) const override
    {
        return givesPointers && memory_.getConstRowPointerAt(count, pointer, x, y, z, t, s);
    }
    bool allocate(VoxelTypes const& voxelType, unsigned int columns, unsigned int rows, unsigned int plans,
                  unsigned int timeSeries, unsigned int spectralSeries) override
    {
        return allocates && memory_.allocate(voxelType, columns, rows, plans, timeSeries, spectralSeries);
    }

private:
    bool succeeds() const
    {
        ++operations_;
        beforeRowOperation();
        if (countdown_ == 0 || --countdown_ != 0) {
            return true;
        }
        if (fault_ == Fault::throws) {
            throw std::runtime_error("the row operation was told to fail");
        }
        return false;
    }

    memory::InMemoryImage memory_;
    mutable std::atomic<int> operations_ = 0;
    mutable std::atomic<int> countdown_ = 0;
    Fault fault_ = Fault::returnsFalse;
};

} // namespace mox::testing

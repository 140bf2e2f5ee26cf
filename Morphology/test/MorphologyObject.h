#pragma once

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/ImageModel.h>
#include <Moxelcore/Core/Property.h>

#include <string>
#include <vector>

namespace mox::testing {

/// One of the 28 algorithms, made by name and set by name.
class MorphologyObject {
public:
    explicit MorphologyObject(std::string const& name)
        : algorithm_(AlgoInfo::fromName(name.c_str()).createInstance())
    {
    }

    BaseAlgorithm* operator->() const { return algorithm_.get(); }

    template <class T>
    Property<T>& property(char const* name) const
    {
        return dynamic_cast<Property<T>&>(*algorithm_->getPropertyfromName(name));
    }

    void setImages(ImageModel const& input, ImageModel& output) const
    {
        property<ImageModel const*>("input") = &input;
        property<ImageModel*>("output") = &output;
    }

    void setLevel(OptimLevelType level) const
    {
        algorithm_->setAutoCpuDispatch(false);
        algorithm_->setOptimLevel(level);
    }

private:
    boost::shared_ptr<BaseAlgorithm> algorithm_;
};

inline std::vector<std::string> namesOfFamilies()
{
    return {"2D", "3D", "Disk2D", "Line2D", "Ball3D", "Disk3D", "Line3D"};
}

inline std::vector<std::string> namesOfChains()
{
    return {"Erosion", "Dilation", "Opening", "Closing"};
}

} // namespace mox::testing

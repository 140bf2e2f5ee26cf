#include "apps/moxel/ImageBinding.h"

#include <Moxelcore/Core/InMemoryImage.h>

#include <filesystem>
#include <utility>

#include "apps/moxel/Colours.h"
#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/ResultFile.h"

namespace moxel {

namespace {

class InputImage final : public PropertyBinding {
public:
    InputImage(mox::Property<mox::ImageModel const*>& property, std::string path, BindingOptions const& options)
        : property_(property)
        , path_(std::move(path))
        , options_(options)
    {
    }

    void load() override
    {
        image_ = readImage(path_, options_.pages);
        if (options_.interpretation) {
            image_->setInterpretation(*options_.interpretation);
        }
        property_.set(image_.get());
    }

private:
    mox::Property<mox::ImageModel const*>& property_;
    std::string path_;
    BindingOptions options_;
    std::unique_ptr<mox::memory::InMemoryImage> image_;
};

class OutputImage final : public PropertyBinding {
public:
    OutputImage(mox::Property<mox::ImageModel*>& property, std::string const& path, BindingOptions const& options)
        : file_(path)
        , format_(formatOf(path))
        , compression_(options.compression)
        , inColours_(options.inColours)
    {
        image_.allocate(options.voxelType.value_or(mox::MOX_UINT8), 0, 0, 0, 0, 0);
        property.set(&image_);
    }

    /// An algorithm whose result has no size beforehand gives it one during the run.
    void check() const override
    {
        if (image_.getSize(mox::COLUMNS) != 0) {
            file_.guard([this] { inColours_ ? requireColourForm(image_) : requireForm(image_, format_); });
        }
    }

    void store() override
    {
        file_.store([this](std::filesystem::path const& path) {
            auto const picture = inColours_ ? colourPicture(image_) : nullptr;
            writeImage(picture ? *picture : image_, path, format_, compression_);
        });
    }

    void publish() override { file_.publish(); }

private:
    ResultFile file_;
    ImageFormat format_;
    Compression compression_;
    bool inColours_;
    mox::memory::InMemoryImage image_;
};

template <class T>
mox::Property<T>& imageProperty(mox::BaseProperty& property)
{
    return dynamic_cast<mox::Property<T>&>(property);
}

} // namespace

std::unique_ptr<PropertyBinding> bindInputImage(mox::BaseProperty& property, std::string const& path,
                                                BindingOptions const& options)
{
    return std::make_unique<InputImage>(imageProperty<mox::ImageModel const*>(property), path, options);
}

std::unique_ptr<PropertyBinding> bindOutputImage(mox::BaseProperty& property, std::string const& path,
                                                 BindingOptions const& options)
{
    return std::make_unique<OutputImage>(imageProperty<mox::ImageModel*>(property), path, options);
}

} // namespace moxel

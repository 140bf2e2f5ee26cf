#include "apps/moxel/ModelBinding.h"

#include <Moxelcore/Classification/TextureClassificationModel.h>
#include <Moxelcore/Core/Exception.h>

#include <filesystem>
#include <utility>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ResultFile.h"
#include "apps/moxel/extension.h"

namespace moxel {

namespace {

using Model = mox::classification::TextureClassificationModel;

/// By the extension, as the library reads it.
mox::classification::WriteMode modeOf(std::filesystem::path const& path)
{
    std::string const extension = extensionOf(path);
    return extension == ".xml"   ? mox::classification::WRITE_MODE_XML
           : extension == ".txt" ? mox::classification::WRITE_MODE_TEXT
                                 : mox::classification::WRITE_MODE_BINARY;
}

void readModel(Model& model, std::string const& path)
{
    try {
        model.read(path.c_str());
    } catch (mox::Exception const& error) {
        throw FileError("cannot read " + quoted(path) + ": " + error.what().c_str());
    } catch (std::exception const& error) {
        throw FileError("cannot read " + quoted(path) + ": " + error.what());
    }
}

void storeModel(Model const& model, ResultFile& file)
{
    file.store([&](std::filesystem::path const& path) {
        try {
            model.write(path.c_str(), modeOf(file.path()), true);
        } catch (mox::SerializationException const&) { // whose text names the temporary file
            throw FileError("writing failed");
        }
    });
}

class InputModel final : public PropertyBinding {
public:
    InputModel(mox::Property<Model const*>& property, std::string path)
        : property_(property)
        , path_(std::move(path))
    {
    }

    void load() override
    {
        readModel(model_, path_);
        property_.set(&model_);
    }

private:
    mox::Property<Model const*>& property_;
    std::string path_;
    Model model_;
};

class ChangedModel final : public PropertyBinding {
public:
    ChangedModel(mox::Property<Model*>& property, std::string path)
        : property_(property)
        , path_(std::move(path))
        , file_(path_)
    {
    }

    void load() override
    {
        readModel(model_, path_);
        property_.set(&model_);
    }

    void store() override { storeModel(model_, file_); }
    void publish() override { file_.publish(); }

private:
    mox::Property<Model*>& property_;
    std::string path_;
    ResultFile file_;
    Model model_;
};

class NewModel final : public PropertyBinding {
public:
    NewModel(mox::Property<Model**>& property, std::string const& path)
        : file_(path)
    {
        property.set(&model_);
    }
    NewModel(NewModel const&) = delete;
    NewModel& operator=(NewModel const&) = delete;
    ~NewModel() override { delete model_; }

    void store() override { storeModel(*model_, file_); }
    void publish() override { file_.publish(); }

private:
    ResultFile file_;
    Model* model_ = nullptr;
};

template <class T>
mox::Property<T>& modelProperty(mox::BaseProperty& property)
{
    return dynamic_cast<mox::Property<T>&>(property);
}

} // namespace

std::unique_ptr<PropertyBinding> bindInputModel(mox::BaseProperty& property, std::string const& path,
                                                BindingOptions const&)
{
    return std::make_unique<InputModel>(modelProperty<Model const*>(property), path);
}

std::unique_ptr<PropertyBinding> bindChangedModel(mox::BaseProperty& property, std::string const& path,
                                                  BindingOptions const&)
{
    return std::make_unique<ChangedModel>(modelProperty<Model*>(property), path);
}

std::unique_ptr<PropertyBinding> bindNewModel(mox::BaseProperty& property, std::string const& path,
                                              BindingOptions const&)
{
    return std::make_unique<NewModel>(modelProperty<Model**>(property), path);
}

} // namespace moxel

#include "testing/everyClass/modelPlaces.h"

#include <Moxelcore/Classification/CreateTextureClassification2D.h>
#include <Moxelcore/Classification/TextureTraining2D.h>

#include <stdexcept>

#include "testing/TemporaryFolder.h"
#include "testing/everyClass/imagePlaces.h"

namespace mox::testing {

namespace {

using classification::CreateTextureClassification2D;
using classification::TextureClassificationModel;
using classification::TextureTraining2D;

/// A model with the recipe of the catalogue that has learnt nothing.
std::unique_ptr<TextureClassificationModel> newModel()
{
    TextureClassificationModel* model = nullptr;
    auto const algorithm = CreateTextureClassification2D::New();
    for (auto const& [name, text] : entryOf("CreateTextureClassification2D").values) {
        String echo;
        if (!algorithm->getPropertyfromName(name.c_str())->read(text.c_str(), echo)) {
            throw std::logic_error("no value for " + name + ": " + text);
        }
    }
    algorithm->classificationModel = &model;
    algorithm->run();
    return std::unique_ptr<TextureClassificationModel>(model);
}

std::unique_ptr<TextureClassificationModel> trainedModel()
{
    Entry const& entry = entryOf("TextureTraining2D");
    memory::InMemoryImage input;
    memory::InMemoryImage mask;
    fill(input, entry.imageOf("input"), {});
    fill(mask, entry.imageOf("mask"), {});
    auto model = newModel();
    auto const training = TextureTraining2D::New();
    training->input = &input;
    training->mask = &mask;
    training->classificationModel = model.get();
    training->run();
    return model;
}

void append(Bytes& bytes, TextureClassificationModel const& model)
{
    TemporaryFolder const folder;
    std::string const path = folder.file("model.txt");
    model.write(path.c_str(), classification::WRITE_MODE_TEXT, false);
    for (char const letter : readBytes(path)) {
        bytes.push_back(static_cast<std::byte>(letter));
    }
}

class TrainedModel final : public Place {
public:
    explicit TrainedModel(Property<TextureClassificationModel const*>& property) { property = model_.get(); }

private:
    std::unique_ptr<TextureClassificationModel> model_ = trainedModel();
};

class LearningModel final : public Place {
public:
    explicit LearningModel(Property<TextureClassificationModel*>& property) { property = model_.get(); }

    void soil(unsigned char) override { *model_ = *newModel(); }
    void appendTo(Bytes& bytes) const override { append(bytes, *model_); }

private:
    std::unique_ptr<TextureClassificationModel> model_ = newModel();
};

class NewModel final : public Place {
public:
    explicit NewModel(Property<TextureClassificationModel**>& property) { property = &model_; }
    NewModel(NewModel const&) = delete;
    NewModel& operator=(NewModel const&) = delete;
    ~NewModel() override { delete model_; }

    void soil(unsigned char) override
    {
        delete model_;
        model_ = nullptr;
    }

    void appendTo(Bytes& bytes) const override
    {
        if (model_ != nullptr) {
            append(bytes, *model_);
        }
    }

private:
    TextureClassificationModel* model_ = nullptr;
};

} // namespace

std::unique_ptr<Place> placeOf(Property<TextureClassificationModel const*>& property)
{
    return std::make_unique<TrainedModel>(property);
}

std::unique_ptr<Place> placeOf(Property<TextureClassificationModel*>& property)
{
    return std::make_unique<LearningModel>(property);
}

std::unique_ptr<Place> placeOf(Property<TextureClassificationModel**>& property)
{
    return std::make_unique<NewModel>(property);
}

} // namespace mox::testing

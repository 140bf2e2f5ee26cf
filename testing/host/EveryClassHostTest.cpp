#include <gmock/gmock.h>

#include <Moxelcore/Classification/TextureClassificationModel.h>
#include <Moxelcore/Morphology/PropertyMorphologicalLut.h>

#include <algorithm>

#include "apps/moxel/ImageFile.h"
#include "apps/moxel/PropertyKind.h"
#include "testing/AlgorithmTests.h"
#include "testing/everyClass/Task.h"
#include "testing/everyClass/imagePlaces.h"
#include "testing/everyClass/visitValue.h"
#include "testing/host/HostFiles.h"
#include "testing/host/moxel.h"

// Every class of the library as a user runs it, on files, gives what the library gives.

namespace moxel::testing {
namespace {

using mox::BaseProperty;
using mox::classification::TextureClassificationModel;
using mox::testing::append;
using mox::testing::inputsOf;
using mox::testing::outputsOf;
using mox::testing::Task;
using mox::testing::visitAs;
using ::testing::HasSubstr;

std::string nameOf(BaseProperty const& property)
{
    return property.getName().c_str();
}

bool isLookUpTable(BaseProperty& property)
{
    return visitAs<mox::morphology::MorphologicalLut2D*, mox::morphology::MorphologicalLut3D*>(property, [](auto&) {});
}

class EveryClassOnFiles : public ::testing::TestWithParam<std::string> {
protected:
    std::string path(BaseProperty const& property, char const* extension) const
    {
        return (folder_ / (nameOf(property) + extension)).string();
    }

    /// What the catalogue gives a property.
    std::string entryText(BaseProperty const& property) const
    {
        auto const& values = task_.entry().values;
        return std::find_if(values.begin(), values.end(),
                            [&](auto const& value) { return value.first == nameOf(property); })
            ->second;
    }

    void write(TextureClassificationModel const& model, std::string const& path) const
    {
        model.write(path.c_str(), mox::classification::WRITE_MODE_TEXT, true);
    }

    /// What the user writes for an input; files are made.
    std::string wordOf(BaseProperty& property) const
    {
        std::string word;
        visitAs<mox::ImageModel const*>(property, [&](auto const& image) {
            word = path(property, ".tif");
            writeImage(*image.get(), word, ImageFormat::tiff, Compression::none);
        });
        visitAs<TextureClassificationModel const*>(property, [&](auto const& model) {
            word = path(property, ".txt");
            write(*model.get(), word);
        });
        if (!word.empty()) {
            return word;
        }
        return isLookUpTable(property) ? entryText(property) : kindOf(property).text(property);
    }

    /// The words for an output that goes to a file, perhaps to one that is there.
    void appendOutput(std::vector<std::string>& words, BaseProperty& property) const
    {
        visitAs<mox::ImageModel*>(property, [&](auto const& image) {
            words.push_back(nameOf(property) + '=' + path(property, ".tif"));
            words.emplace_back("--type");
            words.push_back(nameOf(property) + '=' + mox::helper::getText(image.get()->getVoxelType()).c_str());
        });
        visitAs<TextureClassificationModel*>(property,
                                             [&](auto const& model) { write(*model.get(), path(property, ".txt")); });
        visitAs<TextureClassificationModel*, TextureClassificationModel**>(
            property, [&](auto const&) { words.push_back(nameOf(property) + '=' + path(property, ".txt")); });
    }

    void expectModel(TextureClassificationModel const& model, BaseProperty const& property) const
    {
        write(model, path(property, ".expected.txt"));
        EXPECT_EQ(readBytes(path(property, ".txt")), readBytes(path(property, ".expected.txt")));
    }

    /// That the host has given the result of the task.
    void expectResult(BaseProperty& property, std::string const& printed) const
    {
        visitAs<mox::ImageModel*>(property, [&](auto const& image) {
            mox::testing::Bytes actual;
            mox::testing::Bytes expected;
            append(actual, *readImage(path(property, ".tif"), {}));
            append(expected, *image.get());
            EXPECT_TRUE(actual == expected) << nameOf(property);
        });
        visitAs<TextureClassificationModel*>(property, [&](auto const& model) { expectModel(*model.get(), property); });
        visitAs<TextureClassificationModel**>(property,
                                              [&](auto const& model) { expectModel(**model.get(), property); });
        if (kindOf(property).text != nullptr) {
            EXPECT_THAT(printed, HasSubstr(nameOf(property) + " = " + kindOf(property).text(property) + '\n'));
        }
    }

    Folder folder_;
    Task const task_{GetParam()};
};

TEST_P(EveryClassOnFiles, givesWhatTheLibraryGives)
{
    std::vector<std::string> words = {"run", GetParam()};
    for (BaseProperty* input : inputsOf(task_.algorithm())) {
        words.push_back(nameOf(*input) + '=' + wordOf(*input));
    }
    for (BaseProperty* output : outputsOf(task_.algorithm())) {
        appendOutput(words, *output);
    }
    std::string const printed = moxel(words);
    task_.run();
    for (BaseProperty* output : outputsOf(task_.algorithm())) {
        expectResult(*output, printed);
    }
}

TEST_P(EveryClassOnFiles, canBeGivenEveryInput)
{
    for (BaseProperty const* input : inputsOf(task_.algorithm())) {
        EXPECT_NE(kindOf(*input).bind, nullptr) << nameOf(*input);
    }
}

INSTANTIATE_TEST_SUITE_P(OfTheLibrary, EveryClassOnFiles, ::testing::ValuesIn(mox::testing::namesOfClasses()),
                         [](auto const& name) { return name.param; });

} // namespace
} // namespace moxel::testing

#include <Moxelcore/Classification/TextureClassificationModel.h>

#include <gmock/gmock.h>

#include <boost/archive/archive_exception.hpp>
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/text_iarchive.hpp>
#include <boost/archive/text_oarchive.hpp>
#include <boost/archive/xml_iarchive.hpp>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>

#include "Classification/private/modelFile.h"
#include "Classification/private/modelSerialization.h"
#include "Classification/private/newModel.h"
#include "testing/Allocations.h"
#include "testing/ForeignLocale.h"
#include "testing/TemporaryFolder.h"

namespace mox::classification {

namespace {

using ::testing::HasSubstr;
using testing::readBytes;
using ::testing::StartsWith;
using testing::TemporaryFolder;
using testing::writeBytes;

struct Form {
    WriteMode mode;
    char const* file;
};

constexpr Form forms[] = {
    {WRITE_MODE_BINARY, "model.mox"}, {WRITE_MODE_TEXT, "model.txt"}, {WRITE_MODE_XML, "model.xml"}};

enum class Training { none, begun, finished, oneClassOnly };

/// A recipe of three features in two classes.
TextureClassificationModel makeModel(Training training)
{
    TextureClassificationModel model;
    TextureClassificationModelPrivate& content = ModelAccess::get(model);
    content.radius = 7;
    content.textureFeaturesGroup.push_back(segmentation::COOC_Contrast);
    content.textureFeaturesGroup.push_back(segmentation::HISTO_Peak);
    content.directionCollection.push_back({1, 0});
    content.directionCollection.push_back({-1, 2});
    content.binSizeHistogram = 0.1;
    content.userQuantileRatioHistogram.resize(6);
    content.classifier = boost::make_shared<LDAClassifier>();
    content.classifier->init(3, 2);
    std::mt19937 random(1);
    std::normal_distribution<double> normal;
    for (int i = 0; training != Training::none && i < 20; ++i) {
        LDAClassifier::Sample sample(3);
        sample << normal(random), normal(random) + 3 * (i % 2), normal(random);
        content.classifier->update(sample, training == Training::oneClassOnly ? 0 : i % 2);
    }
    if (training == Training::finished || training == Training::oneClassOnly) {
        content.classifier->finalize();
    }
    return model;
}

/// All that a model holds, to the last bit.
std::string contentOf(TextureClassificationModel const& model)
{
    if (!ModelAccess::get(model).classifier) {
        return "empty";
    }
    std::ostringstream out;
    boost::archive::text_oarchive(out) << ModelAccess::get(model);
    return out.str();
}

template <class Call>
std::string refusal(Call&& call)
{
    try {
        call();
    } catch (SerializationException const& exception) {
        return exception.getInfo().c_str();
    } catch (boost::archive::archive_exception const& exception) {
        return exception.what();
    }
    return "nothing thrown";
}

void expectSameVerdicts(TextureClassificationModel const& a, TextureClassificationModel const& b)
{
    for (double x = -4; x < 8; x += 0.125) {
        auto const& first = *ModelAccess::get(a).classifier;
        auto const& second = *ModelAccess::get(b).classifier;
        LDAClassifier::Sample const sample = LDAClassifier::Sample::Constant(first.getClassicationSpaceDimension(), x);
        ASSERT_EQ(first.classify(sample), second.classify(sample));
    }
}

TEST(TextureClassificationModel, returnsFromEachForm)
{
    TemporaryFolder const folder;
    for (Training const training : {Training::none, Training::begun, Training::finished, Training::oneClassOnly}) {
        auto const model = makeModel(training);
        for (Form const& form : forms) {
            std::string const path = folder.file(form.file);
            model.write(path.c_str(), form.mode, true);
            TextureClassificationModel copy;
            copy.read(path.c_str());
            EXPECT_EQ(contentOf(copy), contentOf(model)) << form.file;
            if (training == Training::finished) {
                expectSameVerdicts(copy, model);
            }
        }
    }
}

TEST(TextureClassificationModel, returnsFromEachFormInAForeignLocale)
{
    TemporaryFolder const folder;
    testing::ForeignLocale const locale;
    auto const model = makeModel(Training::finished);
    for (Form const& form : forms) {
        std::string const path = folder.file(form.file);
        model.write(path.c_str(), form.mode, true);
        TextureClassificationModel copy;
        copy.read(path.c_str());
        EXPECT_EQ(contentOf(copy), contentOf(model)) << form.file;
    }
}

TEST(TextureClassificationModel, writesWhatTheArchivesOfBoostRead)
{
    TemporaryFolder const folder;
    auto const model = makeModel(Training::finished);
    for (Form const& form : forms) {
        std::string const path = folder.file(form.file);
        model.write(path.c_str(), form.mode, true);
        std::istringstream in(readBytes(path));
        TextureClassificationModel copy;
        TextureClassificationModelPrivate& content = ModelAccess::get(copy);
        if (form.mode == WRITE_MODE_BINARY) {
            in.ignore(4);
            boost::archive::binary_iarchive archive(in);
            std::string name;
            archive >> name >> content;
            EXPECT_EQ(name, "TextureClassificationModel");
        } else if (form.mode == WRITE_MODE_TEXT) {
            boost::archive::text_iarchive(in) >> content;
        } else {
            boost::archive::xml_iarchive archive(in);
            archive >> boost::serialization::make_nvp("TextureClassificationModel", content);
        }
        EXPECT_EQ(contentOf(copy), contentOf(model));
    }
}

TEST(TextureClassificationModel, continuesItsTrainingAfterReading)
{
    TemporaryFolder const folder;
    auto const path = folder.file("model.mox");
    auto model = makeModel(Training::begun);
    model.write(path.c_str(), WRITE_MODE_BINARY, false);
    TextureClassificationModel copy;
    copy.read(path.c_str());
    for (auto* trained : {&model, &copy}) {
        ModelAccess::get(*trained).classifier->update(LDAClassifier::Sample::Constant(3, 2.5), 1);
        ModelAccess::get(*trained).classifier->finalize();
    }
    EXPECT_EQ(contentOf(copy), contentOf(model));
    expectSameVerdicts(copy, model);
}

TEST(TextureClassificationModel, beginsBinaryFilesWithTheMagicNumberAndTheSignature)
{
    TemporaryFolder const folder;
    auto const path = folder.file("model.any");
    makeModel(Training::none).write(path.c_str(), WRITE_MODE_BINARY, false);
    EXPECT_THAT(readBytes(path), StartsWith(std::string("MOXO\x16\0\0\0\0\0\0\0serialization::archive", 34)));
}

TEST(TextureClassificationModel, choosesTheFormByTheExtensionAlone)
{
    TemporaryFolder const folder;
    auto const model = makeModel(Training::finished);
    auto const path = folder.file("a.tar.XmL");
    model.write(path.c_str(), WRITE_MODE_XML, false);
    TextureClassificationModel copy;
    copy.read(path.c_str());
    EXPECT_EQ(contentOf(copy), contentOf(model));

    auto const other = folder.file("xml.dat");
    model.write(other.c_str(), WRITE_MODE_XML, false);
    EXPECT_THAT(refusal([&] { copy.read(other.c_str()); }), HasSubstr("Invalid magic number: <<?xm>"));
}

TEST(TextureClassificationModel, copiesDeeply)
{
    auto model = makeModel(Training::begun);
    TextureClassificationModel const copy(model);
    TextureClassificationModel assigned;
    assigned = model;
    std::string const before = contentOf(model);
    ModelAccess::get(model).radius = 1;
    ModelAccess::get(model).classifier->finalize();
    EXPECT_EQ(contentOf(copy), before);
    EXPECT_EQ(contentOf(assigned), before);
}

TEST(TextureClassificationModel, listsItsRecipe)
{
    EXPECT_STREQ(makeModel(Training::none).getInfo().c_str(), "Number of classes: 2\n"
                                                              "radius: 7\n"
                                                              "textureFeaturesGroup:\n"
                                                              "    COOC_Contrast\n"
                                                              "    HISTO_Peak\n"
                                                              "minGreyLevelCooccurrence: 0\n"
                                                              "maxGreyLevelCooccurrence: 255\n"
                                                              "binSizeCooccurrence: 16\n"
                                                              "directionCollection:\n"
                                                              "    1 0\n"
                                                              "    -1 2\n"
                                                              "minGreyLevelHistogram: 0\n"
                                                              "maxGreyLevelHistogram: 255\n"
                                                              "binSizeHistogram: 0.1\n"
                                                              "userQuantileRatioHistogram:\n"
                                                              "    0\n    0\n    0\n    0\n    0\n    0\n");
}

TEST(TextureClassificationModel, tellsWhatIsWrong)
{
    TemporaryFolder const folder;
    auto const path = folder.file("model.mox");
    TextureClassificationModel empty;
    auto const model = makeModel(Training::finished);
    EXPECT_THAT(refusal([&] { empty.write(path.c_str(), WRITE_MODE_TEXT, true); }),
                HasSubstr("No classifier defined."));
    EXPECT_FALSE(std::filesystem::exists(path));
    try {
        empty.getInfo();
        ADD_FAILURE();
    } catch (InvalidCall const& error) {
        EXPECT_THAT(error.what().c_str(), HasSubstr("No classifier defined."));
    }
    EXPECT_THAT(refusal([&] { empty.read(path.c_str()); }), HasSubstr("The <" + path + "> file does not exists."));

    model.write(path.c_str(), WRITE_MODE_BINARY, false);
    EXPECT_THAT(refusal([&] { model.write(path.c_str(), WRITE_MODE_BINARY, false); }),
                HasSubstr("The <" + path + "> file already exists."));
    EXPECT_NO_THROW(model.write(path.c_str(), WRITE_MODE_BINARY, true));
    auto const written = readBytes(path);
    auto const nowhere = folder.file("no/where.mox");
    EXPECT_THAT(refusal([&] { model.write(nowhere.c_str(), WRITE_MODE_BINARY, false); }),
                HasSubstr("Cannot open the <" + nowhere + "> file."));
    EXPECT_THAT(refusal([&] { model.write(path.c_str(), static_cast<WriteMode>(3), true); }),
                HasSubstr("The write mode (3) is unknown."));
    EXPECT_EQ(readBytes(path), written) << "an old file stays";
    EXPECT_THAT(refusal([&] { empty.read(folder.file("").c_str()); }), HasSubstr("Cannot open the <"));
    EXPECT_THAT(refusal([&] { empty.read("/dev/zero"); }), HasSubstr("Cannot open the </dev/zero> file."));
    EXPECT_THAT(refusal([&] { model.write("/dev/full", WRITE_MODE_BINARY, true); }),
                HasSubstr("Cannot write the </dev/full> file."));
}

TEST(TextureClassificationModel, refusesForeignFiles)
{
    TemporaryFolder const folder;
    auto const path = folder.file("model.mox");
    TextureClassificationModel model;
    auto const refusalOf = [&](std::string const& bytes) {
        writeBytes(path, bytes);
        return refusal([&] { model.read(path.c_str()); });
    };
    EXPECT_THAT(refusalOf(""), HasSubstr("Invalid magic number: <>"));
    EXPECT_THAT(refusalOf("MO"), HasSubstr("Invalid magic number: <MO>"));
    EXPECT_THAT(refusalOf("MOXXO"), HasSubstr("Invalid magic number: <MOXX>"));
    EXPECT_THAT(refusalOf("MOXO"), HasSubstr("input stream error"));
    makeModel(Training::none).write(path.c_str(), WRITE_MODE_BINARY, true);
    std::string const good = readBytes(path);
    std::string bytes = good;
    bytes.replace(bytes.find("TextureClass"), 7, "Tincture", 7);
    EXPECT_THAT(refusalOf(bytes), HasSubstr("The <TincturClassificationModel> classifier isn't supported."));
    bytes = good;
    bytes.replace(bytes.find("LDA"), 3, "QDA");
    EXPECT_THAT(refusalOf(bytes), HasSubstr("Unknown classifier."));
    bytes = good;
    bytes[4 + 8 + 22] = 99; // the version of the archive
    EXPECT_THAT(refusalOf(bytes), HasSubstr("unsupported version"));
    EXPECT_EQ(contentOf(model), "empty");
}

TEST(TextureClassificationModel, refusesClassifiersThatDoNotFitTheRecipe)
{
    TemporaryFolder const folder;
    auto const path = folder.file("model.txt");
    auto model = makeModel(Training::finished);
    ModelAccess::get(model).directionCollection.push_back({0, 1});
    model.write(path.c_str(), WRITE_MODE_TEXT, false);
    TextureClassificationModel copy;
    EXPECT_THAT(refusal([&] { copy.read(path.c_str()); }), HasSubstr("The <" + path + "> file holds no valid model."));
    ModelAccess::get(model).directionCollection.resize(2);
    ModelAccess::get(model).numOfClasses = 3;
    model.write(path.c_str(), WRITE_MODE_TEXT, true);
    EXPECT_THAT(refusal([&] { copy.read(path.c_str()); }), HasSubstr("The <" + path + "> file holds no valid model."));
}

TEST(TextureClassificationModel, refusesRecipesWithoutWindowsOrClassesOfGrey)
{
    TemporaryFolder const folder;
    auto const path = folder.file("model.txt");
    auto const expectInvalid = [&](auto const& damage) {
        auto model = makeModel(Training::finished);
        damage(ModelAccess::get(model));
        model.write(path.c_str(), WRITE_MODE_TEXT, true);
        TextureClassificationModel copy;
        EXPECT_THAT(refusal([&] { copy.read(path.c_str()); }),
                    HasSubstr("The <" + path + "> file holds no valid model."));
    };
    expectInvalid([](TextureClassificationModelPrivate& content) { content.radius = 0; });
    expectInvalid([](TextureClassificationModelPrivate& content) { content.binSizeCooccurrence = 0; });
    expectInvalid([](TextureClassificationModelPrivate& content) { content.binSizeHistogram = -1; });
    expectInvalid([](TextureClassificationModelPrivate& content) { content.binSizeHistogram = std::nan(""); });
}

TEST(TextureClassificationModel, tellsWhichPartOfItFoundNoMemory)
{
    auto const refusalAt = [](int allocation) {
        testing::Allocations::failAt(allocation);
        std::string text = "nothing thrown";
        try {
            classification::newModel("here");
        } catch (MemoryError const& error) {
            text = error.what().c_str();
        }
        testing::Allocations::stopFailing();
        return text;
    };
    EXPECT_THAT(refusalAt(1), HasSubstr("Impossible to allocate a new TextureClassificationModel."));
    EXPECT_THAT(refusalAt(2), HasSubstr("Invalid private implementation of the new TextureClassificationModel."));
}

/// Reads damaged bytes: an error, or a model that can be used.
std::string readDamaged(char const* path, std::string const& bytes)
{
    std::unique_ptr<TextureClassificationModelPrivate> model;
    testing::Allocations::startCounting();
    std::string const outcome = refusal([&] { model = modelFile::parse(path, bytes); });
    EXPECT_LT(testing::Allocations::numOfBytes(), 1U << 20U);
    if (model) {
        auto const classifier = model->classifier->clone();
        classifier->classify(LDAClassifier::Sample::Zero(classifier->getLearningSpaceDimension()));
        classifier->finalize();
        modelFile::compose(*model, WRITE_MODE_BINARY);
    }
    return outcome;
}

class DamagedModelFile : public ::testing::TestWithParam<Form> {
protected:
    std::string const bytes = modelFile::compose(ModelAccess::get(makeModel(Training::finished)), GetParam().mode);
};

TEST_P(DamagedModelFile, isRefusedWhereverItIsCutOff)
{
    auto const end = GetParam().mode == WRITE_MODE_BINARY ? bytes.size() : bytes.find_last_not_of('\n') + 1;
    for (std::size_t length = 0; length < end; ++length) {
        ASSERT_NE(readDamaged(GetParam().file, bytes.substr(0, length)), "nothing thrown") << length;
    }
    EXPECT_EQ(readDamaged(GetParam().file, bytes), "nothing thrown");
    EXPECT_NE(readDamaged(GetParam().file, bytes + 'x'), "nothing thrown");
}

TEST_P(DamagedModelFile, doesNoHarmWhateverBitIsFlipped)
{
    int refused = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string damaged = bytes;
            damaged[i] = static_cast<char>(damaged[i] ^ (1 << bit));
            refused += readDamaged(GetParam().file, damaged) != "nothing thrown";
        }
    }
    EXPECT_GT(refused, 0);
}

TEST_P(DamagedModelFile, doesNoHarmWithLargeNumbersAnywhere)
{
    int refused = 0;
    for (std::size_t i = 0; i + 8 <= bytes.size(); ++i) {
        for (auto const& number :
             {std::string(8, '\xff'), std::string("\xff\xff\xff\x7f", 4), std::string("\0\0\0\0\1\0\0\0", 8),
              std::string(" 9999999999999999 "), std::string(">2147483647<")}) {
            std::string damaged = bytes;
            damaged.replace(i, number.size(), number);
            refused += readDamaged(GetParam().file, damaged) != "nothing thrown";
        }
    }
    EXPECT_GT(refused, 0);
}

INSTANTIATE_TEST_SUITE_P(Forms, DamagedModelFile, ::testing::ValuesIn(forms));

TEST(TextureClassificationModel, staysAsItIsWhenAFileIsRefused)
{
    TemporaryFolder const folder;
    auto const path = folder.file("model.mox");
    auto model = makeModel(Training::finished);
    std::string const before = contentOf(model);
    model.write(path.c_str(), WRITE_MODE_BINARY, true);
    writeBytes(path, readBytes(path).substr(0, 300));
    EXPECT_EQ(refusal([&] { model.read(path.c_str()); }), "input stream error");
    EXPECT_EQ(contentOf(model), before);
}

/// Files of version 0.1 of the library. They must stay readable.
TEST(TextureClassificationModel, readsTheFilesOfEarlierVersions)
{
    auto const model = makeModel(Training::finished);
    for (Form const& form : forms) {
        std::string const path = std::string(MOXELCORE_SOURCE_DIR "/Classification/test/golden/") + form.file;
        TextureClassificationModel golden;
        golden.read(path.c_str());
        EXPECT_EQ(golden.getInfo(), model.getInfo());
        expectSameVerdicts(golden, model);
        TemporaryFolder const folder;
        golden.write(folder.file(form.file).c_str(), form.mode, false);
        EXPECT_EQ(readBytes(folder.file(form.file)), readBytes(path));
    }
}

} // namespace

} // namespace mox::classification

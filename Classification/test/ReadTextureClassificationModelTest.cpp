#include <Moxelcore/Classification/ReadTextureClassificationModel.h>

#include <gmock/gmock.h>

#include "Classification/test/textureScene.h"
#include "testing/TemporaryFolder.h"

namespace mox::testing {

namespace {

using classification::ReadTextureClassificationModel;
using ::testing::HasSubstr;

TEST(ReadTextureClassificationModel, givesTheModelOfAFile)
{
    TemporaryFolder const folder;
    auto const model = createModel(richGroup);
    model->write(folder.file("a.xml").c_str(), classification::WRITE_MODE_XML, false);
    TextureClassificationModel* read = nullptr;
    auto const algorithm = ReadTextureClassificationModel::New();
    algorithm->pathClassificationFile = String(folder.file("a.xml").c_str());
    algorithm->newClassification = &read;
    algorithm->run();
    Model const copy(read);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getInfo(), model->getInfo());
}

TEST(ReadTextureClassificationModel, tellsWhatIsWrong)
{
    TemporaryFolder const folder;
    TextureClassificationModel* read = nullptr;
    auto const algorithm = ReadTextureClassificationModel::New();
    EXPECT_STREQ(algorithm->getInputProperty(0)->getName().c_str(), "pathClassificationFile");
    EXPECT_STREQ(algorithm->getOutputProperty(0)->getName().c_str(), "newClassification");
    EXPECT_EQ(algorithm->getAlgoBorderInfluence().getNumOfVoxels(ROWS_END), 0U);
    auto const run = [&] { algorithm->run(); };
    EXPECT_THAT(refusal<RuleException>(run), HasSubstr("Parameter value cannot be null"));
    algorithm->newClassification = &read;
    EXPECT_THAT(refusal<InvalidCall>(run), HasSubstr("The path is empty."));
    algorithm->pathClassificationFile = String(folder.file("none").c_str());
    EXPECT_THAT(refusal<SerializationException>(run), HasSubstr("file does not exists."));
    writeBytes(folder.file("none"), "MOXOMOXO");
    EXPECT_THAT(refusal<UnexpectedError>(run), HasSubstr("input stream error"));
    EXPECT_EQ(read, nullptr);
}

} // namespace

} // namespace mox::testing

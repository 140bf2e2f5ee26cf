#include <gmock/gmock.h>

#include <Moxelcore/Moxelcore.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <sstream>

#include "apps/moxel/Algorithms.h"
#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/PointsFile.h"
#include "apps/moxel/PropertyKind.h"
#include "apps/moxel/RunCommand.h"
#include "testing/host/HostFiles.h"

namespace moxel::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Point = mox::math::Vector2<double>;

class Registration : public ::testing::Test {
protected:
    std::string write(std::string const& name, std::string const& text) const
    {
        std::ofstream(folder_ / name) << text;
        return (folder_ / name).string();
    }

    template <class T>
    std::string writeTiff(std::string const& name, Sizes const& sizes, std::vector<T> const& voxels) const
    {
        mox::memory::InMemoryImage image;
        fill(image, sizes, voxels);
        writeImage(image, folder_ / name, ImageFormat::tiff, Compression::none);
        return (folder_ / name).string();
    }

    std::string content(std::string const& name) const
    {
        Bytes const bytes = readBytes(folder_ / name);
        return {bytes.begin(), bytes.end()};
    }

    template <class V>
    std::string refusal(std::string const& text) const
    {
        try {
            readPoints<V>(write("refused.csv", text));
        } catch (FileError const& error) {
            return error.what();
        }
        return "nothing thrown";
    }

    static std::string run(std::string const& name, std::vector<std::string> const& values, OutputForm form)
    {
        RunOptions options;
        options.values = values;
        options.form = form;
        std::ostringstream out;
        runAlgorithm(mox::AlgoInfo::fromName(name.c_str()).createInstance(), options, out);
        return out.str();
    }

    Folder folder_;
};

TEST_F(Registration, PointsAreReadFromLines)
{
    for (char const* text : {"x,y\n1,2\n-3.5,4e2\n", "1 2\n\n-3.5\t 4e2", "# points\n1;2\r\n -3.5 ; 400\r\n",
                             "\"x\" \"y\"\n  1 2  \n# more\n-3.5 400\n"}) {
        auto const points = readPoints<Point>(write("points.txt", text));
        ASSERT_EQ(points.size(), 2U) << text;
        EXPECT_EQ(points[0], Point(1, 2)) << text;
        EXPECT_EQ(points[1], Point(-3.5, 400)) << text;
    }
    EXPECT_TRUE(readPoints<Point>(write("points.txt", "")).empty());
    auto const whole = readPoints<mox::math::Vector3<mox::uint64>>(write("points.csv", "18446744073709551615,0,1"));
    EXPECT_EQ(whole[0][0], 18446744073709551615U);
}

TEST_F(Registration, WrongLinesAreTold)
{
    EXPECT_THAT(refusal<Point>("1,2\n3\n"), HasSubstr("refused.csv\": line 2: 1 components"));
    EXPECT_THAT(refusal<Point>("1,2\n3,4,5\n"), HasSubstr("line 2: 3 components"));
    EXPECT_THAT(refusal<Point>("1,2\n\n3,,4\n"), HasSubstr("line 3: 3 components"));
    EXPECT_THAT(refusal<Point>("1,2\n3,four\n"), HasSubstr("line 2: \"four\" is no number of type double"));
    EXPECT_THAT(refusal<Point>("l,2\n3,4\n"), HasSubstr("line 1: \"l\" is no number of type double"));
    EXPECT_THAT(refusal<Point>("1,2\nx,y\n"), HasSubstr("line 2: \"x\" is no number of type double"));
    EXPECT_THAT(refusal<mox::math::Vector2<int>>("1,2.5\n"), HasSubstr("\"2.5\" is no number of type int32"));
    EXPECT_THROW(readPoints<Point>((folder_ / "absent.csv").string()), FileError);
}

TEST_F(Registration, FilesAndWordsAreToldApart)
{
    EXPECT_TRUE(namesPointsFile("a.csv"));
    EXPECT_TRUE(namesPointsFile("b/c:d.txt"));
    EXPECT_TRUE(namesPointsFile("a.CSV"));
    EXPECT_FALSE(namesPointsFile("1:2,3:4"));
    EXPECT_FALSE(namesPointsFile(""));
}

TEST_F(Registration, TransformationsArePrinted)
{
    std::vector<std::string> const values = {"data=0:0,4:2,2:4,2:2", "model=1:2,5:4,3:6,3:4"};
    EXPECT_EQ(run("LandmarkRegistration2D", values, OutputForm::text), "outputTransformation = Translation2D 1,2\n");
    Json const json = Json::parse(run("LandmarkRegistration2D", values, OutputForm::json));
    EXPECT_EQ(json, Json::parse(R"({"outputTransformation": {"class": "Translation2D", "parameters": [1.0, 2.0],
                                    "matrix": [[1.0, 0.0, 1.0], [0.0, 1.0, 2.0], [0.0, 0.0, 1.0]]}})"));
}

TEST_F(Registration, TransformationsAreWritten)
{
    std::string const data = write("data.csv", "x,y\n0,0\n1,0\n0,1\n");
    std::string const model = write("model.csv", "5,6\n5,7\n4,6\n");
    std::string const path = (folder_ / "t.json").string();
    run("LandmarkRegistration2D",
        {"data=" + data, "model=" + model, "transformationType=RIGID", "outputTransformation=" + path},
        OutputForm::text);
    Json const json = Json::parse(content("t.json"));
    EXPECT_EQ(json["class"], "RigidTransformation2D");
    EXPECT_NEAR(json["parameters"][2].get<double>(), 1.5707963267948966, 1e-12);
    double const matrix[3][3] = {{0, -1, 5}, {1, 0, 6}, {0, 0, 1}};
    for (std::size_t i = 0; i < 9; ++i) {
        EXPECT_NEAR(json["matrix"][i / 3][i % 3].get<double>(), matrix[i / 3][i % 3], 1e-12) << i;
    }
    EXPECT_THAT(folder_.names(), ElementsAre("data.csv", "model.csv", "t.json"));
}

TEST_F(Registration, TransformationsInSpaceHaveSixParametersAndAMatrix)
{
    std::vector<std::string> values = {"data=0:0:0,1:0:0,0:1:0,0:0:1", "model=3:4:5,3:5:5,2:4:5,3:4:6"};
    values.emplace_back("transformationType=RIGID");
    Json const json = Json::parse(run("LandmarkRegistration3D", values, OutputForm::json))["outputTransformation"];
    EXPECT_EQ(json["class"], "RigidTransformation3D");
    EXPECT_EQ(json["parameters"].size(), 6U);
    EXPECT_NEAR(json["parameters"][5].get<double>(), 1.5707963267948966, 1e-12);
    EXPECT_NEAR(json["matrix"][1][0].get<double>(), 1.0, 1e-12);
    EXPECT_NEAR(json["matrix"][1][3].get<double>(), 4.0, 1e-12);
    EXPECT_EQ(json["matrix"][3], Json::parse("[0.0, 0.0, 0.0, 1.0]"));
}

TEST_F(Registration, PolynomialsHaveNoMatrix)
{
    std::string points = "data=";
    for (int i = 0; i < 9; ++i) {
        points += (i > 0 ? "," : "") + std::to_string(i % 3) + ':' + std::to_string(i / 3);
    }
    std::string const model = "model" + points.substr(4);
    Json const json = Json::parse(
        run("LandmarkRegistration2D", {points, model, "transformationType=POLYNOMIAL_2"}, OutputForm::json));
    EXPECT_EQ(json["outputTransformation"]["class"], "PolynomialOrder2Transformation2D");
    EXPECT_EQ(json["outputTransformation"]["parameters"].size(), 12U);
    EXPECT_FALSE(json["outputTransformation"].contains("matrix"));
}

TEST_F(Registration, AFailureLeavesTheFileAsItWas)
{
    std::string const path = write("t.json", "before");
    EXPECT_THROW(run("LandmarkRegistration2D",
                     {"data=0:0", "model=1:1", "transformationType=AFFINE", "outputTransformation=" + path},
                     OutputForm::text),
                 mox::RuntimeError);
    EXPECT_EQ(content("t.json"), "before");
    EXPECT_THROW(run("LandmarkRegistration2D",
                     {"data=0:0", "model=1:1", "outputTransformation=" + (folder_ / "none" / "t.json").string()},
                     OutputForm::text),
                 FileError);
}

TEST_F(Registration, WithoutATransformationNoneIsTold)
{
    auto const algorithm = mox::registration::LandmarkRegistration2D::New();
    PropertyKind const& kind = kindOf(algorithm->outputTransformation);
    EXPECT_EQ(kind.typeName(algorithm->outputTransformation), "transformation");
    EXPECT_EQ(kind.text(algorithm->outputTransformation), "none");
    EXPECT_EQ(kind.json(algorithm->outputTransformation), Json());
}

/// A part of an image of noise is found where it was cut out.
TEST_F(Registration, MatchesAreToldAsNumbers)
{
    std::mt19937 random(1);
    std::vector<std::string> values = {"numOfLevel=1",    "similarityMeasure=NORMALIZED_ABS",
                                       "rotationEnd=270", "rotationStep=90",
                                       "scaleBegin=1",    "scaleEnd=1"};
    for (std::string const axis : {"X", "Y"}) {
        std::vector<std::int16_t> image(14 * 12);
        std::generate(image.begin(), image.end(), [&] { return static_cast<std::int16_t>(random() % 21) - 10; });
        std::vector<std::int16_t> part;
        for (std::size_t i = 0; i < 25; ++i) {
            part.push_back(image[(3 + i / 5) * 14 + 6 + i % 5]);
        }
        values.push_back("inputGradient" + axis + '=' + writeTiff("input" + axis + ".tif", {14, 12, 1, 1, 1}, image));
        values.push_back("templateGradient" + axis + '=' + writeTiff("part" + axis + ".tif", {5, 5, 1, 1, 1}, part));
    }
    std::vector<std::uint8_t> const everywhere(25, 1);
    values.push_back("mask=" + writeTiff("mask.tif", {5, 5, 1, 1, 1}, everywhere));
    EXPECT_EQ(run("ShapeBasedMatching2D", values, OutputForm::text),
              "outputTx = 6\noutputTy = 3\noutputScale = 1\noutputRotation = 0\n");
    Json const json = Json::parse(run("ShapeBasedMatching2D", values, OutputForm::json));
    EXPECT_EQ(json, Json::parse(R"({"outputTx": 6.0, "outputTy": 3.0, "outputScale": 1.0, "outputRotation": 0.0})"));
}

} // namespace
} // namespace moxel::testing

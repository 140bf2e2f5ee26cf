#include <gtest/gtest.h>

#include <Moxelcore/Registration/LandmarkRegistration2D.h>
#include <Moxelcore/Registration/LandmarkRegistration3D.h>

#include <limits>
#include <string>

#include "Registration/test/KnownTransformations.h"
#include "testing/RecordingInteraction.h"
#include "testing/Refusal.h"

namespace mox::registration {

namespace {

using namespace testing;
using mox::testing::refusalOf;

template <class T>
struct Kind;
// clang-format off
template <> struct Kind<Translation2D> { static constexpr int value = 0; };
template <> struct Kind<RigidTransformation2D> { static constexpr int value = 1; };
template <> struct Kind<AffineTransformation2D> { static constexpr int value = 2; };
template <> struct Kind<ProjectiveTransformation2D> { static constexpr int value = 3; };
template <> struct Kind<PolynomialOrder2Transformation2D> { static constexpr int value = 4; };
template <> struct Kind<PolynomialOrder3Transformation2D> { static constexpr int value = 5; };
template <> struct Kind<Translation3D> { static constexpr int value = 0; };
template <> struct Kind<RigidTransformation3D> { static constexpr int value = 1; };
template <> struct Kind<AffineTransformation3D> { static constexpr int value = 2; };
// clang-format on

/// A registration with what it needs.
template <class T>
struct Landmarks {
    static constexpr bool isIn2D = std::is_base_of_v<Transformation2D, T>;
    using Point = PointOf<T>;
    using Algorithm = std::conditional_t<isIn2D, LandmarkRegistration2D, LandmarkRegistration3D>;

    explicit Landmarks(Pairs<Point> const& pairs)
    {
        set(pairs);
        algorithm->data = &data;
        algorithm->model = &model;
        algorithm->transformationType = Kind<T>::value;
        algorithm->outputTransformation = &handler;
    }

    void set(Pairs<Point> const& pairs)
    {
        data.clear();
        model.clear();
        for (std::size_t i = 0; i < pairs.data.size(); ++i) {
            data.push_back(pairs.data[i]);
            model.push_back(pairs.model[i]);
        }
    }

    T const& run()
    {
        algorithm->run();
        return dynamic_cast<T const&>(*handler.get());
    }

    Vector<Point> data;
    Vector<Point> model;
    TransformationHandler<Transformation<Point>> handler;
    boost::shared_ptr<Algorithm> algorithm = Algorithm::New();
};

template <class T>
class LandmarkRegistration : public ::testing::Test {
};

using AllTransformations =
    ::testing::Types<Translation2D, RigidTransformation2D, AffineTransformation2D, ProjectiveTransformation2D,
                     PolynomialOrder2Transformation2D, PolynomialOrder3Transformation2D, Translation3D,
                     RigidTransformation3D, AffineTransformation3D>;
TYPED_TEST_SUITE(LandmarkRegistration, AllTransformations);

/// The fewest pairs of a robust fit.
template <class T>
std::size_t fewestOfRobustFit()
{
    std::size_t const wanted = 2 * T().getNumOfParameter() + 1;
    std::size_t const dimension = PointOf<T>().dim();
    return (wanted + dimension - 1) / dimension;
}

/// Moves the first pairs of the model far away, each to another place.
template <class Point>
void spoil(Pairs<Point>& pairs, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i) {
        double const turn = 2.4 * static_cast<double>(i);
        double const distance = 300.0 + 10.0 * static_cast<double>(i);
        pairs.model[i][0] += distance * std::cos(turn);
        pairs.model[i][1] += distance * std::sin(turn);
    }
}

template <class Algorithm>
void expectContract(Algorithm& algorithm)
{
    char const* const names[] = {"data",         "model",      "transformationType",  "robustEstimation",
                                 "outlierRatio", "confidence", "outputTransformation"};
    ASSERT_EQ(algorithm.getNumOfProperties(), 7U);
    for (unsigned int i = 0; i < 6; ++i) {
        EXPECT_STREQ(algorithm.getInputProperty(i)->getName().c_str(), names[i]);
    }
    EXPECT_STREQ(algorithm.getOutputProperty(0)->getName().c_str(), names[6]);
    EXPECT_EQ(algorithm.data.get(), nullptr);
    EXPECT_EQ(algorithm.model.get(), nullptr);
    EXPECT_EQ(algorithm.transformationType.get(), 0);
    EXPECT_FALSE(algorithm.robustEstimation);
    EXPECT_EQ(algorithm.outlierRatio, 0.2);
    EXPECT_EQ(algorithm.confidence, 0.99);
    EXPECT_EQ(algorithm.outputTransformation.get(), nullptr);
    EXPECT_STREQ(algorithm.transformationType.getEnumInfo().getEnumName().c_str(), "TransformationType");
}

TEST(LandmarkRegistrations, haveTheirProperties)
{
    expectContract(*LandmarkRegistration2D::New());
    expectContract(*LandmarkRegistration3D::New());
    EXPECT_EQ(LandmarkRegistration2D::New()->transformationType.getEnumInfo().size(), 6);
    EnumInfo const& in3D = LandmarkRegistration3D::New()->transformationType.getEnumInfo();
    EXPECT_EQ(in3D.size(), 3);
    EXPECT_EQ(in3D.getEnum("AFFINE"), LandmarkRegistration3D::AFFINE);
    Property<LandmarkRegistration3D::TransformationType> type;
    type = LandmarkRegistration3D::RIGID;
    EXPECT_EQ(type.get(), LandmarkRegistration3D::RIGID);
}

TEST(LandmarkRegistrations, refuseWhatTheirRulesTell)
{
    Landmarks<Translation2D> landmarks(exactPairs(Translation2D(), 5, 0));
    auto& algorithm = *landmarks.algorithm;
    auto const refusal = [&] {
        std::string const text = refusalOf(algorithm);
        EXPECT_EQ(landmarks.handler.get(), nullptr);
        return text;
    };
    algorithm.data = nullptr;
    EXPECT_TRUE(refusal().starts_with("#1 Error : Parameter value cannot be null"));
    algorithm.data = &landmarks.data;
    algorithm.model = nullptr;
    EXPECT_NE(refusal().find("Rule error in property model"), std::string::npos);
    algorithm.model = &landmarks.model;
    algorithm.outputTransformation = nullptr;
    EXPECT_NE(refusal().find("Rule error in property outputTransformation"), std::string::npos);
    algorithm.outputTransformation = &landmarks.handler;
    algorithm.transformationType = 6;
    EXPECT_TRUE(refusal().starts_with("#1 Error : The enumeration value is not valid"));
    algorithm.transformationType = 0;
    for (double const rate : {-1e-9, 1.0 + 1e-9, std::numeric_limits<double>::quiet_NaN()}) {
        algorithm.outlierRatio = rate;
        EXPECT_TRUE(refusal().starts_with("#1 Error : Parameter value must be in the range [0  1]"));
        algorithm.outlierRatio = 0.2;
        algorithm.confidence = rate;
        EXPECT_TRUE(refusal().starts_with("#1 Error : Parameter value must be in the range [0  1]"));
        algorithm.confidence = 0.99;
    }
    EXPECT_NO_THROW(landmarks.run());
}

TYPED_TEST(LandmarkRegistration, fitsAllPairs)
{
    auto const known = knownTransformation<TypeParam>(0);
    Landmarks<TypeParam> landmarks(exactPairs(known, 30, 0));
    EXPECT_LT(largestDifference(known, landmarks.run(), exactPairs(known, 30, 0).data), 1e-9);
}

TYPED_TEST(LandmarkRegistration, tellsTooFewPairs)
{
    auto const known = knownTransformation<TypeParam>(0);
    std::size_t const fewest = minimumOfPoints<TypeParam>;
    Landmarks<TypeParam> landmarks(exactPairs(known, fewest, 0));
    EXPECT_NO_THROW(landmarks.run());
    auto const* const before = landmarks.handler.get();
    landmarks.set(exactPairs(known, fewest - 1, 0));
    std::string const wanted = fewest == 1 ? "#1 Error : Bad points set the dimension is 0 "
                                           : "#1 Error : At least " + std::to_string(fewest) +
                                                 " points are needed, there are " + std::to_string(fewest - 1) + " ";
    EXPECT_TRUE(refusalOf(*landmarks.algorithm).starts_with(wanted)) << refusalOf(*landmarks.algorithm);
    EXPECT_EQ(landmarks.handler.get(), before);
}

TYPED_TEST(LandmarkRegistration, tellsTooFewPairsOfARobustFit)
{
    auto const known = knownTransformation<TypeParam>(0);
    std::size_t const fewest = fewestOfRobustFit<TypeParam>();
    Landmarks<TypeParam> landmarks(exactPairs(known, fewest, 0));
    landmarks.algorithm->robustEstimation = true;
    EXPECT_LT(largestDifference(known, landmarks.run(), exactPairs(known, 30, 0).data), 1e-4);
    landmarks.set(exactPairs(known, fewest - 1, 0));
    EXPECT_TRUE(refusalOf(*landmarks.algorithm)
                    .starts_with("#1 Error :  insufficient number of points. N=2*minNumOfPoint+1 points are needed. \n"
                                 "    (at \"RansacEstimator\", line "));
    landmarks.set({});
    EXPECT_TRUE(refusalOf(*landmarks.algorithm).starts_with("#1 Error : Bad points set the dimension is 0 "));
}

TYPED_TEST(LandmarkRegistration, rejectsGrossOutliers)
{
    auto const known = knownTransformation<TypeParam>(0);
    auto const clean = exactPairs(known, 60, 0);
    auto pairs = clean;
    spoil(pairs, 12);
    Landmarks<TypeParam> landmarks(pairs);
    double const apart = largestDifference(known, landmarks.run(), clean.data);
    EXPECT_GT(apart, 1.0) << "the pairs are no test of a robust fit";
    landmarks.algorithm->robustEstimation = true;
    landmarks.algorithm->outlierRatio = 0.25;
    EXPECT_LT(largestDifference(known, landmarks.run(), clean.data), 1e-7);
}

TYPED_TEST(LandmarkRegistration, repeatsItself)
{
    auto pairs = exactPairs(knownTransformation<TypeParam>(0), 40, 0);
    addNoise(pairs.model, 0.5, 3);
    spoil(pairs, 5);
    Landmarks<TypeParam> landmarks(pairs);
    landmarks.algorithm->robustEstimation = true;
    TypeParam const first = landmarks.run();
    TypeParam const second = landmarks.run();
    for (unsigned int i = 0; i < first.getNumOfParameter(); ++i) {
        EXPECT_EQ(first.getParam(i), second.getParam(i)) << i;
    }
}

TEST(RobustRegistration, standsUpTo45PercentOfOutliers)
{
    AffineTransformation2D const known = knownTransformation<AffineTransformation2D>(0);
    std::size_t const count = 40;
    for (unsigned int seed = 1; seed <= 200; ++seed) {
        auto const clean = exactPairs(known, count, seed % 2 == 0 ? 0.0 : 1e6, seed);
        auto pairs = clean;
        addNoise(pairs.model, 0.01, seed);
        std::size_t const outliers = seed % 19;
        spoil(pairs, outliers);
        Landmarks<AffineTransformation2D> landmarks(pairs);
        landmarks.algorithm->robustEstimation = true;
        landmarks.algorithm->outlierRatio = 0.45;
        EXPECT_LT(largestDifference(known, landmarks.run(), clean.data), 0.06) << seed;
    }
}

/// Seen from any right pair, half of the right ones are at 0 and half at 1: the median is 1, and so is the median of
/// the deviations, which makes all of them inliers.
TEST(RobustRegistration, isTheFitOfTheInliersAlone)
{
    Pairs<Point2D> pairs = exactPairs(Translation2D(), 30, 0);
    for (std::size_t i = 0; i < pairs.model.size(); ++i) {
        pairs.model[i][0] += i % 2 == 0 ? 0.5 : -0.5;
    }
    spoil(pairs, 4);
    Landmarks<Translation2D> landmarks(pairs);
    landmarks.algorithm->robustEstimation = true;
    Point2D const robust = landmarks.run().getTranslation();
    PointPairs<Point2D> const good{pairs.data.data() + 4, pairs.model.data() + 4, 26};
    EXPECT_LT((fit<Translation2D>(good)->getTranslation() - robust).length(), 1e-12);
    EXPECT_LT(robust.length(), 1e-12);
}

TEST(RobustRegistration, takesPairsThatAreNotFiniteForOutliers)
{
    auto const known = knownTransformation<AffineTransformation2D>(0);
    auto const clean = exactPairs(known, 30, 0);
    auto pairs = clean;
    pairs.model[3][0] = std::numeric_limits<double>::quiet_NaN();
    pairs.model[4][1] = std::numeric_limits<double>::infinity();
    pairs.data[5][0] = -std::numeric_limits<double>::infinity();
    Landmarks<AffineTransformation2D> landmarks(pairs);
    EXPECT_TRUE(
        refusalOf(*landmarks.algorithm).starts_with("#1 Error : The points do not determine the transformation "));
    landmarks.algorithm->robustEstimation = true;
    EXPECT_LT(largestDifference(known, landmarks.run(), clean.data), 1e-9);
}

TEST(RobustRegistration, failsWhereSamplesHaveNoFit)
{
    Pairs<Point2D> pairs;
    for (int i = 0; i < 20; ++i) {
        pairs.data.emplace_back(i, 2 * i);
        pairs.model.emplace_back(i, i);
    }
    Landmarks<AffineTransformation2D> landmarks(pairs);
    landmarks.algorithm->robustEstimation = true;
    EXPECT_TRUE(refusalOf(*landmarks.algorithm)
                    .starts_with("#1 Error : random sampling failed. \n    (at \"RansacEstimator\", line "));
    EXPECT_EQ(landmarks.handler.get(), nullptr);
}

/// Two opposite corners of a square that doubles leave the smallest median, a residual of 1 at each corner: all are
/// equally far from where they should be, so that none is an inlier.
TEST(RobustRegistration, failsWithoutInliers)
{
    Pairs<Point2D> pairs;
    pairs.data = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    pairs.model = {{2, 0}, {0, 2}, {-2, 0}, {0, -2}};
    Landmarks<RigidTransformation2D> landmarks(pairs);
    landmarks.algorithm->robustEstimation = true;
    EXPECT_TRUE(refusalOf(*landmarks.algorithm).starts_with("#1 Error : random sampling failed. "));
}

TEST(RobustRegistration, takesRatesAtTheirEnds)
{
    auto const known = knownTransformation<Translation2D>(0);
    auto const pairs = exactPairs(known, 10, 0);
    Landmarks<Translation2D> landmarks(pairs);
    landmarks.algorithm->robustEstimation = true;
    landmarks.algorithm->outlierRatio = 0.0;
    EXPECT_LT(largestDifference(known, landmarks.run(), pairs.data), 1e-9);
    landmarks.algorithm->outlierRatio = 0.2;
    landmarks.algorithm->confidence = 0.0;
    EXPECT_LT(largestDifference(known, landmarks.run(), pairs.data), 1e-9);
}

TEST(LandmarkRegistrations, refuseListsOfDifferentLengths)
{
    Landmarks<Translation2D> landmarks(exactPairs(Translation2D(), 5, 0));
    landmarks.model.push_back({0, 0});
    for (bool const robust : {false, true}) {
        landmarks.algorithm->robustEstimation = robust;
        EXPECT_TRUE(
            refusalOf(*landmarks.algorithm).starts_with("#1 Error : There are 5 data points and 6 model points "));
    }
    EXPECT_EQ(landmarks.handler.get(), nullptr);
}

TEST(LandmarkRegistrations, leaveTheHandlerAloneWhenCancelled)
{
    auto const pairs = exactPairs(knownTransformation<PolynomialOrder3Transformation2D>(0), 500, 0);
    Landmarks<PolynomialOrder3Transformation2D> landmarks(pairs);
    landmarks.algorithm->robustEstimation = true;
    landmarks.algorithm->confidence = 1.0; // a million samples, if it were not cancelled
    mox::testing::RecordingInteraction interaction;
    interaction.cancelAtPoll = 1;
    landmarks.algorithm->run(&interaction);
    EXPECT_EQ(landmarks.handler.get(), nullptr);
    landmarks.algorithm->confidence = 0.99;
    EXPECT_NO_THROW(landmarks.run());
}

/// Ten million samples of points on a line, none of which has a fit.
TEST(LandmarkRegistrations, areCancelledAmongSamplesWithoutFit)
{
    Pairs<Point2D> pairs;
    for (int i = 0; i < 20; ++i) {
        pairs.data.emplace_back(i, 2 * i);
    }
    pairs.model = pairs.data;
    Landmarks<AffineTransformation2D> landmarks(pairs);
    landmarks.algorithm->robustEstimation = true;
    landmarks.algorithm->confidence = 1.0;
    mox::testing::RecordingInteraction interaction;
    interaction.cancelAtPoll = 1;
    EXPECT_NO_THROW(landmarks.algorithm->run(&interaction));
    EXPECT_EQ(landmarks.handler.get(), nullptr);
}

} // namespace

} // namespace mox::registration

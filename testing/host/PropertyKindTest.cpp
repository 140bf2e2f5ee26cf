#include "apps/moxel/PropertyKind.h"

#include <Moxelcore/Morphology/PropertyMorphologicalLut.h>

#include <gmock/gmock.h>

#include "apps/moxel/Errors.h"
#include "testing/host/HostAlgorithm.h"

namespace moxel::testing {
namespace {

class PropertyKindOf : public ::testing::Test {
protected:
    std::unique_ptr<PropertyBinding> bind(mox::BaseProperty& property, std::string const& text)
    {
        return kindOf(property).bind(property, text, {});
    }

    boost::shared_ptr<HostAlgorithm> algorithm_ = HostAlgorithm::New();
};

TEST_F(PropertyKindOf, Names)
{
    auto const nameOf = [](mox::BaseProperty const& property) { return kindOf(property).typeName(property); };
    EXPECT_EQ(nameOf(algorithm_->input), "image");
    EXPECT_EQ(nameOf(algorithm_->mode), "DecimationOp");
    EXPECT_EQ(nameOf(algorithm_->flag), "bool");
    EXPECT_EQ(nameOf(algorithm_->count), "int32");
    EXPECT_EQ(nameOf(algorithm_->large), "uint64");
    EXPECT_EQ(nameOf(algorithm_->label), "text");
    EXPECT_EQ(nameOf(algorithm_->lut), "list of uint8");
    EXPECT_EQ(nameOf(algorithm_->centre), "vector of 3 double");
    EXPECT_EQ(nameOf(algorithm_->points), "list of vector of 2 int32");
    EXPECT_EQ(nameOf(algorithm_->transform), "3 x 3 matrix of double");
    EXPECT_EQ(nameOf(algorithm_->output), "image");
}

TEST_F(PropertyKindOf, ValuesAreSet)
{
    bind(algorithm_->mode, "MAX");
    bind(algorithm_->flag, "false");
    bind(algorithm_->count, "-7");
    bind(algorithm_->large, "9007199254740993");
    bind(algorithm_->label, "a = b");
    bind(algorithm_->lut, "0,1,4,9");
    bind(algorithm_->centre, "0:1:2");
    EXPECT_EQ(algorithm_->mode.get(), 2);
    EXPECT_FALSE(algorithm_->flag.get());
    EXPECT_EQ(algorithm_->count.get(), -7);
    EXPECT_EQ(algorithm_->large.get(), 9007199254740993U);
    EXPECT_STREQ(algorithm_->label.get().c_str(), "a = b");
    EXPECT_EQ(algorithm_->lut.get()[3], 9);
    EXPECT_EQ(algorithm_->centre.get(), mox::math::Vector3<double>(0, 1, 2));
}

TEST_F(PropertyKindOf, ARefusedTextChangesNothing)
{
    EXPECT_THROW(bind(algorithm_->count, "12abc"), UsageError);
    EXPECT_THROW(bind(algorithm_->mode, "7"), UsageError);
    EXPECT_THROW(bind(algorithm_->lut, "1,256"), UsageError);
    EXPECT_EQ(algorithm_->count.get(), -3);
    EXPECT_EQ(algorithm_->mode.get(), 1);
    EXPECT_EQ(algorithm_->lut.get().size(), 0U);
}

TEST_F(PropertyKindOf, PointersLeadIntoTheBinding)
{
    auto const binding = bind(algorithm_->points, "1:0,0:1");
    ASSERT_NE(binding, nullptr);
    auto const* const points = algorithm_->points.get();
    ASSERT_NE(points, nullptr);
    EXPECT_EQ((*points)[1], mox::math::Vector2<int>(0, 1));
}

TEST_F(PropertyKindOf, ResultsGetAPlace)
{
    PropertyKind const& kind = kindOf(algorithm_->extrema);
    EXPECT_EQ(kind.text(algorithm_->extrema), "none");
    EXPECT_EQ(kind.json(algorithm_->extrema), Json());
    auto const binding = kind.prepareResult(algorithm_->extrema);
    algorithm_->extrema.get()->push_back({1.5, 2});
    EXPECT_EQ(kind.text(algorithm_->extrema), "1.5:2");
    EXPECT_EQ(kind.json(algorithm_->extrema), Json::parse("[[1.5, 2.0]]"));
}

TEST_F(PropertyKindOf, ValuesHaveTwoForms)
{
    EXPECT_EQ(kindOf(algorithm_->mode).text(algorithm_->mode), "MIN");
    EXPECT_EQ(kindOf(algorithm_->mode).json(algorithm_->mode), Json("MIN"));
    EXPECT_EQ(kindOf(algorithm_->large).json(algorithm_->large), Json(18446744073709551615U));
    EXPECT_EQ(kindOf(algorithm_->moments).text(algorithm_->moments), "1:0,0:1");
    algorithm_->mode = 9;
    EXPECT_EQ(kindOf(algorithm_->mode).text(algorithm_->mode), "9");
}

TEST_F(PropertyKindOf, SomeHaveNoText)
{
    EXPECT_EQ(kindOf(algorithm_->transform).bind, nullptr);
    EXPECT_EQ(kindOf(algorithm_->output).text, nullptr);
}

TEST_F(PropertyKindOf, LookUpTablesAreReadByTheirProperty)
{
    mox::morphology::PropertyMorphologicalLut3D table;
    EXPECT_EQ(kindOf(table).typeName(table), "look-up table");
    EXPECT_EQ(kindOf(table).text(table), "empty");
    bind(table, "3 5");
    EXPECT_TRUE((*table.get())[5]);
    EXPECT_EQ(kindOf(table).json(table), Json("134217728 entries"));
    EXPECT_THROW(bind(table, "x"), UsageError);
    mox::morphology::PropertyMorphologicalLut2D plane;
    EXPECT_EQ(kindOf(plane).typeName(plane), "look-up table");
    EXPECT_THROW(bind(plane, "01"), UsageError);
}

class StrangeProperty final : public mox::BaseProperty {
public:
    void applyRules() override {}
    mox::String getName() const override { return "strange"; }
    bool read(mox::String const&, mox::String&) override { return false; }
};

TEST_F(PropertyKindOf, AnUnknownTypeCanDoNothing)
{
    StrangeProperty const property;
    EXPECT_EQ(kindOf(property).typeName(property), "unknown");
    EXPECT_EQ(kindOf(property).bind, nullptr);
    EXPECT_EQ(kindOf(property).json, nullptr);
}

} // namespace
} // namespace moxel::testing

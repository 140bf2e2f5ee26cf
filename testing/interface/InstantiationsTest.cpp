#include <Moxelcore/Moxelcore.h>

#include <gtest/gtest.h>

// The sequences and properties that an application finds in the library. Their members are defined nowhere else: the
// tests would not link if one were missing.

namespace mox::testing {

namespace {

using math::Matrix2;
using math::Matrix3;
using math::Vector2;
using math::Vector3;
using math::Vector4;

template <class T>
void expectSequence()
{
    Vector<T> vector(1);
    vector.reserve(2);
    vector.resize(2);
    vector.push_back(T());
    Vector<T> const copy(vector);
    EXPECT_EQ(copy.end() - copy.begin(), 3);
    EXPECT_EQ(vector.end() - vector.begin(), 3);
    EXPECT_EQ(copy.data(), &copy[0]);
    EXPECT_EQ(vector.data(), &vector[0]);
    EXPECT_TRUE(copy == vector);
    vector.clear();
    EXPECT_TRUE(vector.empty());
    EXPECT_TRUE(copy != vector);
    vector = copy;
    EXPECT_EQ(vector.size(), 3U);
}

template <class... T>
void expectSequences()
{
    (expectSequence<T>(), ...);
}

template <class T>
void expectProperty()
{
    Property<T> property;
    property.set(T());
    property = property.get();
    property.applyRules();
    Property<T> copy(property);
    copy = property;
    BaseProperty& base = copy;
    String echo;
    EXPECT_STREQ(base.getName().c_str(), "");
    base.lock(true);
    EXPECT_FALSE(base.read("1", echo));
    EXPECT_EQ(dynamic_cast<Property<T>*>(&base), &copy);
}

template <class... T>
void expectProperties()
{
    (expectProperty<T>(), ...);
}

template <class... T>
void expectPropertiesOfPointLists()
{
    (expectProperties<Vector<T>*, Vector<T> const*>(), ...);
}

TEST(Instantiations, holdTheSequences)
{
    expectSequences<unsigned char, int, unsigned int, int64, uint64, double, segmentation::TextureFeatureTypes>();
    expectSequences<Vector2<int>, Vector2<unsigned int>, Vector2<int64>, Vector2<uint64>, Vector2<double>>();
    expectSequences<Vector3<int>, Vector3<unsigned int>, Vector3<int64>, Vector3<uint64>, Vector3<double>>();
    expectSequences<Vector4<int>, Vector4<unsigned int>, Vector4<int64>, Vector4<uint64>, Vector4<double>>();
}

TEST(Instantiations, holdThePropertiesOfNumbersTextsAndImages)
{
    expectProperties<bool, int, unsigned int, int64, uint64, double, String>();
    expectProperties<ImageModel*, ImageModel const*>();
}

TEST(Instantiations, holdThePropertiesOfSequences)
{
    expectProperties<Vector<unsigned char>, Vector<int>, Vector<unsigned int>, Vector<int64>, Vector<uint64>,
                     Vector<double>, Vector<Vector2<int>>>();
}

TEST(Instantiations, holdThePropertiesOfPointLists)
{
    expectPropertiesOfPointLists<Vector2<int>, Vector2<unsigned int>, Vector2<int64>, Vector2<uint64>,
                                 Vector2<double>>();
    expectPropertiesOfPointLists<Vector3<int>, Vector3<unsigned int>, Vector3<int64>, Vector3<uint64>,
                                 Vector3<double>>();
    expectPropertiesOfPointLists<Vector4<int>, Vector4<unsigned int>, Vector4<int64>, Vector4<uint64>,
                                 Vector4<double>>();
}

TEST(Instantiations, holdThePropertiesOfMathValues)
{
    expectProperties<Vector2<int>, Vector2<unsigned int>, Vector2<int64>, Vector2<uint64>, Vector2<double>>();
    expectProperties<Vector3<int>, Vector3<unsigned int>, Vector3<int64>, Vector3<uint64>, Vector3<double>>();
    expectProperties<Vector4<int>, Vector4<unsigned int>, Vector4<int64>, Vector4<uint64>, Vector4<double>>();
    expectProperties<Matrix2<float>, Matrix2<double>, Matrix3<float>, Matrix3<double>>();
}

TEST(Instantiations, holdTheEnumerationProperty)
{
    PropertyEnumeration property;
    PropertyEnumeration copy(property);
    copy = property;
    copy = 3;
    BaseProperty& base = property;
    EXPECT_EQ(dynamic_cast<PropertyEnumeration*>(&base), &property);
    EXPECT_EQ(dynamic_cast<Property<int>*>(&base), &property);
    EXPECT_EQ(property.get(), 3);
}

template <class P, class Lut>
void expectTableProperty()
{
    P property;
    P copy(property);
    copy = property;
    Lut lut;
    copy = &lut;
    BaseProperty& base = property;
    EXPECT_EQ(dynamic_cast<P*>(&base), &property);
    EXPECT_EQ(dynamic_cast<Property<Lut*>*>(&base), &property);
    EXPECT_EQ(property.get(), &lut);
}

TEST(Instantiations, holdThePropertiesOfRegistration)
{
    expectProperties<geometry::Transformation2DHandler*, geometry::Transformation3DHandler*>();
    expectProperties<registration::LandmarkRegistration3D::TransformationType>();
}

TEST(Instantiations, holdThePropertiesOfLookUpTables)
{
    using namespace morphology;
    expectProperties<MorphologicalLut2D*, MorphologicalLut3D*>();
    expectTableProperty<PropertyMorphologicalLut2D, MorphologicalLut2D>();
    expectTableProperty<PropertyMorphologicalLut3D, MorphologicalLut3D>();
}

} // namespace

} // namespace mox::testing

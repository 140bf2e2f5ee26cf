// Registers two photographs of a rock arch from landmarks that were picked by eye. Two of them are wrong: a bush was
// taken for another, and a crevice. The robust fit finds out which.

#include <Moxelcore/Moxelcore.h>

#include <iostream>

namespace {

using Point = mox::math::Vector2<double>;

struct Landmark {
    char const* what;
    Point inA;
    Point inB;
    bool isWrong = false;
};

Landmark const landmarks[] = {{"fork of the tree", {390, 565}, {279.3, 555.5}},
                              {"bush by the shadow", {267, 603}, {158, 598}},
                              {"light bush", {315, 684}, {204, 677}},
                              {"round bush", {360, 691}, {247, 680.6}},
                              {"foot of the ridge", {219, 246}, {118, 236}},
                              {"crevice in the ridge", {305, 241}, {206.5, 238}},
                              {"corner of the opening", {293, 487}, {187, 482}},
                              {"end of the crack", {409, 299.6}, {302, 300.4}},
                              {"pillar by the grass", {425, 575}, {310, 565}},
                              {"streak above the shadow", {250, 484}, {143, 479.5}},
                              {"step of the skyline", {430, 97}, {328, 107}},
                              {"white spot", {437, 395}, {325.8, 393.2}},
                              {"small bush, taken for the light one", {343, 676}, {204, 677}, true},
                              {"ledge, taken for a crevice", {305, 160}, {466, 262}, true}};

constexpr double far = 10.0;

double distance(mox::geometry::Transformation2D const& transformation, Landmark const& landmark)
{
    Point point = landmark.inA;
    transformation.map(point);
    return (point - landmark.inB).length();
}

} // namespace

int main()
{
    mox::Vector<Point> inA;
    mox::Vector<Point> inB;
    for (Landmark const& landmark : landmarks) {
        inA.push_back(landmark.inA);
        inB.push_back(landmark.inB);
    }
    mox::geometry::Transformation2DHandler result;
    auto const registration = mox::registration::LandmarkRegistration2D::New();
    registration->data = &inA;
    registration->model = &inB;
    registration->transformationType = mox::registration::TransformationType::PROJECTIVE;
    registration->robustEstimation = true;
    registration->outputTransformation = &result;
    registration->run();

    bool isRight = true;
    for (Landmark const& landmark : landmarks) {
        double const apart = distance(*result.get(), landmark);
        std::cout << landmark.what << ": " << apart << (apart > far ? ", rejected\n" : "\n");
        isRight = isRight && (apart > far) == landmark.isWrong;
    }
    return isRight ? 0 : 1;
}

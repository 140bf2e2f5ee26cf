#include <Moxelcore/Registration/LandmarkRegistration3D.h>

#include "Core/private/PropertyDefinitions.h"
#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleInRange.h"
#include "Core/private/declare.h"
#include "Core/private/runners.h"
#include "Registration/private/registerLandmarks.h"

namespace mox {

template class Property<registration::LandmarkRegistration3D::TransformationType>;

template <>
EnumInfo const& getEnumInfo<registration::LandmarkRegistration3D::TransformationType>()
{
    static EnumInfo const info("TRANSLATION = 0, RIGID, AFFINE", "TransformationType");
    return info;
}

namespace registration {

namespace {

/// By transformation type.
constexpr void (*estimators[])(LandmarkRegistration3D&) = {
    &registerLandmarks<geometry::Translation3D, LandmarkRegistration3D>,
    &registerLandmarks<geometry::RigidTransformation3D, LandmarkRegistration3D>,
    &registerLandmarks<geometry::AffineTransformation3D, LandmarkRegistration3D>};

class ScalarLandmarkRegistration3DRunner final : public ScalarRunner<LandmarkRegistration3D> {
private:
    void execute(LandmarkRegistration3D& algorithm) const override
    {
        estimators[algorithm.transformationType](algorithm);
    }
};

Registration<LandmarkRegistration3D, ScalarLandmarkRegistration3DRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(LandmarkRegistration3D)

void LandmarkRegistration3D::init()
{
    declareInput(data, "data", nullptr, rule<RuleAssertNotNull>());
    declareInput(model, "model", nullptr, rule<RuleAssertNotNull>());
    declareInput(transformationType, "transformationType", TransformationType::TRANSLATION,
                 isAnEnumOf<TransformationType>());
    declareInput(robustEstimation, "robustEstimation", false);
    declareInput(outlierRatio, "outlierRatio", 0.2, rule<RuleInRange>(0.0, 1.0));
    declareInput(confidence, "confidence", 0.99, rule<RuleInRange>(0.0, 1.0));
    declareOutput(outputTransformation, "outputTransformation", nullptr, rule<RuleAssertNotNull>());
}

AlgoBorderInfluence LandmarkRegistration3D::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace registration
} // namespace mox

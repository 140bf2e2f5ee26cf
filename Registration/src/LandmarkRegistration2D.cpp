#include <Moxelcore/Registration/LandmarkRegistration2D.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleInRange.h"
#include "Core/private/declare.h"
#include "Core/private/runners.h"
#include "Registration/private/registerLandmarks.h"

namespace mox::registration {

namespace {

/// By transformation type.
constexpr void (*estimators[])(LandmarkRegistration2D&) = {
    &registerLandmarks<geometry::Translation2D, LandmarkRegistration2D>,
    &registerLandmarks<geometry::RigidTransformation2D, LandmarkRegistration2D>,
    &registerLandmarks<geometry::AffineTransformation2D, LandmarkRegistration2D>,
    &registerLandmarks<geometry::ProjectiveTransformation2D, LandmarkRegistration2D>,
    &registerLandmarks<geometry::PolynomialOrder2Transformation2D, LandmarkRegistration2D>,
    &registerLandmarks<geometry::PolynomialOrder3Transformation2D, LandmarkRegistration2D>};

class ScalarLandmarkRegistration2DRunner final : public ScalarRunner<LandmarkRegistration2D> {
private:
    void execute(LandmarkRegistration2D& algorithm) const override
    {
        estimators[algorithm.transformationType](algorithm);
    }
};

Registration<LandmarkRegistration2D, ScalarLandmarkRegistration2DRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(LandmarkRegistration2D)

void LandmarkRegistration2D::init()
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

AlgoBorderInfluence LandmarkRegistration2D::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::registration

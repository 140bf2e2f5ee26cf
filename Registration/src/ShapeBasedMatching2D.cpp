#include <Moxelcore/Registration/ShapeBasedMatching2D.h>

#include <algorithm>
#include <optional>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertSameSize.h"
#include "Core/private/Rules/RuleAssertSameType.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/declare.h"
#include "Core/private/runners.h"
#include "Registration/private/ShapeBasedMatching/Pyramid.h"
#include "Registration/private/ShapeBasedMatching/ShapeMatcher.h"
#include "Registration/private/ShapeBasedMatching/Steps.h"

namespace mox::registration {

using miscellaneous::DecimationOp;

namespace {

constexpr int windowSize = 10;

struct Match {
    BestPosition position;
    double rotation = 0.0;
    double scale = 1.0;
};

struct Candidates {
    explicit Candidates(ShapeBasedMatching2D const& algorithm)
        : scales(algorithm.scaleBegin, algorithm.scaleEnd, algorithm.scaleStep)
        , rotations(algorithm.rotationBegin, algorithm.rotationEnd, algorithm.rotationStep)
    {
    }

    Steps scales;
    Steps rotations;
};

/// Levels beyond one of a single voxel change nothing.
unsigned int usefulLevels(ImageModel const& image, unsigned int numOfLevels)
{
    unsigned int size = std::max(image.getSize(COLUMNS), image.getSize(ROWS));
    unsigned int useful = 1;
    for (; size > 1; size = size / 2 + size % 2) {
        ++useful;
    }
    return std::min(numOfLevels, useful);
}

access::Region plane(access::Region::Range rows, access::Region::Range columns)
{
    return {rows, columns, {0, 1}, {0, 1}, {0, 1}};
}

/// From 5 voxels before twice a position on, clipped to an image.
access::Region::Range windowAround(int position, unsigned int size)
{
    int const begin = 2 * position - windowSize / 2;
    return {static_cast<unsigned int>(std::max(begin, 0)),
            std::min(static_cast<unsigned int>(begin + windowSize), size)};
}

class ShapeSearch {
public:
    ShapeSearch(ShapeBasedMatching2D& algorithm, unsigned int numOfLevels)
        : algorithm_(algorithm)
        , candidates_(algorithm)
        , numOfLevels_(numOfLevels)
        , inputX_(*algorithm.inputGradientX.get(), DecimationOp::MEAN, numOfLevels)
        , inputY_(*algorithm.inputGradientY.get(), DecimationOp::MEAN, numOfLevels)
        , templateX_(*algorithm.templateGradientX.get(), DecimationOp::MEAN, numOfLevels)
        , templateY_(*algorithm.templateGradientY.get(), DecimationOp::MEAN, numOfLevels)
    {
        if (algorithm.mask.get() != nullptr) {
            mask_.emplace(*algorithm.mask.get(), DecimationOp::MAX, numOfLevels);
        }
    }

    /// Nothing when the run is cancelled.
    std::optional<Match> run()
    {
        unsigned int level = numOfLevels_ - 1;
        ImageModel const& coarsest = inputX_.getLevel(level);
        access::Region region = plane({0, coarsest.getSize(ROWS)}, {0, coarsest.getSize(COLUMNS)});
        filters::PassSequence pass(&algorithm_, work(region));
        Match match = bestIn(region, level, pass);
        while (level > 0 && !pass.isStopped()) {
            --level;
            ImageModel const& image = inputX_.getLevel(level);
            region = plane(windowAround(match.position.y, image.getSize(ROWS)),
                           windowAround(match.position.x, image.getSize(COLUMNS)));
            match = bestIn(region, level, pass);
        }
        return pass.isStopped() ? std::nullopt : std::optional(match);
    }

private:
    /// Positions to score, all candidates and levels together.
    uint64 work(access::Region const& coarsest) const
    {
        auto const numOfCandidates =
            static_cast<double>(candidates_.scales.count()) * static_cast<double>(candidates_.rotations.count());
        uint64 const inWindows = uint64{windowSize} * windowSize * (numOfLevels_ - 1);
        return helper::saturate<uint64>(numOfCandidates * static_cast<double>(coarsest.numOfVoxels() + inWindows));
    }

    /// The first scale, then the first rotation, that reach the best score.
    Match bestIn(access::Region const& region, unsigned int level, filters::PassSequence& pass) const
    {
        GradientPlane const gradients(inputX_.getLevel(level), inputY_.getLevel(level));
        Shape const shape = maskToShape(templateX_.getLevel(level), templateY_.getLevel(level),
                                        mask_ ? &mask_->getLevel(level) : nullptr);
        std::vector<PlacedPoint> points;
        Match best;
        for (uint64 s = 0; s < candidates_.scales.count() && !pass.isStopped(); ++s) {
            for (uint64 r = 0; r < candidates_.rotations.count() && !pass.isStopped(); ++r) {
                double const scale = candidates_.scales[s];
                double const rotation = candidates_.rotations[r];
                shape.place(Rotation(rotation), scale, gradients.columns(), gradients.rows(), points);
                BestPosition const found = bestPosition(gradients, points, region, pass);
                if (found.score > best.position.score) {
                    best = {found, rotation, scale};
                }
            }
        }
        return best;
    }

    BestPosition bestPosition(GradientPlane const& gradients, std::vector<PlacedPoint> const& points,
                              access::Region const& region, filters::PassSequence& pass) const
    {
        bool const isAbsolute = algorithm_.similarityMeasure == SIMILARITY_MEASURE::NORMALIZED_ABS;
        ShapeScore const score(gradients, points, isAbsolute ? ShapeScore::Sign::dropped : ShapeScore::Sign::kept);
        return ShapeMatcher(pass).run(score, region);
    }

    ShapeBasedMatching2D& algorithm_;
    Candidates candidates_;
    unsigned int numOfLevels_;
    Pyramid inputX_;
    Pyramid inputY_;
    Pyramid templateX_;
    Pyramid templateY_;
    std::optional<Pyramid> mask_;
};

class ShapeBasedMatchingRunner final : public ScalarRunner<ShapeBasedMatching2D> {
private:
    void execute(ShapeBasedMatching2D& algorithm) const override
    {
        ShapeSearch search(algorithm, usefulLevels(*algorithm.inputGradientX.get(), algorithm.numOfLevel));
        if (auto const match = search.run()) {
            auto const centre = centreOf(*algorithm.templateGradientX.get());
            auto const moved = Rotation(match->rotation).turned(centre) * match->scale;
            PropertyAccess::write(algorithm.outputTx, match->position.x - moved[0]);
            PropertyAccess::write(algorithm.outputTy, match->position.y - moved[1]);
            PropertyAccess::write(algorithm.outputScale, match->scale);
            PropertyAccess::write(algorithm.outputRotation, match->rotation);
        }
    }
};

Registration<ShapeBasedMatching2D, ShapeBasedMatchingRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(ShapeBasedMatching2D)

void ShapeBasedMatching2D::init()
{
    declareInput(inputGradientX, "inputGradientX", nullptr, rule<RuleAssertNotNull>(),
                 rule<RuleAssertType>(RealVoxels()));
    declareInput(inputGradientY, "inputGradientY", nullptr, rule<RuleAssertNotNull>(),
                 rule<RuleAssertSameType>(inputGradientX), rule<RuleAssertSameSize>(inputGradientX));
    declareInput(templateGradientX, "templateGradientX", nullptr, rule<RuleAssertNotNull>(),
                 rule<RuleAssertType>(RealVoxels()));
    declareInput(templateGradientY, "templateGradientY", nullptr, rule<RuleAssertNotNull>(),
                 rule<RuleAssertSameType>(templateGradientX), rule<RuleAssertSameSize>(templateGradientX));
    declareInput(numOfLevel, "numOfLevel", 4U);
    declareInput(similarityMeasure, "similarityMeasure", SIMILARITY_MEASURE::NORMALIZED,
                 isAnEnumOf<SIMILARITY_MEASURE>());
    declareInput(mask, "mask", nullptr, ruleWhenGiven<RuleAssertType>(RealVoxels()),
                 ruleWhenGiven<RuleAssertSameSize>(templateGradientX));
    declareInput(rotationBegin, "rotationBegin", 0.0);
    declareInput(rotationEnd, "rotationEnd", 360.0);
    declareInput(rotationStep, "rotationStep", 10.0);
    declareInput(scaleBegin, "scaleBegin", 0.5);
    declareInput(scaleEnd, "scaleEnd", 1.8);
    declareInput(scaleStep, "scaleStep", 0.1);
    declareOutput(outputTx, "outputTx", 0.0);
    declareOutput(outputTy, "outputTy", 0.0);
    declareOutput(outputScale, "outputScale", 1.0);
    declareOutput(outputRotation, "outputRotation", 0.0);
}

AlgoBorderInfluence ShapeBasedMatching2D::getAlgoBorderInfluence() const
{
    return {0, 0, 0, 0, 0};
}

} // namespace mox::registration

#include <Moxelcore/Miscellaneous/Decimate2D.h>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/access/ContinueBorderCondition.h"
#include "Core/private/declare.h"
#include "Core/private/filters/ManyToManyImageFilter.h"
#include "Core/private/filters/fixedView.h"
#include "Core/private/runners.h"
#include "Miscellaneous/private/DecimateBody2D.h"
#include "Miscellaneous/private/RuleEnforceDerivedSize.h"

namespace mox::miscellaneous {

namespace {

unsigned int half(unsigned int size)
{
    return size / 2 + size % 2;
}

access::Sizes halved(ImageModel const& input, ImageModel const&)
{
    access::Sizes sizes = access::Sizes::of(input);
    sizes.columns = half(sizes.columns);
    sizes.rows = half(sizes.rows);
    return sizes;
}

template <class T>
DecimateBody2D<T> bodyOf(int operatorType, filters::Store store)
{
    switch (operatorType) {
    case DecimationOp::MIN:
        return DecimateBody2D<T>(tag_min(), store);
    case DecimationOp::MAX:
        return DecimateBody2D<T>(tag_max(), store);
    case DecimationOp::FIRST:
        return DecimateBody2D<T>(tag_first(), store);
    default:
        return DecimateBody2D<T>(tag_mean(), store);
    }
}

struct Decimate2DScalarDispatcher {
    template <class T>
    static void run(Decimate2D& algorithm)
    {
        using Arch = SimdVec::arch_scalar_tag;
        using Body = DecimateBody2D<T>;
        // An input larger than the cache leaves nothing of the output in it.
        auto const store = filters::storeFor(access::Sizes::of(*algorithm.input.get()).numOfVoxels() * sizeof(T));
        Body const body = bodyOf<T>(algorithm.operatorType, store);
        ManyToManyImageFilter2d<TypeVector<T>, TypeVector<T>, Arch, Body> filter(&algorithm, body);
        filter.addInput(boost::make_shared<ArchView<T, Arch>>(*algorithm.input.get(),
                                                              access::ContinueBorderCondition<T>::create()));
        filter.addOutput(fixedView<T, Arch>(*algorithm.output.get()));
        filter.setRegion(access::Sizes::of(*algorithm.output.get()));
        filter.run();
    }
};

using ScalarDecimate2DRunner = ScalarOneTypeRunner<Decimate2D, Decimate2DScalarDispatcher, RealVoxels>;
Registration<Decimate2D, ScalarDecimate2DRunner> const registration;

} // namespace

MOX_DEFINE_ALGORITHM(Decimate2D)

void Decimate2D::init()
{
    declareInput(input, "input", nullptr, rule<RuleAssertNotNull>(), rule<RuleAssertType>(RealVoxels()));
    declareInput(operatorType, "operatorType", DecimationOp::MEAN, isAnEnumOf<DecimationOp>());
    declareOutput(output, "output", nullptr, rule<RuleAssertNotNull>(), rule<RuleEnforceDerivedSize>(input, halved));
}

AlgoBorderInfluence Decimate2D::getAlgoBorderInfluence() const
{
    return {0, 1, 0, 1, 0, 0, 0, 0, 0, 0};
}

} // namespace mox::miscellaneous

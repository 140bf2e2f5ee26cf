#pragma once

#include <Moxelcore/Core/InMemoryImage.h>

#include <array>
#include <string>

#include "Core/private/Rules/RuleAssertNotNull.h"
#include "Core/private/Rules/RuleAssertType.h"
#include "Core/private/Rules/RuleEnforceSameInterpretation.h"
#include "Core/private/Rules/RuleEnforceSameSizeCalibrationAndType.h"
#include "Core/private/access/copyVoxels.h"
#include "Core/private/declare.h"
#include "Core/private/filters/ManyToManyImageFilter.h"
#include "Core/private/filters/fixedView.h"
#include "Core/private/runners.h"
#include "Morphology/private/ApplyMorphoLutGeneric.h"

// What applying a look-up table in the plane and in space have in common.

namespace mox::morphology {

/// The table must have its entries.
template <class LutPointer>
class RuleAssertLutSize final : public Rules<LutPointer> {
public:
    void apply(PropertyValue<LutPointer>& property) override
    {
        unsigned int const wanted = std::remove_pointer_t<LutPointer>::fullSize;
        unsigned int const size = property.value != nullptr ? property.value->size() : 0;
        if (size < wanted) {
            helper::raise<RuleException>("Morphology/private/RuleAssertLutSize",
                                         "The lut property must have a minimal size of ", wanted,
                                         ". This current size is ", size);
        }
    }
};

/// Repeats passes between two images until one changes nothing, see `ApplyMorphologicalLut2D`.
template <class T, class Codes, template <class, class, class, class> class FilterWithReduction>
class LutPasses {
public:
    LutPasses(BaseAlgorithm& algorithm, Codes const& codes, access::Sizes const& sizes)
        : codes_(codes)
        , sizes_(sizes)
        , passes_(&algorithm, 2 * sizes.numOfVoxels())
    {
        for (auto& image : images_) {
            access::allocate(image, voxelTypeOf<T>, sizes);
        }
    }

    void run(ImageModel const& input, ImageModel& output)
    {
        access::copyVoxels(input, images_[current_], [this] { return passes_.isStopped(); });
        repeat();
        if (!passes_.isStopped()) {
            access::copyVoxels(images_[current_], output);
            passes_.incrementProgress(sizes_.numOfVoxels());
        }
    }

private:
    void repeat()
    {
        for (uint64 i = 0; i < sizes_.numOfVoxels() && !passes_.isStopped(); ++i) {
            passes_.setMaxProgress((i + 2) * sizes_.numOfVoxels()); // with this pass and the copy at the end
            LutPass const pass = runPass(images_[current_], images_[1 - current_], i == 0);
            bool const goesToAndFro = pass.changed && !pass.differsFromBefore;
            if (goesToAndFro) {
                return;
            }
            current_ = 1 - current_;
            if (!pass.changed) {
                return;
            }
        }
    }

    LutPass runPass(ImageModel const& from, ImageModel& to, bool isFirst)
    {
        using Arch = SimdVec::arch_scalar_tag;
        using Kernel = ApplyMorphoLutGeneric<T, Codes>;
        Kernel const kernel(codes_, isFirst);
        FilterWithReduction<T, T, Arch, Kernel> filter(passes_, kernel);
        filter.addInput(fixedView<T, Arch>(from));
        filter.addOutput(fixedView<T, Arch>(to));
        filter.setRegion(sizes_);
        return filter.run();
    }

    Codes const& codes_;
    access::Sizes sizes_;
    std::array<memory::InMemoryImage, 2> images_;
    std::size_t current_ = 0; ///< the image that the last pass has made
    filters::PassSequence passes_;
};

template <class Codes, template <class, class, class, class> class FilterWithReduction>
struct ApplyMorphologicalLutScalarDispatcher {
    template <class T, class Algorithm>
    static void run(Algorithm& algorithm)
    {
        Codes const codes(*algorithm.morphologicalLut.get(), algorithm.matchingFlag, algorithm.noMatchingFlag);
        ImageModel const& input = *algorithm.input.get();
        LutPasses<T, Codes, FilterWithReduction>(algorithm, codes, access::Sizes::of(input))
            .run(input, *algorithm.output.get());
    }
};

} // namespace mox::morphology

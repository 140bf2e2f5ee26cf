#pragma once

#include <Moxelcore/Core/Property.h>
#include <Moxelcore/Morphology/MorphologicalLut2D.h>
#include <Moxelcore/Morphology/MorphologicalLut3D.h>

#include <boost/shared_ptr.hpp>

namespace mox {

extern template class MOXELCORE_API Property<morphology::MorphologicalLut2D*>;
extern template class MOXELCORE_API Property<morphology::MorphologicalLut3D*>;

namespace morphology {

/// A parameter that is a look-up table. It has a table of its own, empty at first, to be filled through `get`; another
/// one that is set is borrowed.
template <class Lut>
class MOXELCORE_API PropertyLut : public Property<Lut*> {
public:
    PropertyLut();
    PropertyLut(PropertyLut const& other);
    PropertyLut& operator=(PropertyLut const& other);
    ~PropertyLut() override;

    using Property<Lut*>::operator=;

    /// Fills the property's own table, and makes it the value. In 2D the text has a character for each entry, `0` or
    /// `1`, in the order of indices; in 3D it has the indices of the hits, separated by white space. White space is
    /// passed over. False, without a change, for any other text.
    bool read(String const& text, String& echo) override;

private:
    boost::shared_ptr<Lut> own_; ///< shared by copies, as the value is
};

using PropertyMorphologicalLut2D = PropertyLut<MorphologicalLut2D>;
using PropertyMorphologicalLut3D = PropertyLut<MorphologicalLut3D>;

extern template class MOXELCORE_API PropertyLut<MorphologicalLut2D>;
extern template class MOXELCORE_API PropertyLut<MorphologicalLut3D>;

} // namespace morphology
} // namespace mox

#pragma once

#include <Moxelcore/Core/Vector.h>

#include <boost/serialization/nvp.hpp>
#include <boost/serialization/vector.hpp>

#include <vector>

namespace mox {

/// How a sequence stands in an archive: its size, then its elements as a standard vector.
template <class Archive, class T>
void serialize(Archive& archive, Vector<T>& sequence, unsigned int)
{
    std::size_t size = sequence.size();
    std::vector<T> data(sequence.begin(), sequence.end());
    archive& boost::serialization::make_nvp("size", size);
    archive& boost::serialization::make_nvp("data", data);
    if constexpr (Archive::is_loading::value) {
        sequence.clear();
        for (T const& element : data) {
            sequence.push_back(element);
        }
    }
}

} // namespace mox

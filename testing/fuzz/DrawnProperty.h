#pragma once

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/BaseAlgorithm.h>
#include <Moxelcore/Core/BaseProperty.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace mox::fuzz {

/// A property of a new object of one of the library's classes: the first byte draws the class in the order of names,
/// the second the property, the others are texts with a null character between them.
class DrawnProperty {
public:
    static constexpr std::size_t leastSize = 2;
    static constexpr std::size_t mostTexts = 6; // a table in space takes its time

    DrawnProperty(std::uint8_t const* data, std::size_t size)
        : algorithm_(classes()[data[0] % classes().size()]->createInstance())
        , index_(data[1] % algorithm_->getNumOfProperties())
    {
        std::istringstream texts(std::string(reinterpret_cast<char const*>(data) + leastSize, size - leastSize));
        for (std::string text; texts_.size() < mostTexts && std::getline(texts, text, '\0');) {
            texts_.push_back(text);
        }
    }

    BaseProperty& property() const
    {
        unsigned int const numOfInputs = algorithm_->getNumOfInputProperties();
        return index_ < numOfInputs ? *algorithm_->getInputProperty(index_)
                                    : *algorithm_->getOutputProperty(index_ - numOfInputs);
    }

    std::vector<std::string> const& texts() const { return texts_; }

private:
    static std::vector<AlgoInfo const*> const& classes()
    {
        static std::vector<AlgoInfo const*> const sorted = [] {
            std::vector<AlgoInfo const*> all;
            for (std::size_t i = 0; i < AlgoInfo::count(); ++i) {
                all.push_back(&AlgoInfo::at(i));
            }
            std::sort(all.begin(), all.end(), [](AlgoInfo const* a, AlgoInfo const* b) {
                return std::string_view(a->getName()) < b->getName();
            });
            return all;
        }();
        return sorted;
    }

    boost::shared_ptr<BaseAlgorithm> algorithm_;
    unsigned int index_;
    std::vector<std::string> texts_;
};

} // namespace mox::fuzz

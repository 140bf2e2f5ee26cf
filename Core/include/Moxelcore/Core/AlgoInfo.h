#pragma once

#include <Moxelcore/Core/Api.h>
#include <Moxelcore/Core/String.h>

#include <boost/shared_ptr.hpp>

#include <cstddef>

namespace mox {

class BaseAlgorithm;

/// Record of an algorithm class: its name, its library, how to make an object. The registry holds one record of
/// every class of the library; it is complete once the library is loaded and never changes.
class MOXELCORE_API AlgoInfo {
public:
    using Factory = boost::shared_ptr<BaseAlgorithm> (*)();

    AlgoInfo(char const* name, char const* libName, Factory factory);
    AlgoInfo(AlgoInfo const& other);
    AlgoInfo& operator=(AlgoInfo const& other);
    ~AlgoInfo();

    char const* getName() const;
    char const* getLibName() const;
    boost::shared_ptr<BaseAlgorithm> createInstance() const;

    /// The class of that name; case counts. Throws `InvalidCall` "The className <name> does not exist".
    static AlgoInfo const& fromName(char const* name);

    /// The registry by position, in no particular order. `at` throws `BadIndex` beyond the last.
    static std::size_t count();
    static AlgoInfo const& at(std::size_t index);

private:
    friend struct AlgoInfoAccess;
    struct Record;
    struct Runners;
    Runners& getRunners();
    Record* record_;
};

} // namespace mox

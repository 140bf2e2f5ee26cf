#pragma once

#include <Moxelcore/Core/AlgoInfo.h>
#include <Moxelcore/Core/Runnable.h>

#include <boost/make_shared.hpp>

#include <vector>

namespace mox {

struct AlgoInfo::Runners {
    std::vector<boost::shared_ptr<Runnable>> items;
};

struct AlgoInfoAccess {
    static std::vector<boost::shared_ptr<Runnable>>& getRunners(AlgoInfo& info) { return info.getRunners().items; }

    /// The registry; filled while the library is loaded, only read afterwards.
    static std::vector<AlgoInfo*>& registry();
};

/// One static object per class enters the class and its runners while the library is loaded.
template <class Algorithm, class... Runner>
struct Registration {
    Registration()
    {
        AlgoInfoAccess::registry().push_back(Algorithm::getClassInfo());
        (AlgoInfoAccess::getRunners(*Algorithm::getClassInfo()).push_back(boost::make_shared<Runner>()), ...);
    }
};

/// Enters further runners of a class from a source file of their own.
template <class Algorithm, class... Runner>
struct RunnerRegistration {
    RunnerRegistration()
    {
        (AlgoInfoAccess::getRunners(*Algorithm::getClassInfo()).push_back(boost::make_shared<Runner>()), ...);
    }
};

} // namespace mox

#include <Moxelcore/Core/AlgoInfo.h>

#include <Moxelcore/Core/BaseAlgorithm.h>

#include <cstring>

#include "Core/private/AlgoInfoAccess.h"
#include "Core/private/Helper/raise.h"

namespace mox {

struct AlgoInfo::Record {
    String name;
    String libName;
    Factory factory;
    Runners runners;
};

std::vector<AlgoInfo*>& AlgoInfoAccess::registry()
{
    static std::vector<AlgoInfo*> infos;
    return infos;
}

AlgoInfo::AlgoInfo(char const* name, char const* libName, Factory factory)
    : record_(new Record{name, libName, factory, {}})
{
}

AlgoInfo::AlgoInfo(AlgoInfo const& other)
    : record_(new Record(*other.record_))
{
}

AlgoInfo& AlgoInfo::operator=(AlgoInfo const& other)
{
    *record_ = *other.record_;
    return *this;
}

AlgoInfo::~AlgoInfo()
{
    delete record_;
}

char const* AlgoInfo::getName() const
{
    return record_->name.c_str();
}

char const* AlgoInfo::getLibName() const
{
    return record_->libName.c_str();
}

boost::shared_ptr<BaseAlgorithm> AlgoInfo::createInstance() const
{
    return record_->factory();
}

AlgoInfo::Runners& AlgoInfo::getRunners()
{
    return record_->runners;
}

AlgoInfo const& AlgoInfo::fromName(char const* name)
{
    String const wanted = name;
    for (AlgoInfo const* info : AlgoInfoAccess::registry()) {
        if (wanted == info->getName()) {
            return *info;
        }
    }
    helper::raise<InvalidCall>("Core/src/AlgoInfo", "The className ", wanted, " does not exist");
}

std::size_t AlgoInfo::count()
{
    return AlgoInfoAccess::registry().size();
}

AlgoInfo const& AlgoInfo::at(std::size_t index)
{
    if (index >= count()) {
        helper::raise<BadIndex>("Core/src/AlgoInfo", "There is no class at position ", index, " of ", count());
    }
    return *AlgoInfoAccess::registry()[index];
}

} // namespace mox

#include <Moxelcore/Core/BaseProperty.h>

namespace mox {

BaseProperty::BaseProperty(BaseProperty const& other) noexcept
    : locked_(other.isLocked())
{
}

BaseProperty& BaseProperty::operator=(BaseProperty const& other) noexcept
{
    lock(other.isLocked());
    return *this;
}

BaseProperty::~BaseProperty() = default;

void BaseProperty::lock(bool locked)
{
    locked_.store(locked, std::memory_order_relaxed);
}

bool BaseProperty::isLocked() const
{
    return locked_.load(std::memory_order_relaxed);
}

} // namespace mox

#include "testing/everyClass/extremes.h"

#include <limits>

#include "testing/everyClass/visitValue.h"

namespace mox::testing {

namespace {

template <class T>
    requires std::is_arithmetic_v<T> std::vector<T> extremeValues(T)
    {
        using Limits = std::numeric_limits<T>;
        if constexpr (std::is_same_v<T, bool>) {
            return {false, true};
        } else if constexpr (std::is_floating_point_v<T>) {
            return {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), T(0), T(-1),
                    Limits::lowest(),    Limits::max(),      Limits::denorm_min()};
        } else if constexpr (std::is_signed_v<T>) {
            return {T(0), T(-1), Limits::min(), Limits::max()};
        } else {
            return {T(0), T(Limits::max() / 2), Limits::max()};
        }
    }

std::vector<String> extremeValues(String const&)
{
    return {"", "/", std::string(100000, 'x').c_str()};
}

/// Each component in turn.
template <class T>
    requires requires(T vector)
    {
        vector.dim();
    }
std::vector<T> extremeValues(T const& sane)
{
    std::vector<T> values;
    for (unsigned int i = 0; i < sane.dim(); ++i) {
        for (auto const component : extremeValues(sane[i])) {
            values.push_back(sane);
            values.back()[i] = component;
        }
    }
    return values;
}

/// The first element and the last.
template <class T>
std::vector<Vector<T>> extremeValues(Vector<T> const& sane)
{
    std::vector<Vector<T>> values(1);
    if (sane.empty()) {
        return values;
    }
    for (std::size_t const i : {std::size_t{0}, sane.size() - 1}) {
        for (T const& element : extremeValues(sane[i])) {
            values.push_back(sane);
            values.back()[i] = element;
        }
    }
    return values;
}

template <class T>
void appendExtremes(std::vector<Extreme>& extremes, Property<T>& property, std::string const& name)
{
    T const sane = property.get();
    for (T const& value : extremeValues(sane)) {
        extremes.push_back({name + " as extreme " + std::to_string(extremes.size()),
                            [&property, value] { property.set(value); }, [&property, sane] { property.set(sane); }});
    }
}

template <class T>
void appendExtremes(std::vector<Extreme>& extremes, Property<T const*>& property, std::string const& name)
{
    T const* const sane = property.get();
    for (T const& value : extremeValues(*sane)) {
        extremes.push_back({name + " as extreme " + std::to_string(extremes.size()),
                            [&property, held = std::make_shared<T>(value)] { property.set(held.get()); },
                            [&property, sane] { property.set(sane); }});
    }
}

} // namespace

std::vector<Extreme> extremesOf(Task const& task)
{
    std::vector<Extreme> extremes;
    for (BaseProperty* parameter : task.parameters()) {
        auto const append = [&](auto& property) { appendExtremes(extremes, property, parameter->getName().c_str()); };
        visitValue(*parameter, append);
        visitLandmarks(*parameter, append);
    }
    return extremes;
}

} // namespace mox::testing

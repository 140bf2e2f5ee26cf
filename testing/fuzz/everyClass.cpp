// Draws a class, values of its properties and small images from any bytes. The class gives the same bytes, or the same
// error of the family, at each level and in place.

#include <Moxelcore/Core/Exception.h>
#include <Moxelcore/Core/PropertyEnumeration.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <span>
#include <string>

#include "testing/everyClass/Task.h"
#include "testing/everyClass/visitValue.h"

namespace {

using namespace mox;
using namespace mox::testing;

/// Numbers that loops and memory grow with.
struct Bounds {
    char const* property;
    double least;
    double most;
};
constexpr Bounds bounds[] = {{"binSizeCooccurrence", 8, 64},
                             {"binSizeHistogram", 0.5, 64},
                             {"rotationBegin", -360, 360},
                             {"rotationEnd", -360, 360},
                             {"rotationStep", 30, 200},
                             {"scaleBegin", -0.5, 1},
                             {"scaleEnd", 0, 2},
                             {"scaleStep", 0.25, 1},
                             {"outlierRatio", -0.25, 0.75},
                             {"confidence", -0.25, 0.75},
                             {"zoomFactor", -0.5, 3}};

/// Draws values of all types.
class Draw {
public:
    Draw(FuzzedDataProvider& bytes, std::string property)
        : bytes_(bytes)
        , property_(std::move(property))
    {
    }

    void operator()(bool& value) const { value = bytes_.ConsumeBool(); }
    void operator()(int& value) const { value = bytes_.ConsumeIntegralInRange(-3, 60); }
    void operator()(unsigned int& value) const { value = bytes_.ConsumeIntegralInRange(0U, 6U); }
    void operator()(unsigned char& value) const { value = bytes_.ConsumeIntegral<unsigned char>(); }
    void operator()(int64& value) const { value = bytes_.ConsumeIntegral<int64>(); }
    void operator()(uint64& value) const { value = bytes_.ConsumeIntegral<uint64>(); }

    void operator()(double& value) const
    {
        constexpr double specials[] = {
            std::numeric_limits<double>::quiet_NaN(),  std::numeric_limits<double>::infinity(),
            -std::numeric_limits<double>::infinity(),  std::numeric_limits<double>::max(),
            std::numeric_limits<double>::denorm_min(), -0.0};
        for (Bounds const& bound : bounds) {
            if (bound.property == property_) {
                value = bytes_.ConsumeFloatingPointInRange(bound.least, bound.most);
                return;
            }
        }
        auto const choice = bytes_.ConsumeIntegralInRange<std::size_t>(0, 2 * std::size(specials));
        value = choice < std::size(specials) ? specials[choice] : bytes_.ConsumeIntegralInRange(-1200, 1200) * 0.25;
    }

    void operator()(String&) const {}

    template <class T>
    void operator()(Vector<T>& value) const
    {
        value.resize(bytes_.ConsumeIntegralInRange<std::size_t>(0, 8));
        for (T& element : value) {
            (*this)(element);
        }
    }

    template <class T>
        requires requires(T vector)
        {
            vector.dim();
        }
    void operator()(T& value) const
    {
        for (unsigned int i = 0; i < value.dim(); ++i) {
            (*this)(value[i]);
        }
    }

private:
    FuzzedDataProvider& bytes_;
    std::string property_;
};

void drawValue(BaseProperty& property, FuzzedDataProvider& bytes)
{
    if (!bytes.ConsumeBool()) {
        return;
    }
    if (auto* const enumeration = dynamic_cast<PropertyEnumeration*>(&property)) {
        enumeration->set(bytes.ConsumeIntegralInRange(-1, enumeration->getEnumInfo().size()));
        return;
    }
    visitValue(property, [&]<class T>(Property<T>& typed) {
        T value = typed.get();
        Draw(bytes, property.getName().c_str())(value);
        typed.set(value);
    });
}

Task draw(std::span<std::uint8_t const> data)
{
    FuzzedDataProvider bytes(data.data(), data.size());
    auto const& entries = catalogue();
    Entry const& entry = entries[bytes.ConsumeIntegralInRange<std::size_t>(0, entries.size() - 1)];
    TaskForm form;
    form.voxelType = static_cast<VoxelTypes>(bytes.ConsumeIntegralInRange<int>(MOX_UINT8, MOX_FLOAT64));
    form.columns = bytes.ConsumeIntegralInRange(1U, 20U);
    form.rows = bytes.ConsumeIntegralInRange(1U, 9U);
    form.hasSpecialVoxels = bytes.ConsumeBool();
    form.seed = bytes.ConsumeIntegral<unsigned char>();
    Task task(entry.className, form);
    for (BaseProperty* parameter : task.parameters()) {
        drawValue(*parameter, bytes);
    }
    return task;
}

/// The result, or the error; an exception of another family ends the program.
template <class Run>
std::string outcomeOf(Run const& run)
{
    try {
        Bytes const bytes = run();
        return {reinterpret_cast<char const*>(bytes.data()), bytes.size()};
    } catch (Exception const& exception) {
        return exception.what().c_str();
    }
}

void requireSame(std::string const& outcome, std::string const& expected, Task const& task, char const* where)
{
    if (outcome != expected) {
        std::fprintf(stderr, "%s gives another result %s\n", task.entry().className.c_str(), where);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::span const bytes(data, size);
    Task const best = draw(bytes);
    std::string const expected = outcomeOf([&] { return best.run(); });
    if (best.algorithm().getMostPerformantAvailableOptimLevel() != OptimLevelType::SCALAR) {
        Task const scalar = draw(bytes);
        scalar.algorithm().setAutoCpuDispatch(false);
        requireSame(outcomeOf([&] { return scalar.run(0xA5); }), expected, scalar, "at the scalar level");
    }
    if (best.entry().worksInPlace) {
        Task const inPlace = draw(bytes);
        requireSame(outcomeOf([&] { return inPlace.runInPlace(); }), expected, inPlace, "in place");
    }
    return 0;
}

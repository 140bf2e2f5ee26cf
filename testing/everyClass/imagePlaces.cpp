#include "testing/everyClass/imagePlaces.h"

#include <Moxelcore/Core/VoxelTypeDispatch.h>

#include <array>
#include <limits>
#include <random>

#include "testing/everyClass/bytes.h"

namespace mox::testing {

namespace {

using Shape = std::array<unsigned int, 5>;

Shape shapeOf(Extent extent, bool isLarge)
{
    switch (extent) {
    case Extent::volume:
        return isLarge ? Shape{37, 31, 22, 1, 1} : Shape{5, 4, 3, 2, 1};
    case Extent::plane:
        return isLarge ? Shape{1100, 23, 1, 1, 1} : Shape{9, 7, 1, 1, 1};
    case Extent::costlyPlane:
        return isLarge ? Shape{41, 33, 1, 1, 1} : Shape{9, 7, 1, 1, 1};
    case Extent::part:
        return {6, 5, 1, 1, 1};
    }
    return {};
}

template <class T>
T specialVoxel(std::mt19937& random)
{
    using Limits = std::numeric_limits<T>;
    constexpr T specials[] = {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), -T(0)};
    return specials[random() % 4];
}

template <class T>
T voxelOf(Content content, unsigned int x, TaskForm const& form, std::mt19937& random)
{
    auto const number = static_cast<unsigned int>(random());
    if (content == Content::labels) {
        return static_cast<T>(number % 3 == 0 ? 0 : 1 + x % 2);
    }
    if (content == Content::sparse) {
        return static_cast<T>(number % 3 == 0 ? 1 : 0);
    }
    if constexpr (std::is_floating_point_v<T>) {
        return form.hasSpecialVoxels && number % 16 == 0 ? specialVoxel<T>(random)
                                                         : static_cast<T>(number % 251) * T(0.37);
    }
    return static_cast<T>(number % 251);
}

unsigned int seedOf(std::string const& property, TaskForm const& form)
{
    unsigned int seed = form.seed;
    for (char const letter : property) {
        seed = 31 * seed + static_cast<unsigned char>(letter);
    }
    return seed;
}

template <class T>
void fillWith(memory::InMemoryImage& image, ImageEntry const& entry, TaskForm const& form)
{
    std::mt19937 random(seedOf(entry.property, form));
    std::vector<T> row(image.getSize(COLUMNS));
    forEachRow(image, [&](unsigned int y, unsigned int z, unsigned int t, unsigned int s) {
        for (unsigned int x = 0; x < row.size(); ++x) {
            row[x] = voxelOf<T>(entry.content, x, form, random);
        }
        image.writeRowAt(image.getSize(COLUMNS), row.data(), 0, y, z, t, s);
    });
}

class InputImage final : public Place {
public:
    InputImage(Property<ImageModel const*>& property, ImageEntry const& entry, TaskForm const& form)
    {
        fill(image_, entry, form);
        property = &image_;
    }

private:
    memory::InMemoryImage image_;
};

class OutputImage final : public Place {
public:
    OutputImage(Property<ImageModel*>& property, ImageEntry const& entry)
    {
        image_.allocate(entry.voxelType.value_or(MOX_UINT8), 1, 1, 1, 1, 1);
        soil(0);
        property = &image_;
    }

    void soil(unsigned char pattern) override
    {
        unsigned int const columns = image_.getSize(COLUMNS);
        std::vector<unsigned char> const row(std::size_t{columns} * helper::getSizeOf(image_.getVoxelType()), pattern);
        forEachRow(image_, [&](unsigned int y, unsigned int z, unsigned int t, unsigned int s) {
            image_.writeRowAt(columns, row.data(), 0, y, z, t, s);
        });
    }

    void appendTo(Bytes& bytes) const override { append(bytes, image_); }

private:
    memory::InMemoryImage image_;
};

} // namespace

void fill(memory::InMemoryImage& image, ImageEntry const& entry, TaskForm const& form)
{
    VoxelTypes const voxelType = entry.voxelType.value_or(form.voxelType);
    Shape shape = shapeOf(*entry.extent, form.isLarge);
    if (entry.extent != Extent::part && form.columns > 0 && form.rows > 0) {
        shape[0] = form.columns;
        shape[1] = form.rows;
    }
    image.allocate(voxelType, shape[0], shape[1], shape[2], shape[3], shape[4]);
    image.setInterpretation(entry.interpretation.value_or(INTERPRETATION_VALUE));
    dispatch(RealVoxels(), voxelType, [&]<class T>() { fillWith<T>(image, entry, form); });
}

std::unique_ptr<Place> placeOf(Property<ImageModel const*>& property, ImageEntry const& entry, TaskForm const& form)
{
    return std::make_unique<InputImage>(property, entry, form);
}

std::unique_ptr<Place> placeOf(Property<ImageModel*>& property, ImageEntry const& entry)
{
    return std::make_unique<OutputImage>(property, entry);
}

void append(Bytes& bytes, ImageModel const& image)
{
    unsigned int const columns = image.getSize(COLUMNS);
    for (auto const dimension : {COLUMNS, ROWS, PLANS, TIME_SERIES, SPECTRAL_SERIES}) {
        appendValue(bytes, image.getSize(dimension));
    }
    appendValue(bytes, image.getVoxelType());
    appendValue(bytes, image.getInterpretation());
    Bytes row(std::size_t{columns} * helper::getSizeOf(image.getVoxelType()));
    forEachRow(image, [&](unsigned int y, unsigned int z, unsigned int t, unsigned int s) {
        image.readRowAt(columns, row.data(), 0, y, z, t, s);
        bytes.insert(bytes.end(), row.begin(), row.end());
    });
}

} // namespace mox::testing

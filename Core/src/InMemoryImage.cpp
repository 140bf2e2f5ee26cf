#include <Moxelcore/Core/InMemoryImage.h>

#include <sys/mman.h>

#include <cstring>
#include <initializer_list>
#include <memory>
#include <new>

namespace mox::memory {

namespace {

bool isDimension(ImageDimension dimension)
{
    return dimension >= COLUMNS && dimension <= SPECTRAL_SERIES;
}

bool store(double* values, ImageDimension dimension, double value)
{
    if (!isDimension(dimension)) {
        return false;
    }
    values[dimension] = value;
    return true;
}

double load(double const* values, ImageDimension dimension)
{
    return isDimension(dimension) ? values[dimension] : 0.0;
}

/// More bytes than an address can tell end as the allocator's own failure.
std::size_t product(std::initializer_list<std::size_t> factors)
{
    std::size_t result = 1;
    bool overflow = false;
    for (std::size_t const factor : factors) {
        if (factor == 0) {
            return 0;
        }
        overflow = __builtin_mul_overflow(result, factor, &result) || overflow;
    }
    if (overflow) {
        throw std::bad_alloc();
    }
    return result;
}

/// Asks the system for large pages, which it hands out and looks up many voxels at a time. No more than a hint.
void adviseLargePages(void* memory, std::size_t numOfBytes)
{
    constexpr std::size_t largePage = std::size_t{2} << 20U;
    if (std::align(largePage, largePage, memory, numOfBytes) != nullptr) {
        madvise(memory, numOfBytes / largePage * largePage, MADV_HUGEPAGE);
    }
}

/// None have no address, which memcpy may not be told.
void copyVoxels(void* to, void const* from, unsigned int count, VoxelTypes type)
{
    if (count > 0) {
        std::memcpy(to, from, std::size_t{count} * helper::getSizeOf(type));
    }
}

} // namespace

InMemoryImage::InMemoryImage() = default;

InMemoryImage::~InMemoryImage()
{
    release();
}

unsigned int InMemoryImage::getSize(ImageDimension const& dimension) const
{
    return isDimension(dimension) ? sizes_[dimension] : 0;
}

VoxelTypes InMemoryImage::getVoxelType() const
{
    return voxelType_;
}

bool InMemoryImage::setCalibrationOrigin(ImageDimension const& dimension, double origin)
{
    return store(origin_, dimension, origin);
}

double InMemoryImage::getCalibrationOrigin(ImageDimension const& dimension) const
{
    return load(origin_, dimension);
}

bool InMemoryImage::setCalibrationStep(ImageDimension const& dimension, double step)
{
    return store(step_, dimension, step);
}

double InMemoryImage::getCalibrationStep(ImageDimension const& dimension) const
{
    return load(step_, dimension);
}

bool InMemoryImage::setDescription(String const& description)
{
    description_ = description;
    return true;
}

String InMemoryImage::getDescription() const
{
    return description_;
}

bool InMemoryImage::setUnit(String const& unit)
{
    unit_ = unit;
    return true;
}

String InMemoryImage::getUnit() const
{
    return unit_;
}

ImageInterpretation InMemoryImage::getInterpretation() const
{
    return interpretation_;
}

bool InMemoryImage::setInterpretation(ImageInterpretation const& interpretation)
{
    if (interpretation < INTERPRETATION_BINARY || interpretation > INTERPRETATION_VALUE) {
        return false;
    }
    interpretation_ = interpretation;
    return true;
}

bool InMemoryImage::lockRegion(int, int, int, int, int)
{
    return false;
}

bool InMemoryImage::contains(unsigned int count, unsigned int x, unsigned int y, unsigned int z, unsigned int t,
                             unsigned int s) const
{
    return std::size_t{x} + count <= sizes_[COLUMNS] && y < sizes_[ROWS] && z < sizes_[PLANS] &&
           t < sizes_[TIME_SERIES] && s < sizes_[SPECTRAL_SERIES];
}

std::size_t InMemoryImage::offset(unsigned int x, unsigned int y, unsigned int z, unsigned int t, unsigned int s) const
{
    std::size_t voxels = s;
    voxels = voxels * sizes_[TIME_SERIES] + t;
    voxels = voxels * sizes_[PLANS] + z;
    voxels = voxels * sizes_[ROWS] + y;
    voxels = voxels * sizes_[COLUMNS] + x;
    return voxels * helper::getSizeOf(voxelType_);
}

bool InMemoryImage::readRowAt(unsigned int count, void* buffer, unsigned int x, unsigned int y, unsigned int z,
                              unsigned int t, unsigned int s) const
{
    void const* row = nullptr;
    if (!InMemoryImage::getConstRowPointerAt(count, row, x, y, z, t, s)) {
        return false;
    }
    copyVoxels(buffer, row, count, voxelType_);
    return true;
}

bool InMemoryImage::writeRowAt(unsigned int count, void const* buffer, unsigned int x, unsigned int y, unsigned int z,
                               unsigned int t, unsigned int s)
{
    void* row = nullptr;
    if (!InMemoryImage::getRowPointerAt(count, row, x, y, z, t, s)) {
        return false;
    }
    copyVoxels(row, buffer, count, voxelType_);
    return true;
}

bool InMemoryImage::getRowPointerAt(unsigned int count, void*& pointer, unsigned int x, unsigned int y, unsigned int z,
                                    unsigned int t, unsigned int s)
{
    if (!contains(count, x, y, z, t, s)) {
        return false;
    }
    pointer = data_ + offset(x, y, z, t, s);
    return true;
}

bool InMemoryImage::getConstRowPointerAt(unsigned int count, void const*& pointer, unsigned int x, unsigned int y,
                                         unsigned int z, unsigned int t, unsigned int s) const
{
    if (!contains(count, x, y, z, t, s)) {
        return false;
    }
    pointer = data_ + offset(x, y, z, t, s);
    return true;
}

bool InMemoryImage::allocate(VoxelTypes const& voxelType, unsigned int columns, unsigned int rows, unsigned int plans,
                             unsigned int timeSeries, unsigned int spectralSeries)
{
    unsigned int const voxelSize = helper::getSizeOf(voxelType);
    if (voxelSize == 0) {
        return false;
    }
    release();
    std::size_t const bytes = product({voxelSize, columns, rows, plans, timeSeries, spectralSeries});
    data_ = static_cast<unsigned char*>(::operator new(bytes));
    adviseLargePages(data_, bytes);
    voxelType_ = voxelType;
    unsigned int const sizes[] = {columns, rows, plans, timeSeries, spectralSeries};
    std::memcpy(sizes_, sizes, sizeof sizes_);
    return true;
}

void InMemoryImage::release()
{
    ::operator delete(data_);
    data_ = nullptr;
    std::memset(sizes_, 0, sizeof sizes_);
}

} // namespace mox::memory

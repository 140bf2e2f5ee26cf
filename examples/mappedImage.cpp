// An image in a file that is mapped into memory: mappedImage [MiB]
// The system reads pages of it when a row is touched and drops them when it needs room, so that the library works on
// images larger than memory. The rows are the file's own: nothing is copied.

#include <Moxelcore/Moxelcore.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// 8-bit voxels in a raw file, plan by plan, without a header. Its sizes are fixed when it is made.
class MappedImage final : public mox::ImageModel {
public:
    /// Makes the file, full of zeros: a file with a hole, which takes no room on the disk until it is written.
    MappedImage(std::filesystem::path const& path, unsigned int columns, unsigned int rows, unsigned int plans)
        : columns_(columns)
        , rows_(rows)
        , plans_(plans)
    {
        int const file = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        if (file < 0 || ftruncate(file, static_cast<off_t>(numOfBytes())) != 0) {
            throw std::runtime_error("cannot make " + path.string());
        }
        void* const begin = mmap(nullptr, numOfBytes(), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        close(file); // the mapping holds it
        if (begin == MAP_FAILED) {
            throw std::runtime_error("cannot map " + path.string());
        }
        voxels_ = static_cast<unsigned char*>(begin);
    }
    ~MappedImage() override { munmap(voxels_, numOfBytes()); }
    MappedImage(MappedImage const&) = delete;
    MappedImage& operator=(MappedImage const&) = delete;

    std::size_t numOfBytes() const { return std::size_t{columns_} * rows_ * plans_; }

    unsigned int getSize(mox::ImageDimension const& dimension) const override
    {
        switch (dimension) {
        case mox::COLUMNS:
            return columns_;
        case mox::ROWS:
            return rows_;
        case mox::PLANS:
            return plans_;
        default:
            return 1;
        }
    }
    mox::VoxelTypes getVoxelType() const override { return mox::MOX_UINT8; }

    /// The file has the size that it has.
    bool allocate(mox::VoxelTypes const& voxelType, unsigned int columns, unsigned int rows, unsigned int plans,
                  unsigned int timeSeries, unsigned int spectralSeries) override
    {
        return voxelType == mox::MOX_UINT8 && columns == columns_ && rows == rows_ && plans == plans_ &&
               timeSeries == 1 && spectralSeries == 1;
    }

    bool getConstRowPointerAt(unsigned int count, void const*& pointer, unsigned int x, unsigned int y, unsigned int z,
                              unsigned int t, unsigned int s) const override
    {
        if (std::size_t{x} + count > columns_ || y >= rows_ || z >= plans_ || t != 0 || s != 0) {
            return false;
        }
        pointer = voxels_ + (std::size_t{z} * rows_ + y) * columns_ + x;
        return true;
    }
    bool getRowPointerAt(unsigned int count, void*& pointer, unsigned int x, unsigned int y, unsigned int z,
                         unsigned int t, unsigned int s) override
    {
        void const* voxels = nullptr;
        bool const isInside = getConstRowPointerAt(count, voxels, x, y, z, t, s);
        pointer = const_cast<void*>(voxels);
        return isInside;
    }

    bool readRowAt(unsigned int count, void* buffer, unsigned int x, unsigned int y, unsigned int z, unsigned int t,
                   unsigned int s) const override
    {
        void const* voxels = nullptr;
        if (!getConstRowPointerAt(count, voxels, x, y, z, t, s)) {
            return false;
        }
        std::memcpy(buffer, voxels, count);
        return true;
    }
    bool writeRowAt(unsigned int count, void const* buffer, unsigned int x, unsigned int y, unsigned int z,
                    unsigned int t, unsigned int s) override
    {
        void* voxels = nullptr;
        if (!getRowPointerAt(count, voxels, x, y, z, t, s)) {
            return false;
        }
        std::memcpy(voxels, buffer, count);
        return true;
    }

    mox::ImageInterpretation getInterpretation() const override { return interpretation_; }
    bool setInterpretation(mox::ImageInterpretation const& interpretation) override
    {
        interpretation_ = interpretation;
        return true;
    }

    // A raw file has neither calibration nor texts: it reads as a new image and takes no other.
    bool setCalibrationOrigin(mox::ImageDimension const&, double) override { return false; }
    double getCalibrationOrigin(mox::ImageDimension const&) const override { return 0; }
    bool setCalibrationStep(mox::ImageDimension const&, double) override { return false; }
    double getCalibrationStep(mox::ImageDimension const&) const override { return 0; }
    bool setDescription(mox::String const&) override { return false; }
    mox::String getDescription() const override { return ""; }
    bool setUnit(mox::String const&) override { return false; }
    mox::String getUnit() const override { return ""; }
    bool lockRegion(int, int, int, int, int) override { return false; }

private:
    unsigned int columns_;
    unsigned int rows_;
    unsigned int plans_;
    unsigned char* voxels_ = nullptr;
    mox::ImageInterpretation interpretation_ = mox::INTERPRETATION_VALUE;
};

/// A folder for the files, gone when the program is.
struct Folder {
    Folder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "moxelcore-mapped-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("cannot make a folder");
        }
        path = name;
    }
    ~Folder() { std::filesystem::remove_all(path); }

    std::filesystem::path path;
};

/// Memory of the process's own. Pages of mapped files, which the system drops when it needs room, do not count.
std::size_t ownKibibytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        std::size_t kibibytes = 0;
        if (word == "RssAnon:" && status >> kibibytes) {
            return kibibytes;
        }
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    unsigned int const mebibytes = argc > 1 ? static_cast<unsigned int>(std::atoi(argv[1])) : 256;
    Folder const folder;
    MappedImage volume(folder.path / "volume.raw", 1024, 1024, mebibytes);
    MappedImage grown(folder.path / "grown.raw", 1024, 1024, mebibytes);
    std::vector<unsigned char> const bright(100, 200);
    for (unsigned int z = 10; z < 20; ++z) {
        for (unsigned int y = 500; y < 600; ++y) {
            volume.writeRowAt(100, bright.data(), 300, y, z, 0, 0);
        }
    }

    auto const dilation = mox::morphology::Dilation3D::New();
    dilation->input = &volume;
    dilation->nbIter = 1;
    dilation->output = &grown;
    dilation->run();

    auto const extrema = mox::analysis::IntensityExtrema::New();
    extrema->input = &grown;
    extrema->run();
    auto const count = static_cast<long>(extrema->outputMean * static_cast<double>(grown.numOfBytes()) / 200 + 0.5);
    std::cout << count << " voxels set in a file of " << mebibytes << " MiB, with " << ownKibibytes()
              << " KiB of memory\n";
    return count == 102 * 102 * 12 ? 0 : 1;
}

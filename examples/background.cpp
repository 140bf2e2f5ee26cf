// Finds bright spots on a background so uneven that no threshold does: an opening by a disk larger than the spots
// leaves the background alone, and what lies above that is spots. Shows progress, and cancels a run.

#include <Moxelcore/Moxelcore.h>

#include <iostream>
#include <random>
#include <vector>

namespace {

constexpr unsigned int columns = 800;
constexpr unsigned int rows = 600;
constexpr unsigned int spotRadius = 6;
constexpr unsigned int spotDistance = 40;

using Row = std::vector<unsigned short>;

bool isInSpot(unsigned int x, unsigned int y)
{
    int const dx = static_cast<int>(x % spotDistance) - static_cast<int>(spotDistance / 2);
    int const dy = static_cast<int>(y % spotDistance) - static_cast<int>(spotDistance / 2);
    return dx * dx + dy * dy <= static_cast<int>(spotRadius * spotRadius);
}

/// Spots of brightness 800 on a slope of 6000, with noise. Returns the number of voxels in spots.
std::size_t drawSpots(mox::ImageModel& image)
{
    image.allocate(mox::MOX_UINT16, columns, rows, 1, 1, 1);
    std::mt19937 random(1);
    std::size_t count = 0;
    Row row(columns);
    for (unsigned int y = 0; y < rows; ++y) {
        for (unsigned int x = 0; x < columns; ++x) {
            bool const spot = isInSpot(x, y);
            count += spot ? 1 : 0;
            row[x] = static_cast<unsigned short>(1000 + 5 * x + 3 * y + random() % 64 + (spot ? 800 : 0));
        }
        image.writeRowAt(columns, row.data(), 0, y, 0, 0, 0);
    }
    return count;
}

void subtract(mox::ImageModel& image, mox::ImageModel const& background)
{
    Row row(columns);
    Row below(columns);
    for (unsigned int y = 0; y < rows; ++y) {
        image.readRowAt(columns, row.data(), 0, y, 0, 0, 0);
        background.readRowAt(columns, below.data(), 0, y, 0, 0, 0);
        for (unsigned int x = 0; x < columns; ++x) {
            row[x] = static_cast<unsigned short>(row[x] - below[x]); // an opening is nowhere above its input
        }
        image.writeRowAt(columns, row.data(), 0, y, 0, 0, 0);
    }
}

std::size_t numOfVoxelsFrom(double level, mox::ImageModel const& image)
{
    mox::memory::InMemoryImage mask;
    auto const threshold = mox::segmentation::Threshold::New();
    threshold->input = &image;
    threshold->lowLevel = level;
    threshold->highLevel = 65535;
    threshold->output = &mask;
    threshold->run();
    std::size_t count = 0;
    std::vector<unsigned char> row(columns);
    for (unsigned int y = 0; y < rows; ++y) {
        mask.readRowAt(columns, row.data(), 0, y, 0, 0, 0);
        for (unsigned char const voxel : row) {
            count += voxel;
        }
    }
    return count;
}

/// Prints progress, and asks for an end when told to. All calls come on the thread that called `run`.
class Watcher final : public mox::algorithms::InteractionInterface {
public:
    bool cancels = false;

    void notifyProgress(double percent) override { std::cout << "  " << percent << " %\n"; }
    bool isCancelRequested() override { return cancels; }
    unsigned short getProgressPeriod() override { return 20; }
    unsigned short getCancelPeriod() override { return 20; }
};

} // namespace

int main()
{
    mox::memory::InMemoryImage image;
    mox::memory::InMemoryImage background;
    std::size_t const drawn = drawSpots(image);

    auto const opening = mox::morphology::OpeningDisk2D::New();
    opening->input = &image;
    opening->elementSize = spotRadius + 2;
    opening->output = &background;
    Watcher watcher;
    std::cout << "opening:\n";
    opening->run(&watcher);

    opening->elementSize = 100;
    opening->precision = mox::morphology::MOX_ALGO_PRECISE; // 31417 voxels
    mox::memory::InMemoryImage abandoned;
    opening->output = &abandoned;
    watcher.cancels = true;
    std::cout << "a large one, cancelled:\n";
    opening->run(&watcher);

    subtract(image, background);
    std::size_t const found = numOfVoxelsFrom(400, image);
    std::cout << found << " voxels found, " << drawn << " drawn\n";
    return found == drawn ? 0 : 1;
}

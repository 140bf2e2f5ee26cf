// Threshold in the two ways that an application has: by class, and by name as a host does that does not know the
// class. Shows progress, and cancels a run.

#include <Moxelcore/Moxelcore.h>

#include <iostream>
#include <vector>

namespace {

constexpr unsigned int side = 200;

/// A cube of voxels that grow brighter towards its middle.
void makeCube(mox::ImageModel& image)
{
    image.allocate(mox::MOX_UINT16, side, side, side, 1, 1);
    std::vector<unsigned short> row(side);
    for (unsigned int z = 0; z < side; ++z) {
        for (unsigned int y = 0; y < side; ++y) {
            for (unsigned int x = 0; x < side; ++x) {
                auto const distance = [](unsigned int c) { return c < side / 2 ? c : side - 1 - c; };
                row[x] = static_cast<unsigned short>(distance(x) + distance(y) + distance(z));
            }
            image.writeRowAt(side, row.data(), 0, y, z, 0, 0);
        }
    }
}

std::size_t numOfVoxelsSet(mox::ImageModel const& mask)
{
    std::size_t count = 0;
    std::vector<unsigned char> row(side);
    for (unsigned int z = 0; z < side; ++z) {
        for (unsigned int y = 0; y < side; ++y) {
            mask.readRowAt(side, row.data(), 0, y, z, 0, 0);
            for (unsigned char const voxel : row) {
                count += voxel;
            }
        }
    }
    return count;
}

/// Prints progress, and cancels when told to. All calls come on the thread that called `run`.
class Watcher final : public mox::algorithms::InteractionInterface {
public:
    bool cancels = false;

    void notifyProgress(double percent) override { std::cout << "  " << percent << " %\n"; }
    bool isCancelRequested() override { return cancels; }
    unsigned short getProgressPeriod() override { return 20; }
    unsigned short getCancelPeriod() override { return 20; }
};

void runByClass(mox::ImageModel const& input, mox::ImageModel& output)
{
    auto const threshold = mox::segmentation::Threshold::New();
    threshold->input = &input;
    threshold->lowLevel = 150.0;
    threshold->highLevel = 65535.0; // 255 unless set
    threshold->output = &output;
    threshold->run();
    std::cout << "by class: " << numOfVoxelsSet(output) << " voxels\n";
}

void runByName(mox::ImageModel const& input, mox::ImageModel& output)
{
    auto const algorithm = mox::AlgoInfo::fromName("Threshold").createInstance();
    dynamic_cast<mox::Property<mox::ImageModel const*>&>(*algorithm->getPropertyfromName("input")) = &input;
    dynamic_cast<mox::Property<mox::ImageModel*>&>(*algorithm->getPropertyfromName("output")) = &output;
    mox::String echo;
    algorithm->getPropertyfromName("lowLevel")->read("150", echo);
    algorithm->getPropertyfromName("highLevel")->read("65535", echo);

    Watcher watcher;
    algorithm->run(&watcher);
    std::cout << "by name: " << numOfVoxelsSet(output) << " voxels\n";

    watcher.cancels = true; // a run this short may well end before it is asked
    algorithm->run(&watcher);
}

void runWithoutInput(mox::ImageModel& output)
{
    auto const threshold = mox::segmentation::Threshold::New();
    threshold->output = &output;
    try {
        threshold->run();
    } catch (mox::RuleException const& exception) {
        std::cout << "refused:\n" << exception.what().c_str();
    }
}

} // namespace

int main()
{
    mox::memory::InMemoryImage input;
    mox::memory::InMemoryImage output;
    makeCube(input);
    runByClass(input, output);
    runByName(input, output);
    runWithoutInput(output);
    return 0;
}

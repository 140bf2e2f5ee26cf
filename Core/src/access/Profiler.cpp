#include <Moxelcore/Core/access/Profiler.h>

#include <fstream>
#include <locale>

namespace mox::profiler {

namespace {

constexpr char const* titles[] = {"Columns begin",    "Columns end",   "Rows begin",           "Rows end",
                                  "Plans begin",      "Plans end",     "SpectralSeries begin", "SpectralSeries end",
                                  "TimeSeries begin", "TimeSeries end"};

/// In the order of the titles.
void writeLine(std::ostream& out, access::Block const& block, char separator)
{
    for (unsigned int const bound :
         {block.getBeginColumn(), block.getEndColumn(), block.getBeginRow(), block.getEndRow(), block.getBeginPlan(),
          block.getEndPlan(), block.getBeginSpectralSeries(), block.getEndSpectralSeries(), block.getBeginTimeSeries(),
          block.getEndTimeSeries()}) {
        out << bound << separator;
    }
    out << '\n';
}

template <class Blocks>
bool writeTable(Blocks const& blocks, char const* path, char separator)
{
    std::ofstream out(path);
    if (!out) {
        return false;
    }
    out.imbue(std::locale::classic());
    for (char const* title : titles) {
        out << title << separator;
    }
    out << '\n';
    for (auto const& block : blocks) {
        writeLine(out, block, separator);
    }
    out.close();
    return true;
}

} // namespace

bool exportBlockVectorCSV(
    tbb::concurrent_vector<access::Block2d, tbb::cache_aligned_allocator<access::Block2d>> const& blocks,
    char const* path, char separator)
{
    return writeTable(blocks, path, separator);
}

bool exportBlockVectorCSV(
    tbb::concurrent_vector<access::Block3d, tbb::cache_aligned_allocator<access::Block3d>> const& blocks,
    char const* path, char separator)
{
    return writeTable(blocks, path, separator);
}

} // namespace mox::profiler

#include <Moxelcore/Core/access/Profiler.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace mox::testing {

namespace {

template <class BlockType>
using Blocks = tbb::concurrent_vector<BlockType, tbb::cache_aligned_allocator<BlockType>>;

constexpr char const* titles = "Columns begin;Columns end;Rows begin;Rows end;Plans begin;Plans end;"
                               "SpectralSeries begin;SpectralSeries end;TimeSeries begin;TimeSeries end;\n";

class Profiler : public ::testing::Test {
protected:
    Profiler()
        : path_(std::filesystem::temp_directory_path() /
                (std::string("blocks-") + ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".csv"))
    {
    }

    ~Profiler() override { std::filesystem::remove(path_); }

    std::string path() const { return path_.string(); }

    std::string content() const
    {
        std::ifstream in(path_);
        return {std::istreambuf_iterator<char>(in), {}};
    }

private:
    std::filesystem::path path_;
};

TEST_F(Profiler, writesTheTitlesAloneForNoBlocks)
{
    EXPECT_TRUE(profiler::exportBlockVectorCSV(Blocks<access::Block2d>(), path().c_str(), ';'));
    EXPECT_EQ(content(), titles);
}

TEST_F(Profiler, writesPlanarBlocksInOrderSpectralBeforeTime)
{
    Blocks<access::Block2d> blocks;
    blocks.emplace_back(access::GrainedRange{3, 1, 10}, access::GrainedRange{70, 5, 1024}, 4U, 6U, 8U);
    blocks.emplace_back(access::GrainedRange{4, 3, 10}, access::GrainedRange{70, 5, 1024}, 4U, 6U, 8U);
    EXPECT_TRUE(profiler::exportBlockVectorCSV(blocks, path().c_str(), ';'));
    EXPECT_EQ(content(), std::string(titles) + "5;70;1;3;4;5;8;9;6;7;\n5;70;3;4;4;5;8;9;6;7;\n");
}

TEST_F(Profiler, writesSpatialBlocks)
{
    Blocks<access::Block3d> blocks;
    blocks.emplace_back(access::GrainedRange{12, 10, 10}, access::GrainedRange{3, 1, 10},
                        access::GrainedRange{7000, 5, 1024}, 6U, 8U);
    EXPECT_TRUE(profiler::exportBlockVectorCSV(blocks, path().c_str(), ';'));
    EXPECT_EQ(content(), std::string(titles) + "5;7000;1;3;10;12;8;9;6;7;\n");
}

TEST_F(Profiler, replacesAnOlderFile)
{
    std::ofstream(path()) << "something longer than the line of titles, over and over again: " << titles << titles;
    EXPECT_TRUE(profiler::exportBlockVectorCSV(Blocks<access::Block3d>(), path().c_str(), ';'));
    EXPECT_EQ(content(), titles);
}

TEST_F(Profiler, returnsFalseWhereNoFileCanBeMade)
{
    EXPECT_FALSE(profiler::exportBlockVectorCSV(Blocks<access::Block3d>(), (path() + "/below/a/file").c_str(), ';'));
}

} // namespace

} // namespace mox::testing

#include <Moxelcore/Moxelcore.h>

#include <opencv2/core.hpp>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>

#include "benchmarks/peers/Contest.h"

namespace mox::benchmarks {

namespace {

using namespace point_operations;
using memory::InMemoryImage;

struct Size {
    char const* text;
    unsigned int columns, rows, plans;

    std::size_t numOfVoxels() const { return std::size_t{columns} * rows * plans; }
};

constexpr Size sizes[] = {{"4096 x 4096", 4096, 4096, 1}, {"512 x 512 x 512", 512, 512, 512}};

void* voxelsOf(InMemoryImage& image)
{
    void* voxels = nullptr;
    image.getRowPointerAt(0, voxels, 0, 0, 0, 0, 0);
    return voxels;
}

int cvTypeOf(VoxelTypes type)
{
    switch (type) {
    case MOX_UINT8:
        return CV_8U;
    case MOX_UINT16:
        return CV_16U;
    case MOX_INT16:
        return CV_16S;
    case MOX_INT32:
        return CV_32S;
    default:
        return CV_32F;
    }
}

/// An image of noise that both sides read, of values from 0 or 1 on.
struct Source {
    Source(Size const& size, VoxelTypes type, unsigned int seed, int lowest)
    {
        image.allocate(type, size.columns, size.rows, size.plans, 1, 1);
        matrix = cv::Mat(static_cast<int>(size.rows * size.plans), static_cast<int>(size.columns), cvTypeOf(type),
                         voxelsOf(image));
        std::mt19937 random(seed);
        dispatch(RealVoxels(), type, [&]<class T>() {
            T* const voxels = static_cast<T*>(voxelsOf(image));
            for (std::size_t i = 0; i < size.numOfVoxels(); ++i) {
                voxels[i] = static_cast<T>(lowest + static_cast<int>(random() % 200));
            }
        });
    }

    InMemoryImage image;
    cv::Mat matrix;
};

bool areEqual(char const* title, InMemoryImage& ours, cv::Mat const& theirs)
{
    bool const equal = theirs.type() == cvTypeOf(ours.getVoxelType()) &&
                       std::memcmp(voxelsOf(ours), theirs.data, theirs.total() * theirs.elemSize()) == 0;
    if (!equal) {
        std::printf("%s: the results differ\n", title);
    }
    return equal;
}

/// The limit of what reads and writes so many bytes per voxel: a copy on all threads.
struct Copy {
    explicit Copy(std::size_t numOfBytes)
        : from(numOfBytes, 1)
        , to(numOfBytes)
    {
    }

    void operator()()
    {
        using Range = tbb::blocked_range<std::size_t>;
        tbb::parallel_for(
            Range(0, from.size()),
            [&](Range const& part) { std::memcpy(to.data() + part.begin(), from.data() + part.begin(), part.size()); },
            tbb::static_partitioner());
    }

    std::vector<char> from, to;
};

struct Arithmetic {
    char const* title;
    VoxelTypes input;
    VoxelTypes output;
    ArithmeticOperatorType operation;
    void (*peer)(cv::Mat const& a, cv::Mat const& b, cv::Mat& out);
};

Arithmetic const arithmetics[] = {
    {"uint8 + uint8", MOX_UINT8, MOX_INT16, ARITHMETIC_ADD,
     [](auto const& a, auto const& b, auto& out) { cv::add(a, b, out, cv::noArray(), CV_16S); }},
    {"uint16 x uint16", MOX_UINT16, MOX_INT32, ARITHMETIC_MULTIPLY,
     [](auto const& a, auto const& b, auto& out) { cv::multiply(a, b, out, 1, CV_32S); }},
    {"float32 x float32", MOX_FLOAT32, MOX_FLOAT32, ARITHMETIC_MULTIPLY,
     [](auto const& a, auto const& b, auto& out) { cv::multiply(a, b, out); }},
    {"float32 / float32", MOX_FLOAT32, MOX_FLOAT32, ARITHMETIC_DIVIDE,
     [](auto const& a, auto const& b, auto& out) { cv::divide(a, b, out); }},
    {"minimum of float32", MOX_FLOAT32, MOX_FLOAT32, ARITHMETIC_MINIMUM,
     [](auto const& a, auto const& b, auto& out) { cv::min(a, b, out); }},
    // OpenCV rounds its quotients, so that these two are not compared voxel by voxel.
    {"uint8 / uint8", MOX_UINT8, MOX_INT16, ARITHMETIC_DIVIDE,
     [](auto const& a, auto const& b, auto& out) { cv::divide(a, b, out, 1, CV_16S); }},
    {"int32 / int32", MOX_INT32, MOX_INT32, ARITHMETIC_DIVIDE,
     [](auto const& a, auto const& b, auto& out) { cv::divide(a, b, out); }},
};

void compareArithmetic(Size const& size, Arithmetic const& row)
{
    Source a(size, row.input, 1, 1);
    Source b(size, row.input, 2, 1); // no zeros, by which OpenCV divides floats in its own way
    InMemoryImage output;
    auto const algorithm = ArithmeticImageProcessing::New();
    algorithm->input1 = &a.image;
    algorithm->input2 = &b.image;
    algorithm->arithmeticOperator = row.operation;
    algorithm->output = &output;
    algorithm->run();
    cv::Mat peer;
    row.peer(a.matrix, b.matrix, peer);
    bool const rounds = row.operation == ARITHMETIC_DIVIDE && row.input != MOX_FLOAT32;
    if (!rounds && !areEqual(row.title, output, peer)) {
        return;
    }
    contest(std::string(row.title) + ", " + size.text, static_cast<double>(size.numOfVoxels()),
            {{"Moxelcore", [&] { algorithm->run(); }}, {"OpenCV", [&] { row.peer(a.matrix, b.matrix, peer); }}});
}

void compareExtrema(Size const& size, VoxelTypes type)
{
    Source source(size, type, 1, 0);
    auto const algorithm = analysis::IntensityExtrema::New();
    algorithm->input = &source.image;
    double low = 0, high = 0, mean = 0;
    auto const peer = [&] {
        cv::minMaxIdx(source.matrix, &low, &high);
        mean = cv::mean(source.matrix)[0];
    };
    algorithm->run();
    peer();
    if (algorithm->outputMinimum != low || algorithm->outputMaximum != high ||
        std::abs(algorithm->outputMean / mean - 1) > 1e-9) {
        std::printf("IntensityExtrema: the results differ\n");
        return;
    }
    contest(std::string("extrema, ") + helper::getText(type).c_str() + ", " + size.text,
            static_cast<double>(size.numOfVoxels()), {{"Moxelcore", [&] { algorithm->run(); }}, {"OpenCV", peer}});
}

void compareAnamorphosis(Size const& size)
{
    Source source(size, MOX_UINT8, 1, 0);
    InMemoryImage output;
    cv::Mat table(1, 256, CV_8U);
    Vector<double> lut;
    for (int i = 0; i < 256; ++i) {
        table.data[i] = static_cast<unsigned char>(i * i / 255);
        lut.push_back(i * i / 255);
    }
    auto const algorithm = Anamorphosis::New();
    algorithm->input = &source.image;
    algorithm->lut = lut;
    algorithm->output = &output;
    algorithm->run();
    cv::Mat peer;
    cv::LUT(source.matrix, table, peer);
    if (areEqual("Anamorphosis", output, peer)) {
        contest(std::string("anamorphosis of uint8, ") + size.text, static_cast<double>(size.numOfVoxels()),
                {{"Moxelcore", [&] { algorithm->run(); }}, {"OpenCV", [&] { cv::LUT(source.matrix, table, peer); }}});
    }
}

/// Beside the remapping as it is defined, voxel by voxel, in halves.
void compareAnamorphosisOfWords(Size const& size)
{
    using Word = unsigned short;
    Source source(size, MOX_UINT16, 1, 0);
    InMemoryImage output;
    Vector<double> lut;
    for (int i = 0; i <= 65535; ++i) {
        lut.push_back(i / 256 * (i / 256));
    }
    auto const algorithm = Anamorphosis::New();
    algorithm->input = &source.image;
    algorithm->inputRange = math::Vector2<double>(0.0, 65535.0);
    algorithm->lut = lut;
    algorithm->output = &output;
    algorithm->run();
    cv::Mat peer(source.matrix.size(), CV_16U);
    auto const* const in = source.matrix.ptr<Word>();
    auto* const out = peer.ptr<Word>();
    auto const unfolded = [&] {
        using Range = tbb::blocked_range<std::size_t>;
        tbb::parallel_for(
            Range(0, size.numOfVoxels()),
            [=, &lut, begin = 0.0, end = 65535.0, step = 1.0](Range const& part) {
                for (std::size_t i = part.begin(); i < part.end(); ++i) {
                    double const v = in[i];
                    bool const isWithin = v >= begin && v <= end;
                    out[i] =
                        isWithin ? static_cast<Word>(lut[static_cast<unsigned int>(std::trunc(v / step))]) : Word(0);
                }
            },
            tbb::static_partitioner());
    };
    unfolded();
    if (areEqual("Anamorphosis", output, peer)) {
        contest(std::string("anamorphosis of uint16, ") + size.text, static_cast<double>(size.numOfVoxels()),
                {{"Moxelcore", [&] { algorithm->run(); }}, {"unfolded", unfolded}});
    }
}

/// Algorithms of one input and one output of a type, beside OpenCV where it has the operation.
template <class Algorithm>
void compareToCopy(char const* title, Size const& size, VoxelTypes type, void (*peer)(cv::Mat const&, cv::Mat&))
{
    Source source(size, type, 1, 0);
    InMemoryImage output;
    auto const algorithm = Algorithm::New();
    algorithm->input = &source.image;
    algorithm->output = &output;
    algorithm->run();
    Copy copy(size.numOfVoxels() * helper::getSizeOf(type));
    std::vector<Contestant> contestants = {{"Moxelcore", [&] { algorithm->run(); }}, {"copy", [&] { copy(); }}};
    cv::Mat matrix;
    if (peer != nullptr) {
        peer(source.matrix, matrix);
        if (!areEqual(title, output, matrix)) {
            return;
        }
        contestants.push_back({"OpenCV", [&] { peer(source.matrix, matrix); }});
    }
    contest(std::string(title) + ", " + helper::getText(type).c_str() + ", " + size.text,
            static_cast<double>(size.numOfVoxels()), contestants);
}

void compareLogic(Size const& size, VoxelTypes type)
{
    Source a(size, type, 1, 0);
    Source b(size, type, 2, 0);
    InMemoryImage output;
    auto const algorithm = LogicalImageProcessing::New();
    algorithm->input1 = &a.image;
    algorithm->input2 = &b.image;
    algorithm->output = &output;
    algorithm->run();
    cv::Mat peer;
    cv::bitwise_and(a.matrix, b.matrix, peer);
    Copy copy(size.numOfVoxels() * helper::getSizeOf(type) * 3 / 2); // as many bytes in all
    if (areEqual("LogicalImageProcessing", output, peer)) {
        contest(std::string("logical and, ") + helper::getText(type).c_str() + ", " + size.text,
                static_cast<double>(size.numOfVoxels()),
                {{"Moxelcore", [&] { algorithm->run(); }},
                 {"copy", [&] { copy(); }},
                 {"OpenCV", [&] { cv::bitwise_and(a.matrix, b.matrix, peer); }}});
    }
}

void compareMask(Size const& size, VoxelTypes type)
{
    Source source(size, type, 1, 0);
    Source mask(size, MOX_UINT8, 2, -100); // a byte of 0 once in 200
    InMemoryImage output;
    auto const algorithm = MaskImageProcessing::New();
    algorithm->input = &source.image;
    algorithm->inputBinary = &mask.image;
    algorithm->output = &output;
    algorithm->run();
    cv::Mat peer = cv::Mat::zeros(source.matrix.size(), source.matrix.type());
    auto const copyMasked = [&] {
        peer.setTo(0);
        source.matrix.copyTo(peer, mask.matrix);
    };
    copyMasked();
    Copy copy(size.numOfVoxels() * (2 * helper::getSizeOf(type) + 1) / 2);
    if (areEqual("MaskImageProcessing", output, peer)) {
        contest(std::string("mask, ") + helper::getText(type).c_str() + ", " + size.text,
                static_cast<double>(size.numOfVoxels()),
                {{"Moxelcore", [&] { algorithm->run(); }}, {"copy", [&] { copy(); }}, {"OpenCV", copyMasked}});
    }
}

} // namespace

void comparePointOperations()
{
    for (Size const& size : sizes) {
        for (Arithmetic const& row : arithmetics) {
            compareArithmetic(size, row);
        }
        for (VoxelTypes const type : {MOX_UINT8, MOX_UINT16, MOX_INT32, MOX_FLOAT32}) {
            compareExtrema(size, type);
        }
        compareAnamorphosis(size);
        compareAnamorphosisOfWords(size);
        for (VoxelTypes const type : {MOX_UINT8, MOX_UINT16}) {
            compareToCopy<InvertImage>("invert", size, type,
                                       [](auto const& in, auto& out) { cv::bitwise_not(in, out); });
            compareToCopy<BitShift>("bit shift", size, type, nullptr);
            compareLogic(size, type);
            compareMask(size, type);
        }
    }
}

} // namespace mox::benchmarks

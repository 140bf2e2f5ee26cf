// Textures for a test of their classification: halves to learn from, a mosaic of the other halves, and how many of its
// voxels were classified right.

#include <Moxelcore/Moxelcore.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"

namespace {

using mox::memory::InMemoryImage;
using Row = std::vector<unsigned char>;

constexpr std::array<std::array<unsigned char, 3>, 6> colours = {
    {{230, 159, 0}, {86, 180, 233}, {0, 158, 115}, {240, 228, 66}, {0, 114, 178}, {204, 121, 167}}};

std::unique_ptr<InMemoryImage> newImage(unsigned int columns, unsigned int rows, unsigned int channels = 1)
{
    auto image = std::make_unique<InMemoryImage>();
    image->allocate(mox::MOX_UINT8, columns, rows, 1, 1, channels);
    return image;
}

Row readRow(mox::ImageModel const& image, unsigned int y, unsigned int first, unsigned int count)
{
    Row row(count);
    image.readRowAt(count, row.data(), first, y, 0, 0, 0);
    return row;
}

void write(mox::ImageModel const& image, std::filesystem::path const& path)
{
    moxel::writeImage(image, path, moxel::formatOf(path), moxel::Compression::deflate);
}

/// All of one height and, in pairs of halves, one width.
struct Textures {
    std::vector<std::unique_ptr<InMemoryImage>> images;
    unsigned int half = 0;
    unsigned int rows = 0;

    explicit Textures(std::vector<std::string> const& files)
    {
        for (std::string const& file : files) {
            images.push_back(moxel::readImage(file, std::nullopt));
            half = images.front()->getSize(mox::COLUMNS) / 2;
            rows = images.front()->getSize(mox::ROWS);
            bool const fits = images.back()->getVoxelType() == mox::MOX_UINT8 && half > 0 &&
                              images.back()->getSize(mox::COLUMNS) / 2 == half &&
                              images.back()->getSize(mox::ROWS) == rows;
            if (!fits) {
                throw moxel::FileError(file + " is not of uint8 or not of the size of the first");
            }
        }
    }
};

/// The left half of each texture and a mask with its label, 1 for the first.
void writeLessons(Textures const& textures, std::filesystem::path const& folder)
{
    for (std::size_t i = 0; i < textures.images.size(); ++i) {
        auto const lesson = newImage(textures.half, textures.rows);
        auto const mask = newImage(textures.half, textures.rows);
        Row const labels(textures.half, static_cast<unsigned char>(i + 1));
        for (unsigned int y = 0; y < textures.rows; ++y) {
            Row const row = readRow(*textures.images[i], y, 0, textures.half);
            lesson->writeRowAt(textures.half, row.data(), 0, y, 0, 0, 0);
            mask->writeRowAt(textures.half, labels.data(), 0, y, 0, 0, 0);
        }
        std::string const number = std::to_string(i + 1);
        write(*lesson, folder / ("lesson" + number + ".png"));
        write(*mask, folder / ("mask" + number + ".png"));
    }
}

/// The right halves side by side.
void writeMosaic(Textures const& textures, std::filesystem::path const& folder)
{
    auto const mosaic = newImage(static_cast<unsigned int>(textures.images.size()) * textures.half, textures.rows);
    for (unsigned int i = 0; i < textures.images.size(); ++i) {
        for (unsigned int y = 0; y < textures.rows; ++y) {
            Row const row = readRow(*textures.images[i], y, textures.half, textures.half);
            mosaic->writeRowAt(textures.half, row.data(), i * textures.half, y, 0, 0, 0);
        }
    }
    write(*mosaic, folder / "mosaic.png");
}

struct Score {
    double share;         ///< of right voxels
    double shareFromSeam; ///< of those whose window lies in one texture
};

/// Of the part of a mosaic of equal parts that should have one label.
Score scoreOf(mox::ImageModel const& labels, unsigned int part, unsigned int numOfParts, unsigned int radius)
{
    unsigned int const width = labels.getSize(mox::COLUMNS) / numOfParts;
    unsigned int const first = part > 0 ? radius : 0;
    unsigned int const last = part + 1 < numOfParts ? width - std::min(width, radius) : width;
    std::array<double, 2> right = {};
    std::array<double, 2> all = {};
    for (unsigned int y = 0; y < labels.getSize(mox::ROWS); ++y) {
        Row const row = readRow(labels, y, part * width, width);
        for (unsigned int x = 0; x < width; ++x) {
            std::size_t const isInside = x >= first && x < last ? 1 : 0;
            ++all[isInside];
            right[isInside] += row[x] == part + 1 ? 1 : 0;
        }
    }
    return {(right[0] + right[1]) / (all[0] + all[1]), right[1] / all[1]};
}

void printScores(mox::ImageModel const& labels, std::vector<std::string> const& names, unsigned int radius)
{
    std::printf("| texture | right | right, away from the seams |\n|---|---|---|\n");
    Score mean{0, 0};
    auto const count = static_cast<unsigned int>(names.size());
    for (unsigned int i = 0; i < count; ++i) {
        Score const score = scoreOf(labels, i, count, radius);
        std::printf("| %s | %.3f | %.3f |\n", std::filesystem::path(names[i]).stem().c_str(), score.share,
                    score.shareFromSeam);
        mean.share += score.share / count;
        mean.shareFromSeam += score.shareFromSeam / count;
    }
    std::printf("| mean | %.3f | %.3f |\n", mean.share, mean.shareFromSeam);
}

/// Row y of an image shrunk to means of squares.
Row shrunkRow(mox::ImageModel const& image, unsigned int y, unsigned int factor)
{
    std::vector<unsigned int> sums(image.getSize(mox::COLUMNS) / factor);
    for (unsigned int i = 0; i < factor; ++i) {
        Row const row = readRow(image, y * factor + i, 0, image.getSize(mox::COLUMNS));
        for (std::size_t x = 0; x < sums.size() * factor; ++x) {
            sums[x / factor] += row[x];
        }
    }
    Row means;
    for (unsigned int const sum : sums) {
        means.push_back(static_cast<unsigned char>(sum / (factor * factor)));
    }
    return means;
}

/// The image above its labels in colours, both shrunk.
void writePicture(mox::ImageModel const& image, mox::ImageModel const& labels, std::string const& path,
                  unsigned int factor)
{
    unsigned int const columns = image.getSize(mox::COLUMNS) / factor;
    unsigned int const rows = image.getSize(mox::ROWS) / factor;
    auto const picture = newImage(columns, 2 * rows, 3);
    for (unsigned int y = 0; y < rows; ++y) {
        Row const upper = shrunkRow(image, y, factor);
        Row const label = readRow(labels, y * factor, 0, image.getSize(mox::COLUMNS));
        for (unsigned int channel = 0; channel < 3; ++channel) {
            Row lower(columns);
            for (unsigned int x = 0; x < columns; ++x) {
                lower[x] = colours[(label[std::size_t{x} * factor] + colours.size() - 1) % colours.size()][channel];
            }
            picture->writeRowAt(columns, upper.data(), 0, y, 0, 0, channel);
            picture->writeRowAt(columns, lower.data(), 0, rows + y, 0, 0, channel);
        }
    }
    write(*picture, path);
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Makes and judges a test of texture classification");
    app.require_subcommand(1);
    std::vector<std::string> files;
    std::string folder;
    std::string labels;
    std::string image;
    std::string picture;
    unsigned int radius = 0;
    unsigned int factor = 1;
    auto* const make = app.add_subcommand("make", "Writes lessons, masks and a mosaic");
    make->add_option("folder", folder, "where to write")->required();
    make->add_option("textures", files, "images")->required();
    auto* const score = app.add_subcommand("score", "Prints the shares of right labels");
    score->add_option("labels", labels, "the classified mosaic")->required();
    score->add_option("textures", files, "images that the mosaic was made of")->required();
    score->add_option("--radius", radius, "of the windows");
    auto* const paint = app.add_subcommand("picture", "Paints the mosaic above its labels");
    paint->add_option("image", image, "the mosaic")->required();
    paint->add_option("labels", labels, "the classified mosaic")->required();
    paint->add_option("picture", picture, "PNG to write")->required();
    paint->add_option("--factor", factor, "by which to shrink")->check(CLI::Range(1, 64));
    CLI11_PARSE(app, argc, argv);
    try {
        if (*make) {
            Textures const textures(files);
            writeLessons(textures, folder);
            writeMosaic(textures, folder);
        } else if (*score) {
            printScores(*moxel::readImage(labels, std::nullopt), files, radius);
        } else {
            writePicture(*moxel::readImage(image, std::nullopt), *moxel::readImage(labels, std::nullopt), picture,
                         factor);
        }
    } catch (std::exception const& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}

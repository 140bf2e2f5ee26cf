#include "apps/demo/Raster.h"

#include <Moxelcore/Moxelcore.h>

#include <algorithm>
#include <cmath>

#include "apps/moxel/ImageFile.h"

namespace demo {

namespace {

template <class T>
void writeChannel(Raster const& raster, mox::ImageModel& image, unsigned int channel)
{
    std::vector<T> row(raster.columns());
    for (unsigned int y = 0; y < raster.rows(); ++y) {
        for (unsigned int x = 0; x < raster.columns(); ++x) {
            row[x] = static_cast<T>(raster.at(x, y));
        }
        image.writeRowAt(raster.columns(), row.data(), 0, y, 0, 0, channel);
    }
}

void writeFile(mox::ImageModel const& image, std::string const& path)
{
    moxel::writeImage(image, path, moxel::formatOf(path), moxel::Compression::deflate);
}

Raster greyPlan(mox::ImageModel const& image, unsigned int plan)
{
    unsigned int const channels = image.getSize(mox::SPECTRAL_SERIES);
    Raster raster(image.getSize(mox::COLUMNS), image.getSize(mox::ROWS));
    mox::dispatch(mox::RealVoxels(), image.getVoxelType(), [&]<class T>() {
        std::vector<T> row(raster.columns());
        for (unsigned int i = 0; i < raster.rows() * channels; ++i) {
            image.readRowAt(raster.columns(), row.data(), 0, i / channels, plan, 0, i % channels);
            for (unsigned int x = 0; x < raster.columns(); ++x) {
                raster.at(x, i / channels) += static_cast<double>(row[x]) / channels;
            }
        }
    });
    return raster;
}

} // namespace

double Raster::between(double x, double y) const
{
    auto const left = static_cast<unsigned int>(x);
    auto const top = static_cast<unsigned int>(y);
    unsigned int const right = std::min(left + 1, columns_ - 1);
    unsigned int const bottom = std::min(top + 1, rows_ - 1);
    return std::lerp(std::lerp(at(left, top), at(right, top), x - left),
                     std::lerp(at(left, bottom), at(right, bottom), x - left), y - top);
}

Raster readGrey(std::string const& path)
{
    return greyPlan(*moxel::readImage(path, std::nullopt), 0);
}

std::vector<Raster> readGreyPlans(std::string const& path)
{
    auto const image = moxel::readImage(path, std::nullopt);
    std::vector<Raster> plans;
    for (unsigned int plan = 0; plan < image->getSize(mox::PLANS); ++plan) {
        plans.push_back(greyPlan(*image, plan));
    }
    return plans;
}

void write(Raster const& raster, std::string const& path)
{
    mox::memory::InMemoryImage image;
    image.allocate(mox::MOX_FLOAT32, raster.columns(), raster.rows(), 1, 1, 1);
    writeChannel<float>(raster, image, 0);
    writeFile(image, path);
}

void writeColours(Raster const& red, Raster const& green, Raster const& blue, std::string const& path)
{
    mox::memory::InMemoryImage picture;
    picture.allocate(mox::MOX_UINT8, red.columns(), red.rows(), 1, 1, 3);
    writeChannel<unsigned char>(red, picture, 0);
    writeChannel<unsigned char>(green, picture, 1);
    writeChannel<unsigned char>(blue, picture, 2);
    writeFile(picture, path);
}

} // namespace demo

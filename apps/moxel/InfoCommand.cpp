#include "apps/moxel/InfoCommand.h"

#include <Moxelcore/Core/InMemoryImage.h>

#include <cmath>
#include <ostream>

#include "apps/moxel/Errors.h"
#include "apps/moxel/ImageFile.h"
#include "apps/moxel/Interrupt.h"
#include "apps/moxel/Json.h"
#include "apps/moxel/NumberText.h"
#include "apps/moxel/Statistics.h"

namespace moxel {

namespace {

struct Info {
    ImageHeader header;
    Statistics statistics;
};

Info readInfo(std::filesystem::path const& path, std::optional<mox::ImageDimension> pages)
{
    auto const reader = openImage(path, pages);
    Info info = {reader->header(), {}};
    ImageHeader page = info.header;
    page.sizes = {page.sizes[mox::COLUMNS], page.sizes[mox::ROWS], 1, 1, reader->channelsPerPage()};
    mox::memory::InMemoryImage image;
    page.applyTo(image);
    for (unsigned int i = 0; i < reader->numOfPages(); ++i) {
        interrupt::check();
        reader->readPage(i, image, {});
        info.statistics.add(image);
    }
    return info;
}

std::string listText(std::array<double, numOfDimensions> const& values)
{
    std::string text;
    for (double const value : values) {
        text += (text.empty() ? "" : ", ") + numberText(value);
    }
    return text;
}

void printText(Info const& info, std::ostream& out)
{
    ImageHeader const& header = info.header;
    auto const text = [](std::optional<double> number) {
        return !number ? "none" : std::isnan(*number) ? "nan" : numberText(*number);
    };
    for (std::size_t i = 0; i < numOfDimensions; ++i) {
        out << mox::helper::getText(static_cast<mox::ImageDimension>(i)).c_str() << ": " << header.sizes[i] << '\n';
    }
    out << "voxel type: " << mox::helper::getText(header.voxelType).c_str() << '\n'
        << "interpretation: " << mox::helper::getText(header.interpretation).c_str() << '\n'
        << "step: " << listText(header.step) << '\n'
        << "origin: " << listText(header.origin) << '\n'
        << "unit: " << header.unit << '\n'
        << "description: " << header.description << '\n'
        << "minimum: " << text(info.statistics.minimum()) << '\n'
        << "maximum: " << text(info.statistics.maximum()) << '\n'
        << "mean: " << text(info.statistics.mean()) << '\n';
}

Json jsonOf(Info const& info)
{
    ImageHeader const& header = info.header;
    auto const json = [](std::optional<double> number) { return number ? Json(*number) : Json(); };
    Json result;
    for (std::size_t i = 0; i < numOfDimensions; ++i) {
        result[dimensionKeys[i]] = header.sizes[i];
    }
    result["voxelType"] = mox::helper::getText(header.voxelType).c_str();
    result["interpretation"] = mox::helper::getText(header.interpretation).c_str();
    result["step"] = header.step;
    result["origin"] = header.origin;
    result["unit"] = header.unit;
    result["description"] = header.description;
    result["minimum"] = json(info.statistics.minimum());
    result["maximum"] = json(info.statistics.maximum());
    result["mean"] = json(info.statistics.mean());
    return result;
}

} // namespace

void printInfo(std::filesystem::path const& path, std::optional<mox::ImageDimension> pages, OutputForm form,
               std::ostream& out)
try {
    Info const info = readInfo(path, pages);
    if (form == OutputForm::json) {
        out << textOf(jsonOf(info)) << '\n';
    } else {
        printText(info, out);
    }
} catch (FileError const& error) {
    throw FileError("cannot read " + quoted(path) + ": " + error.what());
}

} // namespace moxel

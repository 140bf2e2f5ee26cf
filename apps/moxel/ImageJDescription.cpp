#include "apps/moxel/ImageJDescription.h"

#include <algorithm>
#include <map>

#include "apps/moxel/Errors.h"
#include "apps/moxel/EscapedText.h"
#include "apps/moxel/NumberText.h"
#include "apps/moxel/ValueForm.h"

namespace moxel {

namespace {

using Lines = std::map<std::string, std::string>;
using Values = std::array<double, numOfDimensions>;

Lines linesOf(std::string const& tag)
{
    Lines lines;
    for (std::string const& line : split(tag, '\n')) {
        auto const equals = line.find('=');
        if (equals != std::string::npos) {
            lines[line.substr(0, equals)] = line.substr(equals + 1);
        }
    }
    return lines;
}

std::string valueOf(Lines const& lines, std::string const& key)
{
    auto const found = lines.find(key);
    return found != lines.end() ? found->second : std::string();
}

/// `missing` for a key that is not there or holds no number.
template <class T>
T numberOf(Lines const& lines, std::string const& key, T missing)
{
    try {
        return parseNumber<T>(valueOf(lines, key));
    } catch (UsageError const&) {
        return missing;
    }
}

std::vector<PageAxis> axesOf(Lines const& lines)
{
    if (!lines.contains("channels") && !lines.contains("slices") && !lines.contains("frames")) {
        return {{mox::PLANS, numberOf(lines, "images", 1U)}};
    }
    std::map<char, PageAxis> const axes = {{'c', {mox::SPECTRAL_SERIES, numberOf(lines, "channels", 1U)}},
                                           {'z', {mox::PLANS, numberOf(lines, "slices", 1U)}},
                                           {'t', {mox::TIME_SERIES, numberOf(lines, "frames", 1U)}}};
    std::string const told = valueOf(lines, "order");
    std::string const usual = "czt";
    bool const isOrder = std::is_permutation(told.begin(), told.end(), usual.begin(), usual.end());
    std::vector<PageAxis> ordered;
    for (char const letter : isOrder ? told : usual) {
        ordered.push_back(axes.at(letter));
    }
    return ordered;
}

void readValues(Lines const& lines, std::string const& key, Values& values)
{
    auto const texts = split(valueOf(lines, key), ',');
    if (texts.size() != values.size()) {
        return;
    }
    try {
        std::transform(texts.begin(), texts.end(), values.begin(), parseNumber<double>);
    } catch (UsageError const&) {
        values = {};
    }
}

/// Nothing when all are 0.
std::string composeValues(std::string const& key, Values const& values)
{
    if (std::all_of(values.begin(), values.end(), [](double value) { return value == 0; })) {
        return {};
    }
    std::string text = key;
    for (std::size_t i = 0; i < values.size(); ++i) {
        text += (i == 0 ? '=' : ',') + numberText(values[i]);
    }
    return text + '\n';
}

std::string composeSizes(mox::ImageModel const& image)
{
    auto const channels = image.getSize(mox::SPECTRAL_SERIES);
    auto const plans = image.getSize(mox::PLANS);
    auto const times = image.getSize(mox::TIME_SERIES);
    std::string text = "images=" + std::to_string(std::uint64_t{channels} * plans * times) + '\n';
    text += channels > 1 ? "channels=" + std::to_string(channels) + '\n' : "";
    text += plans > 1 ? "slices=" + std::to_string(plans) + '\n' : "";
    text += times > 1 ? "frames=" + std::to_string(times) + '\n' : "";
    text += channels > 1 || times > 1 ? "hyperstack=true\n" : "";
    text += channels > 1 ? "mode=grayscale\n" : "";
    return text;
}

} // namespace

TiffDescription parseImageJDescription(std::string const& tag)
{
    Lines const lines = linesOf(tag);
    TiffDescription description;
    description.axes = axesOf(lines);
    description.step[mox::PLANS] = numberOf(lines, "spacing", 0.0);
    description.step[mox::TIME_SERIES] = numberOf(lines, "finterval", 0.0);
    readValues(lines, "moxel.step", description.step);
    readValues(lines, "moxel.origin", description.origin);
    description.unit = unescape(valueOf(lines, "unit"));
    description.text = unescape(valueOf(lines, "moxel.description"));
    std::string const interpretation = valueOf(lines, "moxel.interpretation");
    for (auto const candidate : {mox::INTERPRETATION_BINARY, mox::INTERPRETATION_LABEL}) {
        if (mox::helper::getText(candidate) == interpretation.c_str()) {
            description.interpretation = candidate;
        }
    }
    return description;
}

std::string composeImageJDescription(mox::ImageModel const& image)
{
    Values step;
    Values origin;
    for (std::size_t i = 0; i < numOfDimensions; ++i) {
        step[i] = image.getCalibrationStep(static_cast<mox::ImageDimension>(i));
        origin[i] = image.getCalibrationOrigin(static_cast<mox::ImageDimension>(i));
    }
    auto const line = [](std::string const& key, std::string const& value) { return key + '=' + value + '\n'; };
    std::string text = "ImageJ=1.53t\n" + composeSizes(image);
    text += image.getUnit() == "" ? "" : line("unit", escape(image.getUnit().c_str()));
    text += step[mox::PLANS] == 0 ? "" : line("spacing", numberText(step[mox::PLANS]));
    text += step[mox::TIME_SERIES] == 0 ? "" : line("finterval", numberText(step[mox::TIME_SERIES]));
    text += line("moxel.interpretation", mox::helper::getText(image.getInterpretation()).c_str());
    text += composeValues("moxel.step", step) + composeValues("moxel.origin", origin);
    if (image.getDescription() != "") {
        text += line("moxel.description", escape(image.getDescription().c_str()));
    }
    return text;
}

} // namespace moxel

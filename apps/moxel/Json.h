#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace moxel {

/// Members keep the order in which they are set.
using Json = nlohmann::ordered_json;

/// By `mox::ImageDimension`.
constexpr char const* dimensionKeys[] = {"columns", "rows", "plans", "timeSeries", "spectralSeries"};

/// Bytes that are no UTF-8 are replaced; a number that JSON has no form for is null.
inline std::string textOf(Json const& json)
{
    return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

} // namespace moxel

#include "apps/moxel/NearestNames.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <numeric>
#include <utility>

#include "apps/moxel/Errors.h"

namespace moxel {

namespace {

bool areSameLetter(char a, char b)
{
    auto const lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    return lower(a) == lower(b);
}

/// Fewest letters to insert, delete or replace.
std::size_t editDistance(std::string const& a, std::string const& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            std::size_t const replaced = diagonal + (areSameLetter(a[i], b[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, replaced});
        }
    }
    return row.back();
}

} // namespace

std::vector<std::string> nearestNames(std::string const& name, std::vector<std::string> const& known)
{
    constexpr std::size_t most = 3;
    std::size_t const farthest = std::max<std::size_t>(2, name.size() / 3);
    std::vector<std::pair<std::size_t, std::string>> candidates;
    for (std::string const& candidate : known) {
        std::size_t const distance = editDistance(name, candidate);
        if (distance <= farthest && distance < name.size()) {
            candidates.emplace_back(distance, candidate);
        }
    }
    std::sort(candidates.begin(), candidates.end());
    candidates.resize(std::min(candidates.size(), most));

    std::vector<std::string> names;
    names.reserve(candidates.size());
    for (auto& [distance, candidate] : candidates) {
        names.push_back(std::move(candidate));
    }
    return names;
}

std::string unknownName(std::string const& kind, std::string const& name, std::vector<std::string> const& known)
{
    std::string text = "no " + kind + ' ' + quoted(name);
    std::string separator = "; did you mean ";
    for (std::string const& candidate : nearestNames(name, known)) {
        text += separator + candidate;
        separator = " or ";
    }
    return separator == " or " ? text + '?' : text;
}

} // namespace moxel

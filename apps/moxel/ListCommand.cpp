#include "apps/moxel/ListCommand.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "apps/moxel/Algorithms.h"
#include "apps/moxel/Json.h"

namespace moxel {

namespace {

struct Row {
    std::string module;
    std::string name;
    std::vector<std::string> levels;
};

std::vector<Row> rowsOfRegistry()
{
    std::vector<Row> rows;
    for (std::size_t i = 0; i < mox::AlgoInfo::count(); ++i) {
        mox::AlgoInfo const& info = mox::AlgoInfo::at(i);
        auto const algorithm = info.createInstance();
        rows.push_back({moduleOf(*algorithm), info.getName(), levelsOf(*algorithm)});
    }
    std::sort(rows.begin(), rows.end(),
              [](Row const& a, Row const& b) { return std::tie(a.module, a.name) < std::tie(b.module, b.name); });
    return rows;
}

} // namespace

void printAlgorithms(OutputForm form, std::ostream& out)
{
    std::vector<Row> const rows = rowsOfRegistry();
    if (form == OutputForm::json) {
        Json json = Json::array();
        for (Row const& row : rows) {
            json.push_back({{"name", row.name}, {"module", row.module}, {"levels", row.levels}});
        }
        out << textOf(json) << '\n';
        return;
    }
    std::string module;
    for (Row const& row : rows) {
        if (row.module != module) {
            module = row.module;
            out << module << '\n';
        }
        out << "    " << row.name << '\n';
    }
}

} // namespace moxel

#include "table.hpp"

#include "entry_name.hpp"
#include "iso_time.hpp"
#include "one_line.hpp"
#include "printable.hpp"
#include "type_names.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

using row = std::array<std::string, 6>;

char const* quality_of(v2::io_data_value const& value) {
    if (value.good()) return "good";
    return value.bad() ? "bad" : "uncertain";
}

row row_of(v2::read_result::result_type const& entry, v2::io_structure_dictionary& structures) {
    std::string const name = name_of(entry.identifier());
    if (!entry.ok()) return {name, "-", "-", "-", "-", printable(describe(entry.error()))};

    auto const& data = entry.value();
    return {name,
            printable(name_of(data.value().data_type(), structures)),
            one_line(data.value()),
            iso_time(data.timestamp()),
            quality_of(data),
            "-"};
}

void print_row(std::ostream& out, row const& cells, std::array<std::size_t, 6> const& widths) {
    for (std::size_t i = 0; i + 1 < cells.size(); ++i) {
        out << cells[i] << std::string(widths[i] - cells[i].size() + 2, ' ');
    }
    out << cells.back() << '\n';
}

} // namespace

bool print_table(std::ostream& out,
                 v2::read_result const& result,
                 v2::io_structure_dictionary& structures) {
    std::vector<row> rows{{"identifier", "type", "value", "time", "quality", "error"}};
    for (auto const& entry : result) rows.push_back(row_of(entry, structures));

    std::array<std::size_t, 6> widths{};
    for (auto const& cells : rows) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            widths[i] = std::max(widths[i], cells[i].size());
        }
    }
    for (auto const& cells : rows) print_row(out, cells, widths);
    return std::all_of(result.begin(), result.end(), [](auto const& entry) { return entry.ok(); });
}

} // namespace iohost

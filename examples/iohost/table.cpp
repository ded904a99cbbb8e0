#include "table.hpp"

#include "iso_time.hpp"
#include "printable.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

using row = std::array<std::string, 6>;

template <class T>
std::string text_of(T const& thing) {
    std::ostringstream text;
    text << thing;
    return text.str();
}

std::string name_of(v2::plc_identifier const& identifier) {
    auto const& primary = identifier.primary();
    bool const is_plain_text =
        primary.kind() == v2::plc_identifier_kind::text && identifier.secondary().is_none();
    return printable(is_plain_text ? primary.text().str() : text_of(identifier));
}

char const* name_of(v2::io_data_value const& value) {
    if (value.good()) return "good";
    return value.bad() ? "bad" : "uncertain";
}

row row_of(v2::read_result::result_type const& entry) {
    std::string const name = name_of(entry.identifier());
    if (!entry.ok()) return {name, "-", "-", "-", "-", printable(describe(entry.error()))};

    auto const& data = entry.value();
    v2::io_error error;
    auto const value = data.value().as<std::string>(error);
    return {name,
            text_of(data.value().data_type()),
            error ? "-" : printable(value),
            iso_time(data.timestamp()),
            name_of(data),
            error ? printable(describe(error)) : "-"};
}

void print_row(std::ostream& out, row const& cells, std::array<std::size_t, 6> const& widths) {
    for (std::size_t i = 0; i + 1 < cells.size(); ++i) {
        out << cells[i] << std::string(widths[i] - cells[i].size() + 2, ' ');
    }
    out << cells.back() << '\n';
}

} // namespace

bool print_table(std::ostream& out, v2::read_result const& result) {
    std::vector<row> rows{{"identifier", "type", "value", "time", "quality", "error"}};
    for (auto const& entry : result) rows.push_back(row_of(entry));

    std::array<std::size_t, 6> widths{};
    for (auto const& cells : rows) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            widths[i] = std::max(widths[i], cells[i].size());
        }
    }
    for (auto const& cells : rows) print_row(out, cells, widths);
    return std::all_of(rows.begin() + 1, rows.end(),
                       [](row const& cells) { return cells.back() == "-"; });
}

} // namespace iohost

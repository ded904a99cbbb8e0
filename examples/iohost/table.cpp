#include "table.hpp"

#include "columns.hpp"
#include "entry_name.hpp"
#include "iso_time.hpp"
#include "one_line.hpp"
#include "printable.hpp"
#include "quality.hpp"
#include "type_names.hpp"

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

using row = std::vector<std::string>;

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

} // namespace

bool print_table(std::ostream& out,
                 v2::read_result const& result,
                 v2::io_structure_dictionary& structures) {
    columns table({"identifier", "type", "value", "time", "quality", "error"});
    for (auto const& entry : result) table.add(row_of(entry, structures));
    out << table;
    return std::all_of(result.begin(), result.end(), [](auto const& entry) { return entry.ok(); });
}

} // namespace iohost

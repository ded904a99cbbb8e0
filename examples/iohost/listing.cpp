#include "listing.hpp"

#include "entry_name.hpp"
#include "printable.hpp"

#include <ostream>
#include <sstream>
#include <string>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

constexpr unsigned int indentation = 2;
constexpr unsigned int value_level = 1;

void print_value(std::ostream& out, v2::io_value const& value) {
    std::istringstream text(value.printable_string(' ', indentation, value_level).str());
    for (std::string line; std::getline(text, line);) out << printable(line) << '\n';
}

} // namespace

bool print_listing(std::ostream& out, v2::read_result const& result) {
    bool all_well = true;
    for (auto const& entry : result) {
        out << name_of(entry.identifier()) << ':';
        if (entry.ok()) {
            out << '\n';
            print_value(out, entry.value().value());
        } else {
            out << ' ' << printable(describe(entry.error())) << '\n';
            all_well = false;
        }
    }
    return all_well;
}

} // namespace iohost

#include "entry_name.hpp"

#include "printable.hpp"

#include <sstream>

namespace iohost {

namespace v2 = tavi::ioapi::v2;

std::string name_of(v2::plc_identifier const& identifier) {
    auto const& primary = identifier.primary();
    if (primary.kind() == v2::plc_identifier_kind::text && identifier.secondary().is_none()) {
        return printable(primary.text().str());
    }
    std::ostringstream text;
    text << identifier;
    return printable(text.str());
}

} // namespace iohost

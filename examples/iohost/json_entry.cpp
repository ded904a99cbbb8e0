#include "json_entry.hpp"

#include "entry_name.hpp"
#include "iso_time.hpp"
#include "quality.hpp"
#include "type_names.hpp"

#include <iostream>

namespace iohost {

json to_json(tavi::ioapi::v2::read_result::result_type const& entry,
             tavi::ioapi::v2::io_structure_dictionary& structures) {
    json shown = {{"name", given_name_of(entry.identifier())}};
    if (!entry.ok()) {
        shown["error"] = to_json(entry.error());
        return shown;
    }
    auto const& data = entry.value();
    shown["type"] = name_of(data.value().data_type(), structures);
    shown["value"] = to_json(data.value());
    shown["time"] = data.timestamp().has_value() ? json(iso_time(data.timestamp())) : json();
    shown["quality"] = quality_of(data);
    return shown;
}

void print_document(json const& content) {
    std::cout << document_of(content) << '\n';
}

} // namespace iohost

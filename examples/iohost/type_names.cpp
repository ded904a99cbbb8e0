#include "type_names.hpp"

#include <charconv>
#include <sstream>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using kinds = v2::io_data_type::basic_types;

std::string printed(v2::io_data_type const& type) {
    std::ostringstream text;
    text << type;
    return text.str();
}

/// Take `end` off. \return whether it was there
bool cut_end(std::string_view& text, std::string_view end) {
    if (!text.ends_with(end)) return false;
    text.remove_suffix(end.size());
    return true;
}

/// Every kind that has a name, in the order of their numbers.
template <class Function>
void for_each_kind(Function function) {
    for (unsigned int number = 0; v2::name_of(static_cast<kinds>(number)) != nullptr; ++number) {
        function(static_cast<kinds>(number));
    }
}

} // namespace

std::optional<v2::io_data_type> type_named(std::string_view name) {
    std::string_view kind_name = name;
    v2::io_data_type type;
    if (cut_end(kind_name, "[]")) type = v2::io_data_type::array_of(type.basic_type);
    if (cut_end(kind_name, ">")) {
        auto const open = kind_name.find('<');
        if (open == std::string_view::npos || kind_name.substr(0, open) != "object") {
            return std::nullopt;
        }
        std::from_chars(kind_name.data() + open + 1, kind_name.data() + kind_name.size(),
                        type.structure_id);
        kind_name = kind_name.substr(0, open);
    }
    for_each_kind([&](kinds kind) {
        if (kind_name == v2::name_of(kind)) type.basic_type = kind;
    });
    // So another spelling of the same, as object<07>, is none.
    if (printed(type) != name) return std::nullopt;
    return type;
}

std::string known_types() {
    std::string all;
    for_each_kind([&](kinds kind) { all += std::string(v2::name_of(kind)) + ", "; });
    return all + "object<ID>, or one of these with [] for an array";
}

std::string plain_types() {
    std::string all;
    for_each_kind([&](kinds kind) {
        if (kind == kinds::object) return;
        all += (all.empty() ? "" : ", ") + std::string(v2::name_of(kind));
    });
    return all + ", or one of these with [] for an array";
}

std::string name_of(v2::io_data_type const& type, v2::io_structure_dictionary& structures) {
    v2::io_error error;
    auto const structure = structures.get_structure(type.structure_id, error);
    if (error || type.structure_id == 0) return printed(type);
    auto const kind = printed(v2::io_data_type::scalar(type.basic_type));
    return kind + "<" + structure.name().str() + ">" + (type.is_array() ? "[]" : "");
}

} // namespace iohost

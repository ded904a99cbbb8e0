#include "value_syntax.hpp"

#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>
#include <tavi/ioapi/v2/io_structure_type.hpp>

#include "failures.hpp"

#include <algorithm>
#include <cmath>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;
using kinds = v2::io_data_type::basic_types;

/// Whole numbers up to here are exact in floating point.
constexpr double largest_exact = 9007199254740991;

json parsed(std::string const& text) {
    return json::parse(text, nullptr, false);
}

/// The first name that an object of well-formed JSON has twice, or nothing.
std::optional<std::string> repeated_name(std::string const& text) {
    std::vector<std::set<std::string>> open_objects;
    std::optional<std::string> repeated;
    auto const look_at = [&](int, json::parse_event_t event, json& parsed_name) {
        if (event == json::parse_event_t::object_start) open_objects.emplace_back();
        if (event == json::parse_event_t::object_end) open_objects.pop_back();
        if (event == json::parse_event_t::key) {
            auto const& name = parsed_name.get_ref<std::string const&>();
            if (!open_objects.back().insert(name).second && !repeated) repeated = name;
        }
        return true;
    };
    auto const whole = json::parse(text, look_at, false);
    return whole.is_discarded() ? std::nullopt : repeated;
}

/// A truth value, a number, or else the text as it stands.
json plain(std::string const& text) {
    if (text == "true" || text == "false") return text == "true";
    auto value = parsed(text);
    return value.is_number() ? value : json(text);
}

template <class T>
v2::utility::array<T> elements_of(json const& list) {
    std::vector<T> elements;
    elements.reserve(list.size());
    for (auto const& element : list) elements.push_back(element.get<T>());
    return v2::utility::array<T>(elements);
}

v2::io_value array_of_values(v2::io_data_type const& type, std::vector<v2::io_value> const& list) {
    v2::utility::array<v2::io_value> elements(static_cast<unsigned int>(list.size()));
    std::copy(list.begin(), list.end(), elements.begin());
    return v2::io_value(type, std::move(elements));
}

bool are_all(json const& list, bool (*fits)(json const&)) {
    return std::all_of(list.begin(), list.end(), fits);
}

bool fits_i64(json const& number) {
    return number.is_number_integer() &&
           (!number.is_number_unsigned() ||
            number.get<unsigned long long>() <= static_cast<unsigned long long>(INT64_MAX));
}

v2::io_value natural_array(json const& list) {
    if (list.empty()) return array_of_values(v2::io_data_type::array_of(kinds::empty), {});
    if (are_all(list, [](json const& element) { return element.is_boolean(); })) {
        return elements_of<bool>(list);
    }
    if (are_all(list, fits_i64)) return elements_of<long long>(list);
    if (are_all(list, [](json const& element) { return element.is_number_unsigned(); })) {
        return elements_of<unsigned long long>(list);
    }
    if (are_all(list, [](json const& element) { return element.is_number(); })) {
        return elements_of<double>(list);
    }
    std::vector<v2::io_value> values;
    values.reserve(list.size());
    for (auto const& element : list) values.push_back(natural_value(element));
    auto const type = v2::io_data_type::array_of(kinds::empty);
    if (!are_all(list, [](json const& element) { return element.is_string(); })) {
        return array_of_values(type, values);
    }
    return array_of_values(type, values).to_variant(v2::io_data_type::array_of(kinds::string));
}

bool is_integer(kinds kind) {
    return kind >= kinds::u8 && kind <= kinds::i64;
}

bool is_number(kinds kind) {
    return kind >= kinds::u8 && kind <= kinds::dbl;
}

v2::io_value fail(v2::io_errc code, v2::io_error& error) {
    error = code;
    return {};
}

v2::io_value truth_of(json const& value, v2::io_error& error) {
    if (value.is_boolean()) return value.get<bool>();
    double const number = value.is_number() ? value.get<double>() : -1;
    if (number == 0 || number == 1) return number == 1;
    return fail(value.is_number() ? v2::io_errc::value_too_large : v2::io_errc::incompatible_type,
                error);
}

v2::io_value number_as(json const& value, v2::io_data_type const& type, v2::io_error& error) {
    if (value.is_boolean()) return fail(v2::io_errc::incompatible_type, error);
    if (value.is_string()) {
        // An empty text would become 0.
        if (value.get_ref<std::string const&>().empty())
            return fail(v2::io_errc::incompatible_type, error);
        return natural_value(value).to_variant(type, error);
    }
    if (is_integer(type.basic_type) && value.is_number_float()) {
        double const number = value.get<double>();
        if (std::trunc(number) != number || std::abs(number) > largest_exact) {
            return fail(v2::io_errc::value_too_large, error);
        }
        return v2::io_value(static_cast<long long>(number)).to_variant(type, error);
    }
    if (!is_integer(type.basic_type) && std::abs(value.get<double>()) <= largest_exact) {
        return v2::io_value(value.get<double>()).to_variant(type, error);
    }
    return natural_value(value).to_variant(type, error);
}

v2::io_value scalar_as(json const& value, v2::io_data_type const& type, v2::io_error& error) {
    if (value.is_structured() || value.is_null()) {
        return fail(v2::io_errc::incompatible_type, error);
    }
    if (type.basic_type == kinds::boolean) return truth_of(value, error);
    if (is_number(type.basic_type)) return number_as(value, type, error);
    return natural_value(value).to_variant(type, error);
}

v2::io_value object_as(json const& value,
                       v2::io_data_type const& type,
                       v2::io_structure_dictionary& structures,
                       v2::io_error& error) {
    if (!value.is_object()) return fail(v2::io_errc::incompatible_type, error);
    auto const structure = structures.get_structure(type.structure_id, error);
    if (error) return {};
    v2::io_object object(type, structure);
    for (auto const& [key, member] : value.items()) {
        if (!structure.has_member(key)) {
            error = in_member(v2::io_errc::invalid_property, key);
            return {};
        }
        auto converted = value_as(member, structure.get_member(key), structures, error);
        if (!error) object.set(key, std::move(converted), error);
        if (error) {
            error = in_member(error, key);
            return {};
        }
    }
    return object;
}

v2::io_value array_as(json const& value,
                      v2::io_data_type const& type,
                      v2::io_structure_dictionary& structures,
                      v2::io_error& error) {
    if (!value.is_array()) return fail(v2::io_errc::incompatible_type, error);
    auto element_type = type;
    element_type.array_kind = 0;
    element_type.array_extent = 0;
    std::vector<v2::io_value> elements;
    for (auto const& element : value) {
        elements.push_back(value_as(element, element_type, structures, error));
        if (error) {
            error = with_detail(error, v2::diagnostics_key::index,
                                static_cast<unsigned int>(elements.size() - 1));
            return {};
        }
    }
    if (type.basic_type == kinds::object) {
        v2::utility::array<v2::io_object> objects(static_cast<unsigned int>(elements.size()));
        std::transform(elements.begin(), elements.end(), objects.begin(),
                       [](auto const& each) { return *each.template get_if<v2::io_object>(); });
        return v2::io_value(type, std::move(objects));
    }
    auto const any = array_of_values(v2::io_data_type::array_of(kinds::empty), elements);
    auto plain = v2::io_data_type::array_of(type.basic_type);
    return any.to_variant(plain, error);
}

} // namespace

v2::io_error with_detail(v2::io_error error, char const* key, v2::io_value detail) {
    v2::io_error_diagnostics_generic details;
    for (auto const list = error.diagnostics(); auto const& entry : list) {
        details.set(entry.key, entry.value);
    }
    details.set(key, std::move(detail));
    error.diagnostics(details);
    return error;
}

v2::io_error in_member(v2::io_error error, std::string const& member) {
    auto const list = error.diagnostics();
    auto const inner = list.contains("member") ? list.get("member").value_or<std::string>("") : "";
    return with_detail(std::move(error), "member", inner.empty() ? member : member + "/" + inner);
}

json parsed_value(std::string const& text) {
    bool const is_json = text.starts_with('[') || text.starts_with('{') || text.starts_with('"');
    if (!is_json) return plain(text);
    auto value = parsed(text);
    if (value.is_discarded()) {
        throw setup_failure("the value '" + text +
                            "' is no well-formed JSON; a text that begins so is put in quotes");
    }
    if (auto const name = repeated_name(text)) {
        throw setup_failure("the value '" + text + "' has the member '" + *name + "' twice");
    }
    return value;
}

bool has_objects(json const& value) {
    return value.is_object() ||
           (value.is_array() && std::any_of(value.begin(), value.end(), has_objects));
}

v2::io_value natural_value(json const& value) {
    if (value.is_boolean()) return value.get<bool>();
    if (value.is_number_float()) return value.get<double>();
    if (value.is_string()) return value.get<std::string>();
    if (value.is_array()) return natural_array(value);
    if (!value.is_number()) return {};
    if (fits_i64(value)) return value.get<long long>();
    return value.get<unsigned long long>();
}

v2::io_value value_as(json const& value,
                      v2::io_data_type const& type,
                      v2::io_structure_dictionary& structures,
                      v2::io_error& error) {
    error.reset();
    if (type.is_array()) return array_as(value, type, structures, error);
    if (type.basic_type == kinds::object) return object_as(value, type, structures, error);
    return scalar_as(value, type, error);
}

std::optional<v2::io_value> text_as(std::string const& text, v2::io_data_type const& type) {
    if (type == v2::io_data_type::scalar(kinds::string) && !text.starts_with('"')) return text;
    auto const value = text.starts_with('"') || type.is_array() ? parsed(text) : plain(text);
    if (value.is_discarded()) return std::nullopt;
    v2::io_structure_dictionary no_structures;
    v2::io_error error;
    auto converted = value_as(value, type, no_structures, error);
    if (error) return std::nullopt;
    return converted;
}

} // namespace iohost

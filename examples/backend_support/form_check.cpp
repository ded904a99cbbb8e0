#include "form_check.hpp"

#include <tavi/ioapi/v2/config/option.hpp>
#include <tavi/ioapi/v2/io_data_type.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <string>

namespace backend_support {

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;
using basic_types = v2::io_data_type::basic_types;
using severity_type = config::verification_result::severity_type;

std::string quoted(std::string_view text) {
    return "'" + std::string(text) + "'";
}

bool is_text(v2::io_value const& value) {
    return value.get_if<v2::utility::string>() != nullptr;
}

bool is_floating(v2::io_value const& value) {
    return value.get_if<float>() != nullptr || value.get_if<double>() != nullptr;
}

bool is_number_type(basic_types type) {
    return type >= basic_types::u8 && type <= basic_types::dbl;
}

bool is_integer_type(basic_types type) {
    return type >= basic_types::u8 && type <= basic_types::i64;
}

// What the conversion would take, and give something else than was meant.
bool is_misleading(v2::io_value const& value, basic_types type) {
    if (is_text(value)) {
        auto const text = value.as<std::string>();
        if (type == basic_types::boolean) return text != "0" && text != "1";
        return is_number_type(type) && text.empty();
    }
    if (is_integer_type(type) && is_floating(value)) {
        auto const taken = value.to_variant(v2::io_data_type::scalar(type));
        return taken.as<double>() != value.as<double>();
    }
    return false;
}

// An option that is made from an empty default says nothing of its type.
bool fits(v2::io_value const& value, basic_types type) {
    if (type == basic_types::empty) return true;
    return value.converts_to(v2::io_data_type::scalar(type)) && !is_misleading(value, type);
}

v2::io_value converted(v2::io_value const& value, basic_types type) {
    return type == basic_types::empty ? value : value.to_variant(v2::io_data_type::scalar(type));
}

char const* wanted(basic_types type) {
    switch (type) {
    case basic_types::boolean: return "0 or 1";
    case basic_types::u8: return "a whole number from 0 to 255";
    case basic_types::u16: return "a whole number from 0 to 65535";
    case basic_types::u32: return "a whole number from 0 to 4294967295";
    case basic_types::u64: return "a whole number from 0 to 18446744073709551615";
    case basic_types::i8: return "a whole number from -128 to 127";
    case basic_types::i16: return "a whole number from -32768 to 32767";
    case basic_types::i32: return "a whole number from -2147483648 to 2147483647";
    case basic_types::i64: return "a whole number from -9223372036854775808 to 9223372036854775807";
    case basic_types::flt:
    case basic_types::dbl: return "a number";
    case basic_types::string: return "a text";
    default: return "a value of another kind";
    }
}

// Objects and arrays would be long, and say little.
std::string but_not(v2::io_value const& value) {
    auto const text = value.try_as<std::string>();
    return text ? ", not " + quoted(*text) : std::string();
}

bool is_choice(v2::io_value const& value, config::option const& option) {
    for (auto const& choice : option.options()) {
        if (identical(value, converted(choice.value, option.value_type()))) return true;
    }
    return false;
}

std::string choices_of(config::option const& option) {
    std::string list;
    for (auto const& choice : option.options()) {
        if (!list.empty()) list += ", ";
        list += choice.value.try_as<std::string>().value_or(choice.display_name.str());
    }
    return list;
}

void check_value(config::option const& option,
                 v2::io_value const& value,
                 config::verification_result& verdict) {
    std::string const key = option.key().str();
    auto const type = option.value_type();
    if (!fits(value, type)) {
        add_issue(verdict, severity_type::error, key,
                  quoted(key) + " takes " + wanted(type) + but_not(value));
    } else if (!option.options().empty() && !is_choice(converted(value, type), option)) {
        add_issue(verdict, severity_type::error, key,
                  quoted(key) + " takes one of: " + choices_of(option));
    }
}

void check_option(config::option const& option,
                  config::store const& values,
                  config::verification_result& verdict) {
    if (values.has(option.key())) {
        auto const value = values.get(option.key());
        if (option.optional() || !value.empty()) {
            check_value(option, value, verdict);
            return;
        }
    }
    if (option.optional()) return;
    std::string const key = option.key().str();
    add_issue(verdict, severity_type::error, key, quoted(key) + " is required");
}

} // namespace

void check_values(config::config_template const& form,
                  config::store const& values,
                  config::verification_result& verdict) {
    for (auto const& category : form.categories()) {
        for (auto const& option : category.options()) {
            // Where a key stands twice, the first option counts.
            if (form.get_option(option.key()) == &option) check_option(option, values, verdict);
        }
    }
    for (auto const key : values.keys()) {
        if (form.get_option(key) == nullptr) {
            add_issue(verdict, severity_type::error, key,
                      quoted(key) + " is no option of this backend");
        }
    }
}

void add_issue(config::verification_result& verdict,
               severity_type severity,
               std::string_view key,
               std::string_view message) {
    verdict.add_issue({severity, message, {v2::utility::string(key)}});
}

config::verification_result::issue_type const* first_error(
    config::verification_result const& verdict) noexcept {
    for (auto const& issue : verdict) {
        if (issue.severity >= severity_type::error) return &issue;
    }
    return nullptr;
}

} // namespace backend_support

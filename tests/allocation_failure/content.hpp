#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include "support/object_bytes.hpp"

#include <cstdio>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// \file
/// All that can be seen of an object as one text, so that two of them can be compared, and an
/// object with what it was before. None of the library's operators for comparison or printing is
/// asked for it.

namespace allocation_failure_test {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;

inline std::string text_of(std::monostate) {
    return {};
}
template <class Number, std::enable_if_t<std::is_arithmetic_v<Number>, bool> = true>
std::string text_of(Number number) {
    char text[64];
    (void)std::snprintf(text, sizeof text, "%.20Lg", static_cast<long double>(number));
    return text;
}
inline std::string text_of(std::string_view text) {
    return '"' + std::string(text) + '"';
}
inline std::string text_of(std::string const& text) {
    return text_of(std::string_view(text));
}
inline std::string text_of(v2::utility::string const& text) {
    return text_of(std::string_view(text));
}
inline std::string text_of(v2::utility::string_view text) {
    return text_of(std::string_view(text));
}

inline std::string text_of(v2::io_data_type const& type) {
    return '<' + text_of(static_cast<unsigned int>(type.basic_type)) + ' ' +
           text_of(type.structure_id) + ' ' + text_of(type.array_kind) + ' ' +
           text_of(type.array_extent) + '>';
}

std::string text_of(v2::io_value const& value);
std::string text_of(v2::plc_identifier const& identifier);
std::string text_of(v2::read_result::result_type const& entry);
std::string text_of(v2::write_result::result_type const& entry);
std::string text_of(v2::subscription_result::variable_result const& entry);
std::string text_of(v2::io_object const& object);
std::string text_of(v2::browsing::node const& node);
std::string text_of(config::verification_result::issue_type const& issue);
std::string text_of(config::option::value_option const& choice);
std::string text_of(config::option const& option);
std::string text_of(config::category const& category);

/// The texts of all from `first` to `last`.
template <class Iterator>
std::string texts_of(Iterator first, Iterator last) {
    std::string result = "[";
    for (; first != last; ++first) result += text_of(*first) + ' ';
    return result + ']';
}
template <class T>
std::string text_of(v2::utility::array<T> const& list) {
    return texts_of(list.begin(), list.end());
}
template <class T>
std::string text_of(std::vector<T> const& list) {
    return texts_of(list.begin(), list.end());
}
template <class T>
std::string text_of(v2::utility::data_view<T> list) {
    return texts_of(list.begin(), list.end());
}

// A value whose copy assignment failed has no alternative to visit.
inline std::string text_of(v2::io_value const& value) {
    std::string const head = text_of(value.data_type()) + text_of(value.index()) + ':';
    if (value.index() == -1) return head;
    return head + value.visit([](auto const& payload) -> std::string {
        if constexpr (std::is_same_v<decltype(payload), std::nullptr_t const&>) {
            return "nothing";
        } else {
            return text_of(payload);
        }
    });
}
inline std::string text_of(v2::io_data_value const& value) {
    return text_of(value.value()) + '@' + text_of(value.timestamp().ticks()) + '!' +
           text_of(static_cast<int>(value.quality()));
}

inline std::string text_of(v2::io_structure_type const& type) {
    if (test_support::impl_of(type) == nullptr) return "null";
    std::string result = "structure " + text_of(type.name()) + '{';
    for (auto const& [name, of] : type) result += text_of(name) + text_of(of);
    return result + '}';
}
inline std::string text_of(v2::io_object const& object) {
    if (test_support::impl_of(object) == nullptr) return "null";
    std::string result = "object " + text_of(object.type()) + '{';
    for (auto const& [key, value] : object) result += text_of(key) + text_of(value);
    return result + '}';
}

inline std::string text_of(v2::plc_identifier_part const& part) {
    return text_of(static_cast<unsigned int>(part.kind())) + text_of(part.number()) +
           text_of(part.text());
}
inline std::string text_of(v2::plc_identifier const& identifier) {
    return text_of(identifier.primary()) + '/' + text_of(identifier.secondary());
}

inline std::string text_of(v2::io_error_diagnostics const& diagnostics) {
    std::string result = "{";
    for (auto const& entry : diagnostics) result += text_of(entry.key) + text_of(entry.value);
    return result + '}';
}
inline std::string text_of(v2::io_error const& error) {
    return std::string(error.category().name()) + text_of(error.code()) +
           text_of(error.diagnostics());
}

inline std::string text_of(v2::read_result::result_type const& entry) {
    return text_of(entry.identifier()) + text_of(entry.value()) + text_of(entry.error());
}
inline std::string text_of(v2::write_result::result_type const& entry) {
    return text_of(entry.identifier()) + text_of(entry.error());
}
inline std::string text_of(v2::read_result const& result) {
    return texts_of(result.begin(), result.end());
}
inline std::string text_of(v2::write_result const& result) {
    return texts_of(result.begin(), result.end());
}
inline std::string text_of(v2::browsing::node const& node) {
    return text_of(static_cast<unsigned int>(node.node_class)) + text_of(node.identifier) +
           text_of(node.browse_name) + text_of(node.description) + text_of(node.data_type);
}
inline std::string text_of(v2::browse_result const& result) {
    if (test_support::impl_of(result) == nullptr) return "null";
    return texts_of(result.begin(), result.end());
}
inline std::string text_of(v2::subscription_result::variable_result const& entry) {
    return text_of(entry.identifier) + text_of(entry.data_type) + text_of(entry.error) +
           text_of(entry.aux_value) + text_of(static_cast<unsigned int>(entry.id.kind())) +
           text_of(entry.id.number());
}
inline std::string text_of(v2::subscription_result const& result) {
    return texts_of(result.begin(), result.end());
}

inline std::string text_of(config::option::value_option const& choice) {
    return text_of(choice.display_name) + text_of(choice.description) + text_of(choice.value);
}
inline std::string text_of(config::option const& option) {
    if (test_support::impl_of(option) == nullptr) return "null";
    return text_of(option.key()) + text_of(option.display_name()) + text_of(option.description()) +
           text_of(static_cast<unsigned int>(option.value_type())) +
           text_of(option.default_value()) + text_of(option.optional()) + text_of(option.options());
}
inline std::string text_of(config::category const& category) {
    if (test_support::impl_of(category) == nullptr) return "null";
    return text_of(category.name()) + text_of(category.description()) +
           text_of(category.wants_connection()) + text_of(category.collapsed()) +
           text_of(category.options());
}
inline std::string text_of(config::config_template const& form) {
    if (test_support::impl_of(form) == nullptr) return "null";
    return text_of(form.categories());
}
inline std::string text_of(config::store const& store) {
    if (test_support::impl_of(store) == nullptr) return "null";
    std::string result = "{";
    for (auto const key : store.keys()) result += text_of(key) + text_of(store.get(key));
    return result + '}';
}
inline std::string text_of(config::verification_result::issue_type const& issue) {
    return text_of(static_cast<int>(issue.severity)) + text_of(issue.message) +
           text_of(issue.options);
}
inline std::string text_of(config::verification_result const& result) {
    if (test_support::impl_of(result) == nullptr) return "null";
    return texts_of(result.begin(), result.end());
}

inline std::string text_of(v2::backend_version_info const& version) {
    return text_of(version.major_version) + text_of(version.minor_version) +
           text_of(version.patch_version) + text_of(version.label);
}

template <class First, class Second>
std::string text_of(std::pair<First, Second> const& both) {
    return text_of(both.first) + " and " + text_of(both.second);
}
template <class First, class Second>
std::string text_of(v2::utility::pair<First, Second> const& both) {
    return text_of(both.first) + " and " + text_of(both.second);
}

} // namespace allocation_failure_test

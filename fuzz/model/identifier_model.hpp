#pragma once

#include <tavi/ioapi/v2/plc_identifier.hpp>

#include "random_value.hpp"

#include <string>
#include <variant>

/// \file
/// Identifiers as a pair of variants.

namespace fuzz {

/// Nothing, a text or a number: the order of the kinds in the library.
using part_model = std::variant<std::monostate, std::string, unsigned long long>;

struct identifier_model {
    part_model primary;
    part_model secondary;

    friend bool operator==(identifier_model const&, identifier_model const&) = default;
};

/// `<` of the library: by the primary parts, numbers first.
inline bool sorts_before(identifier_model const& left, identifier_model const& right) {
    auto const* const number = std::get_if<unsigned long long>(&left.primary);
    auto const* const other_number = std::get_if<unsigned long long>(&right.primary);
    if (number != nullptr) return other_number == nullptr || *number < *other_number;
    auto const* const text = std::get_if<std::string>(&left.primary);
    auto const* const other_text = std::get_if<std::string>(&right.primary);
    return text != nullptr && other_text != nullptr && *text < *other_text;
}

inline v2::plc_identifier_part made(part_model const& model) {
    if (auto const* const text = std::get_if<std::string>(&model)) return {*text};
    if (auto const* const number = std::get_if<unsigned long long>(&model)) return {*number};
    return {};
}

inline v2::plc_identifier made(identifier_model const& model) {
    return v2::plc_identifier(made(model.primary), made(model.secondary));
}

inline bool same(v2::plc_identifier_part const& part, part_model const& model) {
    if (static_cast<std::size_t>(part.kind()) != model.index()) return false;
    if (auto const* const text = std::get_if<std::string>(&model)) {
        return static_cast<std::string_view>(part.text()) == *text;
    }
    auto const* const number = std::get_if<unsigned long long>(&model);
    return number == nullptr || part.number() == *number;
}

inline bool same(v2::plc_identifier const& identifier, identifier_model const& model) {
    return same(identifier.primary(), model.primary) &&
           same(identifier.secondary(), model.secondary);
}

/// Mostly one of a few, so that they meet again.
inline part_model random_part(input& script) {
    switch (script.below(4)) {
    case 0: return std::monostate();
    case 1: return script.flag() ? script.below(4) : random_number<unsigned long long>(script);
    default: return random_key(script);
    }
}

inline identifier_model random_identifier(input& script) {
    identifier_model result;
    result.primary = random_part(script);
    if (script.flag()) result.secondary = random_part(script);
    return result;
}

} // namespace fuzz

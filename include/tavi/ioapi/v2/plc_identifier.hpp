#pragma once

#include "detail/data_model.hpp"
#include "plc_identifier_part.hpp"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tavi::ioapi::v2 {

/// Names one variable or node on a controller by two parts, whose meaning is the backend's.
///
/// Equality reads both parts, order reads `primary` alone: two identifiers that differ only in
/// `secondary` are unequal although neither is less, so that an ordered container takes them for
/// one key. An identifier whose primary part is `none` is equivalent to every text in that order
/// and must not share an ordered container with texts. Unordered containers see full identities.
///
/// Copies are deep; a moved-from identifier has two parts without payload.
class plc_identifier {
public:
    /// Two parts without payload.
    plc_identifier() noexcept = default;

    /// From texts or numbers: `plc_identifier("level")`, `plc_identifier(4, "level")`.
    explicit plc_identifier(plc_identifier_part primary,
                            plc_identifier_part secondary = {}) noexcept
        : primary_(std::move(primary)), secondary_(std::move(secondary)) {}

    /// The part that orders identifiers.
    [[nodiscard]] plc_identifier_part const& primary() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
        return primary_;
    }
    /// The part that takes part in equality only.
    [[nodiscard]] plc_identifier_part const& secondary() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
        return secondary_;
    }

private:
    friend struct detail::layout_of<plc_identifier>;

    plc_identifier_part primary_;
    plc_identifier_part secondary_;
};

/// Equal in both parts; the secondary ones are compared first. No allocation.
[[nodiscard]] inline bool operator==(plc_identifier const& left,
                                     plc_identifier const& right) noexcept {
    return left.secondary() == right.secondary() && left.primary() == right.primary();
}
[[nodiscard]] inline bool operator!=(plc_identifier const& left,
                                     plc_identifier const& right) noexcept {
    return !(left == right);
}

/// By the primary parts alone: numbers by value before all else, texts by unsigned bytes, the
/// shorter one first; every other pair is equivalent. There is no other order, since `<` does not
/// agree with `==`.
[[nodiscard]] inline bool operator<(plc_identifier const& left,
                                    plc_identifier const& right) noexcept {
    plc_identifier_part const& a = left.primary();
    plc_identifier_part const& b = right.primary();
    if (a.kind() == plc_identifier_kind::number) {
        return b.kind() != plc_identifier_kind::number || a.number() < b.number();
    }
    return a.kind() == plc_identifier_kind::text && b.kind() == plc_identifier_kind::text &&
           a.text() < b.text();
}

/// Print the primary part, and behind a slash the secondary one where there is one: `"level"/4`.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             plc_identifier const& identifier) {
    out << identifier.primary();
    if (!identifier.secondary().is_none()) out << '/' << identifier.secondary();
    return out;
}

} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

static_assert(std::is_nothrow_move_constructible_v<plc_identifier> &&
                  std::is_nothrow_destructible_v<plc_identifier>,
              "containers move identifiers when they grow");

template <>
struct layout_of<plc_identifier> {
    static_assert(sizeof(plc_identifier) == by_data_model(48, 64));
    static_assert(offsetof(plc_identifier, primary_) == 0);
    static_assert(offsetof(plc_identifier, secondary_) == by_data_model(24, 32));
};

/// What one part adds to the hash of its identifier.
[[nodiscard]] inline std::size_t hash_of(plc_identifier_part const& part) noexcept {
    switch (part.kind()) {
    case plc_identifier_kind::text:
        return std::hash<std::string_view>{}(static_cast<std::string_view>(part.text()));
    case plc_identifier_kind::number: return std::hash<unsigned long long>{}(part.number());
    default: return 0;
    }
}

} // namespace tavi::ioapi::v2::detail

/// Over both parts, consistent with `==`.
template <>
struct std::hash<tavi::ioapi::v2::plc_identifier> {
    std::size_t operator()(tavi::ioapi::v2::plc_identifier const& identifier) const noexcept {
        std::size_t const primary = tavi::ioapi::v2::detail::hash_of(identifier.primary());
        std::size_t const secondary = tavi::ioapi::v2::detail::hash_of(identifier.secondary());
        return primary * 31 + secondary;
    }
};

#pragma once

#include "detail/character_types.hpp"
#include "detail/data_model.hpp"
#include "utility/string.hpp"
#include "utility/string_view.hpp"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tavi::ioapi::v2 {

/// Which payload of a part is live.
enum class plc_identifier_kind : unsigned int {
    none = 0,   ///< no payload: a default part, and one that was moved from
    text = 1,   ///< an owned text
    number = 2, ///< an unsigned 64-bit number
};

/// One half of an identifier: nothing, a text or a number. Copies are deep.
class plc_identifier_part {
    template <class T>
    using if_number =
        std::enable_if_t<std::is_integral_v<T> && !std::is_same_v<T, bool> &&
                             !std::is_same_v<T, char> && !detail::is_wide_character<T>,
                         bool>;
    template <class T>
    using if_text = std::enable_if_t<std::is_convertible_v<T const&, std::string_view>, bool>;

public:
    /// No payload.
    plc_identifier_part() noexcept : kind_(plc_identifier_kind::none), zero_{} {}

    /// A number. A negative one keeps the pattern of its two's complement in 64 bits. Truth values
    /// and characters are no numbers here.
    template <class T, if_number<T> = true>
    plc_identifier_part(T number) noexcept : plc_identifier_part() {
        kind_ = plc_identifier_kind::number;
        number_ = static_cast<unsigned long long>(number);
    }

    /// A copy of any text; an empty one owns a block of one byte.
    /// \throws std::bad_alloc when memory is exhausted or the text too long for 32 bits
    template <class T, if_text<T> = true>
    plc_identifier_part(T const& text)
        : kind_(plc_identifier_kind::text), text_(static_cast<std::string_view>(text)) {}

    /// Takes over a text.
    plc_identifier_part(utility::string&& text) noexcept : plc_identifier_part() {
        kind_ = plc_identifier_kind::text;
        ::new (static_cast<void*>(&text_)) utility::string(std::move(text));
    }

    plc_identifier_part(std::nullptr_t) = delete;

    /// A copied text owns a block even where it is empty. \throws std::bad_alloc
    plc_identifier_part(plc_identifier_part const& other) : plc_identifier_part() { copy(other); }
    /// Leaves a part without a payload.
    plc_identifier_part(plc_identifier_part&& other) noexcept : plc_identifier_part() {
        take(other);
    }
    ~plc_identifier_part() { drop(); }

    /// The old payload goes first. \throws std::bad_alloc, and then this part has the kind of
    /// `other` and an empty payload
    plc_identifier_part& operator=(plc_identifier_part const& other) {
        if (this != &other) {
            drop();
            copy(other);
        }
        return *this;
    }
    /// Leaves a part without a payload; assigning a part to itself changes nothing.
    plc_identifier_part& operator=(plc_identifier_part&& other) noexcept {
        if (this != &other) {
            drop();
            take(other);
        }
        return *this;
    }

    /// Which payload is live.
    [[nodiscard]] plc_identifier_kind kind() const noexcept { return kind_; }
    /// Whether there is no payload.
    [[nodiscard]] bool is_none() const noexcept { return kind_ == plc_identifier_kind::none; }
    /// The number, 0 where this is none.
    [[nodiscard]] unsigned long long number() const noexcept {
        return kind_ == plc_identifier_kind::number ? number_ : 0;
    }
    /// The text, valid until the part changes; empty, with a null pointer, where this is none.
    [[nodiscard]] utility::string_view text() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
        if (kind_ != plc_identifier_kind::text) return {};
        return {text_.data(), text_.size()};
    }

    // Friends, found for parts alone: with constructors from every text and number, they would
    // otherwise compare a text with a number wherever this namespace is in use.

    /// Equal when the kinds are, and the numbers or the bytes of the texts. Refused by kind, then
    /// by size, before any byte is read.
    [[nodiscard]] friend bool operator==(plc_identifier_part const& left,
                                         plc_identifier_part const& right) noexcept {
        if (left.kind_ != right.kind_) return false;
        if (left.kind_ == plc_identifier_kind::number) return left.number_ == right.number_;
        if (left.kind_ == plc_identifier_kind::text) return left.text_ == right.text_;
        return true;
    }
    [[nodiscard]] friend bool operator!=(plc_identifier_part const& left,
                                         plc_identifier_part const& right) noexcept {
        return !(left == right);
    }

private:
    friend struct detail::layout_of<plc_identifier_part>;

    // Leaves an empty text behind, so that a copy that fails then owns nothing.
    void drop() noexcept {
        if (kind_ == plc_identifier_kind::text) text_ = utility::string();
    }

    // Here no payload is owned. The kind comes first: a copy that fails leaves it with an empty
    // text.
    void copy(plc_identifier_part const& other) {
        kind_ = other.kind_;
        if (kind_ == plc_identifier_kind::text) {
            ::new (static_cast<void*>(&text_)) utility::string();
            text_ = utility::string(other.text_.data(), other.text_.size());
        } else if (kind_ == plc_identifier_kind::number) {
            number_ = other.number_;
        }
    }

    void take(plc_identifier_part& other) noexcept {
        kind_ = std::exchange(other.kind_, plc_identifier_kind::none);
        if (kind_ == plc_identifier_kind::text) {
            ::new (static_cast<void*>(&text_)) utility::string(std::move(other.text_));
        } else if (kind_ == plc_identifier_kind::number) {
            number_ = other.number_;
        }
    }

    plc_identifier_kind kind_;
    union {
        unsigned long long number_;
        utility::string text_;
        unsigned char zero_[(sizeof(utility::string) + 7) / 8 * 8]; // where there is no payload
    };
};

/// Print a number as its digits, a text between double quotes, as it is, and nothing as `none`.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             plc_identifier_part const& part) {
    switch (part.kind()) {
    case plc_identifier_kind::text: return out << '"' << part.text() << '"';
    case plc_identifier_kind::number: return out << part.number();
    default: return out << "none";
    }
}

} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

static_assert(std::is_nothrow_move_constructible_v<plc_identifier_part> &&
              std::is_nothrow_move_assignable_v<plc_identifier_part>);

template <>
struct layout_of<plc_identifier_part> {
    static_assert(sizeof(plc_identifier_part) == by_data_model(24, 32));
    static_assert(offsetof(plc_identifier_part, kind_) == 0);
    static_assert(offsetof(plc_identifier_part, number_) == 8);
    static_assert(offsetof(plc_identifier_part, text_) == 8);
};

} // namespace tavi::ioapi::v2::detail

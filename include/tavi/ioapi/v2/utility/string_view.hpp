#pragma once

#include "../detail/data_model.hpp"
#include "../detail/narrow.hpp"
#include "text_comparison.hpp"

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>

namespace tavi::ioapi::v2::utility {

/// A text that belongs to somebody else: pointer, then length, passed by value in two words.
/// Not necessarily terminated. Implicitly made from, and converted to, every text of the standard
/// library; the order of its fields is the reverse of the standard's.
class string_view {
public:
    using value_type = char;
    using iterator = char const*;
    using const_iterator = char const*;

    /// The empty text; `data()` is null.
    constexpr string_view() noexcept = default;

    /// The `size` bytes at `data`; null is allowed where `size` is 0.
    constexpr string_view(char const* data, unsigned int size) noexcept
        : data_(data), size_(size) {}

    /// A text terminated by a zero byte. \param text  not null
    /// \throws std::length_error beyond 4294967295 bytes, as all constructors below
    constexpr string_view(char const* text) : string_view(std::string_view(text)) {}

    /// The bytes of a standard text.
    constexpr string_view(std::string_view text)
        : data_(text.data()), size_(detail::narrow_view_size(text.size())) {}

    /// The bytes of a standard string, which must outlive the view.
    string_view(std::string const& text TAVI_IOAPI_LIFETIMEBOUND)
        : string_view(std::string_view(text)) {}

    /// The bytes of `text`, and its empty text where it has no block.
    string_view(string const& text TAVI_IOAPI_LIFETIMEBOUND) noexcept;

    string_view(std::nullptr_t) = delete;

    /// The first byte; null only in a view that was made from null or from nothing.
    [[nodiscard]] constexpr char const* data() const noexcept { return data_; }
    /// The length in bytes.
    [[nodiscard]] constexpr unsigned int size() const noexcept { return size_; }
    [[nodiscard]] constexpr bool empty() const noexcept { return size_ == 0; }
    /// The byte at `index`, which is not checked.
    [[nodiscard]] constexpr char const& operator[](unsigned int index) const noexcept {
        return data_[index];
    }
    [[nodiscard]] constexpr const_iterator begin() const noexcept { return data_; }
    [[nodiscard]] constexpr const_iterator end() const noexcept { return data_ + size_; }

    constexpr operator std::string_view() const noexcept { return {data_, size_}; }
    /// An owning copy.
    [[nodiscard]] std::string str() const { return std::string(std::string_view(*this)); }

private:
    friend struct detail::layout_of<string_view>;

    char const* data_ = nullptr;
    unsigned int size_ = 0;
};

/// Print the bytes as they are, by the width and fill of the stream.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             string_view text) {
    return out << std::basic_string_view<char, Traits>(text.data(), text.size());
}

} // namespace tavi::ioapi::v2::utility

namespace tavi::ioapi::v2::detail {

static_assert(std::is_trivially_copyable_v<utility::string_view>, "passed by value in two words");

template <>
struct layout_of<utility::string_view> {
    static_assert(sizeof(utility::string_view) == by_data_model(8, 16));
    static_assert(offsetof(utility::string_view, data_) == 0);
    static_assert(offsetof(utility::string_view, size_) == sizeof(void*));
};

} // namespace tavi::ioapi::v2::detail

/// Consistent with `==`, also against the hash of equal standard texts.
template <>
struct std::hash<tavi::ioapi::v2::utility::string_view> {
    std::size_t operator()(tavi::ioapi::v2::utility::string_view text) const noexcept {
        return std::hash<std::string_view>{}(text);
    }
};

#pragma once

#include "../detail/data_model.hpp"
#include "../detail/iokern_allocator.hpp"
#include "../detail/narrow.hpp"
#include "string_view.hpp"
#include "text_comparison.hpp"

#include <cstddef>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tavi::ioapi::v2::utility {

/// An owning text of fixed length that any module may build, read and free.
///
/// One block of `size() + 1` bytes, closed by a zero byte, comes from the library's memory gateway;
/// there is no small-text buffer and no spare capacity. The empty text exists with and without a
/// block, and both read alike. Bytes are bytes: no encoding is assumed, zero bytes are allowed.
class string {
public:
    using value_type = char;
    using iterator = char const*;
    using const_iterator = char const*;

    /// One zero byte: the text of every string that has no block.
    TAVI_IOAPI_API static char const S_empty;

    /// The empty text, without a block.
    string() noexcept = default;

    /// Copy `size` bytes, also where `size` is 0, which makes a block of one byte.
    /// \param data  may be null where `size` is 0
    /// \throws std::bad_alloc when memory is exhausted or `size` is 4294967295
    string(char const* data, unsigned int size)
        : size_(detail::narrow_text_size(size)), data_(copy_of(data, size)) {}

    /// Copy a text terminated by a zero byte. \param text  not null
    /// \throws std::bad_alloc when memory is exhausted or the text is too long to be stated in 32
    /// bits, as the constructors below
    string(char const* text) : string(std::string_view(text)) {}
    string(std::string_view text) : string(text.data(), detail::narrow_text_size(text.size())) {}
    string(std::string const& text) : string(std::string_view(text)) {}
    string(string_view text) : string(text.data(), text.size()) {}

    string(std::nullptr_t) = delete;

    /// A copy; that of an empty text has no block. \throws std::bad_alloc
    string(string const& other)
        : size_(other.size_), data_(size_ != 0 ? copy_of(other.data_, size_) : nullptr) {}

    /// Takes the block and leaves the empty text.
    string(string&& other) noexcept
        : size_(std::exchange(other.size_, 0)), data_(std::exchange(other.data_, nullptr)) {}

    ~string() { release(); }

    /// A text of the same length is copied into the block at hand, an empty one drops it.
    /// \throws std::bad_alloc, and then the target is unchanged
    string& operator=(string const& other) { // NOLINT(bugprone-unhandled-self-assignment): safe
        if (other.size_ == 0) {
            release();
            size_ = 0;
            data_ = nullptr;
        } else if (other.size_ == size_) {
            std::memmove(data_, other.data(), size_); // the other may be this one
        } else {
            *this = string(other.data(), other.size_);
        }
        return *this;
    }

    /// Takes the block and leaves the empty text; assigning a text to itself changes nothing.
    string& operator=(string&& other) noexcept {
        if (this != &other) {
            if (data_ != nullptr) release();
            size_ = std::exchange(other.size_, 0);
            data_ = std::exchange(other.data_, nullptr);
        }
        return *this;
    }

    /// The first byte of a text that is closed by a zero byte. Never null.
    [[nodiscard]] char const* data() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
        return data_ != nullptr ? data_ : &S_empty;
    }
    /// The same as `data()`.
    [[nodiscard]] char const* c_str() const noexcept TAVI_IOAPI_LIFETIMEBOUND { return data(); }
    /// The length in bytes, without the closing zero.
    [[nodiscard]] unsigned int size() const noexcept { return size_; }
    [[nodiscard]] bool empty() const noexcept { return size_ == 0; }

    /// The byte at `index`, below `size()`, which is not checked.
    [[nodiscard]] char& operator[](unsigned int index) noexcept TAVI_IOAPI_LIFETIMEBOUND {
        return data_[index];
    }
    [[nodiscard]] char const& operator[](unsigned int index) const noexcept
        TAVI_IOAPI_LIFETIMEBOUND {
        return data()[index];
    }
    [[nodiscard]] const_iterator begin() const noexcept TAVI_IOAPI_LIFETIMEBOUND { return data(); }
    [[nodiscard]] const_iterator end() const noexcept TAVI_IOAPI_LIFETIMEBOUND {
        return data() + size_;
    }

    /// Compare by unsigned bytes over the common length; the shorter text is the lesser.
    /// \return below 0, 0 or above 0; -1 or 1 where one text begins with the other
    [[nodiscard]] int compare(string_view other) const noexcept {
        unsigned int const common = size_ < other.size() ? size_ : other.size();
        if (common != 0) {
            int const difference = std::memcmp(data(), other.data(), common);
            if (difference != 0) return difference;
        }
        if (other.size() < size_) return 1;
        return other.size() > size_ ? -1 : 0;
    }

    operator std::string_view() const noexcept TAVI_IOAPI_LIFETIMEBOUND { return {data(), size_}; }
    /// A copy as a standard string.
    [[nodiscard]] std::string str() const { return std::string(data(), size_); }

private:
    friend struct detail::layout_of<string>;

    static char* copy_of(char const* data, unsigned int size) {
        auto* const block = static_cast<char*>(detail::allocate_block(size + 1));
        if (size != 0) std::memcpy(block, data, size);
        block[size] = '\0';
        return block;
    }

    void release() noexcept { detail::release_block(data_, size_ + 1); }

    [[maybe_unused]] detail::iokern_allocator allocator_;
    unsigned int size_ = 0;
    char* data_ = nullptr;
};

inline string_view::string_view(string const& text) noexcept
    : string_view(text.data(), text.size()) {}

/// Print the bytes as they are, by the width and fill of the stream.
template <class Traits>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             string const& text) {
    return out << std::basic_string_view<char, Traits>(text.data(), text.size());
}

} // namespace tavi::ioapi::v2::utility

namespace tavi::ioapi::v2::detail {

static_assert(std::is_nothrow_move_constructible_v<utility::string> &&
                  std::is_nothrow_destructible_v<utility::string>,
              "containers move texts when they grow");

template <>
struct layout_of<utility::string> {
    static_assert(sizeof(utility::string) == by_data_model(12, 24));
    static_assert(offsetof(utility::string, allocator_) == 0);
    static_assert(offsetof(utility::string, size_) == sizeof(void*));
    static_assert(offsetof(utility::string, data_) == by_data_model(8, 16));
};

} // namespace tavi::ioapi::v2::detail

/// Consistent with `==`, also against the hash of equal standard texts.
template <>
struct std::hash<tavi::ioapi::v2::utility::string> {
    std::size_t operator()(tavi::ioapi::v2::utility::string const& text) const noexcept {
        return std::hash<std::string_view>{}(text);
    }
};

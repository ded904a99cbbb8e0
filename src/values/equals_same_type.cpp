#include <tavi/ioapi/v2/io_value.hpp>

#include "equality.hpp"
#include "number_runs.hpp"
#include "number_traits.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <type_traits>

/// \file
/// Two values of one data type, compared as they are stored. The left alternative decides; the
/// right one may be another, and then nothing is read that is not there.

namespace tavi::ioapi::v2 {

namespace detail {
namespace {

/// Another alternative of the same data type that may differ in width.
template <class T>
struct sibling {
    using type = void;
};
template <>
struct sibling<int> {
    using type = long;
};
template <>
struct sibling<long> {
    using type = int;
};
template <>
struct sibling<unsigned int> {
    using type = unsigned long;
};
template <>
struct sibling<unsigned long> {
    using type = unsigned int;
};

template <class T>
using wider_sibling_t =
    std::conditional_t<std::is_void_v<typename sibling<T>::type> || sizeof(int) == sizeof(long),
                       void,
                       typename sibling<T>::type>;

/// Whether the alternative is a number or a truth value.
template <class T>
inline constexpr bool is_plain = std::is_same_v<T, bool> || number<T>;

// --- scalars

/// Compare a number with as many bytes at `other`.
template <class T>
bool equals_bytes(T const& own, void const* other) {
    if constexpr (real<T>) {
        T read;
        std::memcpy(&read, other, sizeof(T));
        return own == read;
    } else {
        return std::memcmp(&own, other, sizeof(T)) == 0;
    }
}

/// Compare a number with as many bytes of a text that is stored at `text`. Its first word is its
/// allocator's, which nobody writes, and counts as zero.
template <class T>
[[gnu::noinline]] bool equals_text_bytes(T const& own, unsigned char const* text) {
    unsigned char read[sizeof(T)];
    std::memcpy(read, text, sizeof(T));
    std::memset(read, 0, std::min(sizeof(T), sizeof(void*)));
    return equals_bytes(own, read);
}

// --- arrays

/// The elements of an array without their type.
struct raw_elements {
    void const* data = nullptr;
    unsigned int size = 0;
    std::size_t width = 0; ///< of a number or truth value, 0 for all else
};

raw_elements raw(io_value const& value) {
    return value.visit([](auto const& payload) -> raw_elements {
        using T = std::decay_t<decltype(payload)>;
        if constexpr (is_array<T>) {
            using element = array_element_t<T>;
            return {payload.data(), payload.size(), is_plain<element> ? sizeof(element) : 0};
        } else {
            return {};
        }
    });
}

template <class T>
bool equals_run(utility::array<T> const& own, void const* other) {
    if constexpr (std::is_same_v<T, double>) {
        return agreeing_elements(own.data(), static_cast<T const*>(other), own.size()) ==
               own.size(); // read as bytes, whatever they are
    } else if constexpr (real<T>) {
        auto const* bytes = static_cast<unsigned char const*>(other);
        for (T const& element : own) {
            if (!equals_bytes(element, bytes)) return false;
            bytes += sizeof(T);
        }
        return true;
    } else {
        return own.empty() || std::memcmp(own.data(), other, own.size() * sizeof(T)) == 0;
    }
}

template <class T, class Sibling>
bool equals_widened(utility::array<T> const& own, utility::array<Sibling> const& other) {
    if (own.size() != other.size()) return false;
    for (unsigned int i = 0; i < own.size(); ++i) {
        if (own[i] != static_cast<std::common_type_t<T, Sibling>>(other[i])) return false;
    }
    return true;
}

/// An array against a value of another alternative.
template <class T>
bool equals_mixed_array(utility::array<T> const& own, io_value const& other) {
    if (!other.is_array() || other.get_if<utility::array<io_object>>() != nullptr) return false;
    if constexpr (!std::is_void_v<wider_sibling_t<T>>) {
        if (auto const* const others = other.get_if<utility::array<wider_sibling_t<T>>>()) {
            return equals_widened(own, *others);
        }
    }
    raw_elements const others = raw(other);
    if (own.size() != others.size) return false;
    if (own.empty()) return true;
    if constexpr (is_plain<T>) {
        return others.width == sizeof(T) && equals_run(own, others.data);
    } else {
        return false;
    }
}

/// Two arrays of one alternative.
template <class T>
bool equals_array(utility::array<T> const& own, utility::array<T> const& other) {
    if constexpr (std::is_same_v<T, io_value>) {
        return compare_elements(own, other).forth;
    } else if (own.size() != other.size()) {
        return false;
    } else if constexpr (is_plain<T>) {
        return equals_run(own, other.data());
    } else {
        for (unsigned int i = 0; i < own.size(); ++i) {
            if (own[i] != other[i]) return false;
        }
        return true;
    }
}

// --- what owns memory

/// A payload that is no scalar against another value. Out of line, so that scalars pass without a
/// stack frame.
template <class T>
[[gnu::noinline]] bool equals_owned(T const& own, io_value const& other) {
    using element = array_element_t<T>;
    if constexpr (std::is_same_v<T, io_object> || std::is_same_v<element, io_object>) {
        return false; // Intended: an object is equal to nothing.
    } else if constexpr (std::is_same_v<T, utility::string>) {
        auto const* const text = other.get_if<T>();
        return text != nullptr && own == *text;
    } else {
        auto const* const same = other.get_if<T>();
        return same != nullptr ? equals_array(own, *same) : equals_mixed_array(own, other);
    }
}

} // namespace
} // namespace detail

bool io_value::equals_same_type(io_value const& other) const {
    return detail::visit_index(index_, [&](auto index) -> bool {
        using T = detail::alternative_at<decltype(index)::value>;
        if constexpr (std::is_same_v<T, std::nullptr_t>) {
            return true;
        } else if constexpr (detail::is_plain<T>) {
            if constexpr (!std::is_void_v<detail::wider_sibling_t<T>>) {
                using sibling = detail::wider_sibling_t<T>;
                if (auto const* const number = other.get_if<sibling>()) {
                    return stored<T>() == static_cast<std::common_type_t<T, sibling>>(*number);
                }
            }
            if (other.index_ == detail::index_of<utility::string>) {
                return detail::equals_text_bytes(stored<T>(), other.storage_.bytes);
            }
            // Whatever else is stored there: the bytes are inside the value, and zero behind it.
            return detail::equals_bytes(stored<T>(), other.storage_.bytes);
        } else {
            return detail::equals_owned(stored<T>(), other);
        }
    });
}

} // namespace tavi::ioapi::v2

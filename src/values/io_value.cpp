#include <tavi/ioapi/v2/detail/narrow.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include "payload_transfer.hpp"

#include <cstring>
#include <type_traits>
#include <utility>

namespace tavi::ioapi::v2 {

namespace {

// What makes a move a copy of bytes: a scalar, two words of an array or a text, or the one word of
// a handle. None of them knows its own address.
template <class T>
constexpr bool is_relocatable = std::is_trivially_copyable_v<T> || detail::is_array<T> ||
                                std::is_same_v<T, utility::string> || std::is_same_v<T, io_object>;

template <class... Alternatives>
constexpr bool all_relocatable(detail::alternative_list<Alternatives...>) {
    return (is_relocatable<typename Alternatives::type> && ...);
}
static_assert(all_relocatable(detail::alternatives{}));

template <class... Alternatives>
constexpr bool storage_fits(detail::alternative_list<Alternatives...>, std::size_t size) {
    return ((sizeof(typename Alternatives::type) <= size &&
             alignof(typename Alternatives::type) <= 8) &&
            ...);
}

} // namespace

io_value::io_value(char const* s, unsigned int n)
    : type_(detail::declared_type<utility::string>()) {
    static_assert(storage_fits(detail::alternatives{}, sizeof(storage)));
    emplace(utility::string(s, n));
}

io_value::io_value(char const* s) : io_value(s, detail::narrow_text_size(std::strlen(s))) {}

// A scalar is copied with all the rest, behind one branch.
io_value::io_value(io_value const& other)
    : type_(other.type_), storage_(other.storage_), index_(other.index_) {
    if (owns_payload()) [[unlikely]] {
        storage_ = {};
        index_ = -1; // until there is a copy
        copy_owned(other);
    }
}

io_value::io_value(io_value&& other) : type_(other.type_), storage_(other.storage_) {
    detail::payload_transfer::take_payload(*this, other);
}

io_value& io_value::operator=(io_value const& other) {
    assign(other);
    return *this;
}

io_value& io_value::operator=(io_value&& other) {
    assign(std::move(other));
    return *this;
}

// The rare cases stand out of line, so that scalars pass without a stack frame.

// Leaves the index at -1 and the storage zero. \return false, and then nothing has changed, where
// `other` is held by the payload and would go with it
[[gnu::noinline]] bool io_value::drop_payload_but(io_value const& other) {
    if (holds_address(&other)) return false;
    destroy_payload();
    return true;
}

[[gnu::noinline]] io_value& io_value::assign_held(io_value const& other) {
    return assign(io_value(other));
}

[[gnu::noinline]] io_value& io_value::assign_held(io_value&& other) {
    return assign(io_value(std::move(other)));
}

io_value& io_value::assign(io_value const& other) {
    if (this == &other) return *this;
    if (owns_payload() && !drop_payload_but(other)) return assign_held(other);
    storage_ = other.storage_; // all of it was zero before the scalar came
    index_ = other.index_;
    if (owns_payload()) {
        storage_ = {};
        index_ = -1;
        copy_owned(other);
    }
    type_ = other.type_;
    return *this;
}

io_value& io_value::assign(io_value&& other) {
    if (this == &other) return *this;
    if (owns_payload() && !drop_payload_but(other)) return assign_held(std::move(other));
    index_ = -1;
    auto const type = other.type_;
    detail::payload_transfer::take_payload(*this, other);
    type_ = type;
    return *this;
}

unsigned int io_value::p_basic_type(io_data_type const& type) noexcept {
    return type.type_code();
}

unsigned int io_value::p_basic_type() const noexcept {
    return type_.type_code();
}

// Here the index is -1 and the storage zero. The index is stored last, so that a failure leaves no
// payload behind.
void io_value::copy_owned(io_value const& other) {
    detail::visit_index(other.index_, [&](auto index) {
        using T = detail::alternative_at<decltype(index)::value>;
        if constexpr (std::is_class_v<T>) {
            ::new (static_cast<void*>(storage_.bytes)) T(other.stored<T>());
        }
    });
    index_ = other.index_;
}

} // namespace tavi::ioapi::v2

#include <tavi/ioapi/v2/detail/narrow.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

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

io_value::io_value(io_value const& other) : type_(other.type_), index_(-1) {
    copy_payload(other);
}

io_value::io_value(io_value&& other) : type_(other.type_), index_(-1) {
    take_payload(other);
}

io_value& io_value::operator=(io_value const& other) {
    assign(other);
    return *this;
}

io_value& io_value::operator=(io_value&& other) {
    assign(std::move(other));
    return *this;
}

io_value& io_value::assign(io_value const& other) {
    if (this == &other) return *this;
    if (holds_address(&other)) {
        io_value copy(other); // it would go with the old payload
        return assign(std::move(copy));
    }
    drop_payload();
    copy_payload(other);
    type_ = other.type_;
    return *this;
}

io_value& io_value::assign(io_value&& other) {
    if (this == &other) return *this;
    if (holds_address(&other)) {
        io_value taken(std::move(other)); // it would go with the old payload
        return assign(std::move(taken));
    }
    drop_payload();
    auto const type = other.type_;
    take_payload(other);
    type_ = type;
    return *this;
}

unsigned int io_value::p_basic_type(io_data_type const& type) noexcept {
    return type.type_code();
}

unsigned int io_value::p_basic_type() const noexcept {
    return type_.type_code();
}

void io_value::drop_payload() {
    if (owns_payload()) {
        destroy_payload();
    } else {
        index_ = -1;
    }
}

// Here the index is -1: it is stored last, so that a failure leaves no payload behind.
void io_value::copy_payload(io_value const& other) {
    if (!other.owns_payload()) {
        storage_ = other.storage_; // all of it was zero before the scalar came
    } else {
        detail::visit_index(other.index_, [&](auto index) {
            using T = detail::alternative_at<decltype(index)::value>;
            if constexpr (std::is_class_v<T>) {
                ::new (static_cast<void*>(storage_.bytes)) T(other.stored<T>());
            }
        });
    }
    index_ = other.index_;
}

// Here the index is -1. Leaves the empty value in `other`.
void io_value::take_payload(io_value& other) {
    if (other.index_ < 0 || other.index_ >= detail::alternatives::size)
        detail::raise_corrupt_index();
    storage_ = std::exchange(other.storage_, {});
    index_ = std::exchange(other.index_, 0);
    other.type_ = {};
}

} // namespace tavi::ioapi::v2

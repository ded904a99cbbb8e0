#pragma once

#include "detail/data_model.hpp"
#include "interfaces/object.hpp"

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

namespace tavi::ioapi::v2 {

/// Which payload of a subscription id is live.
enum class subscription_id_kind : unsigned int { none = 0, number = 1, address = 2, object = 3 };

/// How a backend knows a subscription again: by a number, by an address of its own, by a counted
/// object, or not at all. The library keeps it and never looks into it. It can be moved but not
/// copied; a moved-from one is of kind `none`.
class subscription_id {
public:
    /// Kind `none`.
    subscription_id() noexcept = default;

    /// Any number.
    [[nodiscard]] static subscription_id from_number(unsigned long long number) noexcept {
        subscription_id made;
        made.kind_ = subscription_id_kind::number;
        made.payload_.number = number;
        return made;
    }
    /// Any address, null too; what it points to stays the caller's.
    [[nodiscard]] static subscription_id from_address(void* address) noexcept {
        subscription_id made;
        made.kind_ = subscription_id_kind::address;
        made.payload_.address = address;
        return made;
    }
    /// Takes over one reference to `object`, which must not be null, and releases it in the end.
    [[nodiscard]] static subscription_id adopt(interfaces::object* object) noexcept {
        subscription_id made;
        made.kind_ = subscription_id_kind::object;
        made.payload_.object = object;
        return made;
    }

    subscription_id(subscription_id const&) = delete;
    subscription_id(subscription_id&& other) noexcept
        : kind_(std::exchange(other.kind_, subscription_id_kind::none)) {
        // The word alone where that is all: what lies behind it stays zero.
        if (kind_ == subscription_id_kind::number) {
            payload_.number = other.payload_.number;
        } else {
            std::memcpy(static_cast<void*>(&payload_), &other.payload_, sizeof(void*));
        }
        other.payload_ = payload();
    }
    subscription_id& operator=(subscription_id const&) = delete;
    subscription_id& operator=(subscription_id&& other) noexcept {
        subscription_id taken(std::move(other));
        std::swap(kind_, taken.kind_);
        std::swap(payload_, taken.payload_);
        return *this;
    }
    ~subscription_id() {
        if (kind_ == subscription_id_kind::object) payload_.object->release();
    }

    /// Which payload is live.
    [[nodiscard]] subscription_id_kind kind() const noexcept { return kind_; }
    /// The number; 0 for another kind.
    [[nodiscard]] unsigned long long number() const noexcept {
        return kind_ == subscription_id_kind::number ? payload_.number : 0;
    }
    /// The address; null for another kind.
    [[nodiscard]] void* address() const noexcept {
        return kind_ == subscription_id_kind::address ? payload_.address : nullptr;
    }
    /// The object, which stays this id's; null for another kind.
    [[nodiscard]] interfaces::object* object() const noexcept {
        return kind_ == subscription_id_kind::object ? payload_.object : nullptr;
    }

private:
    friend struct detail::layout_of<subscription_id>;

    union payload {
        unsigned long long number; ///< the widest: all bytes of the payload start as zero
        void* address;
        interfaces::object* object;

        payload() noexcept : number(0) {}
    };

    subscription_id_kind kind_ = subscription_id_kind::none;
    payload payload_;
};

} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

static_assert(std::is_nothrow_move_constructible_v<subscription_id>);

template <>
struct layout_of<subscription_id> {
    static_assert(sizeof(subscription_id) == 16);
    static_assert(offsetof(subscription_id, kind_) == 0);
    static_assert(offsetof(subscription_id, payload_) == 8);
};

} // namespace tavi::ioapi::v2::detail

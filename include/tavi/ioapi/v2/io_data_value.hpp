#pragma once

#include "api.hpp"
#include "detail/data_model.hpp"
#include "io_timestamp.hpp"
#include "io_value.hpp"

#include <cstddef>

namespace tavi::ioapi::v2 {

/// What a read or a subscription delivers: a value, the time it was taken, and a quality.
class io_data_value {
public:
    /// Only the sign counts; other numbers are legal by cast.
    enum class value_quality : int { bad = -1, uncertain = 0, good = 1 };

    /// The empty value, no timestamp, quality 0.
    io_data_value() noexcept = default;

    /// A value without a timestamp; the setter of the same arguments stamps the present time.
    TAVI_IOAPI_API io_data_value(io_value v, value_quality q);
    /// A value with the time it was taken; moved in.
    TAVI_IOAPI_API io_data_value(io_value v, io_timestamp t, value_quality q);

    /// The value; valid while this object lives.
    [[nodiscard]] TAVI_IOAPI_API io_value const& value() const& noexcept TAVI_IOAPI_LIFETIMEBOUND;
    /// For moving the value out: `std::move(d).value()`.
    [[nodiscard]] TAVI_IOAPI_API io_value&& value() && noexcept TAVI_IOAPI_LIFETIMEBOUND;
    /// When the value was taken; 0 where nobody said.
    [[nodiscard]] TAVI_IOAPI_API io_timestamp timestamp() const noexcept;
    /// How far the value can be trusted.
    [[nodiscard]] TAVI_IOAPI_API value_quality quality() const noexcept;

    /// Whether the quality is below 0.
    [[nodiscard]] TAVI_IOAPI_API bool bad() const noexcept;
    /// Whether the quality is above 0. A quality of 0 is neither good nor bad.
    [[nodiscard]] TAVI_IOAPI_API bool good() const noexcept;
    /// Whether every field of the value's data type is 0, whatever payload it has.
    [[nodiscard]] TAVI_IOAPI_API bool empty() const noexcept;

    /// Set the timestamp and nothing else.
    TAVI_IOAPI_API void timestamp(io_timestamp t) noexcept;
    /// Set all three; the value is moved in.
    TAVI_IOAPI_API void value(io_value v, io_timestamp t, value_quality q);
    /// Set value and quality and stamp them with the present time. \throws std::bad_alloc, since
    /// the value is copied here, and then nothing has changed
    TAVI_IOAPI_API void value(io_value v, value_quality q);

private:
    friend struct detail::layout_of<io_data_value>;
    friend struct detail::payload_transfer;

    io_value value_;
    io_timestamp timestamp_;
    value_quality quality_ = value_quality::uncertain;
};

/// Equal when the timestamps are and then the values, by `==` of `io_value`; quality does not
/// count.
[[nodiscard]] TAVI_IOAPI_API bool operator==(io_data_value const& left, io_data_value const& right);
[[nodiscard]] TAVI_IOAPI_API bool operator!=(io_data_value const& left, io_data_value const& right);

/// By the values alone, whatever timestamp and quality.
[[nodiscard]] TAVI_IOAPI_API bool operator==(io_value const& left, io_data_value const& right);
[[nodiscard]] TAVI_IOAPI_API bool operator!=(io_value const& left, io_data_value const& right);
[[nodiscard]] TAVI_IOAPI_API bool operator==(io_data_value const& left, io_value const& right);
[[nodiscard]] TAVI_IOAPI_API bool operator!=(io_data_value const& left, io_value const& right);

} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

static_assert(!std::is_nothrow_destructible_v<io_data_value>, "it holds a value directly");

template <>
struct layout_of<io_data_value> {
    static_assert(sizeof(io_data_value) == by_data_model(64, 72));
    static_assert(offsetof(io_data_value, value_) == 0);
    static_assert(offsetof(io_data_value, timestamp_) == sizeof(io_value));
    static_assert(offsetof(io_data_value, quality_) == sizeof(io_value) + 8);
};

} // namespace tavi::ioapi::v2::detail

#include <tavi/ioapi/v2/io_data_value.hpp>

#include "payload_transfer.hpp"

#include <utility>

namespace tavi::ioapi::v2 {

io_data_value::io_data_value(io_value v, value_quality q)
    : io_data_value(std::move(v), io_timestamp(), q) {}

io_data_value::io_data_value(io_value v, io_timestamp t, value_quality q)
    : value_(detail::payload_transfer::taken(v)), timestamp_(t), quality_(q) {}

io_value const& io_data_value::value() const& noexcept {
    return value_;
}

io_value&& io_data_value::value() && noexcept {
    return std::move(value_);
}

io_timestamp io_data_value::timestamp() const noexcept {
    return timestamp_;
}

io_data_value::value_quality io_data_value::quality() const noexcept {
    return quality_;
}

bool io_data_value::bad() const noexcept {
    return static_cast<int>(quality_) < 0;
}

bool io_data_value::good() const noexcept {
    return static_cast<int>(quality_) > 0;
}

bool io_data_value::empty() const noexcept {
    return value_.data_type() == io_data_type{};
}

void io_data_value::timestamp(io_timestamp t) noexcept {
    timestamp_ = t;
}

void io_data_value::value(io_value v, io_timestamp t, value_quality q) {
    value_ = std::move(v);
    timestamp_ = t;
    quality_ = q;
}

void io_data_value::value(io_value v, value_quality q) {
    // Intended: the payload is copied, not moved.
    io_value temporary(v); // NOLINT(performance-unnecessary-value-param)
    value(std::move(temporary), io_timestamp::now(), q);
}

bool operator==(io_data_value const& left, io_data_value const& right) {
    return left.timestamp() == right.timestamp() && left.value() == right.value();
}

bool operator!=(io_data_value const& left, io_data_value const& right) {
    return !(left == right);
}

bool operator==(io_value const& left, io_data_value const& right) {
    return left == right.value();
}

bool operator!=(io_value const& left, io_data_value const& right) {
    return !(left == right);
}

bool operator==(io_data_value const& left, io_value const& right) {
    return left.value() == right;
}

bool operator!=(io_data_value const& left, io_value const& right) {
    return !(left == right);
}

} // namespace tavi::ioapi::v2

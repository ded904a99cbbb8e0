#include <tavi/ioapi/v2/read_result.hpp>

#include "entries.hpp"
#include "foundation/outcome.hpp"
#include "foundation/range.hpp"
#include "values/payload_transfer.hpp"

#include <utility>

namespace tavi::ioapi::v2 {

// Of an argument, which ends with the call.
inline void read_result::result_type::take(io_data_value& value) {
    detail::payload_transfer::replace(value_, value);
    detail::report(error_, io_errc::success);
}

void read_result::result_type::set(io_data_value value) {
    take(value);
}

void read_result::result_type::set(io_error error) {
    value_.value(io_value(), io_timestamp(), io_data_value::value_quality::uncertain);
    error_ = std::move(error);
}

read_result::read_result(utility::data_view<plc_identifier const> identifiers)
    : entries_(detail::entries_for<result_type>(identifiers)) {}

void read_result::assign(utility::data_view<plc_identifier const> identifiers) {
    detail::assign_entries(entries_, identifiers);
}

void read_result::resize(unsigned int size) {
    detail::resize_entries(entries_, size);
}

unsigned int read_result::size() const noexcept {
    return entries_.size();
}

read_result::result_type& read_result::operator[](unsigned int index) noexcept {
    return entries_[index];
}

read_result::result_type const& read_result::operator[](unsigned int index) const noexcept {
    return entries_[index];
}

TAVI_IOAPI_DEFINE_RANGE(read_result, read_result::result_type, entries_.data(), entries_.size());

read_result::result_type* read_result::find(plc_identifier const& identifier) noexcept {
    return detail::find_entry(begin(), end(), identifier);
}

read_result::result_type const* read_result::find(plc_identifier const& identifier) const noexcept {
    return detail::find_entry(begin(), end(), identifier);
}

void read_result::set(unsigned int index, io_data_value value) {
    entries_[index].take(value);
}

void read_result::set(unsigned int index, io_error error) {
    entries_[index].set(std::move(error));
}

void read_result::set(plc_identifier const& identifier, io_data_value value) {
    if (result_type* const entry = find(identifier)) entry->take(value);
}

void read_result::set(plc_identifier const& identifier, io_error error) {
    if (result_type* const entry = find(identifier)) entry->set(std::move(error));
}

} // namespace tavi::ioapi::v2

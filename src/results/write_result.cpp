#include <tavi/ioapi/v2/write_result.hpp>

#include "entries.hpp"
#include "foundation/range.hpp"

#include <utility>

namespace tavi::ioapi::v2 {

void write_result::result_type::set(io_error error) {
    error_ = std::move(error);
}

write_result::write_result(utility::data_view<plc_identifier const> identifiers)
    : entries_(detail::entries_for<result_type>(identifiers)) {}

void write_result::assign(utility::data_view<plc_identifier const> identifiers) {
    detail::assign_entries(entries_, identifiers);
}

void write_result::resize(unsigned int size) {
    detail::resize_entries(entries_, size);
}

unsigned int write_result::size() const noexcept {
    return entries_.size();
}

write_result::result_type& write_result::operator[](unsigned int index) noexcept {
    return entries_[index];
}

write_result::result_type const& write_result::operator[](unsigned int index) const noexcept {
    return entries_[index];
}

TAVI_IOAPI_DEFINE_RANGE(write_result, write_result::result_type, entries_.data(), entries_.size());

write_result::result_type* write_result::find(plc_identifier const& identifier) noexcept {
    return detail::find_entry(begin(), end(), identifier);
}

write_result::result_type const* write_result::find(
    plc_identifier const& identifier) const noexcept {
    return detail::find_entry(begin(), end(), identifier);
}

void write_result::set(unsigned int index, io_error error) {
    entries_[index].set(std::move(error));
}

void write_result::set(plc_identifier const& identifier, io_error error) {
    if (result_type* const entry = find(identifier)) entry->set(std::move(error));
}

} // namespace tavi::ioapi::v2

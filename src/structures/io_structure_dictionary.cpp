#include "io_structure_dictionary_impl.hpp"

#include <utility>

namespace tavi::ioapi::v2 {

io_structure_dictionary::io_structure_dictionary() : impl_(new impl) {}

io_structure_dictionary::~io_structure_dictionary() {
    delete impl_;
}

// Intended: the pointer is shared without a count and what was held is left behind.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
io_structure_dictionary& io_structure_dictionary::operator=(
    io_structure_dictionary const& other) noexcept {
    impl_ = other.impl_;
    return *this;
}

io_structure_dictionary& io_structure_dictionary::operator=(
    io_structure_dictionary&& other) noexcept {
    impl_ = other.impl_;
    return *this;
}

io_data_type io_structure_dictionary::add_structure(io_structure_type structure, io_error& error) {
    return impl_->add(std::move(structure), error);
}

io_structure_type io_structure_dictionary::get_structure(unsigned long long structure_id,
                                                         io_error& error) {
    return impl_->get(structure_id, error);
}

void io_structure_dictionary::replace_structure(unsigned long long structure_id,
                                                io_structure_type structure,
                                                io_error& error) {
    impl_->replace(structure_id, std::move(structure), error);
}

void io_structure_dictionary::remove_structure(unsigned long long structure_id, io_error& error) {
    impl_->remove(structure_id, error);
}

} // namespace tavi::ioapi::v2

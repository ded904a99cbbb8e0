#include "io_structure_dictionary_impl.hpp"

#include "foundation/outcome.hpp"

#include <random>
#include <utility>

namespace tavi::ioapi::v2 {

io_data_type io_structure_dictionary::impl::add(io_structure_type structure, io_error& error) {
    std::lock_guard const guard(lock_);
    unsigned long long const id = get_unused_id();
    structures_.insert_or_assign(id, std::move(structure));
    detail::report(error, io_errc::success);
    return io_data_type::object(id);
}

io_structure_type io_structure_dictionary::impl::get(unsigned long long id, io_error& error) const {
    std::lock_guard const guard(lock_);
    auto const place = structures_.find(id);
    if (place == structures_.end()) {
        detail::report(error, io_errc::not_found);
        return io_structure_type();
    }
    detail::report(error, io_errc::success);
    return place->second;
}

void io_structure_dictionary::impl::replace(unsigned long long id,
                                            io_structure_type structure,
                                            io_error& error) {
    std::lock_guard const guard(lock_);
    structures_.insert_or_assign(id, std::move(structure));
    detail::report(error, io_errc::success);
}

void io_structure_dictionary::impl::remove(unsigned long long id, io_error& error) {
    std::lock_guard const guard(lock_);
    bool const was_there = structures_.erase(id) != 0;
    detail::report(error, was_there ? io_errc::success : io_errc::not_found);
}

bool io_structure_dictionary::impl::is_id_unused(unsigned long long id) const {
    return structures_.find(id) == structures_.end();
}

unsigned long long io_structure_dictionary::impl::get_unused_id() const {
    // One for each thread, so that it needs no lock; seeded once, with 32 bits.
    thread_local std::mt19937_64 engine(std::random_device("default")());
    unsigned long long id = engine();
    while (!is_id_unused(id)) id = engine();
    return id;
}

} // namespace tavi::ioapi::v2

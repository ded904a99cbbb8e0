#pragma once

#include "api.hpp"
#include "io_data_type.hpp"
#include "io_error.hpp"
#include "io_structure_type.hpp"

namespace tavi::ioapi::v2 {

/// A registry of structure types by 64-bit id, which may be shared between threads:
/// `add_structure`, `get_structure`, `replace_structure` and `remove_structure` each hold its lock.
/// Ids are drawn at random, from one generator for each thread: one names a structure in this
/// dictionary alone and while it lives, so what is to last is the name of a structure, not its id.
/// All operations are logarithmic in the entries.
///
/// **Assignment does not do what assignment does elsewhere**: see `operator=`.
class TAVI_IOAPI_API io_structure_dictionary {
public:
    class impl;

    /// No entries. \throws std::bad_alloc
    io_structure_dictionary();
    io_structure_dictionary(io_structure_dictionary const&) = delete;
    io_structure_dictionary(io_structure_dictionary&&) = delete;

    /// \warning Both forms make this handle and `other` one dictionary, under one lock, and
    /// count no references: what this one held is left behind for good, the first of the two to be
    /// destroyed frees the dictionary for both, and only one of them may be destroyed. Never assign
    /// a temporary. It is kept for hosts that rely on it; new code shares a dictionary by
    /// reference.
    io_structure_dictionary& operator=(io_structure_dictionary const& other) noexcept;
    io_structure_dictionary& operator=(io_structure_dictionary&& other) noexcept;

    /// The caller sees to it that no other thread uses the dictionary.
    ~io_structure_dictionary();

    /// Add a structure under a fresh id; the same structure may be added twice.
    /// \param[out] error  always cleared
    /// \return the type that names the structure from now on: `object` with the id
    /// \throws std::bad_alloc, std::system_error from the lock, and on the first call of a thread
    ///     what `std::random_device` raises; then nothing was added
    io_data_type add_structure(io_structure_type structure, io_error& error);

    /// A deep copy of the structure under an id, out of reach of later changes.
    /// \param[out] error  cleared, or `not_found` (1)
    /// \return a structure without name and members where there is none
    /// \throws std::bad_alloc, std::system_error
    [[nodiscard]] io_structure_type get_structure(unsigned long long structure_id, io_error& error);

    /// Put a structure under an id, whether there was one or not. The id 0 is taken too, though
    /// objects with that id have free keys.
    /// \param[out] error  always cleared
    /// \throws std::bad_alloc, std::system_error
    void replace_structure(unsigned long long structure_id,
                           io_structure_type structure,
                           io_error& error);

    /// Remove the structure under an id. Objects and other structures that were made from it or
    /// name it stay as they are.
    /// \param[out] error  cleared, or `not_found` (1)
    /// \throws std::system_error
    void remove_structure(unsigned long long structure_id, io_error& error);

private:
    impl* impl_;
};

static_assert(sizeof(io_structure_dictionary) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2

#pragma once

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_structure_dictionary.hpp>
#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/plc_identifier.hpp>
#include <tavi/ioapi/v2/read_result.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>
#include <tavi/ioapi/v2/utility/data_view.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>
#include <tavi/ioapi/v2/utility/string_view.hpp>

/// \file
/// What the example host and its backend modules agree on beyond the library. All that crosses is
/// an abstract class, the types of the library and plain words; no exception does.
///
/// To grow, new operations are appended to `backend` and the entry function takes the next number
/// in its name, so that a host tells by that name what a module can do: 1 could read, 2 can
/// register structures too. What a backend wants to be told stands in its settings, by name, and
/// needs no change here.

namespace example {

namespace v2 = tavi::ioapi::v2;

/// One connection to one controller. One thread at a time uses it.
///
/// The errors that it reports refer to a category inside its module: they, and the results that
/// hold them, must be gone before the module is unloaded.
class backend {
public:
    backend(backend const&) = delete;
    backend& operator=(backend const&) = delete;

    /// Ends the connection and this object; the owner calls it once, in place of `delete`.
    virtual void release() noexcept = 0;

    /// Give the variables that can be read, in the backend's own order.
    /// \param[out] error  cleared first; set when the list could not be made
    virtual void variables(v2::utility::array<v2::plc_identifier>& list,
                           v2::io_error& error) noexcept = 0;

    /// Read the variables that `result` was made for and fill in its entries. What concerns single
    /// variables, a lost connection included, stands in their entries.
    /// \param[out] error  cleared first; set when the read as a whole could not be carried out
    virtual void read(v2::read_result& result, v2::io_error& error) noexcept = 0;

    /// Add the structure types of the backend's variables to the host's dictionary, and keep the
    /// ids that it gives: the data type of a structured value names one of them.
    ///
    /// The host calls it between opening and the first read, since only the dictionary gives ids;
    /// until then the entry of a structured variable has an error, and all others are read. What
    /// was added stays when the backend is released, for its values may outlive it. Called again,
    /// for another dictionary, it adds anew, and values read from then on name the new ids.
    /// \param dictionary  need last no longer than this call
    /// \param[out] error  cleared first; set when not all could be added, and then the ids that
    ///     values name stay as they were
    virtual void register_structures(v2::io_structure_dictionary& dictionary,
                                     v2::io_error& error) noexcept = 0;

protected:
    backend() noexcept = default;
    ~backend() = default;
};

/// One thing that a backend is told when it is opened.
struct setting {
    v2::utility::string_view name;
    v2::io_value value;
};

} // namespace example

/// The entry function that every backend module exports: connects to a controller.
/// \param settings  what this backend asks for, in any order
/// \param[out] problem  one line that says to people what prevented it
/// \param[out] error  cleared first; set where the result is null
extern "C" [[gnu::visibility("default")]] example::backend* example_open_backend_2(
    example::v2::utility::data_view<example::setting const> settings,
    example::v2::utility::string& problem,
    example::v2::io_error& error) noexcept;

namespace example {

using open_backend = decltype(&example_open_backend_2);

/// The name to look up in a module for an `open_backend`.
inline constexpr char const* open_backend_name = "example_open_backend_2";

} // namespace example

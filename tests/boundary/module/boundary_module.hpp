#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

/// \file
/// What the host and the test module, which stands for a backend, know of each other. The module
/// is loaded at run time and has seen the public headers alone.

namespace boundary {

namespace v2 = tavi::ioapi::v2;

/// Serves the host's calls from within the other shared object.
class backend_module {
public:
    /// A value of the alternative `index`, as `sample` describes it; the empty one for 0.
    virtual v2::io_value make_value(int index) const = 0;
    virtual v2::io_value copy_value(v2::io_value const& value) const = 0;
    virtual v2::io_value pass_value(v2::io_value value) const = 0;
    /// Ends the value in the module.
    virtual void take_value(v2::io_value value) const = 0;
    virtual void assign_value(v2::io_value& target, v2::io_value const& source) const = 0;

    virtual v2::utility::string upper_case(v2::utility::string_view text) const = 0;
    virtual v2::utility::array<int> doubled(v2::utility::data_view<int const> numbers) const = 0;
    virtual v2::utility::array<v2::utility::string> repeated(v2::utility::string text,
                                                             unsigned int count) const = 0;
    virtual void take(v2::utility::array<v2::utility::string> texts) const = 0;
    virtual v2::io_timestamp later(v2::io_timestamp time, long long ticks) const = 0;
    virtual v2::plc_identifier identifier(v2::utility::string_view text,
                                          unsigned long long number) const = 0;
    virtual v2::io_data_type type_of(v2::io_value const& value) const = 0;
    virtual v2::io_object object(unsigned long long id) const = 0;
    virtual v2::io_structure_type structure() const = 0;

    /// The module's own category: "boundary", with a message for code 12.
    virtual v2::io_error_category const& category() const = 0;
    /// Code 12 of that category, with diagnostics that count by the library's implementation.
    virtual v2::io_error detailed_error() const = 0;
    /// Code 13, with diagnostics that count by themselves.
    virtual v2::io_error self_counted_error() const = 0;
    /// How many of the module's diagnostics are alive.
    virtual int living_diagnostics() const = 0;

    /// Every entry by its index: values of the alternatives, then errors of every kind.
    virtual void read(v2::read_result& result) const = 0;
    virtual void write(v2::write_result& result) const = 0;

    /// Throws an `io_exception`.
    [[noreturn]] virtual void raise(v2::io_error error) const = 0;
    [[noreturn]] virtual void raise_own() const = 0;
    /// \return the code of the `io_exception` that `call` throws, -1 where it throws none
    virtual int code_raised_by(void (*call)()) const = 0;

    /// The message that an initialiser of the module asked of the generic category.
    virtual char const* early_message() const = 0;
    /// Where the module sees what all share.
    virtual v2::io_error_category const* generic_category() const = 0;
    virtual char const* shared_empty_text() const = 0;

protected:
    ~backend_module() = default;
};

/// The one function that the module exports.
using entry_function = backend_module const*();
inline constexpr char entry_name[] = "boundary_module_entry";

} // namespace boundary

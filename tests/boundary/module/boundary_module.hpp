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

    /// Three nodes: a folder and two variables.
    virtual void browse(v2::browse_result& result) const = 0;
    /// Ids of every kind in turn, the objects being the module's, and an error for the last.
    virtual void subscribe(v2::utility::data_view<v2::plc_identifier const> identifiers,
                           v2::subscription_result& result) const = 0;
    /// How many of the module's counted objects are alive.
    virtual int living_objects() const = 0;
    /// A form with one category of two options.
    virtual v2::config::config_template form() const = 0;
    /// One issue for each option of the form that has no value.
    virtual v2::config::verification_result verify(v2::config::store const& values) const = 0;
    /// Add the pair `seen` = true.
    virtual void annotate(v2::io_error_diagnostics_generic& diagnostics) const = 0;

    /// Log, register a structure and look up an unknown type with the host behind `query`.
    /// \return the type that the structure got; `error` is the one of the lookup
    virtual v2::io_data_type ask(v2::backend_query query, v2::io_error& error) const = 0;
    /// A host inside the module.
    virtual v2::backend_query query() const = 0;

    /// The number that an initialiser of the module found in the record for absent variables.
    virtual int early_absent_code() const = 0;

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

#pragma once

#include <tavi/ioapi/v2/backend_query.hpp>
#include <tavi/ioapi/v2/browse_result.hpp>
#include <tavi/ioapi/v2/config/config_template.hpp>
#include <tavi/ioapi/v2/config/store.hpp>
#include <tavi/ioapi/v2/config/verification_result.hpp>
#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/plc_identifier.hpp>
#include <tavi/ioapi/v2/read_result.hpp>
#include <tavi/ioapi/v2/subscription_id.hpp>
#include <tavi/ioapi/v2/subscription_result.hpp>
#include <tavi/ioapi/v2/utility/data_view.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>
#include <tavi/ioapi/v2/write_result.hpp>

/// \file
/// What the example host and its backend modules agree on beyond the library. All that crosses is
/// an abstract class, the types of the library and plain words; no exception does.
///
/// To grow, new operations are appended to the classes and the entry function takes the next number
/// in its name, so that a host tells by that name what a module can do.
///
/// Where an operation has an `error`, it clears it first and sets it when the operation as a whole
/// could not be carried out. What concerns single variables, a lost connection included, stands in
/// their entries. Errors may refer to a category inside the module: they, and the results that hold
/// them, must be gone before the module is unloaded.

namespace example {

namespace v2 = tavi::ioapi::v2;

/// One connection to one controller. One thread at a time uses it.
///
/// A variable is named by the primary part of its identifier. Where it is structured, the secondary
/// part may name one member.
class backend {
public:
    backend(backend const&) = delete;
    backend& operator=(backend const&) = delete;

    /// Ends all subscriptions, the connection and this object; the owner calls it once, in place of
    /// `delete`.
    virtual void release() noexcept = 0;

    /// Add the nodes that stand directly below a folder.
    /// \param folder  identifier of a node of class `folder`; a default identifier for the top.
    ///     Another one gives `not_found`
    virtual void browse(v2::plc_identifier const& folder,
                        v2::browse_result& result,
                        v2::io_error& error) noexcept = 0;

    /// Read the variables that `result` was made for and fill in its entries.
    virtual void read(v2::read_result& result, v2::io_error& error) noexcept = 0;

    /// Write `values[i]` to the variable of `result[i]`, for each; a value of another type is
    /// converted to that of the variable, or refused in its entry. The entry of a value that was
    /// written gets a default error.
    virtual void write(v2::utility::data_view<v2::io_value const> values,
                       v2::write_result& result,
                       v2::io_error& error) noexcept = 0;

    /// Set an entry of `result` for each variable: its data type and the id of its subscription, or
    /// an error. A member cannot be subscribed to, only the whole variable. Who subscribes twice
    /// has two subscriptions.
    virtual void subscribe(v2::utility::data_view<v2::plc_identifier const> variables,
                           v2::subscription_result& result,
                           v2::io_error& error) noexcept = 0;

    /// How long the host should let pass from one `poll` to the next, in milliseconds, at least 1.
    [[nodiscard]] virtual unsigned int poll_interval() const noexcept = 0;

    /// Replace the entries of `changes` by one for each subscribed variable whose value, quality or
    /// error is not that of the last poll, so that each change is delivered once, and after
    /// `subscribe` what there is.
    virtual void poll(v2::read_result& changes, v2::io_error& error) noexcept = 0;

    /// End one subscription. `not_found` for an id that is none of this backend's.
    virtual void unsubscribe(v2::subscription_id const& id, v2::io_error& error) noexcept = 0;

protected:
    backend() noexcept = default;
    ~backend() = default;
};

/// What a module says of itself.
struct module_info {
    v2::utility::string name;         ///< a word, such as `modbus`
    v2::utility::string summary;      ///< one line for people, without a full stop
    v2::backend_version_info version; ///< of the module
};

/// What a module offers without any connection. It lives as long as the module is loaded and
/// may be used by several threads.
class backend_module {
public:
    backend_module(backend_module const&) = delete;
    backend_module& operator=(backend_module const&) = delete;

    virtual void describe(module_info& info, v2::io_error& error) const noexcept = 0;

    /// Replace `form` by the options that this backend can be given.
    virtual void form(v2::config::config_template& form, v2::io_error& error) const noexcept = 0;

    /// Replace `verdict` by what there is to say to a configuration. Nothing is connected to. A
    /// key that is no option of the form is an error. With an issue of severity `error` among them,
    /// `open` refuses the configuration; without one, only the world outside can make it fail.
    virtual void verify(v2::config::store const& values,
                        v2::config::verification_result& verdict,
                        v2::io_error& error) const noexcept = 0;

    /// Connect to a controller, and register with the host the structures of its variables.
    /// \param values  those of the form; options that are absent have their defaults
    /// \param host  its services, which live until the backend is released
    /// \param[out] problem  one line that says to people what prevented it
    /// \return null, with `error` set, where it could not be opened
    [[nodiscard]] virtual backend* open(v2::config::store const& values,
                                        v2::backend_query host,
                                        v2::utility::string& problem,
                                        v2::io_error& error) const noexcept = 0;

protected:
    backend_module() noexcept = default;
    ~backend_module() = default;
};

} // namespace example

/// The entry function that every backend module exports. It never gives null.
extern "C" [[gnu::visibility("default")]] example::backend_module const*
example_backend_module_3() noexcept;

namespace example {

using get_backend_module = decltype(&example_backend_module_3);

/// The name to look up in a module for a `get_backend_module`.
inline constexpr char const* entry_name = "example_backend_module_3";

} // namespace example

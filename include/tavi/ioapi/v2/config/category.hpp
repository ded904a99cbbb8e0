#pragma once

#include "../api.hpp"
#include "../detail/deep_ptr.hpp"
#include "../utility/data_view.hpp"
#include "../utility/string_view.hpp"
#include "option.hpp"

#include <string_view>

namespace tavi::ioapi::v2::config {

/// A named group of options in a configuration form, in the order in which they are shown.
///
/// `add_option` keeps keys unique; the constructor and writing through `options()` do not. Lookups
/// compare keys byte by byte, take the first match, are linear and allocate nothing.
///
/// A handle that owns its content alone: copies are deep, a move leaves a null handle, which may
/// only be destroyed or assigned to; assigning from a null handle gives a null handle. Not
/// synchronised.
class TAVI_IOAPI_API category {
public:
    class impl;

    /// \param wants_connection  that there should be a connection while its values are chosen
    /// \param collapsed  that the category is shown folded at first. Both are for the host; the
    ///     library only keeps them
    /// \param options  copied as they stand, duplicates included
    /// \throws std::bad_alloc, std::length_error for too many options
    category(utility::string_view name,
             utility::string_view description,
             bool wants_connection,
             bool collapsed,
             utility::data_view<option const> options = {});

    category(category const&);
    category(category&&) noexcept;
    /// In place, field by field: when memory is exhausted the target may hold some of each.
    category& operator=(category const&);
    category& operator=(category&&) noexcept;
    ~category();

    /// What tells this category from others in its template. The views live until the category is
    /// assigned to or destroyed.
    [[nodiscard]] utility::string_view name() const TAVI_IOAPI_LIFETIMEBOUND;
    /// For people.
    [[nodiscard]] utility::string_view description() const TAVI_IOAPI_LIFETIMEBOUND;

    /// As it was given.
    [[nodiscard]] bool wants_connection() const noexcept;
    /// As it was given.
    [[nodiscard]] bool collapsed() const noexcept;

    /// The options in order. They can be assigned to, but their number stays. The view lives until
    /// an option is added or removed, or the category assigned to or destroyed.
    [[nodiscard]] utility::data_view<option const> options() const TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] utility::data_view<option> options() TAVI_IOAPI_LIFETIMEBOUND;

    /// Add an option at the end. \return false, and nothing changes, where its key is taken
    /// \param option  where it is moved, it is taken over in every case and must not be one of this
    ///     category's own
    /// \throws std::bad_alloc, std::length_error; then the category is as it was
    bool add_option(option const& option);
    bool add_option(option&& option);

    /// Whether there is an option with this key.
    [[nodiscard]] bool has_option(std::string_view key) const;
    /// The first option with this key, or null. Ends with the next option added or removed.
    [[nodiscard]] option* get_option(std::string_view key) TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] option const* get_option(std::string_view key) const TAVI_IOAPI_LIFETIMEBOUND;

    /// Remove the first option with this key. \return whether there was one
    bool remove_option(std::string_view key);

private:
    detail::deep_ptr<impl> impl_;
};

static_assert(sizeof(category) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2::config

#pragma once

#include "../api.hpp"
#include "../detail/deep_ptr.hpp"
#include "../utility/data_view.hpp"
#include "../utility/string_view.hpp"
#include "category.hpp"
#include "option.hpp"

namespace tavi::ioapi::v2::config {

/// The whole configuration form of a backend: categories in the order in which they are shown. The
/// values that a form is filled with stand in a `store`, under the keys of the options.
///
/// `add_category` keeps names unique; the constructor and writing through `categories()` do not.
/// One key may stand in several categories, and then the first category counts. Lookups compare
/// byte by byte, are linear and allocate nothing.
///
/// A handle that owns its content alone: copies are deep, a move leaves a null handle, which may
/// only be destroyed or assigned to; assigning from a null handle gives a null handle. Not
/// synchronised.
class TAVI_IOAPI_API config_template {
public:
    class impl;

    /// No categories. \throws std::bad_alloc
    config_template();
    /// Copies of the categories as they stand, duplicates included.
    /// \throws std::bad_alloc, std::length_error for too many categories
    explicit config_template(utility::data_view<category const> categories);

    config_template(config_template const&);
    config_template(config_template&&) noexcept;
    /// In place, one by one: when memory is exhausted the target may hold some of each, and one
    /// that is mixed.
    config_template& operator=(config_template const&);
    config_template& operator=(config_template&&) noexcept;
    ~config_template();

    /// The categories in order. They can be assigned to, but their number stays. The view lives
    /// until a category is added or removed, or the template assigned to or destroyed.
    [[nodiscard]] utility::data_view<category const> categories() const TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] utility::data_view<category> categories() TAVI_IOAPI_LIFETIMEBOUND;

    /// Add a category at the end. \return false, and nothing changes, where its name is taken
    /// \param category  where it is moved, it is taken over in every case and must not be one of
    ///     this template's own
    /// \throws std::bad_alloc, std::length_error; then the template is as it was
    bool add_category(category category);

    /// Whether there is a category of this name.
    [[nodiscard]] bool has_category(utility::string_view name) const;
    /// The first category of this name, or null. Ends with the next one added or removed.
    [[nodiscard]] category* get_category(utility::string_view name) TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] category const* get_category(utility::string_view name) const
        TAVI_IOAPI_LIFETIMEBOUND;

    /// Remove the first category of this name with its options. \return whether there was one
    bool remove_category(utility::string_view name);

    /// The first option with this key in the first category that has one, or null.
    [[nodiscard]] option* get_option(utility::string_view key) TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] option const* get_option(utility::string_view key) const TAVI_IOAPI_LIFETIMEBOUND;

    /// **Says nothing of options**: whether there is a category of this name. Modules rely on it;
    /// to know whether there is an option, compare `get_option` with null.
    [[nodiscard]] bool has_option(utility::string_view category_name) const;

private:
    detail::deep_ptr<impl> impl_;
};

static_assert(sizeof(config_template) == sizeof(void*), "a handle is one pointer");

} // namespace tavi::ioapi::v2::config

#pragma once

#include "../api.hpp"
#include "../detail/data_model.hpp"
#include "../detail/deep_ptr.hpp"
#include "../io_data_type.hpp"
#include "../io_value.hpp"
#include "../utility/data_view.hpp"
#include "../utility/string.hpp"
#include "../utility/string_view.hpp"

#include <cstddef>

namespace tavi::ioapi::v2::config {

/// Describes one setting that a backend can be given: the key of its value in a `store`, what a
/// form shows of it, and what a value must be. It holds no value but the default.
///
/// What is described is not checked here: neither that a default or a choice has the stated type,
/// nor what a key looks like.
///
/// A handle that owns its content alone: copies are deep, a move leaves a null handle, which may
/// only be destroyed or assigned to; assigning from a null handle gives a null handle. Not
/// synchronised.
class TAVI_IOAPI_API option {
public:
    class impl;

    /// One value to choose from.
    struct value_option {
        utility::string display_name; ///< for people
        utility::string description;  ///< for people
        io_value value;               ///< what is chosen with it
    };

    /// A required setting: a value of `value_type`, without a default. All texts are copied.
    /// \throws std::bad_alloc, std::length_error for too many choices, as all constructors
    option(utility::string_view key,
           utility::string_view display_name,
           utility::string_view description,
           io_data_type::basic_types value_type,
           utility::data_view<value_option const> options = {});
    /// An optional setting, whose type is the element kind of its default. `io_value()` counts for
    /// no default and leaves the type `empty`, and the setting is optional all the same; a type
    /// without a value, `io_value(type, nullptr)`, says the type and counts for a default.
    option(utility::string_view key,
           utility::string_view display_name,
           utility::string_view description,
           io_value default_value,
           utility::data_view<value_option const> options = {});

    option(option const&);
    option(option&&) noexcept;
    /// In place, field by field: when memory is exhausted the target may hold some of each.
    option& operator=(option const&);
    option& operator=(option&&) noexcept;
    ~option();

    /// What tells this option from others. The views live until the option is assigned to or
    /// destroyed.
    [[nodiscard]] utility::string_view key() const TAVI_IOAPI_LIFETIMEBOUND;
    /// For people.
    [[nodiscard]] utility::string_view display_name() const TAVI_IOAPI_LIFETIMEBOUND;
    /// For people, at length.
    [[nodiscard]] utility::string_view description() const TAVI_IOAPI_LIFETIMEBOUND;

    /// What a value must be; of an optional setting, the element kind of its default. That a
    /// default is an array is seen in its `data_type()` alone.
    [[nodiscard]] io_data_type::basic_types value_type() const noexcept;

    /// Whether the default has a data type other than the one whose fields are all 0.
    [[nodiscard]] bool has_default_value() const noexcept;
    /// The default, or the empty value.
    [[nodiscard]] io_value const& default_value() const noexcept TAVI_IOAPI_LIFETIMEBOUND;

    /// Whether the option was made from a default, be it an empty one.
    [[nodiscard]] bool optional() const noexcept;

    /// The values to choose from; none where every value will do. The view lives until they are
    /// replaced, or the option assigned to or destroyed.
    [[nodiscard]] utility::data_view<value_option const> options() const TAVI_IOAPI_LIFETIMEBOUND;
    /// Replace the values to choose from by copies. \throws std::bad_alloc, std::length_error;
    /// then the option is as it was
    void options(utility::data_view<value_option const> options);

private:
    detail::deep_ptr<impl> impl_;
};

static_assert(sizeof(option) == sizeof(void*), "a handle is one pointer");
static_assert(sizeof(option::value_option) == detail::by_data_model(72, 104));
static_assert(offsetof(option::value_option, display_name) == 0);
static_assert(offsetof(option::value_option, description) == detail::by_data_model(12, 24));
static_assert(offsetof(option::value_option, value) == detail::by_data_model(24, 48));

} // namespace tavi::ioapi::v2::config

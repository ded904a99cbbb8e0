#pragma once

#include <tavi/ioapi/v2/config/config_template.hpp>

#include <string_view>
#include <vector>

namespace tavi::ioapi::v2::config {

/// The categories of a template.
class config_template::impl {
public:
    using category_list = std::vector<category>;

    impl() = default;
    TAVI_IOAPI_API explicit impl(std::vector<category> categories);

    TAVI_IOAPI_API utility::data_view<category const> categories() const;
    TAVI_IOAPI_API utility::data_view<category> categories();

    TAVI_IOAPI_API bool add_category(category category);
    TAVI_IOAPI_API bool has_category(std::string_view name) const;
    TAVI_IOAPI_API category* get_category(std::string_view name);
    TAVI_IOAPI_API category const* get_category(std::string_view name) const;
    TAVI_IOAPI_API bool remove_category(std::string_view name);
    TAVI_IOAPI_API option* get_option(std::string_view key);
    TAVI_IOAPI_API option const* get_option(std::string_view key) const;
    /// Whether there is such an option. The handle does not ask this.
    TAVI_IOAPI_API bool has_option(std::string_view key) const;

    /// The first category of this name, or the end.
    TAVI_IOAPI_API category_list::iterator get_category_iterator(std::string_view name);
    TAVI_IOAPI_API category_list::const_iterator get_category_iterator(std::string_view name) const;

private:
    category_list categories_;
};

} // namespace tavi::ioapi::v2::config

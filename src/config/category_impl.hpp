#pragma once

#include <tavi/ioapi/v2/config/category.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace tavi::ioapi::v2::config {

/// What a category holds.
class category::impl {
public:
    using option_list = std::vector<option>;

    TAVI_IOAPI_API impl(std::string name,
                        std::string description,
                        bool wants_connection,
                        bool collapsed,
                        std::vector<option> options);

    TAVI_IOAPI_API std::string const& name() const noexcept;
    TAVI_IOAPI_API std::string const& description() const noexcept;
    TAVI_IOAPI_API bool wants_connection() const noexcept;
    TAVI_IOAPI_API bool collapsed() const noexcept;
    TAVI_IOAPI_API utility::data_view<option const> options() const;
    TAVI_IOAPI_API utility::data_view<option> options();

    TAVI_IOAPI_API bool add_option(option option);
    TAVI_IOAPI_API bool has_option(std::string_view key) const;
    TAVI_IOAPI_API option* get_option(std::string_view key);
    TAVI_IOAPI_API option const* get_option(std::string_view key) const;
    TAVI_IOAPI_API bool remove_option(std::string_view key);

    /// The first option with this key, or the end.
    TAVI_IOAPI_API option_list::iterator get_option_iterator(std::string_view key);
    TAVI_IOAPI_API option_list::const_iterator get_option_iterator(std::string_view key) const;

private:
    std::string name_;
    std::string description_;
    bool wants_connection_;
    bool collapsed_;
    option_list options_;
};

/// What tells categories apart.
inline std::string_view text_of(category const& category) {
    return category.name();
}

} // namespace tavi::ioapi::v2::config

#pragma once

#include <tavi/ioapi/v2/config/option.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace tavi::ioapi::v2::config {

/// What an option holds.
class option::impl {
public:
    TAVI_IOAPI_API impl(std::string key,
                        std::string display_name,
                        std::string description,
                        io_data_type::basic_types value_type,
                        std::vector<value_option> options);
    TAVI_IOAPI_API impl(std::string key,
                        std::string display_name,
                        std::string description,
                        io_value default_value,
                        std::vector<value_option> options);
    impl(impl const&) = default;
    impl(impl&&) = delete;
    inline impl& operator=(impl const& other);
    impl& operator=(impl&&) = delete;
    ~impl() = default;

    TAVI_IOAPI_API std::string const& key() const noexcept;
    TAVI_IOAPI_API std::string const& display_name() const noexcept;
    TAVI_IOAPI_API std::string const& description() const noexcept;
    TAVI_IOAPI_API io_data_type::basic_types value_type() const noexcept;
    TAVI_IOAPI_API bool has_default_value() const noexcept;
    TAVI_IOAPI_API io_value const& default_value() const noexcept;
    TAVI_IOAPI_API bool optional() const noexcept;
    TAVI_IOAPI_API utility::data_view<value_option const> options() const;
    TAVI_IOAPI_API void options(std::vector<value_option> options);

private:
    std::string key_;
    std::string display_name_;
    std::string description_;
    io_data_type::basic_types value_type_;
    io_value default_value_;
    bool optional_;
    std::vector<value_option> options_;
};

/// Assign element by element where the room suffices. An element is copied first and then moved
/// in, so that a failure leaves the values that it meets whole.
void assign(std::vector<option::value_option>& target,
            std::vector<option::value_option> const& source);

// Inline, and so not exported: it is no part of the interface.
option::impl& option::impl::operator=(impl const& other) {
    key_ = other.key_;
    display_name_ = other.display_name_;
    description_ = other.description_;
    value_type_ = other.value_type_;
    default_value_ = io_value(other.default_value_);
    optional_ = other.optional_;
    if (this != &other) assign(options_, other.options_);
    return *this;
}

/// What tells options apart.
inline std::string_view text_of(option const& option) {
    return option.key();
}

} // namespace tavi::ioapi::v2::config

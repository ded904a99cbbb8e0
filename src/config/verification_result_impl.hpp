#pragma once

#include <tavi/ioapi/v2/config/verification_result.hpp>

#include <string_view>
#include <vector>

namespace tavi::ioapi::v2::config {

/// The issues, in the order of adding.
class verification_result::impl {
public:
    TAVI_IOAPI_API void add_issue(issue_type issue);
    TAVI_IOAPI_API std::vector<issue_type> issues_for_option(std::string_view key) const;
    TAVI_IOAPI_API severity_type severity_for_option(std::string_view key) const noexcept;
    TAVI_IOAPI_API unsigned int size() const noexcept;
    TAVI_IOAPI_API issue_type* data() noexcept;
    TAVI_IOAPI_API issue_type const* data() const noexcept;

private:
    std::vector<issue_type> issues_;
};

} // namespace tavi::ioapi::v2::config

#pragma once

#include <tavi/ioapi/v2/config/store.hpp>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tavi::ioapi::v2::config {

/// The values by key. The transparent comparator lets a lookup do without a string of its own.
class store::impl {
public:
    TAVI_IOAPI_API void set(std::string_view key, io_value value);
    TAVI_IOAPI_API bool has(std::string_view key) const noexcept;
    TAVI_IOAPI_API io_value get(std::string_view key) const;
    TAVI_IOAPI_API io_value get(std::string_view key, io_value const& default_value) const;
    /// The value under the key, or null.
    TAVI_IOAPI_API io_value const* get_ptr(std::string_view key) const noexcept;
    TAVI_IOAPI_API bool remove(std::string_view key);
    TAVI_IOAPI_API std::vector<std::string_view> keys() const;

private:
    std::map<std::string, io_value, std::less<>> values_;
};

} // namespace tavi::ioapi::v2::config

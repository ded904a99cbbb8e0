#pragma once

#include <tavi/ioapi/v2/browse_result.hpp>

#include <vector>

namespace tavi::ioapi::v2 {

/// The nodes, in the order of pushing.
class browse_result::impl {
public:
    impl() = default;
    TAVI_IOAPI_API explicit impl(std::vector<browsing::node> nodes);

    TAVI_IOAPI_API void resize(unsigned int size);
    TAVI_IOAPI_API void reserve(unsigned int capacity);
    TAVI_IOAPI_API void push(browsing::node node);
    TAVI_IOAPI_API unsigned int size() const noexcept;
    TAVI_IOAPI_API void clear() noexcept;
    TAVI_IOAPI_API browsing::node* data() noexcept;
    TAVI_IOAPI_API browsing::node const* data() const noexcept;
    /// The first node's address plus `index`, also where there is no node.
    TAVI_IOAPI_API browsing::node& operator[](unsigned int index);
    TAVI_IOAPI_API browsing::node const& operator[](unsigned int index) const;

private:
    std::vector<browsing::node> nodes_;
};

} // namespace tavi::ioapi::v2

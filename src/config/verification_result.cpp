#include "foundation/growing_list.hpp"
#include "foundation/handle.hpp"
#include "foundation/range.hpp"
#include "verification_result_impl.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tavi::ioapi::v2::config {

namespace {

using issue_type = verification_result::issue_type;
using severity_type = verification_result::severity_type;

bool concerns(issue_type const& issue, std::string_view key) noexcept {
    return std::any_of(issue.options.begin(), issue.options.end(),
                       [&](utility::string const& option) { return option == key; });
}

} // namespace

// --- the issues

void verification_result::impl::add_issue(issue_type issue) {
    detail::append(issues_, std::move(issue));
}

std::vector<issue_type> verification_result::impl::issues_for_option(std::string_view key) const {
    std::vector<issue_type> found;
    std::copy_if(issues_.begin(), issues_.end(), std::back_inserter(found),
                 [&](issue_type const& issue) { return concerns(issue, key); });
    return found;
}

severity_type verification_result::impl::severity_for_option(std::string_view key) const noexcept {
    auto worst = severity_type::none;
    for (issue_type const& issue : issues_) {
        if (concerns(issue, key)) worst = std::max(worst, issue.severity);
    }
    return worst;
}

unsigned int verification_result::impl::size() const noexcept {
    return static_cast<unsigned int>(issues_.size()); // the list is not let grow beyond it
}

issue_type* verification_result::impl::data() noexcept {
    return issues_.data();
}

issue_type const* verification_result::impl::data() const noexcept {
    return issues_.data();
}

// --- the handle

verification_result::verification_result() : impl_(std::in_place) {}

TAVI_IOAPI_DEFINE_HANDLE(verification_result, verification_result);

void verification_result::add_issue(issue_type issue) {
    impl_->add_issue(std::move(issue));
}

utility::array<issue_type> verification_result::issues_for_option(utility::string_view key) const {
    return utility::array<issue_type>(impl_->issues_for_option(key));
}

severity_type verification_result::severity_for_option(utility::string_view key) const noexcept {
    return impl_->severity_for_option(key);
}

TAVI_IOAPI_DEFINE_RANGE(verification_result, issue_type, impl_->data(), impl_->size());

} // namespace tavi::ioapi::v2::config

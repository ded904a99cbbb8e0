#pragma once

#include "../api.hpp"
#include "../detail/data_model.hpp"
#include "../detail/deep_ptr.hpp"
#include "../utility/array.hpp"
#include "../utility/string.hpp"
#include "../utility/string_view.hpp"

#include <cstddef>
#include <type_traits>

namespace tavi::ioapi::v2::config {

/// What a backend says to a configuration: issues in the order in which it added them.
///
/// A handle that owns its content alone: copies are deep, a move leaves a null handle, which may
/// only be destroyed or assigned to; assigning from a null handle gives a null handle. Not
/// synchronised.
class TAVI_IOAPI_API verification_result {
public:
    class impl;

    /// The larger, the worse. Other numbers are legal by cast.
    enum class severity_type : int { none = 0, information = 1, warning = 2, error = 3 };

    /// One thing that the backend has to say.
    struct issue_type {
        severity_type severity = severity_type::none; ///< how bad it is
        utility::string message;                      ///< for people
        /// The keys of the options concerned; none where the whole configuration is.
        utility::array<utility::string> options;
    };
    using value_type = issue_type;
    using iterator = issue_type*;
    using const_iterator = issue_type const*;

    /// No issues. \throws std::bad_alloc
    verification_result();

    verification_result(verification_result const&);
    verification_result(verification_result&&) noexcept;
    /// In place, one by one: when memory is exhausted the target may hold some of each, and one
    /// that is mixed.
    verification_result& operator=(verification_result const&);
    verification_result& operator=(verification_result&&) noexcept;
    ~verification_result();

    /// Move an issue to the end; the same one twice makes two.
    /// \throws std::bad_alloc, std::length_error; then the result is as it was
    void add_issue(issue_type issue);

    /// Copies of the issues that name the key, in order, each once. Linear. \throws std::bad_alloc
    [[nodiscard]] utility::array<issue_type> issues_for_option(utility::string_view key) const;

    /// The worst severity of all issues that name the key, at least `none`: negative ones never
    /// show. Linear, no allocation.
    [[nodiscard]] severity_type severity_for_option(utility::string_view key) const noexcept;

    /// All issues, those of the whole configuration included; pointers that end with the next
    /// issue added. Their number is the distance of the two.
    [[nodiscard]] issue_type* begin() noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] issue_type* end() noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] issue_type const* begin() const noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] issue_type const* end() const noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] issue_type const* cbegin() const noexcept TAVI_IOAPI_LIFETIMEBOUND;
    [[nodiscard]] issue_type const* cend() const noexcept TAVI_IOAPI_LIFETIMEBOUND;
    /// Whether there are no issues.
    [[nodiscard]] bool empty() const noexcept { return begin() == end(); }

private:
    detail::deep_ptr<impl> impl_;
};

static_assert(sizeof(verification_result) == sizeof(void*), "a handle is one pointer");
static_assert(std::is_nothrow_move_constructible_v<verification_result::issue_type> &&
                  std::is_nothrow_destructible_v<verification_result::issue_type>,
              "containers move issues when they grow");
static_assert(sizeof(verification_result::issue_type) == detail::by_data_model(24, 48));
static_assert(offsetof(verification_result::issue_type, severity) == 0);
static_assert(offsetof(verification_result::issue_type, message) == sizeof(void*));
static_assert(offsetof(verification_result::issue_type, options) == detail::by_data_model(16, 32));

} // namespace tavi::ioapi::v2::config

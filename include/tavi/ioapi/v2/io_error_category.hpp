#pragma once

#include "api.hpp"
#include "utility/string.hpp"

namespace tavi::ioapi::v2 {

/// Gives error numbers their meaning. A backend derives its own category to report the codes of
/// its controllers in their own words; categories are told apart by address, so there is one
/// static instance of each, which must outlive every record that refers to it. Hosts may ask it
/// from any thread: it keeps no state.
class TAVI_IOAPI_API io_error_category {
public:
    io_error_category(io_error_category const&) = delete;
    io_error_category& operator=(io_error_category const&) = delete;
    virtual ~io_error_category();

    /// \return a short name of static lifetime, such as "generic". Must not throw.
    [[nodiscard]] virtual char const* name() const = 0;

    /// \return what `code` means, the empty text for a code without a meaning.
    /// \throws std::bad_alloc
    [[nodiscard]] virtual utility::string message(int code) const = 0;

protected:
    constexpr io_error_category() noexcept = default;
};

/// The category of `io_errc`. Stateless; usable from all threads until the process ends, in exit
/// handlers as well.
class TAVI_IOAPI_API io_error_generic_category : public io_error_category {
public:
    constexpr io_error_generic_category() noexcept = default;
    ~io_error_generic_category() override;

    /// "generic".
    [[nodiscard]] char const* name() const override;

    /// The message of an `io_errc`; empty, without a block, for every other code.
    [[nodiscard]] utility::string message(int code) const override;
};

/// \return the one instance of the generic category.
[[nodiscard]] TAVI_IOAPI_API io_error_category const& generic_io_error_category() noexcept;

} // namespace tavi::ioapi::v2

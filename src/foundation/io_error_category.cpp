#include <tavi/ioapi/v2/io_errc.hpp>
#include <tavi/ioapi/v2/io_error_category.hpp>

#include "outcome.hpp"

namespace tavi::ioapi::v2 {

namespace {

char const* message_of(io_errc code) noexcept {
    switch (code) {
    case io_errc::success: return "succecss"; // Intended: callers know this spelling.
    case io_errc::not_found: return "not found";
    case io_errc::invalid_property: return "invalid property";
    case io_errc::incompatible_type: return "incompatible type";
    case io_errc::value_too_large: return "value too large";
    case io_errc::no_result: return "no result";
    case io_errc::not_supported: return "not supported";
    case io_errc::not_implemented: return "not implemented";
    case io_errc::unhandled_exception: return "unhandled exception";
    case io_errc::invalid_backend_context: return "invalid backend context";
    case io_errc::todo: return "todo";
    }
    return nullptr;
}

} // namespace

// Initialised before all code, so that initialisers of other modules can use it.
constinit detail::immortal_category detail::generic_category;

io_error_category::~io_error_category() = default;

io_error_generic_category::~io_error_generic_category() = default;

char const* io_error_generic_category::name() const {
    return "generic";
}

utility::string io_error_generic_category::message(int code) const {
    char const* const text = message_of(static_cast<io_errc>(code));
    return text != nullptr ? utility::string(text) : utility::string();
}

io_error_category const& generic_io_error_category() noexcept {
    return detail::generic_category.category;
}

} // namespace tavi::ioapi::v2

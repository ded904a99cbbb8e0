#include <tavi/ioapi/v2/io_error.hpp>

#include "outcome.hpp"

namespace tavi::ioapi::v2 {

io_error make_io_error(io_errc code) noexcept {
    return detail::outcome(code);
}

} // namespace tavi::ioapi::v2

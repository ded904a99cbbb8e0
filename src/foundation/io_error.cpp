#include <tavi/ioapi/v2/io_error.hpp>

namespace tavi::ioapi::v2 {

io_error make_io_error(io_errc code) noexcept {
    return io_error(code);
}

} // namespace tavi::ioapi::v2

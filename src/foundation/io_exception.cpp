#include <tavi/ioapi/v2/io_exception.hpp>

#include <utility>

namespace tavi::ioapi::v2 {

io_exception::io_exception(io_error error)
    : std::runtime_error(error.message().c_str()), error_(std::move(error)) {}

io_exception::~io_exception() noexcept = default;

} // namespace tavi::ioapi::v2

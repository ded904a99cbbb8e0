#include <tavi/ioapi/v2/io_error_diagnostics.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

namespace tavi::ioapi::v2 {

unsigned int io_error_diagnostics::size() const {
    return impl_ != nullptr ? impl_->size() : 0;
}

bool io_error_diagnostics::has(utility::string_view key) const {
    return impl_ != nullptr && impl_->has(key);
}

io_value io_error_diagnostics::get(utility::string_view key) const {
    return impl_ != nullptr ? impl_->get(key) : io_value();
}

io_error_diagnostics::const_iterator io_error_diagnostics::begin() const {
    // A fresh position over an empty list stands at its end, which is null here.
    if (size() == 0) return end();
    return const_iterator(impl_->make_iterator());
}

io_error_diagnostics::const_iterator io_error_diagnostics::end() const noexcept {
    return {};
}

} // namespace tavi::ioapi::v2

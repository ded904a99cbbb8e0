#include <tavi/ioapi/v2/io_value.hpp>

#include "declared_targets.hpp"
#include "foundation/outcome.hpp"

#include <type_traits>

namespace tavi::ioapi::v2 {

io_value io_value::to_variant(io_data_type const& type, io_error& error) const {
    // The diagnostics that go may hold this very value, or the type.
    io_error_diagnostics const kept = error.diagnostics();
    detail::report(error, io_errc::success);
    if (type == type_) return *this;
    if (type.type_code() == 0) return io_value();
    int const target = detail::target_index(type.type_code());
    if (target == detail::no_target) {
        detail::report(error, io_errc::incompatible_type);
        return io_value();
    }
    // Intended: after a failure the result is the default of the target's type, not the empty
    // value.
    return detail::visit_target(target, [&]<class To>(std::type_identity<To>) {
        return io_value(detail::get_as<To>(*this, error));
    });
}

io_value io_value::to_variant(io_data_type const& type) const {
    io_error ignored;
    return to_variant(type, ignored);
}

} // namespace tavi::ioapi::v2

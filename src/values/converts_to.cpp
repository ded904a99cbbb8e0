#include <tavi/ioapi/v2/io_value.hpp>

#include "array_rules.hpp"
#include "declared_targets.hpp"

#include <type_traits>

namespace tavi::ioapi::v2 {

bool io_value::converts_to(io_data_type const& type) const {
    if (type == type_) return true;
    int const target = detail::target_index(type.type_code());
    if (target == detail::no_target) return false;
    return detail::visit_target(target, [&]<class To>(std::type_identity<To>) {
        return detail::rule<To, io_value>::fits(*this);
    });
}

} // namespace tavi::ioapi::v2

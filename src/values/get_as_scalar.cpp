#include "convert_payload.hpp"

namespace tavi::ioapi::v2::detail {

#define TAVI_IOAPI_INSTANTIATE(T)                                                                  \
    static_assert(is_scalar_target<T>);                                                            \
    template TAVI_IOAPI_API T get_as<T>(io_value const&, io_error&)

TAVI_IOAPI_FOR_EACH_SCALAR_TARGET(TAVI_IOAPI_INSTANTIATE);

#undef TAVI_IOAPI_INSTANTIATE

} // namespace tavi::ioapi::v2::detail

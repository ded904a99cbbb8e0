#include "convert_payload.hpp"

namespace tavi::ioapi::v2::detail {

#define TAVI_IOAPI_INSTANTIATE(T)                                                                  \
    template TAVI_IOAPI_API utility::array<T> get_as<utility::array<T>>(io_value const&, io_error&)

TAVI_IOAPI_FOR_EACH_SCALAR_TARGET(TAVI_IOAPI_INSTANTIATE);
TAVI_IOAPI_INSTANTIATE(io_value);

#undef TAVI_IOAPI_INSTANTIATE

} // namespace tavi::ioapi::v2::detail

#include <tavi/ioapi/v2/api.hpp>

/// The right entry function, but built for another revision of the library.
extern "C" TAVI_IOAPI_API int example_backend_module_3() {
    return 42;
}

#include <tavi/ioapi/v2/api.hpp>

extern "C" TAVI_IOAPI_API int module_answer() {
    return 42;
}

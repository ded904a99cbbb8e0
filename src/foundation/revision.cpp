#include <tavi/ioapi/v2/api.hpp>

// Zero, so that it lies in the writable data that costs no space in the file.
char __tavi_ioapi_library_revision_0_5[2] = {};

#include <tavi/ioapi/v2/utility/string.hpp>

namespace tavi::ioapi::v2::utility {

char const string::S_empty = '\0';

} // namespace tavi::ioapi::v2::utility

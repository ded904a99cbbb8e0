#include "keyed.hpp"
#include "operations.hpp"

/// \file
/// Members of a structured value by their keys; one item is one member. An object has free keys.

namespace bench {

void add_objects() {
    for (int const size : {10, 1000}) {
        std::string const get = "object_get_" + std::to_string(size);
        std::string const set = "object_set_" + std::to_string(size);
        add_keyed<iokern_object>(get, set, "iokern", size);
        add_keyed<standard_map<bare_value>>(get, set, "limit", size);
        add_keyed_peers(get, set, size);
    }
}

} // namespace bench

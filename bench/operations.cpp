#include "operations.hpp"

#include "harness.hpp"

namespace bench {

void add_operations() {
    add_value_life();
    add_scalar_conversion();
    add_text_conversion();
    add_array_conversion();
    add_small_arrays();
    add_equality();
    add_printing();
    add_objects();
    add_read_results();
    add_dictionary();
    add_containers();
    add_runtime_types();
    add_growths();
}

} // namespace bench

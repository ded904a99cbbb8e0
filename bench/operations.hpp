#pragma once

/// \file
/// The operations, by groups; each function registers those of the source of its name. They stand
/// in `operations.json` once more, with a title and what is to say about their results.

namespace bench {

void add_value_life();
void add_scalar_conversion();
void add_text_conversion();
void add_array_conversion();
void add_small_arrays();
void add_equality();
void add_printing();
void add_objects();
void add_read_results();
void add_dictionary();
void add_containers();
void add_runtime_types();
void add_growths();

} // namespace bench

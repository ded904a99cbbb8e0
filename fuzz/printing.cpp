#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/library_value.hpp"
#include "model/random_value.hpp"
#include "model/rules.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

/// \file
/// Values that are deep and wide, printed with any layout.

namespace {

using namespace fuzz;

/// A value within arrays and objects, one in the other.
value_model wrapped(input& script, value_model inner, unsigned int levels) {
    for (; levels > 0; --levels) {
        if (script.flag()) {
            inner = natural(list<value_model>{std::move(inner)});
        } else {
            object_model object;
            object.type.structure_id = 0;
            object.values[random_key(script)] = std::move(inner);
            inner = natural(std::move(object));
        }
    }
    return inner;
}

/// A value many times.
value_model repeated(value_model const& element, unsigned int count) {
    return natural(list<value_model>(count, element));
}

/// So that the text stays small: indentation alone would fill the memory.
unsigned int bounded_width(input& script) {
    unsigned int const width = script.byte();
    return width < 250 ? width % 6 : 0x80000000U; // which is none at every even level
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    auto const fill = static_cast<char>(script.byte());
    unsigned int const width = bounded_width(script);
    bool const is_huge = width == 0x80000000U;
    unsigned int const level = is_huge ? 2 * script.below(8) : script.below(16);
    unsigned int const count = script.below(64);
    unsigned int const levels = script.below(128);

    value_model model = random_value(script, {3, 12});
    if (count_of(model) < 200) model = repeated(model, count);
    model = wrapped(script, std::move(model), levels);
    if (is_huge) model = random_scalar(script);

    v2::io_value const value = made(model);
    v2::utility::string const text = value.printable_string(fill, width, level);
    check(same_text(text, printed(model, fill, width, level)), "a value prints as the rules say");
    check(v2::io_value(value).printable_string(fill, width, level) == text,
          "a copy prints as its source does");
    return 0;
}

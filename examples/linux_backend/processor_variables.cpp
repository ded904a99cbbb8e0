#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>

#include "processor_text.hpp"
#include "variables.hpp"

#include <unistd.h>

#include <cstddef>
#include <string_view>
#include <utility>

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;

double ticks_per_second() {
    return static_cast<double>(::sysconf(_SC_CLK_TCK));
}

v2::io_object times_of(processor_ticks const& ticks, structures const& known) {
    v2::io_object times = known.cpu_times();
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        times.set(processor_time_names[i], static_cast<double>(ticks[i]) / ticks_per_second());
    }
    return times;
}

v2::io_data_type array_of(v2::io_data_type element) {
    element.array_kind = 2;
    return element;
}

v2::io_value times_of_each(std::string_view text, structures const& known) {
    auto const processors = each_processor(text);
    v2::utility::array<v2::io_object> list(static_cast<unsigned int>(processors.size()));
    for (unsigned int i = 0; i < list.size(); ++i) list[i] = times_of(processors[i], known);
    return v2::io_value(array_of(known.cpu_times().type()), std::move(list));
}

} // namespace

variable_list processor_variables(structures const& known) {
    auto const type = known.cpu_times().type();
    return {
        {"cpu.total", "times of all processors together since the start, in s", type,
         from_proc(
             "stat",
             [&known](std::string_view text) { return times_of(all_processors(text), known); })},
        {"cpu.cores", "the same for each processor that is online", array_of(type),
         from_proc("stat", [&known](std::string_view text) { return times_of_each(text, known); })},
    };
}

} // namespace linux_backend

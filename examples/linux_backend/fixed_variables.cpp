#include "system_text.hpp"
#include "text.hpp"
#include "variables.hpp"

#include <string>
#include <string_view>

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using basic_types = v2::io_data_type::basic_types;

constexpr v2::io_data_type u64_type = v2::io_data_type::scalar(basic_types::u64);
constexpr v2::io_data_type dbl_type = v2::io_data_type::scalar(basic_types::dbl);
constexpr v2::io_data_type text_type = v2::io_data_type::scalar(basic_types::string);

variable load_variable(char const* name, char const* description, unsigned int which) {
    return {name, description, dbl_type, from_proc("loadavg", [which](std::string_view text) {
                return load_average(text, which);
            })};
}

variable uptime_variable(char const* name, char const* description, unsigned int which) {
    return {name, description, dbl_type,
            from_proc("uptime", [which](std::string_view text) { return uptime(text, which); })};
}

variable memory_variable(char const* name, char const* description, std::string const& key) {
    return {name, description, u64_type,
            from_proc("meminfo", [key](std::string_view text) { return memory(text, key); })};
}

variable task_variable(char const* name,
                       char const* description,
                       unsigned long long task_count::*which) {
    return {name, description, u64_type,
            from_proc("loadavg", [which](std::string_view text) { return tasks(text).*which; })};
}

variable counter_variable(char const* name, char const* description, std::string const& key) {
    return {name, description, u64_type,
            from_proc("stat", [key](std::string_view text) { return counter(text, key); })};
}

variable text_variable(char const* name, char const* description, std::string const& file) {
    return {name, description, text_type, from_proc(file, first_line)};
}

} // namespace

variable_list fixed_variables() {
    return {
        load_variable("load.one", "mean number of threads at work or waiting, over 1 min", 0),
        load_variable("load.five", "the same over 5 min", 1),
        load_variable("load.fifteen", "the same over 15 min", 2),
        uptime_variable("uptime.total", "since the start of the machine, in s", 0),
        uptime_variable("uptime.idle", "without work, of all processors together, in s", 1),
        memory_variable("memory.total", "all that there is, in bytes", "MemTotal"),
        memory_variable("memory.free", "used for nothing, in bytes", "MemFree"),
        memory_variable("memory.available", "to be had without swapping, in bytes", "MemAvailable"),
        memory_variable("memory.buffers", "buffers of block devices, in bytes", "Buffers"),
        memory_variable("memory.cached", "cached content of files, in bytes", "Cached"),
        memory_variable("memory.swap_total", "swap space, in bytes", "SwapTotal"),
        memory_variable("memory.swap_free", "swap space that is free, in bytes", "SwapFree"),
        text_variable("system.hostname", "name of the machine", "sys/kernel/hostname"),
        text_variable("system.kernel", "release of the kernel", "sys/kernel/osrelease"),
        task_variable("system.tasks_running", "threads at work or waiting for a processor",
                      &task_count::running),
        task_variable("system.tasks_total", "threads of all processes", &task_count::total),
        counter_variable("system.processes_started", "processes since the start", "processes"),
        counter_variable("system.context_switches", "changes of thread since the start", "ctxt"),
        counter_variable("system.boot_time", "time of the start, in s since 1970-01-01 UTC",
                         "btime"),
    };
}

} // namespace linux_backend

#include <tavi/ioapi/v2/io_object.hpp>

#include "block_text.hpp"
#include "text.hpp"
#include "variables.hpp"

#include <string>
#include <string_view>

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using basic_types = v2::io_data_type::basic_types;

v2::io_object device_of(std::string const& folder, snapshot& files, structures const& known) {
    v2::io_object device = known.block_device();
    device.set("size", parsed(files.sys(folder + "/size"), block_size));
    auto const done = parsed(files.sys(folder + "/stat"), activity);
    device.set("reads", done.reads);
    device.set("read_bytes", done.read_bytes);
    device.set("writes", done.writes);
    device.set("written_bytes", done.written_bytes);
    device.set("busy", static_cast<double>(done.busy_ms) / 1000.0);
    return device;
}

double temperature(std::string_view text) {
    return static_cast<double>(signed_number(first_line(text))) / 1000.0;
}

} // namespace

variable_list block_variables(snapshot& files, structures const& known) {
    variable_list list;
    for (auto const& name : files.devices("block")) {
        std::string const folder = "block/" + name;
        list.push_back({"block." + name, "size in bytes, and what was done; busy in s",
                        known.block_device().type(),
                        [folder, &known](snapshot& at) -> v2::io_value {
                            return device_of(folder, at, known);
                        }});
    }
    return list;
}

variable_list thermal_variables(snapshot& files, structures const&) {
    constexpr std::string_view prefix = "thermal_";
    variable_list list;
    for (auto const& name : files.devices("class/thermal")) {
        if (!name.starts_with("thermal_zone")) continue; // the others are fans and the like
        std::string const file = "class/thermal/" + name + "/temp";
        list.push_back(
            {"thermal." + name.substr(prefix.size()), "temperature in degrees Celsius",
             v2::io_data_type::scalar(basic_types::dbl),
             [file](snapshot& at) -> v2::io_value { return parsed(at.sys(file), temperature); }});
    }
    return list;
}

} // namespace linux_backend

#include <tavi/ioapi/v2/io_object.hpp>
#include <tavi/ioapi/v2/utility/array.hpp>
#include <tavi/ioapi/v2/utility/string.hpp>

#include "network_text.hpp"
#include "text.hpp"
#include "variables.hpp"

#include <string>
#include <string_view>
#include <utility>

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using basic_types = v2::io_data_type::basic_types;

char const* const interfaces_file = "net/dev";

v2::io_object counters_of(traffic const& counted, structures const& known) {
    v2::io_object counters = known.network_counters();
    counters.set("bytes", counted.bytes);
    counters.set("packets", counted.packets);
    counters.set("errors", counted.errors);
    counters.set("dropped", counted.dropped);
    return counters;
}

v2::io_object traffic_of(std::string_view line, structures const& known) {
    auto const counted = traffic_in(line);
    v2::io_object both = known.network_traffic();
    both.set("receive", counters_of(counted.receive, known));
    both.set("transmit", counters_of(counted.transmit, known));
    return both;
}

v2::io_value names_in(std::string_view text) {
    auto const lines = interface_lines(text);
    v2::utility::array<v2::utility::string> names(static_cast<unsigned int>(lines.size()));
    for (unsigned int i = 0; i < names.size(); ++i) names[i] = lines[i].name;
    return names;
}

v2::io_object link_of(std::string const& folder, snapshot& files, structures const& known) {
    v2::io_object link = known.network_link();
    link.set("state", parsed(files.sys(folder + "/operstate"), first_line));
    auto const& mtu = files.sys(folder + "/mtu");
    link.set("mtu", parsed(mtu, [](std::string_view text) {
                 auto const bytes = whole_number(first_line(text));
                 if (bytes > 0xFFFFFFFFU) throw bad_text("the size of a packet is too large");
                 return static_cast<unsigned int>(bytes);
             }));
    return link;
}

} // namespace

variable_list network_list_variables() {
    return {{"network.interfaces", "names of the network interfaces",
             v2::io_data_type::array_of(basic_types::string),
             from_proc(interfaces_file, names_in)}};
}

variable_list network_variables(snapshot& files, structures const& known) {
    file_text const& file = files.proc(interfaces_file);
    variable_list list;
    for (auto const& [name, counters] : parsed(file, interface_lines)) {
        file_text const line{file.path, counters};
        list.push_back({"network." + name, "traffic since the interface is there",
                        known.network_traffic().type(), [line, &known](snapshot&) -> v2::io_value {
                            return parsed(line, [&known](std::string_view text) {
                                return traffic_of(text, known);
                            });
                        }});
    }
    return list;
}

variable_list link_variables(snapshot& files, structures const& known) {
    variable_list list;
    for (auto const& name : files.devices("class/net")) {
        std::string const folder = "class/net/" + name;
        list.push_back({"link." + name, "state, and largest packet in bytes, of an interface",
                        known.network_link().type(),
                        [folder, &known](snapshot& at) -> v2::io_value {
                            return link_of(folder, at, known);
                        }});
    }
    return list;
}

} // namespace linux_backend

#include "structures.hpp"

#include <tavi/ioapi/v2/io_structure_type.hpp>
#include <tavi/ioapi/v2/plc_identifier.hpp>

#include "processor_text.hpp"

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
using basic_types = v2::io_data_type::basic_types;

constexpr v2::io_data_type u64_type = v2::io_data_type::scalar(basic_types::u64);
constexpr v2::io_data_type dbl_type = v2::io_data_type::scalar(basic_types::dbl);

v2::io_structure_type cpu_times_type() {
    v2::io_structure_type type("linux.cpu_times");
    for (auto const* const name : processor_time_names) type.set_member(name, dbl_type);
    return type;
}

v2::io_structure_type network_counters_type() {
    return {
        "linux.network_counters",
        {{"bytes", u64_type}, {"packets", u64_type}, {"errors", u64_type}, {"dropped", u64_type}}};
}

v2::io_structure_type network_traffic_type(v2::io_data_type const& counters) {
    return {"linux.network_traffic", {{"receive", counters}, {"transmit", counters}}};
}

v2::io_structure_type network_link_type() {
    return {"linux.network_link",
            {{"state", v2::io_data_type::scalar(basic_types::string)},
             {"mtu", v2::io_data_type::scalar(basic_types::u32)}}};
}

v2::io_structure_type block_device_type() {
    return {"linux.block_device",
            {{"size", u64_type},
             {"reads", u64_type},
             {"read_bytes", u64_type},
             {"writes", u64_type},
             {"written_bytes", u64_type},
             {"busy", dbl_type}}};
}

v2::io_object registered(v2::backend_query host, v2::io_structure_type const& structure) {
    v2::io_error error;
    auto const type =
        host.register_structure_type(v2::plc_identifier(structure.name()), structure, error);
    if (error) throw registration_failure(error, structure.name().str());
    return {type, structure};
}

} // namespace

structures::structures(v2::backend_query host)
    : cpu_times_(registered(host, cpu_times_type())),
      network_counters_(registered(host, network_counters_type())),
      network_traffic_(registered(host, network_traffic_type(network_counters_.type()))),
      network_link_(registered(host, network_link_type())),
      block_device_(registered(host, block_device_type())) {}

v2::io_object const* structures::find(v2::io_data_type const& type) const noexcept {
    for (auto const* const blank :
         {&cpu_times_, &network_counters_, &network_traffic_, &network_link_, &block_device_}) {
        bool const is_object = type.basic_type == basic_types::object;
        if (is_object && blank->type().structure_id == type.structure_id) return blank;
    }
    return nullptr;
}

} // namespace linux_backend

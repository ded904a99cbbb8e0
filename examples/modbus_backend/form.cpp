#include "form.hpp"

#include <string>

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;
using config::option;

constexpr auto text_type = v2::io_data_type::basic_types::string;

option order_option(char const* key, char const* name, char const* parts) {
    std::string const first = std::string("The high ") + parts + " comes first";
    std::string const last = std::string("The low ") + parts + " comes first";
    option::value_option const choices[] = {{"Big-endian", first, "big"},
                                            {"Little-endian", last, "little"}};
    return {key, name, "The order where a line of the map states none", v2::io_value("big"),
            choices};
}

config::category connection_category() {
    option const options[] = {
        {option_key::map, "Map", "File with the variables of the controller", text_type},
        {option_key::host, "Host", "Name or address of the controller or its gateway", text_type},
        {option_key::port, "Port", "TCP port, 1 to 65535", v2::io_value(502U)},
        {option_key::unit, "Unit",
         "Number of the device behind a gateway, 0 to 247; 255 for one that answers itself",
         v2::io_value(255U)},
        order_option(option_key::byte_order, "Byte order", "byte of a register"),
        order_option(option_key::word_order, "Word order", "register of a number"),
    };
    return {"connection", "The controller and its variables", true, false, options};
}

config::category timing_category() {
    option const options[] = {
        {option_key::timeout_ms, "Timeout",
         "How long to wait for a connection and for each answer, 1 to 600000 ms",
         v2::io_value(2000U)},
        {option_key::poll_interval_ms, "Poll interval",
         "How long from one look at the subscribed variables to the next, 1 to 3600000 ms",
         v2::io_value(500U)},
    };
    return {"timing", "Waiting and polling", false, true, options};
}

} // namespace

config::config_template make_form() {
    config::category const categories[] = {connection_category(), timing_category()};
    return config::config_template(categories);
}

} // namespace modbus_backend

#include "settings.hpp"

#include "setup_error.hpp"

#include <string_view>

namespace modbus_backend {

namespace {

setup_error unusable(std::string const& problem) {
    return {modbus_errc::bad_setting, problem};
}

std::string text_of(example::setting const& given) {
    auto const text = given.value.try_as<std::string>();
    if (!text || text->empty())
        throw unusable("setting '" + given.name.str() + "' is empty or no text");
    return *text;
}

int number_of(example::setting const& given, int most) {
    auto const number = given.value.try_as<int>();
    if (!number || *number < 1 || *number > most) {
        throw unusable("setting '" + given.name.str() + "' is no number from 1 to " +
                       std::to_string(most));
    }
    return *number;
}

void apply(example::setting const& given, settings& read) {
    std::string_view const name = given.name;
    if (name == "map") {
        read.map = text_of(given);
    } else if (name == "host") {
        read.host = text_of(given);
    } else if (name == "port") {
        read.port = number_of(given, 65535);
    } else if (name == "timeout_ms") {
        read.timeout_ms = std::chrono::milliseconds(number_of(given, 600'000));
    } else {
        throw unusable("unknown setting '" + given.name.str() + "'");
    }
}

} // namespace

settings read_settings(tavi::ioapi::v2::utility::data_view<example::setting const> given) {
    settings read;
    for (auto const& one : given) apply(one, read);
    if (read.map.empty()) throw unusable("setting 'map' is missing");
    if (read.host.empty()) throw unusable("setting 'host' is missing");
    return read;
}

} // namespace modbus_backend

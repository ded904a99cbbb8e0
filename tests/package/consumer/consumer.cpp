#include <tavi/ioapi/v2/ioapi.hpp>

#include <iostream>
#include <string>

namespace v2 = tavi::ioapi::v2;

namespace {

template <class T>
void convert(v2::io_value const& value) {
    v2::io_error error;
    auto const converted = value.as<T>(error);
    if (error) {
        std::cout << error << '\n';
    } else {
        std::cout << v2::io_value(converted) << '\n';
    }
}

} // namespace

int main() {
    v2::io_value const values[] = {42, 2.75, "7", "north", v2::utility::array<int>{1, 2, 3}};
    for (auto const& value : values) {
        std::cout << value << '\n';
        convert<int>(value);
        convert<double>(value);
    }

    v2::plc_identifier const wanted[] = {v2::plc_identifier("tank.level"),
                                         v2::plc_identifier("tank.name"), v2::plc_identifier(4)};
    v2::read_result result(wanted);
    result[0].set(v2::io_data_value(2.75, v2::io_data_value::value_quality::good));
    result[1].set(v2::io_errc::not_found);
    for (auto const& entry : result) {
        std::cout << entry.identifier() << ": ";
        if (entry.ok()) {
            std::cout << entry.value().value() << '\n';
        } else {
            std::cout << entry.error() << '\n';
        }
    }
}

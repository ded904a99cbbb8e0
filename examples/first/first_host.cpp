#include <tavi/ioapi/v2/ioapi.hpp>

#include <iostream>

namespace v2 = tavi::ioapi::v2;

extern "C" void first_backend_read(v2::read_result& result);

int main() {
    v2::plc_identifier const wanted[] = {v2::plc_identifier("tank.level"),
                                         v2::plc_identifier("tank.name"),
                                         v2::plc_identifier("tank.colour")};
    v2::read_result result(wanted);
    first_backend_read(result);

    for (auto const& entry : result) {
        std::cout << entry.identifier() << ": ";
        if (!entry.ok()) {
            std::cout << "no value, " << entry.error() << '\n';
            continue;
        }
        // A value converts to every type that can hold it, and says so where it does not.
        v2::io_value const& value = entry.value().value();
        v2::io_error error;
        auto const number = value.as<double>(error);
        if (error) {
            std::cout << value.as<std::string>() << ", no number, " << error << '\n';
        } else {
            std::cout << number << '\n';
        }
    }
}

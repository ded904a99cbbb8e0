#include <tavi/ioapi/v2/ioapi.hpp>

namespace v2 = tavi::ioapi::v2;

// A backend answers every variable that its host asks for with a value or with an error.
// A real one asks a controller first; this one always finds the same.
extern "C" void first_backend_read(v2::read_result& result) {
    auto const now = v2::io_timestamp::now();
    auto const good = v2::io_data_value::value_quality::good;

    for (auto& entry : result) {
        if (entry.identifier() == v2::plc_identifier("tank.level")) {
            entry.set(v2::io_data_value(2.75, now, good));
        } else if (entry.identifier() == v2::plc_identifier("tank.name")) {
            entry.set(v2::io_data_value("north", now, good));
        } else {
            entry.set(v2::io_errc::not_found);
        }
    }
}

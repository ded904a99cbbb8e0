#include "tcp_backend.hpp"

#include "guard.hpp"
#include "reader.hpp"
#include "request_plan.hpp"
#include "setup_error.hpp"
#include "structure_registration.hpp"

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

namespace modbus_backend {

namespace v2 = tavi::ioapi::v2;

tcp_backend::tcp_backend(settings const& given)
    : map_(load_map(given.map)), connection_(given.host, given.port, given.timeout_ms) {
    if (!connection_.open()) {
        std::string const reason = modbus_strerror(errno);
        throw setup_error(modbus_errc::not_connected, "cannot connect to " + given.host + ":" +
                                                          std::to_string(given.port) + ": " +
                                                          reason);
    }
}

void tcp_backend::release() noexcept {
    delete this;
}

void tcp_backend::variables(v2::utility::array<v2::plc_identifier>& list,
                            v2::io_error& error) noexcept {
    guarded(error, [&] { list = v2::utility::array<v2::plc_identifier>(map_.identifiers()); });
}

void tcp_backend::read(v2::read_result& result, v2::io_error& error) noexcept {
    guarded(error, [&] { read_all(result); });
}

void tcp_backend::register_structures(v2::io_structure_dictionary& dictionary,
                                      v2::io_error& error) noexcept {
    guarded(error, [&] { modbus_backend::register_structures(map_.structures(), dictionary); });
}

void tcp_backend::read_all(v2::read_result& result) {
    std::vector<wanted_variable> wanted;
    for (unsigned int i = 0; i < result.size(); ++i) {
        variable const* const described = map_.find(result[i].identifier());
        if (described == nullptr) {
            result.set(i, v2::io_errc::not_found);
        } else if (!is_registered(described->type)) {
            result.set(i, make_modbus_error(modbus_errc::unregistered_structure));
        } else {
            wanted.push_back({described, i});
        }
    }
    // Where this fails, every request tells so by its own error.
    connection_.open();
    for (auto const& request : plan_requests(std::move(wanted))) {
        carry_out(request, connection_, result);
    }
}

} // namespace modbus_backend

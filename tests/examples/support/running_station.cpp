#include "running_station.hpp"

#include <stdexcept>
#include <vector>

namespace test_support {

namespace {

int port_in(std::string const& line) {
    std::string const head = "listening on 127.0.0.1:";
    if (line.rfind(head, 0) != 0) throw std::runtime_error("unexpected line: " + line);
    return std::stoi(line.substr(head.size()));
}

std::vector<std::string> station_command(int port, std::string const& memory) {
    std::vector<std::string> command{CONTROLLER_PATH, "--port", std::to_string(port)};
    if (!memory.empty()) command.insert(command.end(), {"--memory", memory});
    return command;
}

} // namespace

running_station::running_station(int port, std::string const& memory)
    : process_(station_command(port, memory)), port_(port_in(process_.read_line())) {}

finished_process running_station::stop(int signal) {
    send(signal);
    return finish();
}

modbus_client::modbus_client(int port) : context_(modbus_new_tcp("127.0.0.1", port)) {
    modbus_set_response_timeout(context_.get(), 30, 0);
    if (modbus_connect(context_.get()) != 0) throw station::failure("cannot connect");
}

modbus_client::~modbus_client() {
    modbus_close(context_.get());
}

} // namespace test_support

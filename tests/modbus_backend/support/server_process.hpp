#pragma once

#include <examples/support/child_process.hpp>
#include <signal.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace test_support {

/// A server in a process of its own that says where it listens.
class server_process {
public:
    explicit server_process(std::vector<std::string> const& command) : process_(command) {
        std::string const head = "listening on 127.0.0.1:";
        std::string const line = process_.read_line();
        if (line.rfind(head, 0) != 0) throw std::runtime_error("unexpected line: " + line);
        port_ = std::stoi(line.substr(head.size()));
    }

    [[nodiscard]] int port() const noexcept { return port_; }

    /// End it at once, and wait for it.
    void kill() {
        process_.send(SIGKILL);
        process_.wait();
    }

private:
    child_process process_;
    int port_ = 0;
};

/// The one that speaks the protocol with code that is not ours. \param port  0 for any free one
[[nodiscard]] inline std::vector<std::string> foreign_server(int port = 0) {
    return {PYTHON_PATH, FOREIGN_SERVER_PATH, "--port", std::to_string(port)};
}

/// The one that answers one request wrongly. \param skipped  how many it answers well before
[[nodiscard]] inline std::vector<std::string> faulty_server(std::string const& fault,
                                                            int skipped = 0,
                                                            int port = 0) {
    return {PYTHON_PATH, FAULTY_SERVER_PATH,      "--port", std::to_string(port),
            "--skip",    std::to_string(skipped), fault};
}

/// The one between the backend and the controller at another port, which spoils one exchange.
/// \param skipped  how many exchanges pass before
[[nodiscard]] inline std::vector<std::string> faulty_proxy(int controller_port,
                                                           std::string const& fault,
                                                           int skipped = 0,
                                                           int port = 0) {
    return {PYTHON_PATH, FAULTY_PROXY_PATH,    "--to",   std::to_string(controller_port),
            "--port",    std::to_string(port), "--skip", std::to_string(skipped),
            fault};
}

} // namespace test_support

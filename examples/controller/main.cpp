#include "client.hpp"
#include "lifetime.hpp"
#include "server.hpp"

#include <CLI/CLI.hpp>

#include <cstdint>
#include <exception>
#include <iostream>
#include <string>

namespace {

struct options {
    std::uint16_t port = 0;
    std::string memory;
    std::string step;
    std::uint16_t ticks = 1;
};

void declare(CLI::App& app, options& chosen) {
    auto* const port =
        app.add_option("--port", chosen.port, "Port to serve on; 0 for any free one");
    auto* const step = app.add_option("--step", chosen.step,
                                      "Do not serve, but advance the clock of a running station")
                           ->type_name("HOST:PORT")
                           ->excludes(port);
    app.add_option("--memory", chosen.memory,
                   "Keep the operator's panel in this file, so that it outlasts the station")
        ->type_name("FILE")
        ->excludes(step);
    app.add_option("--ticks", chosen.ticks, "How far to advance it, 1 unless stated")->needs(step);
}

void serve(options const& chosen) {
    auto const end = station::end_of_life();
    station::server server(chosen.port, station::memory(chosen.memory));
    std::cout << "listening on 127.0.0.1:" << server.port() << std::endl;
    server.run(end);
}

int run(int argc, char** argv) {
    CLI::App app("A simulated pump station that speaks Modbus TCP on the loopback interface.\n"
                 "Its clock stands still but for the steps that a client takes.",
                 "controller");
    options chosen;
    declare(app, chosen);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    if (chosen.step.empty()) {
        serve(chosen);
    } else {
        station::advance(chosen.step, chosen.ticks);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (std::exception const& error) {
        std::cerr << "controller: " << error.what() << '\n';
        return 1;
    }
}

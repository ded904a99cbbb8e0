#include "conversion.hpp"
#include "listing.hpp"
#include "loaded_module.hpp"
#include "printable.hpp"
#include "table.hpp"
#include "type_names.hpp"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;

enum exit_status { all_well = 0, some_entry_failed = 1, not_set_up = 2 };

struct options {
    std::string backend;
    std::string map;
    std::string host;
    int port = 502;
    bool print = false;
    std::string type;
    std::vector<std::string> names;
};

std::string unknown_type(std::string const& name) {
    if (iohost::type_named(name)) return {};
    return "unknown type '" + name + "', not " + iohost::known_types();
}

void declare(CLI::App& app, options& chosen) {
    app.add_option("--backend", chosen.backend, "Backend module to load")
        ->required()
        ->type_name("FILE");
    app.add_option("--map", chosen.map, "File with the variables of the controller")
        ->required()
        ->type_name("FILE");
    app.add_option("--host", chosen.host, "Name or address of the controller")
        ->required()
        ->type_name("H");
    app.add_option("--port", chosen.port, "Its TCP port")
        ->capture_default_str()
        ->type_name("N")
        ->check(CLI::Range(1, 65535));
    app.require_subcommand(1);
    auto* const read = app.add_subcommand("read", "Read variables and print them as a table");
    read->add_option("NAME", chosen.names, "Variables to read; all of the map where none is named");
    read->add_flag("--print", chosen.print, "Print each value on lines of its own instead");
    read->add_option("--as", chosen.type, "Convert each value to a data type first")
        ->type_name("TYPE")
        ->check(unknown_type);
    read->fallthrough();
    app.footer("Exit status: 0 if all went well, 1 if an entry reports an error, "
               "2 for wrong usage or set-up.");
}

void insist(v2::io_error const& error) {
    if (error) throw iohost::setup_failure(describe(error));
}

v2::utility::array<v2::plc_identifier> identifiers_to_read(example::backend& backend,
                                                           std::vector<std::string> const& names) {
    v2::utility::array<v2::plc_identifier> identifiers;
    if (names.empty()) {
        v2::io_error error;
        backend.variables(identifiers, error);
        insist(error);
    } else {
        std::vector<v2::plc_identifier> named(names.begin(), names.end());
        identifiers = v2::utility::array<v2::plc_identifier>(named);
    }
    return identifiers;
}

exit_status read(options const& chosen) {
    iohost::loaded_module const module(chosen.backend);
    example::setting const settings[] = {
        {"map", chosen.map}, {"host", chosen.host}, {"port", chosen.port}};
    auto const backend = module.open(settings);

    v2::io_structure_dictionary structures;
    v2::io_error error;
    backend->register_structures(structures, error);
    insist(error);
    v2::read_result result(identifiers_to_read(*backend, chosen.names));
    backend->read(result, error);
    insist(error);

    if (auto const type = iohost::type_named(chosen.type)) iohost::convert_values(result, *type);
    bool const complete = chosen.print ? iohost::print_listing(std::cout, result)
                                       : iohost::print_table(std::cout, result, structures);
    return complete ? all_well : some_entry_failed;
}

exit_status run(int argc, char** argv) {
    CLI::App app("Reads variables of a controller through a backend module.", "iohost");
    options chosen;
    declare(app, chosen);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        if (error.get_exit_code() == 0) {
            app.exit(error);
            return all_well;
        }
        throw iohost::setup_failure(std::string(error.what()) + "; see iohost --help");
    }
    return read(chosen);
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (std::exception const& error) {
        std::cerr << "iohost: " << iohost::printable(error.what()) << '\n';
        return not_set_up;
    }
}

#include "command_line.hpp"

#include "commands.hpp"
#include "elf_file.hpp"
#include "failures.hpp"
#include "type_names.hpp"

#include <backend_module.hpp>
#include <CLI/CLI.hpp>

namespace iohost {

namespace {

constexpr char const* after_all =
    R"(These options stand in front of the command or behind it.

MODULE is the path of a backend module, or a word such as linux or modbus. The word stands for
the file WORD_backend.so, which is looked for beside this program, in ../WORD_backend and in
../lib/iokern/backends, as seen from there.

NAME is a variable as browse shows it. A member of a structured variable stands behind a slash, as
in pump1.state/speed; a slash within a name is written //. #17 is the variable of the number 17; a
name that begins with # has one more in front.

--config FILE has lines `key = value`, blank ones, and comments that begin with #; quotes around a
value are taken off. --set comes on top of it, the later of two counts. The texts are converted to
the types of the options that `iohost form` shows; form and info take neither.

With --json, one document goes to standard output (watch: one object a line). Numbers that are not
finite are the texts "nan", "inf" and "-inf"; bytes that are no UTF-8 are replaced.

Exit status: 0 if all went well, 1 if an operation or a variable reported an error, a connection
that cannot be opened included, 2 for wrong usage, configuration, or a module that does not load.
Ctrl-C ends a command at once, and watch with its summary.

Examples:
  iohost --backend modbus form
  iohost --backend modbus --set map=pump_station.map --set host=192.0.2.7 browse
  iohost --backend modbus --config pump.conf read tank.level pump1.state/speed
  iohost --backend linux watch --for 10 memory.free

`iohost COMMAND --help` tells more.)";

/// The help of a command shows its own options alone.
constexpr char const* common_options =
    R"(Common options, explained by `iohost --help`: --backend MODULE, --config FILE, --set KEY=VALUE,
--json, --verbose.

)";

constexpr char const* common_options_unconfigured =
    R"(Common options, explained by `iohost --help`: --backend MODULE, --json, --verbose. The configuration,
--config FILE and --set KEY=VALUE, has no use here.

)";

constexpr char const* after_read =
    R"(Examples:
  iohost --backend modbus --config pump.conf read
  iohost --backend modbus --config pump.conf read --print pump1.state
  iohost --backend modbus --config pump.conf read --as 'string[]' tank.profile)";

constexpr char const* after_write =
    R"(VALUE is true, false, a number, a "text" in quotes, an array [1, 2, 3], or else a text as it stands;
the backend converts it to the type of the variable, or refuses it. With :TYPE it is sent as a value
of that type. An object {"member": 1} is sent as the structure that the variable has, with these
members set. nan, inf and -inf are texts as well, which backends convert to numbers; NAME:dbl=nan
sends the number itself.

Examples:
  iohost --backend modbus --config pump.conf write tank.setpoint=1500 pumps.run='[true, false]'
  iohost --backend modbus --config pump.conf write station.name:string=7
  iohost --backend modbus --config pump.conf write 'pump1.state={"speed": 1450, "runs": 1}')";

constexpr char const* after_watch =
    R"(On a terminal a table is drawn in place; elsewhere each change is one line: time, name, and value or
error. Ctrl-C ends it with a summary and status 0, or 1 if a variable was refused or is in error at
the end. A backend that is still waiting for its controller is given one second, or until Ctrl-C is
pressed again; then the summary and a line that says so come without it, and the status is 1.

Examples:
  iohost --backend modbus --config pump.conf watch tank.level pipe.flow
  iohost --backend modbus --config pump.conf --json watch --for 60 tank.level >level.jsonl)";

constexpr char const* after_browse = R"(Examples:
  iohost --backend modbus --config pump.conf browse
  iohost --backend linux browse memory)";

constexpr char const* after_check =
    R"(One line for each rule that a backend keeps: ok, FAILED with what was found, or skipped with the
reason. Status 1 if one failed. The connection is opened and closed many times.

Nothing that may succeed is written, since controllers move machines, unless
  --allow-writes        values just read are written back, and values that are to be refused are tried
  --write NAME=VALUE    this value is written, read back, and the former one put back

Examples:
  iohost --backend modbus --config pump.conf check
  iohost check build/my_backend.so --set host=127.0.0.1 --allow-writes)";

constexpr char const* after_info = R"(Examples:
  iohost info modbus
  iohost info build/my_backend.so)";

constexpr char const* after_form = R"(Example:
  iohost --backend modbus form)";

constexpr char const* after_verify =
    R"(Status 1 if there is an error among the issues, a value that is none of the type of its option
included. Every other command takes no such value: status 2.

Example:
  iohost --backend modbus --config pump.conf --set port=1502 verify)";

/// Values are converted without a structure, so that none becomes an object.
std::string unusable_type(std::string const& name) {
    auto const type = type_named(name);
    if (!type) return "unknown type '" + name + "', not " + plain_types();
    if (type->basic_type != tavi::ioapi::v2::io_data_type::basic_types::object) return {};
    return "no value is converted to '" + name + "', a structure; it takes " + plain_types();
}

std::string unusable_time(std::string const& text) {
    double seconds = 0;
    bool const is_number = CLI::detail::lexical_cast(text, seconds);
    // Written so that "nan" is outside of it.
    if (is_number && seconds >= 0.001 && seconds <= 1e9) return {};
    return "'" + text + "' is not in the range of 0.001 to 1000000000";
}

/// What this program is, and what it has found to run with. The loader sees to it that this is of
/// the revision that the program was built for.
std::string version_text() {
    return std::string("iohost ") + IOHOST_VERSION + "\nlibiokern revision " + library_revision() +
           "\nmodules with " + example::entry_name;
}

void declare_common(CLI::App& app, options& chosen) {
    app.add_option("--backend", chosen.backend, "The backend module")->type_name("MODULE");
    app.add_option("--config", chosen.config_file, "File with the configuration of the backend")
        ->type_name("FILE");
    app.add_option("--set", chosen.settings, "One value of it; may be given again")
        ->type_name("KEY=VALUE")
        ->allow_extra_args(false);
    app.add_flag("--json", chosen.json, "Print JSON");
    app.add_flag("--verbose", chosen.verbose,
                 "Show all log records of the backend, not warnings and errors alone");
    app.set_version_flag("--version", version_text, "Print the versions of host and library");
    app.footer(after_all);
}

CLI::App& command(CLI::App& app,
                  std::string const& name,
                  std::string const& description,
                  std::string const& footer) {
    auto* const made = app.add_subcommand(name, description);
    made->fallthrough();
    bool const is_configured = name != "form" && name != "info";
    made->footer((is_configured ? common_options : common_options_unconfigured) + footer);
    return *made;
}

void declare_module(CLI::App& command, options& chosen) {
    command.add_option("MODULE", chosen.backend, "The same as --backend MODULE")->type_name("");
}

void declare_read(CLI::App& command, options& chosen) {
    command
        .add_option("NAME", chosen.names,
                    "Variables to read; all that browsing finds where none is named")
        ->type_name("");
    command.add_flag("--print", chosen.print, "Print each value on lines of its own instead");
    command.add_option("--as", chosen.type, "Convert each value to a data type first")
        ->type_name("TYPE")
        ->check(unusable_type);
}

void declare_watch(CLI::App& command, options& chosen) {
    command.add_option("NAME", chosen.names, "Variables to watch")->required()->type_name("");
    command.add_option("--count", chosen.polls, "End after so many polls")
        ->type_name("N")
        ->check(CLI::Range(1ULL, ~0ULL));
    command.add_option("--for", chosen.seconds, "End after so many seconds")
        ->type_name("SECONDS")
        ->check(unusable_time);
}

void declare_check(CLI::App& command, options& chosen) {
    declare_module(command, chosen);
    command
        .add_option("--write", chosen.assignments, "Try this value, and put the former one back")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    command.add_flag("--allow-writes", chosen.allow_writes,
                     "Write back what was read, and try what is to be refused");
}

void declare(CLI::App& app, options& chosen) {
    declare_common(app, chosen);
    app.require_subcommand(1);
    command(app, "form", "Show what the backend can be given: keys, types, defaults, choices",
            after_form);
    command(app, "verify", "Let the backend judge the configuration, without a connection",
            after_verify);
    command(app, "browse", "Show the tree of variables", after_browse)
        .add_option("FOLDER", chosen.folder, "Show what is below this folder alone")
        ->type_name("");
    declare_read(command(app, "read", "Read variables and print them as a table", after_read),
                 chosen);
    command(app, "write", "Write variables", after_write)
        .add_option("NAME=VALUE", chosen.assignments, "What to write, also NAME:TYPE=VALUE")
        ->required()
        ->type_name("");
    declare_watch(command(app, "watch", "Show variables as they change", after_watch), chosen);
    declare_module(
        command(app, "info", "Say what a module is, or why it does not load", after_info), chosen);
    declare_check(command(app, "check", "See whether a backend keeps the rules", after_check),
                  chosen);
}

/// Where there is a word in the place of the command, say that it is none.
void insist_on_command(CLI::App const& app) {
    if (!app.get_subcommands().empty()) return;
    for (auto const& word : app.remaining()) {
        if (word.starts_with('-')) return;
        throw setup_failure("there is no command '" + word + "'; see iohost --help");
    }
}

} // namespace

std::optional<options> parsed_command_line(int argc, char const* const* argv) {
    CLI::App app("Works with a controller through a backend module: shows, reads, writes and "
                 "watches its variables.",
                 "iohost");
    options chosen;
    declare(app, chosen);
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& error) {
        if (error.get_exit_code() == 0) {
            app.exit(error);
            return std::nullopt;
        }
        insist_on_command(app);
        throw setup_failure(std::string(error.what()) + "; see iohost --help");
    }
    chosen.command = app.get_subcommands().front()->get_name();
    return chosen;
}

auto command_named(std::string const& name) -> exit_status (*)(options const&) {
    struct {
        char const* name;
        exit_status (*command)(options const&);
    } const commands[] = {{"form", form_command},     {"verify", verify_command},
                          {"browse", browse_command}, {"read", read_command},
                          {"write", write_command},   {"watch", watch_command},
                          {"info", info_command},     {"check", check_command}};
    for (auto const& known : commands) {
        if (known.name == name) return known.command;
    }
    throw setup_failure("there is no command '" + name + "'; see iohost --help");
}

} // namespace iohost

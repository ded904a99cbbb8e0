#include "module_path.hpp"

#include "failures.hpp"

#include <algorithm>
#include <system_error>

namespace iohost {

namespace {

namespace fs = std::filesystem;

bool is_word(std::string const& text) {
    auto const fits = [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
               (letter >= '0' && letter <= '9') || letter == '_' || letter == '-';
    };
    return !text.empty() && std::all_of(text.begin(), text.end(), fits);
}

bool is_there(fs::path const& file) {
    std::error_code ignored;
    return fs::exists(file, ignored);
}

} // namespace

fs::path program_directory() {
    std::error_code error;
    auto const program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path() : program.parent_path();
}

fs::path module_path(std::string const& backend, fs::path const& program) {
    if (backend.empty())
        throw setup_failure(
            "the name of the backend is empty; give the file of a module, or a word such as linux");
    if (!is_word(backend)) return fs::absolute(backend);

    std::string const file = backend + "_backend.so";
    auto const above = program.parent_path();
    fs::path const directories[] = {program, above / (backend + "_backend"),
                                    above / "lib" / "iokern" / "backends"};
    std::string looked;
    for (auto const& directory : directories) {
        if (is_there(directory / file)) return directory / file;
        looked += (looked.empty() ? "" : ", ") + directory.string();
    }
    if (is_there(backend)) return fs::absolute(backend);
    throw setup_failure("there is no backend '" + backend + "': no " + file + " in " + looked +
                        "; give the path of a module");
}

fs::path module_path(std::string const& backend) {
    return module_path(backend, program_directory());
}

} // namespace iohost

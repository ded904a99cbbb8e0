#include "test_host.hpp"

#include <backend_module.hpp>
#include <dlfcn.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace {

namespace v2 = tavi::ioapi::v2;

struct releaser {
    void operator()(example::backend* opened) const noexcept { opened->release(); }
};
using backend_ptr = std::unique_ptr<example::backend, releaser>;

backend_ptr opened(example::backend_module const& module, test_host& host) {
    v2::config::store values;
    values.set("folder", "sensors");
    v2::utility::string problem;
    v2::io_error error;
    backend_ptr backend(module.open(values, v2::backend_query(host), problem, error));
    if (backend == nullptr) std::cerr << error << ": " << problem << '\n';
    return backend;
}

// The answer for one variable as one line.
std::string line_of(example::backend& backend, v2::plc_identifier const& variable) {
    v2::plc_identifier const wanted[] = {variable};
    v2::read_result result(wanted);
    v2::io_error error;
    backend.read(result, error);
    std::ostringstream line;
    line << variable << ": ";
    if (error || !result[0].ok()) {
        line << (error ? error : result[0].error());
    } else {
        line << result[0].value().value();
    }
    return line.str();
}

void make_sensors() {
    std::filesystem::remove_all("sensors");
    std::filesystem::create_directory("sensors");
    std::ofstream("sensors/frost") << "-1250\n";
    std::ofstream("sensors/words") << "12 north\n";
    std::ofstream("sensors/nothing").flush();
    ::mkfifo("sensors/pipe", 0600);
}

int failures_of(example::backend& backend) {
    struct {
        v2::plc_identifier variable;
        char const* answer;
    } const expected[] = {
        {v2::plc_identifier("frost"), R"("frost": (i64) -1250)"},
        {v2::plc_identifier("words"), R"("words": sensor:2 holds no whole number)"},
        {v2::plc_identifier("nothing"), R"("nothing": sensor:2 holds no whole number)"},
        {v2::plc_identifier("pipe"), R"("pipe": generic:1 not found)"},
        {v2::plc_identifier("../sensors/frost"), R"("../sensors/frost": generic:1 not found)"},
        {v2::plc_identifier("no such file"), R"("no such file": generic:1 not found)"},
        {v2::plc_identifier(7), "7: generic:1 not found"},
    };
    int failures = 0;
    for (auto const& [variable, answer] : expected) {
        auto const line = line_of(backend, variable);
        if (line == answer) continue;
        std::cerr << "expected " << answer << "\nseen     " << line << '\n';
        ++failures;
    }
    return failures;
}

} // namespace

// Does what a host does: loads the module, finds its entry, opens it, asks for values.
int main(int argc, char* argv[]) {
    void* const module = dlopen(argc > 1 ? argv[1] : "", RTLD_NOW | RTLD_LOCAL);
    void* const entry = module == nullptr ? nullptr : dlsym(module, example::entry_name);
    if (entry == nullptr) {
        std::cerr << dlerror() << '\n';
        return 1;
    }
    make_sensors();
    test_host host;
    auto const backend = opened(*reinterpret_cast<example::get_backend_module>(entry)(), host);
    return backend != nullptr && failures_of(*backend) == 0 ? 0 : 1;
}

#include <tavi/ioapi/v2/ioapi.hpp>

#include "sensor_backend.hpp"

#include <dlfcn.h>

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace v2 = tavi::ioapi::v2;

namespace {

// One answer as one line.
std::string line_of(v2::read_result::result_type const& entry) {
    std::ostringstream line;
    line << entry.identifier() << ": ";
    if (entry.ok()) {
        line << entry.value().value();
    } else {
        line << entry.error();
    }
    return line.str();
}

} // namespace

// Does what a host does: loads the module, finds its entry, hands over what it wants to know.
int main(int argc, char* argv[]) {
    void* const module = dlopen(argc > 1 ? argv[1] : "", RTLD_NOW | RTLD_LOCAL);
    void* const entry = module == nullptr ? nullptr : dlsym(module, "sensor_backend_read");
    if (entry == nullptr) {
        std::cerr << dlerror() << '\n';
        return 1;
    }
    auto const read = reinterpret_cast<sensor_backend_read_function>(entry);

    std::ofstream("frost") << "-1250\n";
    std::ofstream("words") << "north\n";
    struct {
        v2::plc_identifier identifier;
        char const* answer;
    } const expected[] = {
        {v2::plc_identifier("frost"), R"("frost": (i64) -1250)"},
        {v2::plc_identifier("words"), R"("words": sensor:2 holds no whole number)"},
        {v2::plc_identifier("no such file"), R"("no such file": sensor:1 cannot be read)"},
        {v2::plc_identifier(7), "7: generic:1 not found"},
    };

    int failures = 0;
    for (auto const& [identifier, answer] : expected) {
        v2::read_result result(v2::utility::data_view<v2::plc_identifier const>(&identifier, 1));
        read(result);
        if (line_of(result[0]) != answer) {
            std::cerr << "expected " << answer << "\nseen     " << line_of(result[0]) << '\n';
            ++failures;
        }
    }
    return failures == 0 ? 0 : 1;
}

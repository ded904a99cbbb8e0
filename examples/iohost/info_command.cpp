#include "columns.hpp"
#include "commands.hpp"
#include "failures.hpp"
#include "form_listing.hpp"
#include "json_entry.hpp"
#include "module_path.hpp"
#include "printable.hpp"
#include "session.hpp"

#include <iostream>
#include <string>
#include <vector>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

std::string with_commas(std::vector<std::string> const& words) {
    std::string text;
    for (auto const& word : words) text += (text.empty() ? "" : ", ") + printable(word);
    return text.empty() ? "-" : text;
}

std::string text_of(v2::backend_version_info const& version) {
    auto const numbers = std::to_string(version.major_version) + '.' +
                         std::to_string(version.minor_version) + '.' +
                         std::to_string(version.patch_version);
    return version.label.empty() ? numbers : numbers + ' ' + version.label.str();
}

void print(loaded_module const& module, example::module_info const& info) {
    columns lines({"name", printable(info.name)});
    lines.add({"summary", printable(info.summary)});
    lines.add({"version", printable(text_of(info.version))});
    lines.add({"file", printable(module.file().string())});
    lines.add({"built for", "revision " + with_commas(module.about().revisions) + " of libiokern"});
    lines.add({"entry", with_commas(module.about().entries)});
    lines.add({"needs", with_commas(module.about().needed)});
    std::cout << lines << "\nform\n\n";
    print_form(std::cout, module.form());
}

json module_json(loaded_module const& module, example::module_info const& info) {
    return {{"file", module.file().string()},
            {"loads", true},
            {"name", info.name.str()},
            {"summary", info.summary.str()},
            {"version",
             {{"major", info.version.major_version},
              {"minor", info.version.minor_version},
              {"patch", info.version.patch_version},
              {"label", info.version.label.str()}}},
            {"revisions", module.about().revisions},
            {"entries", module.about().entries},
            {"needs", module.about().needed},
            {"form", iohost::to_json(module.form())}};
}

} // namespace

exit_status info_command(options const& chosen) {
    insist_on_no_configuration(chosen);
    try {
        session const opened(chosen);
        auto const info = opened.module().describe();
        if (chosen.json) {
            print_document(module_json(opened.module(), info));
        } else {
            print(opened.module(), info);
        }
    } catch (setup_failure const& why) {
        // Why a module does not load is what was asked for.
        if (chosen.json && chosen.backend) {
            print_document({{"file", *chosen.backend}, {"loads", false}, {"reason", why.what()}});
        }
        throw;
    }
    return all_well;
}

} // namespace iohost

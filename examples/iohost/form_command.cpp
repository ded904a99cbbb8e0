#include "commands.hpp"
#include "form_listing.hpp"
#include "json_entry.hpp"
#include "session.hpp"

#include <iostream>

namespace iohost {

exit_status form_command(options const& chosen) {
    insist_on_no_configuration(chosen);
    session const opened(chosen);
    auto const form = opened.module().form();
    if (chosen.json) {
        print_document(to_json(form));
    } else {
        print_form(std::cout, form);
    }
    return all_well;
}

} // namespace iohost

#include "catalogue.hpp"

#include <utility>

namespace linux_backend {

catalogue::catalogue(snapshot& files, structures const& known)
    : files_(&files),
      known_(&known),
      groups_{{"network.", network_variables},
              {"link.", link_variables},
              {"block.", block_variables},
              {"thermal.", thermal_variables}} {
    add(fixed_variables());
    add(processor_variables(known));
    add(network_list_variables());
}

void catalogue::add(variable_list list) {
    // Its variables stay where they are when the list is moved. A name that is taken stays so.
    lists_.push_back(std::move(list));
    for (auto const& one : lists_.back()) by_name_.try_emplace(one.name, &one);
}

void catalogue::list(group& wanted) {
    if (wanted.is_listed) return;
    add(wanted.list(*files_, *known_));
    wanted.is_listed = true;
}

variable const* catalogue::find(std::string_view name) {
    auto const known = by_name_.find(name);
    if (known != by_name_.end()) return known->second;
    for (auto& candidate : groups_) {
        if (name.starts_with(candidate.prefix)) list(candidate);
    }
    auto const listed = by_name_.find(name);
    return listed == by_name_.end() ? nullptr : listed->second;
}

std::vector<variable const*> catalogue::all() {
    for (auto& one : groups_) {
        try {
            list(one);
        } catch (file_failure const&) {
            // Who reads such a variable is told why.
            continue;
        }
    }
    std::vector<variable const*> variables;
    for (auto const& list : lists_) {
        for (auto const& one : list) {
            if (by_name_.at(one.name) == &one) variables.push_back(&one);
        }
    }
    return variables;
}

} // namespace linux_backend

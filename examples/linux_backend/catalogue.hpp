#pragma once

#include "structures.hpp"
#include "variables.hpp"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace linux_backend {

/// The variables that a machine has at the moment of one operation. Those of interfaces and devices
/// are looked for when the first of their kind is asked for.
class catalogue {
public:
    /// \param files, known  must outlive the catalogue
    catalogue(snapshot& files, structures const& known);

    /// \return the variable, which lives as long as the catalogue, or null
    /// \throws file_failure  where it cannot be known whether there is such an interface or device
    [[nodiscard]] variable const* find(std::string_view name);

    /// All variables by group; interfaces or devices that cannot be listed are left out.
    [[nodiscard]] std::vector<variable const*> all();

private:
    struct group {
        std::string_view prefix;
        variable_list (*list)(snapshot&, structures const&);
        bool is_listed = false;
    };

    void add(variable_list list);
    void list(group& wanted);

    snapshot* files_;
    structures const* known_;
    std::vector<group> groups_;
    std::vector<variable_list> lists_; ///< a list never changes once it is here
    std::unordered_map<std::string_view, variable const*> by_name_;
};

} // namespace linux_backend

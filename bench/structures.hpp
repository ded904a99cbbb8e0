#pragma once

#include "values.hpp"

#include <map>
#include <mutex>
#include <string>

/// \file
/// Dictionaries of structure types: this library's, and by hand a map with a lock of any kind. Both
/// give out deep copies.

namespace bench {

/// The ids under which structures are registered lie far apart.
[[nodiscard]] constexpr unsigned long long structure_id(int number) noexcept {
    return static_cast<unsigned long long>(number) * 1000003ULL;
}

/// The names of the members of every structure.
inline char const* const structure_members[] = {"speed", "torque", "state", "fault"};

class iokern_dictionary {
public:
    explicit iokern_dictionary(int size) {
        v2::io_structure_type structure("motor");
        for (char const* const member : structure_members) {
            structure.set_member(member, v2::io_data_type::scalar(v2::detail::types::dbl));
        }
        v2::io_error error;
        for (int i = 0; i < size; ++i) {
            content_.replace_structure(structure_id(i), structure, error);
        }
    }

    [[nodiscard]] v2::io_structure_type get(unsigned long long id) {
        v2::io_error error;
        return content_.get_structure(id, error);
    }
    static bool is_motor(v2::io_structure_type const& structure) {
        return structure.name() == "motor" && structure.has_member("speed") &&
               structure.has_member("fault") && !structure.has_member("motor");
    }

private:
    v2::io_structure_dictionary content_;
};

struct plain_structure {
    std::string name;
    std::map<std::string, v2::io_data_type, std::less<>> members;
};

/// \tparam Lock  has `lock` and `unlock`
template <class Lock>
class locked_map {
public:
    explicit locked_map(int size) {
        plain_structure structure{"motor", {}};
        for (char const* const member : structure_members) {
            structure.members[member] = v2::io_data_type::scalar(v2::detail::types::dbl);
        }
        for (int i = 0; i < size; ++i) content_[structure_id(i)] = structure;
    }

    [[nodiscard]] plain_structure get(unsigned long long id) {
        std::lock_guard<Lock> const guard(lock_);
        auto const place = content_.find(id);
        return place != content_.end() ? place->second : plain_structure();
    }
    static bool is_motor(plain_structure const& structure) {
        return structure.name == "motor" && structure.members.count("speed") == 1 &&
               structure.members.count("fault") == 1 && structure.members.size() == 4;
    }

private:
    Lock lock_;
    std::map<unsigned long long, plain_structure> content_;
};

} // namespace bench

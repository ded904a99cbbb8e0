#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/library_value.hpp"
#include "model/random_value.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <array>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

/// \file
/// A script of operations on structure types and on a dictionary of them.

namespace {

using namespace fuzz;
using v2::io_error;
using v2::io_structure_type;

/// Without a model the handle is null.
struct pair {
    io_structure_type structure;
    std::optional<structure_model> model = structure_model();
};

class machine {
public:
    explicit machine(input& script) : script_(script) {}

    void run() {
        for (int step = 0; step < 64 && !script_.empty(); ++step) {
            pair& target = slot();
            if (target.model && script_.below(3) != 0) {
                use(target.structure, *target.model);
            } else {
                replace(target, slot());
            }
            for (pair const& each : slots_) {
                if (each.model) check(same(each.structure, *each.model), "a type has its members");
            }
        }
        check_dictionary();
    }

private:
    pair& slot() { return slots_.at(script_.below(3)); }

    void replace(pair& target, pair& source) {
        switch (script_.below(4)) {
        case 0:
            target.model = random_structure(script_);
            target.structure = made(*target.model);
            break;
        case 1:
            target.structure = source.structure; // the two may be one
            if (&target != &source) target.model = source.model;
            break;
        case 2:
            if (&target == &source) break;
            target.structure = std::move(source.structure);
            target.model = std::exchange(source.model, std::nullopt);
            break;
        default: {
            io_structure_type copy(source.structure);
            std::optional<structure_model> model = source.model;
            target.structure = std::move(copy);
            target.model = std::move(model);
        }
        }
    }

    void use(io_structure_type& structure, structure_model& model) {
        std::string const key = random_key(script_);
        switch (script_.below(8)) {
        case 0:
            structure.clear();
            model.members.clear();
            break;
        case 1: return ask(structure, model, key);
        case 2: return add(structure, model);
        case 3: return get(structure, model);
        case 4: return remove();
        case 5: return put(structure, model);
        default: {
            io_data_type const type = random_type(script_);
            structure.set_member(key, type);
            model.members[key] = type;
        }
        }
    }

    static void ask(io_structure_type const& structure,
                    structure_model const& model,
                    std::string const& key) {
        auto const member = model.members.find(key);
        bool const has = member != model.members.end();
        check(structure.has_member(key) == has, "has_member is as the rules");
        check(structure.get_member(key) == (has ? member->second : io_data_type()),
              "get_member is as the rules");
        check(structure.empty() == model.members.empty(), "a type without members is empty");
    }

    // --- the dictionary ---

    void add(io_structure_type const& structure, structure_model const& model) {
        io_error error(io_errc_todo());
        io_data_type const type = dictionary_.add_structure(structure, error);
        check(error.ok(), "add_structure succeeds");
        check(type == io_data_type::object(type.structure_id), "add_structure gives a type");
        check(registered_.emplace(type.structure_id, model).second, "a new id is unused");
    }

    void put(io_structure_type const& structure, structure_model const& model) {
        unsigned long long const id = any_id();
        io_error error(io_errc_todo());
        dictionary_.replace_structure(id, structure, error);
        check(error.ok(), "replace_structure succeeds");
        registered_[id] = model;
    }

    void get(io_structure_type& structure, structure_model& model) {
        unsigned long long const id = any_id();
        io_error error(io_errc_todo());
        structure = dictionary_.get_structure(id, error);
        auto const found = registered_.find(id);
        bool const known = found != registered_.end();
        check(error == io_error(known ? v2::io_errc::success : v2::io_errc::not_found),
              "get_structure reports the code of the rules");
        model = known ? found->second : structure_model();
    }

    void remove() {
        unsigned long long const id = any_id();
        io_error error(io_errc_todo());
        dictionary_.remove_structure(id, error);
        check(error == io_error(registered_.erase(id) != 0 ? v2::io_errc::success
                                                           : v2::io_errc::not_found),
              "remove_structure reports the code of the rules");
    }

    void check_dictionary() {
        for (auto const& [id, model] : registered_) {
            io_error error;
            check(same(dictionary_.get_structure(id, error), model), "an id names its structure");
            check(error.ok(), "an id that was given is known");
        }
    }

    /// What a call is given, which must clear it.
    static v2::io_errc io_errc_todo() { return v2::io_errc::todo; }

    /// One that is registered, or any small one. Random ids stand behind small ones, so that a
    /// script does the same each time.
    unsigned long long any_id() {
        unsigned int const choice = script_.byte();
        if (choice < 128 || registered_.empty()) return choice % 8;
        auto const at = choice % registered_.size();
        return std::next(registered_.begin(), static_cast<std::ptrdiff_t>(at))->first;
    }

    input& script_;
    std::array<pair, 3> slots_;
    v2::io_structure_dictionary dictionary_;
    std::map<unsigned long long, structure_model> registered_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    machine(script).run();
    return 0;
}

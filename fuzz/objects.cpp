#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/library_value.hpp"
#include "model/random_value.hpp"
#include "model/rules.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <array>
#include <optional>
#include <utility>

/// \file
/// A script of operations on three objects, each done to a model as well.

namespace {

using namespace fuzz;
using v2::io_error;
using v2::io_object;

/// Without a model the handle is null: moved from, or assigned from such a one.
struct pair {
    io_object object;
    std::optional<object_model> model = object_model();
};

bool knows_its_keys(object_model const& model) {
    return model.type.structure_id != 0;
}

bool declares(object_model const& model, std::string const& key) {
    return model.structure.members.count(key) != 0;
}

class machine {
public:
    explicit machine(input& script) : script_(script) {}

    void run() {
        for (int step = 0; step < 64 && !script_.empty(); ++step) {
            pair& target = slot();
            if (target.model && script_.below(4) != 0) {
                use(target.object, *target.model);
            } else {
                replace(target, slot());
            }
            for (pair const& each : slots_) {
                if (each.model) check(same(each.object, *each.model), "an object has its members");
            }
        }
    }

private:
    pair& slot() { return slots_.at(script_.below(3)); }

    // --- as a whole ---

    void replace(pair& target, pair& source) {
        switch (script_.below(6)) {
        case 0: return build(target);
        case 1: return copy(target, source);
        case 2: return move(target, source);
        case 3: return copy_build(target, source);
        case 4: return through_value(target, source);
        default: std::swap(target.object, source.object); std::swap(target.model, source.model);
        }
    }

    void build(pair& target) {
        target.model = random_object(script_, {2, 4});
        target.object = made(*target.model);
    }

    static void copy(pair& target, pair const& source) {
        target.object = source.object; // the two may be one
        if (&target != &source) target.model = source.model;
    }

    static void move(pair& target, pair& source) {
        if (&target == &source) return;
        target.object = std::move(source.object);
        target.model = std::exchange(source.model, std::nullopt);
    }

    static void copy_build(pair& target, pair const& source) {
        io_object copy(source.object);
        std::optional<object_model> model = source.model;
        target.object = std::move(copy);
        target.model = std::move(model);
    }

    static void through_value(pair& target, pair const& source) {
        if (!source.model) return;
        v2::io_value const value(source.object);
        check(same(value, natural(*source.model)), "a value holds the object put into it");
        check(value != v2::io_value(value), "an object equals nothing");
        std::optional<object_model> model = source.model;
        target.object = *value.get_if<io_object>();
        target.model = std::move(model);
    }

    // --- by key ---

    void use(io_object& object, object_model& model) {
        std::string const key = random_key(script_);
        switch (script_.below(6)) {
        case 0: return get(object, model, key);
        case 1: return remove(object, model, key);
        case 2: return ask(object, model, key);
        default: return set(object, model, key);
        }
    }

    void set(io_object& object, object_model& model, std::string const& key) {
        value_model value = random_value(script_, {2, 4});
        io_error error(v2::io_errc::todo);
        object.set(key, made(value), error);
        io_errc const code = set_member(model, key, std::move(value));
        check(error == io_error(code), "set reports the code of the rules");
    }

    static void get(io_object const& object, object_model const& model, std::string const& key) {
        io_error error(v2::io_errc::todo);
        v2::io_value const value = object.get(key, error);
        auto const found = model.values.find(key);
        io_errc code = io_errc::success;
        if (knows_its_keys(model) && !declares(model, key)) {
            code = io_errc::invalid_property;
        } else if (found == model.values.end() && !knows_its_keys(model)) {
            code = io_errc::not_found;
        }
        check(error == io_error(code), "get reports the code of the rules");
        bool const given = code == io_errc::success && found != model.values.end();
        check(same(value, given ? found->second : value_model()), "get gives the member");
    }

    static void remove(io_object& object, object_model& model, std::string const& key) {
        io_error error(v2::io_errc::todo);
        object.remove(key, error);
        io_errc code = io_errc::success;
        if (knows_its_keys(model) && !declares(model, key)) {
            code = io_errc::invalid_property;
        } else if (model.values.erase(key) == 0 && !knows_its_keys(model)) {
            code = io_errc::not_found;
        }
        check(error == io_error(code), "remove reports the code of the rules");
    }

    static void ask(io_object const& object, object_model const& model, std::string const& key) {
        bool const known = knows_its_keys(model);
        auto const member = model.structure.members.find(key);
        auto const value = model.values.find(key);
        bool const has =
            known ? member != model.structure.members.end() : value != model.values.end();
        check(object.has(key) == has, "has is as the rules");
        io_data_type type;
        if (has) type = known ? member->second : value->second.type;
        check(object.get_type(key) == type, "get_type is as the rules");
        check(object.empty() == model.values.empty(), "an object without members is empty");
    }

    input& script_;
    std::array<pair, 3> slots_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    machine(script).run();
    return 0;
}

#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/error_model.hpp"
#include "model/identifier_model.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <iterator>
#include <map>
#include <utility>

/// \file
/// A script of operations on the result of a subscription.

namespace {

using namespace fuzz;
using v2::subscription_id;
using v2::subscription_id_kind;
using v2::subscription_result;

/// Counts how many of its kind there are.
class counted_object final : public v2::interfaces::object {
public:
    static inline int alive = 0;

    counted_object() noexcept { ++alive; }
    counted_object(counted_object const&) = delete;
    counted_object& operator=(counted_object const&) = delete;
    ~counted_object() override { --alive; }

    unsigned int add_ref() override { return ++count_; }
    unsigned int release() override {
        unsigned int const left = --count_;
        if (left == 0) delete this;
        return left;
    }

private:
    unsigned int count_ = 1;
};

struct entry_model {
    identifier_model identifier;
    io_data_type data_type;
    error_model error;
    unsigned int aux_value = 0;
    subscription_id_kind kind = subscription_id_kind::none;
    unsigned long long number = 0; ///< of a kind that is one
    void const* address = nullptr; ///< of the kinds that point
};

struct by_primary {
    bool operator()(identifier_model const& left, identifier_model const& right) const {
        return sorts_before(left, right);
    }
};
using entries_model = std::map<identifier_model, entry_model, by_primary>;

bool same_entry(subscription_result::variable_result const& entry, entry_model const& model) {
    return same(entry.identifier, model.identifier) && entry.data_type == model.data_type &&
           same(entry.error, model.error) && entry.aux_value == model.aux_value &&
           entry.ok() == (model.error.code == 0) && entry.id.kind() == model.kind &&
           entry.id.number() == model.number &&
           (model.kind == subscription_id_kind::object ? entry.id.object() : entry.id.address()) ==
               model.address;
}

class machine {
public:
    explicit machine(input& script) : script_(script) {}

    void run() {
        for (int step = 0; step < 64 && !script_.empty(); ++step) {
            operate();
            check_entries();
        }
    }

private:
    /// Never without a primary part: such an identifier must not meet texts in one order.
    identifier_model random_variable() {
        identifier_model identifier = random_identifier(script_);
        if (identifier.primary.index() == 0) identifier.primary = 5ULL;
        return identifier;
    }

    void operate() {
        switch (script_.below(8)) {
        case 0: return set_error();
        case 1: return remove();
        case 2: return ask();
        case 3: return move();
        case 4: return set_own();
        default: return set();
        }
    }

    /// An entry that is there keeps its place, and shows the identifier that was set last.
    void store(identifier_model const& identifier, entry_model entry) {
        entry.identifier = identifier;
        model_[identifier] = std::move(entry);
    }

    subscription_id random_id(entry_model& model) {
        model.kind = subscription_id_kind{script_.below(4)};
        switch (model.kind) {
        case subscription_id_kind::number:
            model.number = random_number<unsigned long long>(script_);
            return subscription_id::from_number(model.number);
        case subscription_id_kind::address:
            model.address = script_.flag() ? this : nullptr;
            return subscription_id::from_address(const_cast<void*>(model.address));
        case subscription_id_kind::object: {
            auto* const object = new counted_object;
            model.address = static_cast<v2::interfaces::object*>(object);
            return subscription_id::adopt(object);
        }
        default: return {};
        }
    }

    void set() {
        identifier_model const identifier = random_variable();
        entry_model entry;
        entry.data_type = random_type(script_);
        entry.aux_value = script_.byte();
        subscription_id id = random_id(entry);
        result_.set(made(identifier), entry.data_type, entry.aux_value, std::move(id));
        store(identifier, std::move(entry));
    }

    void set_error() {
        identifier_model const identifier = random_variable();
        entry_model entry;
        entry.error = random_error(script_);
        result_.set(made(identifier), made(entry.error));
        store(identifier, std::move(entry));
    }

    /// By the identifier that stands in the entry itself.
    void set_own() {
        if (model_.empty()) return;
        auto const at =
            std::next(model_.begin(), static_cast<std::ptrdiff_t>(script_.byte() % model_.size()));
        identifier_model const identifier = at->second.identifier;
        entry_model entry;
        entry.data_type = random_type(script_);
        result_.set(result_.get(made(identifier)).identifier, entry.data_type, 0, {});
        store(identifier, std::move(entry));
    }

    void remove() {
        identifier_model const identifier = random_variable();
        check(result_.remove(made(identifier)) == model_.erase(identifier),
              "remove tells how many there were");
    }

    void ask() {
        identifier_model const identifier = random_variable();
        v2::plc_identifier const wanted = made(identifier);
        auto const expected = model_.find(identifier);
        bool const known = expected != model_.end();
        auto const& given = result_.get(wanted);
        check(result_.has(wanted) == known, "has is as the rules");
        check(&given == &result_[wanted], "get and the brackets give one entry");
        check(subscription_result::is_not_found(given) == !known,
              "an unknown variable has no entry");
        check(same_entry(given, known ? expected->second : entry_model()), "get gives the entry");
    }

    void move() {
        subscription_result moved(std::move(result_));
        result_ = std::move(moved);
    }

    void check_entries() const {
        int objects = 0;
        auto at = result_.begin();
        auto const end = result_.end();
        for (auto const& [key, model] : model_) {
            check(at != end, "there are as many entries as were set");
            check(same_entry(*at, model) && at->aux_value == model.aux_value, "an entry is as set");
            if (model.kind == subscription_id_kind::object) ++objects;
            ++at;
        }
        check(at == end, "there are no other entries");
        check(result_.empty() == model_.empty(), "a result without entries is empty");
        check(counted_object::alive == objects, "an object lives as long as its entry");
    }

    input& script_;
    subscription_result result_;
    entries_model model_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    machine(script).run();
    check(counted_object::alive == 0, "a result releases its objects");
    return 0;
}

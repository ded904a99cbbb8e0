#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/identifier_model.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

/// \file
/// A script of operations on results of a browse.

namespace {

using namespace fuzz;
using v2::browsing::node;
using v2::browsing::node_class;

struct node_model {
    unsigned int node_class = 0;
    identifier_model identifier;
    identifier_model browse_name;
    std::string description;
    io_data_type data_type;
};
using nodes_model = std::vector<node_model>;

node made(node_model const& model) {
    return {node_class{model.node_class}, fuzz::made(model.identifier),
            fuzz::made(model.browse_name), v2::utility::string(model.description), model.data_type};
}

bool same_node(node const& given, node_model const& model) {
    return given.node_class == node_class{model.node_class} &&
           same(given.identifier, model.identifier) && same(given.browse_name, model.browse_name) &&
           static_cast<std::string_view>(given.description) == model.description &&
           given.data_type == model.data_type;
}

node_model random_node(input& script) {
    node_model model;
    model.node_class = script.below(5);
    model.identifier = random_identifier(script);
    model.browse_name = random_identifier(script);
    model.description = random_key(script);
    model.data_type = random_type(script);
    return model;
}

/// Without a model the handle is null.
struct pair {
    v2::browse_result result;
    std::optional<nodes_model> model = nodes_model();
};

void check_pair(pair const& each) {
    if (!each.model) return;
    check(each.result.size() == each.model->size(), "a result has its size");
    check(each.result.empty() == each.model->empty(), "a result without nodes is empty");
    node const* at = each.result.begin();
    for (node_model const& model : *each.model) {
        check(same_node(*at++, model), "a node is as it was pushed");
    }
    check(at == each.result.end(), "the nodes end where the size says");
}

class machine {
public:
    explicit machine(input& script) : script_(script) {}

    void run() {
        for (int step = 0; step < 64 && !script_.empty(); ++step) {
            pair& target = slot();
            if (target.model && script_.below(4) != 0) {
                use(target.result, *target.model);
            } else {
                replace(target, slot());
            }
            for (pair const& each : slots_) check_pair(each);
        }
    }

private:
    pair& slot() { return slots_.at(script_.below(3)); }

    void replace(pair& target, pair& source) {
        switch (script_.below(4)) {
        case 0: return build(target);
        case 1:
            target.result = source.result; // the two may be one
            if (&target != &source) target.model = source.model;
            break;
        case 2:
            if (&target == &source) break;
            target.result = std::move(source.result);
            target.model = std::exchange(source.model, std::nullopt);
            break;
        default: {
            v2::browse_result copy(source.result);
            std::optional<nodes_model> model = source.model;
            target.result = std::move(copy);
            target.model = std::move(model);
        }
        }
    }

    void build(pair& target) {
        nodes_model model(script_.below(6));
        if (script_.flag()) {
            target.result = v2::browse_result(static_cast<unsigned int>(model.size()));
        } else {
            std::vector<node> nodes;
            for (node_model& each : model) {
                each = random_node(script_);
                nodes.push_back(made(each));
            }
            target.result = v2::browse_result(nodes);
        }
        target.model = std::move(model);
    }

    void use(v2::browse_result& result, nodes_model& model) {
        switch (script_.below(8)) {
        case 0: return resize(result, model);
        case 1: return result.reserve(script_.below(32));
        case 2: return find(result, model);
        case 3: return filter(result, model);
        case 4: return change(result, model);
        case 5: return push_own(result, model);
        case 6:
            if (script_.below(4) != 0) break;
            result.clear();
            model.clear();
            return;
        default: break;
        }
        node_model pushed = random_node(script_);
        result.push(made(pushed));
        model.push_back(std::move(pushed));
    }

    void resize(v2::browse_result& result, nodes_model& model) {
        unsigned int const size = script_.below(10);
        result.resize(size);
        model.resize(size);
    }

    void push_own(v2::browse_result& result, nodes_model& model) {
        if (model.empty()) return;
        auto const at = script_.byte() % model.size();
        result.push(result.begin()[at]);
        node_model pushed = model[at];
        model.push_back(std::move(pushed));
    }

    void change(v2::browse_result& result, nodes_model& model) {
        if (model.empty()) return;
        auto const at = script_.byte() % model.size();
        model[at] = random_node(script_);
        result.begin()[at] = made(model[at]);
    }

    void find(v2::browse_result const& result, nodes_model const& model) {
        identifier_model const identifier = random_identifier(script_);
        auto const where = [&](identifier_model node_model::*field) -> node const* {
            auto const at = std::find_if(model.begin(), model.end(), [&](node_model const& each) {
                return each.*field == identifier;
            });
            return at == model.end() ? nullptr : result.begin() + (at - model.begin());
        };
        v2::plc_identifier const wanted = fuzz::made(identifier);
        check(result.get_node(wanted) == where(&node_model::identifier),
              "get_node gives the first one");
        check(result.get_node_by_browse_name(wanted) == where(&node_model::browse_name),
              "get_node_by_browse_name gives the first one");
    }

    void filter(v2::browse_result const& result, nodes_model const& model) {
        unsigned int const wanted = script_.below(5);
        auto const given = result.get_nodes_by_class(node_class{wanted});
        unsigned int next = 0;
        for (node_model const& each : model) {
            if (each.node_class != wanted) continue;
            check(next < given.size() && same_node(given[next], each), "a class has its nodes");
            ++next;
        }
        check(next == given.size(), "a class has no other nodes");
        check(next != 0 || given.data() == nullptr, "a class without nodes has no block");
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

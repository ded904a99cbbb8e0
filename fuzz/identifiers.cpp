#include <tavi/ioapi/v2/ioapi.hpp>

#include "model/identifier_model.hpp"
#include "model/scalar_conversion.hpp"
#include "support/check.hpp"
#include "support/target.hpp"

#include <array>
#include <functional>
#include <sstream>
#include <utility>

/// \file
/// A script of operations on identifiers.

namespace {

using namespace fuzz;
using v2::plc_identifier;

struct pair {
    plc_identifier identifier;
    identifier_model model;
};

std::string printed_part(part_model const& part) {
    if (auto const* const text = std::get_if<std::string>(&part)) return '"' + *text + '"';
    if (auto const* const number = std::get_if<unsigned long long>(&part)) {
        return digits_of(*number);
    }
    return "none";
}

std::string printed_identifier(identifier_model const& model) {
    std::string text = printed_part(model.primary);
    if (model.secondary.index() != 0) text += '/' + printed_part(model.secondary);
    return text;
}

void check_pair(pair const& left, pair const& right) {
    bool const equal = left.model == right.model;
    check((left.identifier == right.identifier) == equal, "== reads both parts");
    check((left.identifier != right.identifier) == !equal, "!= is the negation of ==");
    check((left.identifier < right.identifier) == sorts_before(left.model, right.model),
          "< is as the rules");
    std::hash<plc_identifier> const hash;
    if (equal) check(hash(left.identifier) == hash(right.identifier), "equals have one hash");
}

void check_printed(pair const& each) {
    std::ostringstream out;
    out << each.identifier;
    check(out.str() == printed_identifier(each.model), "an identifier prints as the rules say");
}

void operate(input& script, pair& target, pair& source) {
    switch (script.below(6)) {
    case 0:
        target.identifier = source.identifier; // the two may be one
        if (&target != &source) target.model = source.model;
        break;
    case 1:
        target.identifier = std::move(source.identifier);
        if (&target != &source) target.model = std::exchange(source.model, {});
        break;
    case 2: {
        plc_identifier moved(std::move(source.identifier));
        identifier_model model = std::exchange(source.model, {});
        target.identifier = plc_identifier(moved);
        target.model = std::move(model);
        break;
    }
    case 3:
        // A text of its own becomes another part.
        target.identifier =
            plc_identifier(source.identifier.primary(), source.identifier.primary());
        target.model = {source.model.primary, source.model.primary};
        break;
    default: target.model = random_identifier(script); target.identifier = made(target.model);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    input script(data, size);
    std::array<pair, 4> slots;
    for (int step = 0; step < 64 && !script.empty(); ++step) {
        pair& target = slots.at(script.below(4));
        pair& source = slots.at(script.below(4));
        operate(script, target, source);
        for (pair const& each : slots) {
            check(same(each.identifier, each.model), "an identifier has its parts");
            check_pair(target, each);
            check_pair(each, target);
        }
        check_printed(target);
    }
    return 0;
}

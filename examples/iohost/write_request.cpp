#include "write_request.hpp"

#include "batches.hpp"
#include "browsing.hpp"
#include "failures.hpp"
#include "value_syntax.hpp"

#include <utility>

namespace iohost {

namespace {

namespace v2 = tavi::ioapi::v2;

v2::io_data_type browsed_type(v2::plc_identifier const& variable,
                              example::backend& backend,
                              v2::io_error& error) {
    for (auto const& node : variables_in(browse_tree(backend, {}))) {
        if (node.identifier != variable || node.data_type == v2::io_data_type()) continue;
        error.reset();
        return node.data_type;
    }
    return {};
}

v2::io_data_type type_of(v2::plc_identifier const& variable,
                         example::backend& backend,
                         v2::io_error& error) {
    v2::plc_identifier const variables[] = {variable};
    auto const result = read_in_batches(backend, variables);
    error = result[0].error();
    return error ? browsed_type(variable, backend, error) : result[0].value().value().data_type();
}

} // namespace

v2::io_value value_of(assignment const& assigned,
                      example::backend& backend,
                      v2::io_structure_dictionary& structures,
                      v2::io_error& error) {
    error.reset();
    if (assigned.type) return value_as(assigned.value, *assigned.type, structures, error);
    if (!has_objects(assigned.value)) return natural_value(assigned.value);
    auto const type = type_of(assigned.identifier, backend, error);
    return error ? v2::io_value() : value_as(assigned.value, type, structures, error);
}

v2::write_result write_assignments(std::vector<assignment> const& assigned,
                                   example::backend& backend,
                                   v2::io_structure_dictionary& structures) {
    std::vector<v2::plc_identifier> all;
    std::vector<v2::plc_identifier> variables;
    std::vector<v2::io_value> values;
    std::vector<std::pair<unsigned int, v2::io_error>> unfit;
    std::vector<unsigned int> places;
    for (auto const& each : assigned) {
        auto const place = static_cast<unsigned int>(all.size());
        all.push_back(each.identifier);
        v2::io_error error;
        auto value = value_of(each, backend, structures, error);
        if (error) {
            unfit.emplace_back(place, error);
            continue;
        }
        variables.push_back(each.identifier);
        values.push_back(std::move(value));
        places.push_back(place);
    }
    auto const written = write_in_batches(backend, variables, values);
    v2::write_result outcome(all);
    for (unsigned int i = 0; i < written.size(); ++i) outcome.set(places[i], written[i].error());
    for (auto const& [place, error] : unfit) outcome.set(place, error);
    return outcome;
}

} // namespace iohost

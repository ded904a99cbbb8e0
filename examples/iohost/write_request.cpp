#include "write_request.hpp"

#include <tavi/ioapi/v2/io_error_diagnostics_generic.hpp>

#include "batches.hpp"
#include "browsing.hpp"
#include "entry_name.hpp"
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

/// With the variable and the member that the assignment is for, in the words of its user, where
/// the error does not say so itself.
v2::io_error placed(v2::io_error error, char const* operation, v2::plc_identifier const& target) {
    auto const list = error.diagnostics();
    if (!list.contains(v2::diagnostics_key::operation)) {
        error = with_detail(std::move(error), v2::diagnostics_key::operation, operation);
    }
    if (list.contains("variable")) return error;
    error = with_detail(std::move(error), "variable",
                        given_name_of(v2::plc_identifier(target.primary())));
    if (target.secondary().is_none()) return error;
    return in_member(std::move(error), given_name_of(v2::plc_identifier(target.secondary())));
}

} // namespace

v2::io_value value_of(assignment const& assigned,
                      example::backend& backend,
                      v2::io_structure_dictionary& structures,
                      v2::io_error& error) {
    error.reset();
    if (!assigned.type && !has_objects(assigned.value)) return natural_value(assigned.value);
    auto const type = assigned.type ? *assigned.type : type_of(assigned.identifier, backend, error);
    if (error) {
        error = placed(std::move(error), "read", assigned.identifier);
        return {};
    }
    auto value = value_as(assigned.value, type, structures, error);
    if (error) error = placed(std::move(error), "convert", assigned.identifier);
    return value;
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

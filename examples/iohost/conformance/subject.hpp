#pragma once

#include "../assignment.hpp"
#include "../browsing.hpp"
#include "../loaded_module.hpp"
#include "observed.hpp"
#include "report.hpp"

#include <vector>

namespace iohost::conformance {

/// What is looked at, and what the rules have in common.
struct subject {
    loaded_module const& module;
    host_services& host;
    tavi::ioapi::v2::config::store const& values; ///< a configuration that the module accepts
    std::vector<assignment> const& writes;        ///< what may be written, come what may
    bool allow_writes;                            ///< whether what was read may be written back
    observed& seen;
    report& rules;

    std::vector<tree_node> tree;                                    ///< all that browsing finds
    std::vector<tavi::ioapi::v2::browsing::node> variables;         ///< each once
    std::vector<tavi::ioapi::v2::read_result::result_type> entries; ///< what `variables` read as

    backend_ptr shared; ///< see `connection`

    /// The connection that rules share, which the first call opens: ids of structure types are the
    /// same as long as it is there. \throws setup_failure  where there is none
    [[nodiscard]] example::backend& connection();
    /// Another connection. \throws setup_failure  where there is none
    [[nodiscard]] backend_ptr open() const;

    /// \name The operations, each with an error that was set before, and their entries looked at
    /// \{
    tavi::ioapi::v2::io_error browse(example::backend& backend,
                                     tavi::ioapi::v2::plc_identifier const& folder,
                                     tavi::ioapi::v2::browse_result& result) const;
    tavi::ioapi::v2::io_error read(example::backend& backend,
                                   tavi::ioapi::v2::read_result& result) const;
    tavi::ioapi::v2::io_error write(
        example::backend& backend,
        tavi::ioapi::v2::utility::data_view<tavi::ioapi::v2::io_value const> values_to_write,
        tavi::ioapi::v2::write_result& result) const;
    tavi::ioapi::v2::io_error subscribe(example::backend& backend,
                                        std::vector<tavi::ioapi::v2::plc_identifier> const& wanted,
                                        tavi::ioapi::v2::subscription_result& result) const;
    tavi::ioapi::v2::io_error poll(example::backend& backend,
                                   tavi::ioapi::v2::read_result& changes) const;
    tavi::ioapi::v2::io_error unsubscribe(example::backend& backend,
                                          tavi::ioapi::v2::subscription_id const& id) const;
    /// \}

    /// One variable, or its error.
    [[nodiscard]] tavi::ioapi::v2::read_result::result_type read_one(
        example::backend& backend, tavi::ioapi::v2::plc_identifier const& variable) const;

    /// The first `most` variables that gave a value.
    [[nodiscard]] std::vector<tavi::ioapi::v2::browsing::node> readable(std::size_t most) const;
};

/// An identifier that no backend has.
[[nodiscard]] tavi::ioapi::v2::plc_identifier unknown_variable();
/// A member that no structure has.
[[nodiscard]] tavi::ioapi::v2::plc_identifier unknown_member(
    tavi::ioapi::v2::plc_identifier const& variable);

/// Whether an entry says that the backend never touched it.
[[nodiscard]] bool untouched(tavi::ioapi::v2::io_error const& error);

/// \name The rules, by what they are about
/// \{
void judge_module(subject const& about);
void judge_browsing(subject& about);
void judge_reading(subject& about);
void judge_writing(subject& about);
void judge_subscriptions(subject& about);
void judge_lifetime(subject const& about);
void judge_manners(subject const& about);
/// \}

} // namespace iohost::conformance

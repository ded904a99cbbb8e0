#pragma once

#include <tavi/ioapi/v2/io_error.hpp>

#include <stdexcept>
#include <string>

namespace iohost {

/// Why a command cannot even begin; its text is one line for people.
class setup_failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// An operation of the backend that could not be carried out as a whole. It keeps texts alone, for
/// the error may refer to a category of the module, which goes first.
class operation_failure : public std::runtime_error {
public:
    /// \param operation  what was tried, such as `browse`
    /// \param problem  what it said for people, in place of the error's own words; may be empty
    operation_failure(std::string const& operation,
                      tavi::ioapi::v2::io_error const& error,
                      std::string const& problem = {});
    /// \param folder  that could not be browsed, by its name; empty for the top
    [[nodiscard]] static operation_failure of_browse(std::string const& folder,
                                                     tavi::ioapi::v2::io_error const& error);

    /// The document that says the same in JSON.
    [[nodiscard]] std::string const& document() const noexcept { return document_; }

private:
    operation_failure(std::string const& line, std::string document);

    std::string document_;
};

/// Raise `operation_failure` where there is an error.
void insist(std::string const& operation, tavi::ioapi::v2::io_error const& error);

} // namespace iohost

#include "observed.hpp"

#include <tavi/ioapi/v2/io_value.hpp>

#include <algorithm>
#include <utility>

namespace iohost::conformance {

namespace {

namespace v2 = tavi::ioapi::v2;

/// Of errors that no backend can have made.
class stale_category final : public v2::io_error_category {
public:
    constexpr stale_category() noexcept = default;
    [[nodiscard]] char const* name() const override { return "stale"; }
    [[nodiscard]] v2::utility::string message(int) const override { return "of a former call"; }
};

v2::io_error_category const& stale() {
    static stale_category const category;
    return category;
}

constexpr int stale_code = 4711;

/// Each fault once, so that one of every call does not pass for memory that is lost.
void note(std::vector<std::string>& list, std::string fault) {
    if (std::find(list.begin(), list.end(), fault) == list.end()) {
        list.push_back(std::move(fault));
    }
}

} // namespace

v2::io_error observed::stale_error() {
    return {stale(), stale_code};
}

void observed::judge(char const* operation, v2::io_error& error) {
    ++calls_;
    if (&error.category() == &stale()) {
        note(uncleared_, std::string(operation) + " leaves the error as it was before");
        error.reset();
    }
    entry(operation, error);
}

void observed::entry(char const* operation, v2::io_error const& error) {
    if (!error) return;
    ++errors_;
    char const* const category = error.category().name();
    std::string const where = std::string(" by ") + operation;
    if (category == nullptr || *category == '\0') {
        note(unexplained_,
             "code " + std::to_string(error.code()) + where + " has a category without a name");
    } else if (error.message().empty()) {
        note(unexplained_, describe(error) + where + " has no message");
    }
}

std::vector<std::string> observed::odd_records() const {
    std::lock_guard const lock(records_guard_);
    return odd_records_;
}

std::size_t observed::records() const {
    std::lock_guard const lock(records_guard_);
    return records_;
}

void observed::record(host_services::level level, std::string_view text) {
    std::lock_guard const lock(records_guard_);
    ++records_;
    if (level > host_services::level::fatal) {
        note(odd_records_, "a record of " + name_of(level));
    } else if (text.empty()) {
        note(odd_records_, "a record without a text");
    }
}

} // namespace iohost::conformance

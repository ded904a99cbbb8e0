#pragma once

#include "content.hpp"
#include "support/allocations.hpp"

#include <memory>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// \file
/// Operations as rows of a table, and what each promises for the case that memory runs out in it.
/// Whatever it promises, no block may be lost or released twice.

namespace allocation_failure_test {

/// What is left where memory runs out in an operation.
enum class promise {
    unchanged, ///< `std::bad_alloc`, and its objects are as they were, to the last block
    usable,    ///< `std::bad_alloc`, and its objects can be read, ended and given it once more
    reported,  ///< no exception: its result tells, and its objects are as they were
    quiet,     ///< it asks for no memory
};

/// One operation on an object of its own, to be tried once or twice.
class attempt {
public:
    attempt() = default;
    attempt(attempt const&) = delete;
    attempt& operator=(attempt const&) = delete;
    virtual ~attempt() = default;

    /// The operation. Nothing but this runs out of memory.
    virtual void run() = 0;
    /// What can be seen of the object that it works on.
    [[nodiscard]] virtual std::string state() const = 0;
    /// What it has returned.
    [[nodiscard]] virtual std::string result() const = 0;
};

template <class State, class Run>
class attempt_on final : public attempt {
    using returned = std::invoke_result_t<Run const&, State&>;
    using stored = std::conditional_t<std::is_void_v<returned>, std::monostate, returned>;

public:
    template <class Make>
    attempt_on(Make const& make, Run const& run) : state_(make()), run_(run) {}
    ~attempt_on() noexcept override {} // what it holds may raise where it is corrupt

    void run() override {
        result_.reset();
        if constexpr (std::is_void_v<returned>) {
            run_(state_);
        } else {
            result_.emplace(run_(state_));
        }
    }
    [[nodiscard]] std::string state() const override { return text_of(state_); }
    [[nodiscard]] std::string result() const override {
        return result_ ? text_of(*result_) : std::string("none");
    }

private:
    State state_;
    Run run_;
    std::optional<stored> result_;
};

/// Makes attempts.
struct preparation {
    virtual ~preparation() = default;
    /// \return a new attempt, for the caller to delete
    [[nodiscard]] virtual attempt* make() const = 0;
};

template <class Make, class Run>
class preparation_of final : public preparation {
public:
    preparation_of(Make const& make, Run const& run) : make_(make), run_(run) {}
    [[nodiscard]] attempt* make() const override {
        return new attempt_on<std::invoke_result_t<Make const&>, Run>(make_, run_);
    }

private:
    Make make_;
    Run run_;
};

/// One row.
struct operation {
    std::string name;               ///< a test is named by it
    promise kept;                   ///< where memory runs out
    std::vector<std::string> tries; ///< the exported names that it tries; `name x2` for two forms
    std::shared_ptr<preparation const> preparing;
    std::string report; ///< for `promise::reported`, the text of the result that tells

    [[nodiscard]] std::unique_ptr<attempt> prepare() const {
        return std::unique_ptr<attempt>(preparing->make());
    }
};

// Hundreds of rows are made, each by templates of its own: what they have in common is here.
inline operation row_of(std::string const& name,
                        promise kept,
                        std::vector<std::string> const& tries,
                        preparation const* preparing,
                        std::string const& report) {
    return {name, kept, tries, std::shared_ptr<preparation const>(preparing), report};
}

/// \param make  gives the object that the operation works on, of a type that `text_of` knows
/// \param run   the operation; may return what `text_of` knows
template <class Make, class Run>
[[nodiscard]] operation operation_of(std::string const& name,
                                     promise kept,
                                     std::vector<std::string> const& tries,
                                     Make const& make,
                                     Run const& run,
                                     std::string const& report = {}) {
    return row_of(name, kept, tries,
                  new preparation_of<std::decay_t<Make>, std::decay_t<Run>>(make, run), report);
}

inline std::monostate nothing() {
    return {};
}

/// The same for an operation without an object of its own.
template <class Run>
[[nodiscard]] operation creation_of(std::string const& name,
                                    std::vector<std::string> const& tries,
                                    Run const& run) {
    return operation_of(name, promise::unchanged, tries, &nothing,
                        [run](std::monostate) { return run(); });
}

/// Adds a row to a table, see `operation_of`.
struct row_adder {
    std::vector<operation>& rows;

    template <class Make, class Run>
    void operator()(std::string const& name,
                    promise kept,
                    std::vector<std::string> const& tries,
                    Make const& make,
                    Run const& run,
                    std::string const& report = {}) const {
        add(operation_of(name, kept, tries, make, run, report));
    }

    void add(operation&& row) const { rows.push_back(std::move(row)); }
};

/// The same for an operation without an object of its own, see `creation_of`.
struct creation_adder {
    std::vector<operation>& rows;

    template <class Run>
    void operator()(std::string const& name,
                    std::vector<std::string> const& tries,
                    Run const& run) const {
        row_adder{rows}.add(creation_of(name, tries, run));
    }
};

/// What came of an operation.
struct verdict {
    std::string complaint;    ///< empty where it kept its promise at every allocation
    std::size_t failures = 0; ///< how many allocations were made to fail, one at a time
};

namespace detail {

struct one_try {
    bool hit = false;
    char const* complaint = nullptr;
};

/// What is wrong behind a try that came to the failing allocation, or null.
inline char const* wrong_behind_failure(operation const& tried,
                                        attempt& subject,
                                        std::string const& before,
                                        bool raised,
                                        bool kept_blocks) {
    if (tried.kept == promise::quiet) return "asks for memory";
    if (raised == (tried.kept == promise::reported)) {
        return raised ? "raises std::bad_alloc" : "does not raise std::bad_alloc";
    }
    std::string const after = subject.state(); // all of it must be there to be read
    if (tried.kept != promise::usable) {
        if (!kept_blocks) return "keeps or drops a block";
        if (after != before) return "changes its object";
    }
    if (tried.kept == promise::reported && subject.result() != tried.report) {
        return "reports something else";
    }
    std::unique_ptr<attempt> const untouched = tried.prepare();
    untouched->run();
    subject.run();
    if (subject.state() != untouched->state()) return "leaves another object when it is repeated";
    if (subject.result() != untouched->result()) return "gives another result when it is repeated";
    return nullptr;
}

inline one_try try_once(operation const& tried, std::size_t n, test_support::shortage kind) {
    std::unique_ptr<attempt> const subject = tried.prepare();
    std::string const before = subject->state();
    long long const blocks = test_support::live_blocks();
    one_try result;
    bool raised = false;
    bool other = false;
    {
        test_support::allocation_failure const failure(n, kind);
        try {
            subject->run();
        } catch (std::bad_alloc const&) {
            raised = true;
        } catch (...) {
            other = true;
        }
        result.hit = failure.hit();
    }
    bool const kept_blocks = test_support::live_blocks() == blocks;
    if (other) {
        result.complaint = "raises something else than std::bad_alloc";
    } else if (result.hit) {
        result.complaint = wrong_behind_failure(tried, *subject, before, raised, kept_blocks);
    } else if (raised) {
        result.complaint = "raises std::bad_alloc without a reason";
    }
    return result;
}

} // namespace detail

/// Let the 1st, 2nd, 3rd ... allocation of an operation fail, and for a lasting shortage all behind
/// it, until it passes untouched.
[[nodiscard]] inline verdict judge(operation const& tried, test_support::shortage kind) {
    for (std::size_t n = 1;; ++n) {
        long long const blocks = test_support::live_blocks();
        detail::one_try const result = detail::try_once(tried, n, kind);
        char const* complaint = result.complaint;
        if (test_support::live_blocks() != blocks) complaint = "leaks";
        if (complaint != nullptr) {
            return {std::string(complaint) + ", allocation " + std::to_string(n), n};
        }
        if (!result.hit) return {{}, n - 1};
    }
}

} // namespace allocation_failure_test

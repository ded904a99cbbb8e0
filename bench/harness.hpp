#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// \file
/// How an operation is registered once and then timed by Google Benchmark or counted by callgrind.

namespace bench {

using benchmark::DoNotOptimize;

/// How many operations of a few nanoseconds one pass does.
inline constexpr int batch = 256;

/// The large containers take long to build, and each repetition builds its own.
inline constexpr int growth_repetitions = 3;

/// What `prepare` gives: the work to measure, and the question whether its answers are right, which
/// does the work once more and looks at what came out.
template <class Run, class Right>
struct job {
    Run run;
    Right is_right;
};
template <class Run, class Right>
job(Run, Right) -> job<Run, Right>;

/// Inputs that the two halves of a job share.
template <class T>
[[nodiscard]] std::shared_ptr<std::decay_t<T>> shared(T&& input) {
    return std::make_shared<std::decay_t<T>>(std::forward<T>(input));
}

/// Registers all that the program has to measure; each program defines its own.
void add_operations();

/// A pass of work for callgrind.
struct counted_job {
    std::string name;
    std::size_t items;
    std::function<void()> run; ///< counts one pass, after one that is not counted
};

/// All that were registered by `add`.
[[nodiscard]] std::vector<counted_job>& counted_jobs();

/// How what a peer does for an operation is called.
[[nodiscard]] std::string job_name(std::string const& operation, std::string const& peer);

/// \throws std::runtime_error where an answer is wrong: nothing is measured then
void require_right(bool is_right);

/// Begin to count instructions; nothing outside callgrind.
void begin_count();
/// End the count and hand it out under a name.
void end_count(std::string const& name);

/// Hand a benchmark to Google Benchmark.
benchmark::internal::Benchmark* register_benchmark(std::string const& name,
                                                   std::function<void(benchmark::State&)> run);

/// Time `job` until the state has seen enough. A wrong answer, or an exception out of the work,
/// becomes the error of the benchmark.
template <class Prepare>
void time_job(benchmark::State& state, Prepare const& prepare) {
    try {
        auto const prepared = prepare();
        require_right(prepared.is_right());
        prepared.run();
        for (auto _ : state) prepared.run();
    } catch (std::exception const& failure) {
        state.SkipWithError(failure.what());
    }
}

/// Count the instructions of `passes` passes, after one that is not counted.
template <class Prepare>
void count_job(std::string const& name, int passes, Prepare const& prepare) {
    auto const prepared = prepare();
    require_right(prepared.is_right());
    prepared.run();
    begin_count();
    for (int i = 0; i < passes; ++i) prepared.run();
    end_count(name);
}

/// Register what one peer does for one operation, as `operation/peer`.
/// \param peer  `iokern` for this library, `limit` for the least code by hand, `floor` for the
///     least that is called through a shared object. A note in brackets tells what is peculiar; one
///     that begins with `less:` that less is done than the operation asks for
/// \param items  operations that one pass does
/// \param prepare  builds the inputs and gives a `job`; called once for each repetition
/// \param bytes  read and written by one pass, where that says something
template <class Prepare>
benchmark::internal::Benchmark* add(std::string const& operation,
                                    std::string const& peer,
                                    int items,
                                    Prepare prepare,
                                    std::size_t bytes = 0) {
    std::string const name = job_name(operation, peer);
    counted_jobs().push_back(
        {name, static_cast<std::size_t>(items), [=] { count_job(name, 1, prepare); }});
    return register_benchmark(name, [=](benchmark::State& state) {
        time_job(state, prepare);
        auto const passes = static_cast<std::int64_t>(state.iterations());
        state.SetItemsProcessed(passes * items);
        if (bytes != 0) state.SetBytesProcessed(passes * static_cast<std::int64_t>(bytes));
    });
}

/// Register how the time of one pass grows from 10 to 1,000,000.
/// \param order  how it ought to grow, which the times are fitted to
/// \param passes  how many are counted: enough for a mean
/// \param prepare  as for `add`, called with the size
template <class Prepare>
void add_growth(std::string const& operation, benchmark::BigO order, int passes, Prepare prepare) {
    std::string const name = job_name(operation, "iokern");
    for (int size = 10; size <= 1'000'000; size *= 10) {
        auto const counted_name = job_name(name, std::to_string(size));
        counted_jobs().push_back(
            {counted_name, static_cast<std::size_t>(passes),
             [=] { count_job(counted_name, passes, [=] { return prepare(size); }); }});
    }
    register_benchmark(name,
                       [=](benchmark::State& state) {
                           time_job(state,
                                    [&] { return prepare(static_cast<int>(state.range(0))); });
                           state.SetComplexityN(state.range(0));
                       })
        ->Repetitions(growth_repetitions)
        ->RangeMultiplier(10)
        ->Range(10, 1'000'000)
        ->Complexity(order);
}

} // namespace bench

#include "harness.hpp"

#include <valgrind/callgrind.h>

namespace bench {

std::vector<counted_job>& counted_jobs() {
    static std::vector<counted_job> jobs;
    return jobs;
}

std::string job_name(std::string const& operation, std::string const& peer) {
    return operation + '/' + peer;
}

benchmark::internal::Benchmark* register_benchmark(std::string const& name,
                                                   std::function<void(benchmark::State&)> run) {
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): Google Benchmark keeps what it makes
    return benchmark::RegisterBenchmark(name.c_str(), std::move(run));
}

void require_right(bool is_right) {
    if (!is_right) throw std::runtime_error("wrong answer");
}

// Callgrind starts without instrumentation, so that inputs are built at a fraction of the cost.
void begin_count() {
    CALLGRIND_START_INSTRUMENTATION;
    CALLGRIND_ZERO_STATS;
}

void end_count(std::string const& name) {
    CALLGRIND_DUMP_STATS_AT(name.c_str());
    CALLGRIND_STOP_INSTRUMENTATION;
}

} // namespace bench

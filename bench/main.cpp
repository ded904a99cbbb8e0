#include "harness.hpp"

#include <malloc.h>

#include <iostream>
#include <regex>
#include <string_view>

/// \file
/// The program: times by Google Benchmark, with its options, or under callgrind
///
///     bench --count REGEX
///
/// which runs one pass of every job whose name contains a match, and prints for each the number of
/// operations in a pass, a tab and the name, or `error`, a tab, the name, a tab and the reason.

namespace {

int count(std::string const& pattern) {
    std::regex filter;
    try {
        filter = pattern;
    } catch (std::regex_error const&) {
        std::cerr << "bench: not a regular expression: " << pattern << '\n';
        return 2;
    }
    for (auto const& job : bench::counted_jobs()) {
        if (!std::regex_search(job.name, filter)) continue;
        try {
            job.run();
            std::cout << job.items << '\t' << job.name << '\n';
        } catch (std::exception const& failure) {
            std::cout << "error\t" << job.name << '\t' << failure.what() << '\n';
        }
    }
    return 0;
}

/// The cost of large blocks must not depend on what ran before, and by itself malloc adapts the
/// size from which it asks the kernel for each block.
void fix_thresholds() {
    mallopt(M_MMAP_THRESHOLD, 256 << 20);
    mallopt(M_TRIM_THRESHOLD, 512 << 20);
}

} // namespace

int main(int argc, char** argv) {
    fix_thresholds();
    bench::add_operations();
    if (argc > 1 && std::string_view(argv[1]) == "--count") {
        if (argc == 3) return count(argv[2]);
        std::cerr << "bench: --count takes one regular expression\n";
        return 2;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

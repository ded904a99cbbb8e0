#pragma once

#include "harness.hpp"

#include <type_traits>
#include <vector>

/// \file
/// Lists of inputs, and the loop over them that measures one call each.

namespace bench {

/// `batch` inputs, `make(0)` to `make(batch - 1)`.
template <class Make>
[[nodiscard]] auto inputs(Make make) {
    std::vector<std::decay_t<decltype(make(0))>> result;
    result.reserve(batch);
    for (int i = 0; i < batch; ++i) result.push_back(make(i));
    return result;
}

/// Register one call on each of `batch` inputs.
/// \param make  of the number of an input, the input
/// \param call  what is measured: of an input, the answer
/// \param is_right  of an answer and the number of its input
template <class Make, class Call, class Right>
void add_calls(
    std::string const& operation, std::string const& peer, Make make, Call call, Right is_right) {
    add(operation, peer, batch, [=] {
        auto const list = shared(inputs(make));
        auto const run = [=] {
            for (auto const& input : *list) {
                auto answer = call(input);
                DoNotOptimize(answer);
            }
        };
        return job{run, [=] {
                       int number = 0;
                       for (auto const& input : *list) {
                           if (!is_right(call(input), number++)) return false;
                       }
                       return true;
                   }};
    });
}

} // namespace bench

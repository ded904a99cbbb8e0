#pragma once

#include "blocks.hpp"
#include "harness.hpp"
#include "values.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

/// \file
/// The conversion of whole arrays: what is the same whatever the kinds and sizes.

namespace bench {

/// One conversion of an array of `S` to one of `T`.
template <class S, class T>
struct array_conversion {
    std::string operation;
    std::vector<S> (*source_numbers)(); ///< what the source is made of
    int passes;                         ///< conversions in one pass
    int items;                          ///< what is counted in one pass: elements or conversions

    /// What is read and written by one pass, where that is much.
    [[nodiscard]] std::size_t bytes() const {
        return passes == 1 ? static_cast<std::size_t>(items) * (sizeof(S) + sizeof(T)) : 0;
    }

    /// \param make  of the numbers, the source as the peer has it
    /// \param convert  of that source, a contiguous list of `T`, in fresh memory
    template <class Make, class Convert>
    void add_peer(std::string const& name, Make make, Convert convert) const {
        auto const count = passes;
        auto const is_right = [from = source_numbers](auto const& result) {
            auto const wanted = from();
            return std::equal(std::data(result), std::data(result) + std::size(result),
                              wanted.begin(), wanted.end(),
                              [](T got, S number) { return got == static_cast<T>(number); });
        };
        add(
            operation, name, passes == 1 ? items : passes,
            [=, from = source_numbers] {
                auto const source = shared(make(from()));
                auto const run = [=] {
                    for (int i = 0; i < count; ++i) {
                        auto result = convert(*source);
                        DoNotOptimize(std::data(result));
                    }
                };
                return job{run, [=] { return is_right(convert(*source)); }};
            },
            bytes());
    }

    /// A loop by hand over the bare numbers. \param kernel  whether all of them fit
    template <class Memory, class Kernel>
    void add_kernel(std::string const& name, Kernel kernel) const {
        add_peer(
            name, [](std::vector<S> numbers) { return numbers; },
            [=](std::vector<S> const& source) {
                block<T, Memory> result(source.size());
                if (!kernel(source.data(), result.data(), source.size())) {
                    return block<T, Memory>(0);
                }
                return result;
            });
    }

    /// This library: from one value that holds an array to an array.
    void add_iokern() const {
        auto const error = std::make_shared<v2::io_error>();
        add_peer(
            "iokern",
            [](std::vector<S> const& numbers) {
                return v2::io_value(v2::utility::array<S>(numbers));
            },
            [=](v2::io_value const& source) { return source.as<v2::utility::array<T>>(*error); });
    }

    /// The peers that have a list of values, and those that convert number by number.
    void add_peers() const {
        add_elements<std::vector<poco_value>>(
            "poco_var[vector]", [](poco_value const& each) { return each.convert<T>(); });
        add_elements<std::vector<S>>("boost_numeric_cast[vector]",
                                     [](S each) { return boost::numeric_cast<T>(each); });
        add_peer(
            "boost_json[value_to]",
            [](std::vector<S> const& numbers) { return boost::json::value_from(numbers); },
            [](boost_value const& source) {
                return boost::json::value_to<std::vector<T>>(source);
            });
        // A whole number needs no check to become a double.
        bool const is_complete = std::is_same_v<T, double>;
        add_peer(
            is_complete ? "nlohmann" : "nlohmann[less: unchecked]",
            [](std::vector<S> const& numbers) { return nlohmann_value(numbers); },
            [](nlohmann_value const& source) { return source.get<std::vector<T>>(); });
        add_elements<QVariantList>(is_complete ? "qt_qvariantlist"
                                               : "qt_qvariantlist[less: unchecked]",
                                   [](QVariant const& each) { return qvariant_cast<T>(each); });
    }

private:
    /// One call for each element of a list. \tparam Source  the list
    template <class Source, class Call>
    void add_elements(char const* name, Call call) const {
        add_peer(
            name,
            [](std::vector<S> const& numbers) { return Source(numbers.begin(), numbers.end()); },
            [=](Source const& source) {
                std::vector<T> result;
                result.reserve(static_cast<std::size_t>(source.size()));
                for (auto const& each : source) result.push_back(call(each));
                return result;
            });
    }
};

} // namespace bench

#include "harness.hpp"
#include "inputs.hpp"
#include "kernels.hpp"
#include "operations.hpp"
#include "values.hpp"

#include <cstdint>
#include <numeric>

/// \file
/// Equality. A peer that never finds an `int` equal to a `double` has no part where they meet.

namespace bench {

namespace {

auto const by_operator = [](auto const& left, auto const& right) -> bool { return left == right; };

bool equal_bare(bare_value const& left, bare_value const& right) {
    auto const as_dbl = [](bare_value const& value) {
        return value.visit([](auto number) { return static_cast<double>(number); });
    };
    if (left.tag == right.tag && left.tag < bare_value::flt) {
        return left.visit([&](auto number) {
            return number ==
                   right.visit([](auto other) { return static_cast<decltype(number)>(other); });
        });
    }
    return as_dbl(left) == as_dbl(right);
}

// --- scalars

/// \param left, right  of a number, a value
template <class Left, class Right, class Equal>
void add_pairs(
    char const* operation, std::string const& name, Left left, Right right, Equal equal) {
    add(operation, name, batch, [=] {
        auto const lefts = shared(inputs(left));
        auto const rights = shared(inputs(right));
        auto const run = [=] {
            for (std::size_t i = 0; i < std::size_t(batch); ++i) {
                bool result = equal((*lefts)[i], (*rights)[i]);
                DoNotOptimize(result);
            }
        };
        return job{run, [=] {
                       for (std::size_t i = 1; i < std::size_t(batch); ++i) {
                           if (!equal((*lefts)[i], (*rights)[i])) return false;
                           if (equal((*lefts)[i], (*rights)[i - 1])) return false;
                       }
                       return true;
                   }};
    });
}

template <class V, class Number, class Equal>
void add_scalars_of(char const* operation, Equal equal) {
    add_pairs(
        operation, peer<V>::name, [](int i) { return peer<V>::of(i); },
        [](int i) { return peer<V>::of(static_cast<Number>(i)); }, equal);
}

void add_scalars() {
    add_scalars_of<bare_value, int>("equal_i32", equal_bare);
    add_scalars_of<v2::io_value, int>("equal_i32", by_operator);
    add_scalars_of<std_value, int>("equal_i32", by_operator);
    add_scalars_of<QVariant, int>("equal_i32", by_operator);
    add_scalars_of<poco_value, int>("equal_i32", by_operator);
    add_scalars_of<boost_value, int>("equal_i32", by_operator);
    add_scalars_of<nlohmann_value, int>("equal_i32", by_operator);

    add_scalars_of<bare_value, double>("equal_i32_dbl", equal_bare);
    add_scalars_of<v2::io_value, double>("equal_i32_dbl", by_operator);
    add_scalars_of<QVariant, double>("equal_i32_dbl", by_operator);
    add_scalars_of<poco_value, double>("equal_i32_dbl", by_operator);
    add_scalars_of<nlohmann_value, double>("equal_i32_dbl", by_operator);
}

// --- arrays

constexpr std::size_t compared_elements = 100'000;

template <class S>
std::vector<S> numbers() {
    std::vector<S> result(compared_elements);
    std::iota(result.begin(), result.end(), S(0));
    return result;
}

/// \param make  of a list of numbers, the peer's array
template <class S, class Make, class Equal>
void add_arrays(char const* operation, char const* name, Make make, Equal equal) {
    add(
        operation, name, static_cast<int>(compared_elements),
        [=] {
            auto const left = shared(make(numbers<S>()));
            auto const right = shared(make(numbers<double>()));
            auto const run = [=] {
                bool result = equal(*left, *right);
                DoNotOptimize(result);
            };
            return job{run, [=] {
                           auto other = numbers<double>();
                           other.back() += 1;
                           return equal(*left, *right) && !equal(*left, make(other));
                       }};
        },
        compared_elements * (sizeof(S) + sizeof(double)));
}

/// The peers of both kinds of arrays.
template <class S>
void add_arrays_of(char const* operation) {
    auto const plain = [](auto const& list) { return list; };
    add_arrays<S>(
        operation, "iokern",
        [](auto const& list) {
            using number = typename std::decay_t<decltype(list)>::value_type;
            return v2::io_value(v2::utility::array<number>(list));
        },
        by_operator);
    add_arrays<S>(operation, "limit", plain, [](auto const& left, auto const& right) {
        return left.size() == right.size() &&
               baseline::equal(left.data(), right.data(), left.size());
    });
    if (__builtin_cpu_supports("avx2")) {
        add_arrays<S>(operation, "limit[avx2]", plain, [](auto const& left, auto const& right) {
            return left.size() == right.size() &&
                   avx2::equal(left.data(), right.data(), left.size());
        });
    }
    add_arrays<S>(
        operation, "poco_var[vector]",
        [](auto const& list) { return std::vector<poco_value>(list.begin(), list.end()); },
        by_operator);
    add_arrays<S>(
        operation, "nlohmann", [](auto const& list) { return nlohmann_value(list); }, by_operator);
    add_arrays<S>(
        operation, "qt_qvariantlist",
        [](auto const& list) { return QVariantList(list.begin(), list.end()); }, by_operator);
}

/// Those that compare arrays of one type alone.
void add_dbl_arrays() {
    char const* const operation = "equal_dbl_arrays";
    add_arrays<double>(
        operation, "std_variant", [](std::vector<double> const& list) { return std_value(list); },
        by_operator);
    add_arrays<double>(
        operation, "boost_json", [](auto const& list) { return boost::json::value_from(list); },
        by_operator);
    add_arrays<double>(
        operation, "qt_qvariant[of QList]",
        [](auto const& list) {
            return QVariant::fromValue(QList<double>(list.begin(), list.end()));
        },
        by_operator);
}

} // namespace

void add_equality() {
    add_scalars();
    add_arrays_of<double>("equal_dbl_arrays");
    add_dbl_arrays();
    add_arrays_of<std::int32_t>("equal_i32_dbl_arrays");
}

} // namespace bench

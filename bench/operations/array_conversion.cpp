#include "arrays.hpp"
#include "checked_number.hpp"
#include "kernels.hpp"
#include "operations.hpp"

#include <charconv>
#include <cstdint>

/// \file
/// Large arrays: a million numbers, a hundred thousand texts or values; one item is one element.

namespace bench {

namespace {

constexpr int million = 1'000'000;
constexpr int hundred_thousand = 100'000;

/// Whole numbers that fit 16 bits.
template <class S, int Count>
std::vector<S> whole_numbers() {
    std::vector<S> result;
    result.reserve(Count);
    for (unsigned int i = 0; i < unsigned(Count); ++i) {
        result.push_back(static_cast<S>(static_cast<int>(i * 7919U % 60001U) - 30000));
    }
    return result;
}

/// The loop that one writes first: test, branch, store, into elements that are set to zero before.
template <class S, class T>
std::vector<T> plain_loop(std::vector<S> const& source) {
    std::vector<T> result(source.size());
    for (std::size_t i = 0; i < source.size(); ++i) {
        if (!convert_number(source[i], result[i])) return {};
    }
    return result;
}

template <class S, class T, class Baseline, class Avx2>
void add_numbers(char const* operation, Baseline baseline, Avx2 avx2) {
    array_conversion<S, T> const all{operation, whole_numbers<S, million>, 1, million};
    all.add_iokern();
    all.template add_kernel<gateway_memory>("limit", baseline);
    if (__builtin_cpu_supports("avx2")) {
        all.template add_kernel<gateway_memory>("limit[avx2]", avx2);
    }
    all.add_peer(
        "plain_loop", [](std::vector<S> numbers) { return numbers; }, plain_loop<S, T>);
    all.add_peers();
}

// --- texts

std::vector<int> text_numbers() {
    std::vector<int> result;
    result.reserve(hundred_thousand);
    for (unsigned int i = 0; i < unsigned(hundred_thousand); ++i) {
        result.push_back(static_cast<int>(i * 7919U % 1000003U) - 500000);
    }
    return result;
}

/// The texts of numbers, each made by `make`.
template <class List, class Make>
List texts_of(std::vector<int> const& numbers, Make make) {
    List result;
    result.reserve(static_cast<typename List::size_type>(numbers.size()));
    for (int const number : numbers) result.push_back(make(std::to_string(number)));
    return result;
}

bool parse(std::string const& text, int& number) {
    char const* const last = text.data() + text.size();
    auto const end = std::from_chars(text.data(), last, number);
    return end.ec == std::errc() && end.ptr == last;
}

/// \param make  of a text, an element of `List`
template <class List, class Make, class Call>
void add_text_peer(array_conversion<int, int> const& all, char const* name, Make make, Call call) {
    all.add_peer(
        name, [=](std::vector<int> const& numbers) { return texts_of<List>(numbers, make); },
        [=](List const& texts) {
            std::vector<int> result;
            result.reserve(static_cast<std::size_t>(texts.size()));
            for (auto const& text : texts) result.push_back(call(text));
            return result;
        });
}

void add_texts() {
    array_conversion<int, int> const all{"array_text_to_i32", text_numbers, 1, hundred_thousand};
    auto const as_it_is = [](std::string const& text) { return text; };
    auto const error = std::make_shared<v2::io_error>();
    all.add_peer(
        "iokern",
        [=](std::vector<int> const& numbers) {
            auto const texts = texts_of<std::vector<v2::utility::string>>(
                numbers, [](std::string const& text) { return v2::utility::string(text); });
            return v2::io_value(v2::utility::array<v2::utility::string>(texts));
        },
        [=](v2::io_value const& source) { return source.as<v2::utility::array<int>>(*error); });
    all.add_peer(
        "limit",
        [=](std::vector<int> const& numbers) {
            return texts_of<std::vector<std::string>>(numbers, as_it_is);
        },
        [](std::vector<std::string> const& texts) {
            block<int, gateway_memory> result(texts.size());
            bool ok = true;
            int* target = result.data();
            for (auto const& text : texts) ok &= parse(text, *target++);
            return ok ? std::move(result) : block<int, gateway_memory>(0);
        });
    add_text_peer<std::vector<std::string>>(
        all, "boost_lexical_cast", as_it_is,
        [](std::string const& text) { return boost::lexical_cast<int>(text); });
    add_text_peer<std::vector<poco_value>>(
        all, "poco_var[vector]", [](std::string const& text) { return poco_value(text); },
        [](poco_value const& text) { return text.convert<int>(); });
    add_text_peer<QVariantList>(
        all, "qt_qvariantlist", [](std::string const& text) { return peer<QVariant>::of(text); },
        [](QVariant const& text) { return text.toInt(); });
}

// --- values

/// Every element is looked at, by all peers alike.
void add_values() {
    array_conversion<double, double> const all{
        "array_values_to_dbl", whole_numbers<double, hundred_thousand>, 1, hundred_thousand};
    auto const error = std::make_shared<v2::io_error>();
    all.add_peer(
        "iokern",
        [](std::vector<double> const& numbers) {
            std::vector<v2::io_value> const values(numbers.begin(), numbers.end());
            return v2::io_value(v2::io_data_type::array_of(v2::detail::types::dbl),
                                v2::utility::array<v2::io_value>(values));
        },
        [=](v2::io_value const& source) { return source.as<v2::utility::array<double>>(*error); });
    all.add_peer(
        "limit",
        [](std::vector<double> const& numbers) {
            std::vector<bare_value> values;
            values.reserve(numbers.size());
            for (double const number : numbers) {
                values.push_back(peer<bare_value>::of(number));
            }
            return values;
        },
        [](std::vector<bare_value> const& values) {
            block<double, gateway_memory> result(values.size());
            double* target = result.data();
            for (auto const& value : values) convert_number(value, *target++);
            return result;
        });
    all.add_peers();
}

} // namespace

void add_array_conversion() {
    add_numbers<std::int32_t, std::int16_t>("array_i32_to_i16", baseline::i32_to_i16,
                                            avx2::i32_to_i16);
    add_numbers<std::int32_t, double>("array_i32_to_dbl", baseline::i32_to_dbl, avx2::i32_to_dbl);
    add_numbers<double, std::int32_t>("array_dbl_to_i32", baseline::dbl_to_i32, avx2::dbl_to_i32);
    add_texts();
    add_values();
}

} // namespace bench

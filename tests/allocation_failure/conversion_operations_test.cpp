#include "tables.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace allocation_failure_test {
namespace {

using v2::io_data_type;
using v2::io_error;
using v2::io_value;
using v2::utility::array;
using values = array<io_value>;
using types = io_data_type::basic_types;

/// What a conversion gives beside its error.
template <class T>
struct converted {
    friend std::string text_of(converted const& made) {
        return text_of(made.result) + ", " + text_of(made.error);
    }
    T result;
    io_error error;
};

/// What a conversion that finds no memory gives: the default of its target and code 8.
template <class T>
std::string unhandled() {
    return text_of(T()) + ", generic8{}";
}

template <class T>
converted<T> get(io_value const& value) {
    io_error error(v2::io_errc::not_found); // of an earlier call
    T result = v2::detail::get_as<T>(value, error);
    return {std::move(result), std::move(error)};
}

std::string exported_name(char const* target) {
    return std::string("detail::get_as<") + target + '>';
}
std::string exported_array_name(char const* element) {
    return exported_name((std::string("utility::array<") + element + "> ").c_str());
}

/// An array of numbers from one of texts, whose result is one block.
template <class Element>
operation array_row(char const* element, char const* name) {
    return operation_of(
        std::string("AConversionToAnArrayOf") + name, promise::reported,
        {exported_array_name(element)},
        [] {
            return io_value(array<v2::utility::string>{"1", "0", "1"});
        },
        [](io_value const& value) { return get<array<Element>>(value); },
        unhandled<array<Element>>());
}

/// A scalar target: nothing is asked for.
template <class Number>
operation scalar_row(char const* number, char const* name) {
    return operation_of(
        std::string("AConversionTo") + name, promise::quiet, {exported_name(number)},
        [] { return io_value("1"); }, [](io_value const& value) { return get<Number>(value); });
}

/// Into a class of the standard: what the library makes for it comes first, and reports; what is
/// then made of that raises.
template <class T>
T standard_form(io_value const& value) {
    io_error error;
    T made = value.as<T>(error);
    if (error == v2::io_errc::unhandled_exception) throw std::bad_alloc();
    return made;
}

using type_and_value = std::pair<io_data_type, io_value>;

converted<io_value> to_variant(type_and_value const& both) {
    io_error error;
    io_value result = both.second.to_variant(both.first, error);
    return {std::move(result), std::move(error)};
}

} // namespace

std::vector<operation> conversion_operations() {
    std::vector<operation> rows{
        scalar_row<bool>("bool", "ATruthValue"),
        scalar_row<char>("char", "ACharacter"),
        scalar_row<signed char>("signed char", "ASignedChar"),
        scalar_row<unsigned char>("unsigned char", "AnUnsignedChar"),
        scalar_row<short>("short", "AShort"),
        scalar_row<unsigned short>("unsigned short", "AnUnsignedShort"),
        scalar_row<int>("int", "AnInt"),
        scalar_row<unsigned int>("unsigned int", "AnUnsignedInt"),
        scalar_row<long>("long", "ALong"),
        scalar_row<unsigned long>("unsigned long", "AnUnsignedLong"),
        scalar_row<long long>("long long", "ALongLong"),
        scalar_row<unsigned long long>("unsigned long long", "AnUnsignedLongLong"),
        scalar_row<float>("float", "AFloat"),
        scalar_row<double>("double", "ADouble"),
        scalar_row<long double>("long double", "ALongDouble"),
        array_row<char>("char", "Characters"),
        array_row<signed char>("signed char", "SignedChars"),
        array_row<unsigned char>("unsigned char", "UnsignedChars"),
        array_row<short>("short", "Shorts"),
        array_row<unsigned short>("unsigned short", "UnsignedShorts"),
        array_row<int>("int", "Ints"),
        array_row<unsigned int>("unsigned int", "UnsignedInts"),
        array_row<long>("long", "Longs"),
        array_row<unsigned long>("unsigned long", "UnsignedLongs"),
        array_row<long long>("long long", "LongLongs"),
        array_row<unsigned long long>("unsigned long long", "UnsignedLongLongs"),
        array_row<float>("float", "Floats"),
        array_row<double>("double", "Doubles"),
        array_row<long double>("long double", "LongDoubles"),
        array_row<bool>("bool", "TruthValues"),
        array_row<v2::utility::string>("utility::string", "Texts"),
        array_row<io_value>("io_value", "Values"),
    };
    row_adder const row{rows};
    using text = v2::utility::string;
    auto const text_target = exported_name("utility::string");

    row(
        "AConversionOfATextToAText", promise::reported, {text_target},
        [] { return io_value(long_text); }, [](io_value const& value) { return get<text>(value); },
        unhandled<text>());
    row(
        "AConversionOfANumberToAText", promise::reported, {text_target},
        [] { return io_value(-1.5e300); }, [](io_value const& value) { return get<text>(value); },
        unhandled<text>());
    row(
        "AConversionOfATruthValueToAText", promise::reported, {text_target},
        [] { return io_value(true); }, [](io_value const& value) { return get<text>(value); },
        unhandled<text>());
    row(
        "AConversionOfValuesToTexts", promise::reported, {exported_array_name("utility::string")},
        [] { return io_value(values::of(1, long_text, true)); },
        [](io_value const& value) { return get<array<text>>(value); }, unhandled<array<text>>());
    row(
        "AConversionOfValuesToValues", promise::reported, {exported_array_name("io_value")},
        [] { return io_value(values::of(1, long_text, values::of(long_text))); },
        [](io_value const& value) { return get<values>(value); }, unhandled<values>());
    row(
        "AConversionOfNumbersToValues", promise::reported, {exported_array_name("io_value")},
        [] {
            return io_value(array<short>{1, 2, 3});
        },
        [](io_value const& value) { return get<values>(value); }, unhandled<values>());
    // Where that is a type of its own, the standard library copies a text of this length to read
    // it.
    if (std::numeric_limits<long double>::digits > std::numeric_limits<double>::digits) {
        row(
            "AConversionOfALongTextToTheWidestNumber", promise::reported,
            {"detail::get_as<long double>"}, [] { return io_value("1." + std::string(3000, '1')); },
            [](io_value const& value) { return get<long double>(value); },
            unhandled<long double>());
        row(
            "ARefusalOfALongTextThatBeginsLikeTheWidestNumber", promise::reported,
            {"detail::get_as<long double>"},
            [] { return io_value("1." + std::string(3000, '1') + '.'); },
            [](io_value const& value) { return get<long double>(value); },
            text_of(0.0L) + ", generic3{}");
        row(
            "ARefusalOfALongTextLikeNoNumber", promise::quiet, {"detail::get_as<long double>"},
            [] { return io_value(std::string(3000, 'x')); },
            [](io_value const& value) { return get<long double>(value); });
        row(
            "AConversionOfLongTextsToTheWidestNumbers", promise::reported,
            {exported_array_name("long double")},
            [] { return io_value(array<text>{text("1." + std::string(3000, '1'))}); },
            [](io_value const& value) { return get<array<long double>>(value); },
            unhandled<array<long double>>());
    }
    // The one array whose bytes are taken for texts: two of them, whatever it holds.
    row(
        "AConversionOfCharactersToValues", promise::reported, {exported_array_name("io_value")},
        [] {
            return io_value(array<char>{'a', 'b', 'c'});
        },
        [](io_value const& value) { return get<values>(value); }, unhandled<values>());

    // The forms around it that give standard containers, and the exception.
    row(
        "AConversionToAShortStandardText", promise::unchanged, {}, [] { return io_value(5); },
        standard_form<std::string>);
    row(
        "AConversionToALongStandardText", promise::unchanged, {},
        [] { return io_value(long_text); }, standard_form<std::string>);
    row(
        "AConversionToAStandardListOfNumbers", promise::unchanged, {},
        [] {
            return io_value(array<short>{1, 2, 3});
        },
        standard_form<std::vector<int>>);
    row(
        "AConversionToAStandardListOfTexts", promise::unchanged, {},
        [] {
            return io_value(array<text>{long_text, "2", long_text});
        },
        standard_form<std::vector<std::string>>);
    row(
        "AConversionToAStandardListOfValues", promise::unchanged, {},
        [] { return io_value(values::of(1, long_text)); }, standard_form<std::vector<io_value>>);
    row(
        "AConversionThatIsRefused", promise::unchanged, {"io_exception::io_exception"},
        [] { return io_value(long_text); },
        [](io_value const& value) {
            try {
                return value.as<int>();
            } catch (v2::io_exception const& refused) {
                return -refused.code();
            }
        });

    row(
        "AQuestionWhetherAValueConverts", promise::quiet, {"io_value::converts_to"},
        [] {
            return io_value(array<text>{"1", "2", long_text});
        },
        [](io_value const& value) {
            return std::pair(value.converts_to(io_data_type::array_of(types::i32)),
                             value.converts_to(io_data_type::array_of(types::string)));
        });
    row(
        "AVariantOfItsOwnType", promise::unchanged, {"io_value::to_variant"},
        [] { return type_and_value(io_data_type::scalar(types::string), long_text); }, to_variant);
    row(
        "AVariantOfAText", promise::reported, {"io_value::to_variant"},
        [] { return type_and_value(io_data_type::scalar(types::string), 5); }, to_variant,
        unhandled<io_value>().replace(0, text_of(io_value()).size(), text_of(io_value(text()))));
    row(
        "AVariantOfTexts", promise::reported, {"io_value::to_variant"},
        [] {
            return type_and_value(io_data_type::array_of(types::string), array<int>{1, 2});
        },
        to_variant, text_of(io_value(array<text>())) + ", generic8{}");
    row(
        "AVariantOfNumbers", promise::reported, {"io_value::to_variant"},
        [] {
            return type_and_value(io_data_type::array_of(types::dbl), array<int>{1, 2});
        },
        to_variant, text_of(io_value(array<double>())) + ", generic8{}");
    row(
        "AVariantWithoutAnError", promise::reported, {"io_value::to_variant"},
        [] {
            return type_and_value(io_data_type::array_of(types::dbl), array<int>{1, 2});
        },
        [](type_and_value const& both) { return both.second.to_variant(both.first); },
        text_of(io_value(array<double>())));
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Conversions,
                         MemoryRunsOut,
                         ::testing::ValuesIn(conversion_operations()),
                         name_of_row());

} // namespace allocation_failure_test

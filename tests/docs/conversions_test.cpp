#include <tavi/ioapi/v2/ioapi.hpp>

#include "conversion_rules.hpp"
#include "conversion_samples.hpp"
#include "type_names.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace docs_test {
namespace {

conversion_rules const& rules() {
    static conversion_rules const read;
    return read;
}

template <class T>
bool same_value(T const& left, T const& right) {
    if constexpr (std::is_floating_point_v<T>) {
        return std::isnan(left) ? std::isnan(right) : left == right;
    } else {
        return left == right;
    }
}

/// A value for a report, a small number as a number.
template <class T>
std::string printed_value(T const& value) {
    if constexpr (std::is_arithmetic_v<T>) {
        return ::testing::PrintToString(+value);
    } else {
        return ::testing::PrintToString(value.str());
    }
}

/// Every name that a source has in the tables, in the order of the alternatives.
std::vector<std::string> source_names() {
    std::vector<std::string> names{"nothing", "io_object", "array<io_object>", "array<io_value>"};
    for_each_type(stored_scalars{}, [&names](auto type) {
        using T = typename decltype(type)::type;
        names.push_back(name_of_type<T>());
        names.push_back(name_of_type<v2::utility::array<T>>());
    });
    return names;
}

std::vector<std::string> target_names() {
    std::vector<std::string> names{"array<io_value>"};
    for_each_scalar_target([&names](auto type) {
        using T = typename decltype(type)::type;
        names.push_back(name_of_type<T>());
        names.push_back(name_of_type<v2::utility::array<T>>());
    });
    return names;
}

template <class T>
void expect_scalar(conversion_sample const& sample) {
    auto const expected = rules().expected<T>(sample);
    v2::io_error error(v2::io_errc::todo);
    T const converted = v2::detail::get_as<T>(sample.value, error);
    EXPECT_EQ(error.code(), expected.code) << sample.name << " to " << name_of_type<T>();
    EXPECT_TRUE(same_value(converted, expected.value))
        << sample.name << " to " << name_of_type<T>() << " is " << printed_value(converted)
        << ", not " << printed_value(expected.value);
}

/// An array and what its elements are.
struct array_sample {
    std::string source;
    v2::io_value value;
    std::vector<conversion_sample> elements;
};

/// Without elements, with each one alone, and with each one behind two others.
template <class T>
std::vector<array_sample> arrays_of() {
    using array = v2::utility::array<T>;
    auto const source = name_of_type<array>();
    std::vector<array_sample> made{{source, v2::io_value(array()), {}}};
    auto const samples = samples_of<T>();
    for (auto const& [payload, sample] : samples) {
        made.push_back({source, v2::io_value(array::of(payload)), {sample}});
        auto const& [first, first_sample] = samples.front();
        made.push_back({source,
                        v2::io_value(array::of(first, first, payload)),
                        {first_sample, first_sample, sample}});
    }
    return made;
}

template <>
std::vector<array_sample> arrays_of<v2::io_value>() {
    using array = v2::utility::array<v2::io_value>;
    std::vector<array_sample> made{{"array<io_value>", v2::io_value(array()), {}}};
    std::vector<conversion_sample> samples = single_samples();
    samples.push_back({"array<int>", v2::io_value(v2::utility::array<int>{1}), "an array"});
    samples.back().flag = true;
    samples.push_back({"array<io_value>", v2::io_value(array()), "an empty array"});
    for (auto const& sample : samples) {
        made.push_back({"array<io_value>", v2::io_value(array::of(sample.value)), {sample}});
        made.push_back({"array<io_value>",
                        v2::io_value(array::of(v2::io_value(), sample.value)),
                        {samples.front(), sample}});
    }
    return made;
}

template <class Function>
void for_each_array_source(Function function) {
    auto const hand_over = [&](auto type) {
        for (array_sample const& sample : arrays_of<typename decltype(type)::type>()) {
            function(sample);
        }
    };
    for_each_type(stored_scalars{}, hand_over);
    hand_over(tag<v2::io_object>{});
    hand_over(tag<v2::io_value>{});
}

template <class T>
conversion_outcome<std::vector<T>> expected_elements(array_sample const& sample) {
    auto const& says = rules().cell(sample.source, "array<" + name_of_type<T>() + ">");
    int const code = refusal_of(says);
    if (code != 0 && says == "no (" + std::to_string(code) + ") unless empty") {
        return {{}, sample.elements.empty() ? 0 : code};
    }
    if (says != "each") throw std::runtime_error("a cell that means nothing: " + says);
    conversion_outcome<std::vector<T>> expected;
    for (auto const& element : sample.elements) {
        auto const one = rules().expected<T>(element);
        if (one.code != 0) return {{}, one.code};
        expected.value.push_back(one.value);
    }
    return expected;
}

template <class T>
void expect_elements(array_sample const& sample) {
    auto const expected = expected_elements<T>(sample);
    v2::io_error error(v2::io_errc::todo);
    auto const converted = v2::detail::get_as<v2::utility::array<T>>(sample.value, error);
    std::string const what = sample.source + " of " + std::to_string(sample.elements.size()) +
                             " to an array of " + name_of_type<T>() +
                             (sample.elements.empty() ? "" : ", " + sample.elements.back().name);
    EXPECT_EQ(error.code(), expected.code) << what;
    ASSERT_EQ(converted.size(), expected.value.size()) << what;
    for (unsigned int i = 0; i < converted.size(); ++i) {
        EXPECT_TRUE(same_value<T>(converted[i], expected.value[i])) << what;
    }
}

TEST(conversions, of_34_sources_and_33_targets_stand_in_the_tables_once) {
    auto const sources = source_names();
    auto const targets = target_names();
    ASSERT_EQ(sources.size(), 34U);
    ASSERT_EQ(targets.size(), 33U);
    for (auto const& source : sources) {
        for (auto const& target : targets) {
            EXPECT_EQ(rules().count(source, target), 1U) << source << " to " << target;
        }
    }
    EXPECT_EQ(rules().pairs(), 34U * 33U) << "the tables name what is no source or no target";
}

TEST(conversions, of_scalars_and_objects_to_scalars_are_as_the_tables_say) {
    for_each_scalar_target([](auto type) {
        for (auto const& sample : single_samples()) {
            expect_scalar<typename decltype(type)::type>(sample);
        }
    });
}

TEST(conversions, of_arrays_to_scalars_are_as_the_tables_say) {
    for_each_array_source([](array_sample const& sample) {
        conversion_sample whole{sample.source, sample.value, sample.source};
        whole.flag = !sample.elements.empty();
        for_each_scalar_target(
            [&](auto type) { expect_scalar<typename decltype(type)::type>(whole); });
    });
}

TEST(conversions, of_scalars_and_objects_to_arrays_are_refused_as_the_tables_say) {
    auto const refuses = [](auto const& array, v2::io_error const& error,
                            conversion_sample const& sample, std::string const& target) {
        int const code = refusal_of(rules().cell(sample.source, target));
        EXPECT_NE(code, 0) << sample.name << " to " << target;
        EXPECT_EQ(error.code(), code) << sample.name << " to " << target;
        EXPECT_TRUE(array.empty()) << sample.name << " to " << target;
    };
    for (auto const& sample : single_samples()) {
        v2::io_error error;
        for_each_scalar_target([&](auto type) {
            using array = v2::utility::array<typename decltype(type)::type>;
            auto const converted = v2::detail::get_as<array>(sample.value, error);
            refuses(converted, error, sample, name_of_type<array>());
        });
        using values = v2::utility::array<v2::io_value>;
        auto const converted = v2::detail::get_as<values>(sample.value, error);
        refuses(converted, error, sample, "array<io_value>");
    }
}

TEST(conversions, of_arrays_to_arrays_are_as_the_tables_say) {
    for_each_array_source([](array_sample const& sample) {
        for_each_scalar_target(
            [&](auto type) { expect_elements<typename decltype(type)::type>(sample); });
    });
}

/// The rows of the table of what an array becomes as values.
std::vector<table_row> const& element_kinds() {
    return rules().tables().table("From", "Data type of each");
}

bool names_source(table_row const& row, std::string const& source) {
    auto const names = items_of(row[0]);
    return std::find(names.begin(), names.end(), source) != names.end();
}

TEST(conversions, of_arrays_to_values_keep_the_kind_of_the_elements) {
    auto const expect_kinds = [](auto type) {
        using T = typename decltype(type)::type;
        auto const source = name_of_type<v2::utility::array<T>>();
        std::string const& says = rules().cell(source, "array<io_value>");
        if (std::is_same_v<T, char>) {
            EXPECT_EQ(says, "two texts");
            return;
        }
        EXPECT_EQ(says, "values");
        auto const row = std::find_if(element_kinds().begin() + 1, element_kinds().end(),
                                      [&](auto const& each) { return names_source(each, source); });
        ASSERT_NE(row, element_kinds().end()) << source;
        for (array_sample const& sample : arrays_of<T>()) {
            v2::io_error error;
            auto const values =
                v2::detail::get_as<v2::utility::array<v2::io_value>>(sample.value, error);
            ASSERT_EQ(values.size(), sample.elements.size()) << source;
            for (unsigned int i = 0; i < values.size(); ++i) {
                auto const kind = values[i].data_type();
                EXPECT_EQ('`' + std::string(name_of(kind.basic_type)) + '`', (*row)[1]) << source;
                EXPECT_FALSE(kind.is_array()) << source;
                auto const stored = name_of_type<T>().substr(0, name_of_type<T>().find(':'));
                EXPECT_EQ('`' + stored + '`', (*row)[2]);
                EXPECT_TRUE(identical(values[i], sample.elements[i].value)) << source;
            }
        }
    };
    for_each_type(stored_scalars{}, expect_kinds);
    expect_kinds(tag<v2::io_object>{});
}

TEST(conversions, of_an_array_of_char_to_values_give_two_texts) {
    using chars = v2::utility::array<char>;
    struct {
        chars bytes;
        char const* text;
    } const cases[] = {{{}, ""}, {{'a', 'b'}, "ab"}, {{'a', '\0', 'b'}, "a"}};
    for (auto const& [bytes, text] : cases) {
        v2::io_error error;
        auto const values =
            v2::detail::get_as<v2::utility::array<v2::io_value>>(v2::io_value(bytes), error);
        EXPECT_TRUE(error.ok());
        ASSERT_EQ(values.size(), 2U);
        EXPECT_TRUE(identical(values[0], v2::io_value(text)));
        EXPECT_TRUE(identical(values[1], v2::io_value("")));
    }
}

TEST(conversions, of_values_to_values_give_the_same) {
    EXPECT_EQ(rules().cell("array<io_value>", "array<io_value>"), "itself");
    for (array_sample const& sample : arrays_of<v2::io_value>()) {
        v2::io_error error;
        auto const values =
            v2::detail::get_as<v2::utility::array<v2::io_value>>(sample.value, error);
        ASSERT_EQ(values.size(), sample.elements.size());
        for (unsigned int i = 0; i < values.size(); ++i) {
            EXPECT_TRUE(identical(values[i], sample.elements[i].value));
        }
    }
}

template <class T>
void expect_exact(conversion_sample const& sample) {
    auto const loose = rules().expected<T>(sample);
    bool const kept = static_cast<double>(+loose.value) == sample.real ||
                      (std::is_same_v<T, char> &&
                       static_cast<double>(static_cast<unsigned char>(loose.value)) == sample.real);
    v2::io_error error;
    T const exact = sample.value.get_exact<T>(error);
    int const code = loose.code != 0 ? loose.code : (kept ? 0 : 4);
    EXPECT_EQ(error.code(), code) << sample.name << " exactly to " << name_of_type<T>();
    EXPECT_EQ(exact, code == 0 ? loose.value : T()) << sample.name;
}

TEST(conversions, that_clamp_or_cut_are_refused_by_get_exact) {
    for_each_type(stored_scalars{}, [](auto type) {
        using T = typename decltype(type)::type;
        if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
            for (auto const& sample : single_samples()) {
                if (sample.source == "float" || sample.source == "double") expect_exact<T>(sample);
            }
        }
    });
}

TEST(conversions, of_texts_are_as_the_examples_say) {
    auto const& table = rules().tables().table("Text", "`int`");
    ASSERT_GT(table.size(), 10U);
    auto const expect_cell = [](std::string const& text, auto type, std::string const& says) {
        using T = typename decltype(type)::type;
        v2::io_error error;
        T const read = v2::io_value(text).as<T>(error);
        EXPECT_EQ(error.code(), refusal_of(says)) << text;
        if (error) return;
        double const stated = says == "true" ? 1 : (says == "false" ? 0 : std::stod(says));
        EXPECT_EQ(static_cast<double>(read), stated) << text;
    };
    for (std::size_t row = 1; row < table.size(); ++row) {
        std::string const text = items_of(table[row][0])[0];
        expect_cell(text, tag<int>{}, table[row][1]);
        expect_cell(text, tag<unsigned char>{}, table[row][2]);
        expect_cell(text, tag<double>{}, table[row][3]);
        expect_cell(text, tag<bool>{}, table[row][4]);
    }
}

TEST(conversions, to_texts_are_as_the_examples_say) {
    auto const& table = rules().tables().table("Value", "Text");
    int checked = 0;
    for (std::size_t row = 1; row < table.size(); ++row) {
        auto const type = table[row][0].substr(1, table[row][0].rfind('`') - 1);
        auto const number = table[row][0].substr(table[row][0].rfind('`') + 2);
        for_each_type(stored_scalars{}, [&](auto each) {
            using T = typename decltype(each)::type;
            if constexpr (std::is_arithmetic_v<T>) {
                if (type != name_of_type<T>()) return;
                T const payload =
                    std::is_integral_v<T>
                        ? number_as<T>(parsed_number(number.substr(0, number.find('.'))))
                        : static_cast<T>(std::stod(number));
                EXPECT_EQ(v2::io_value(payload).template as<std::string>(), table[row][1]);
                ++checked;
            }
        });
    }
    EXPECT_EQ(static_cast<std::size_t>(checked), table.size() - 1);
}

} // namespace
} // namespace docs_test

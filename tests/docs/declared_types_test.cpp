#include <tavi/ioapi/v2/ioapi.hpp>

#include "markdown_table.hpp"
#include "type_names.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace docs_test {
namespace {

using basic = v2::io_data_type::basic_types;

/// The name that the guides give to what a value stores.
std::string name_of_payload(v2::io_value const& value) {
    return value.visit([](auto const& payload) {
        return name_of_type<std::remove_cv_t<std::remove_reference_t<decltype(payload)>>>();
    });
}

/// A line of the table of payloads, for what can be held alone and in arrays.
template <class T>
table_row row_of_payload() {
    v2::io_value const one{T()};
    v2::io_value const many{v2::utility::array<T>()};
    EXPECT_EQ(many.data_type(), v2::io_data_type::array_of(one.data_type().basic_type));
    std::string name = name_of_type<T>();
    name = name.substr(0, name.find(':')); // of a long, whose width plays no part here
    std::string const kind(name_of(one.data_type().basic_type));
    return {"`" + name + "`", "`" + kind + "`", std::to_string(one.index()),
            std::to_string(many.index())};
}

TEST(declared_types, are_those_of_the_table_for_each_payload) {
    guide const document("declared_types.md");
    auto const& table = document.table("Payload", "Data type");
    v2::io_value const nothing;
    v2::io_value const values{v2::utility::array<v2::io_value>()};
    EXPECT_EQ(values.data_type(), v2::io_data_type::array_of(basic::empty));
    markdown_table expected{table.front(),
                            {"nothing", "`empty`", std::to_string(nothing.index()), ""}};
    for_each_type(stored_scalars{}, [&expected](auto each) {
        expected.push_back(row_of_payload<typename decltype(each)::type>());
    });
    expected.push_back(row_of_payload<v2::io_object>());
    expected.push_back({"`io_value`", "`empty`", "", std::to_string(values.index())});
    EXPECT_EQ(table, expected);
}

TEST(declared_types, become_what_the_table_says) {
    guide const document("declared_types.md");
    auto const& table = document.table("Type code", "Type");
    ASSERT_EQ(table.size() - 1, 12U);
    v2::io_value const scalar("1");
    v2::io_value const list(v2::utility::array<v2::utility::string>{"1", "0"});
    for (std::size_t row = 1; row < table.size(); ++row) {
        auto const kind = static_cast<basic>(std::stoi(table[row][0]));
        EXPECT_EQ(name_of(kind), items_of(table[row][1])[0]);
        v2::io_error error;
        auto const one = scalar.to_variant(v2::io_data_type::scalar(kind), error);
        EXPECT_TRUE(error.ok()) << table[row][1];
        EXPECT_EQ(name_of_payload(one), items_of(table[row][2])[0]);
        EXPECT_EQ(one.type_code(), std::stoul(table[row][0], nullptr, 0));
        // Another kind and extent of array gives the same.
        auto const many = list.to_variant({kind, 0, 1, 9}, error);
        EXPECT_TRUE(error.ok()) << table[row][1];
        EXPECT_EQ(name_of_payload(many), items_of(table[row][4])[0]);
        EXPECT_EQ(many.type_code(), std::stoul(table[row][3], nullptr, 0));
        EXPECT_EQ(many.data_type(), v2::io_data_type::array_of(kind));
    }
}

/// One line of the table of refusals, as values and types.
struct refusal_example {
    std::string value;
    std::string type;
    v2::io_value given;
    v2::io_data_type target;
};

std::vector<refusal_example> const& refusal_examples() {
    auto const scalar = [](basic kind) { return v2::io_data_type::scalar(kind); };
    auto const array_of = [](basic kind) { return v2::io_data_type::array_of(kind); };
    using values = v2::utility::array<v2::io_value>;
    v2::io_value const some_array(v2::utility::array<int>{1});
    v2::io_value const with_empty(v2::io_data_type::array_of(basic::i8),
                                  values::of(v2::io_value(), 1));
    static std::vector<refusal_example> const examples{
        {"of the type itself, whatever is stored", "its own", 5L, scalar(basic::i32)},
        {"of the type itself, whatever is stored", "its own", v2::io_object(7, {}),
         v2::io_data_type::object(7)},
        {"a number out of range", "an integer", 300, scalar(basic::u8)},
        {"a number out of range", "an integer", -1, scalar(basic::u64)},
        {"1.5", "an integer", 1.5, scalar(basic::i32)},
        {"`true`", "a number", true, scalar(basic::u8)},
        {"`true`", "a number", true, scalar(basic::dbl)},
        {"a text that does not parse", "a number", "fast", scalar(basic::i32)},
        {"a text that does not parse", "a number", "300", scalar(basic::u8)},
        {"a scalar, or a text", "an array", 5, array_of(basic::i32)},
        {"a scalar, or a text", "an array", "5", array_of(basic::string)},
        {"an array", "a scalar but `boolean`", some_array, scalar(basic::i32)},
        {"an array", "a scalar but `boolean`", some_array, scalar(basic::string)},
        {"an object", "any but its own and `boolean`", v2::io_object(), scalar(basic::string)},
        {"an object", "any but its own and `boolean`", v2::io_object(),
         v2::io_data_type::object(8)},
        {"an object", "any but its own and `boolean`", v2::io_object(), array_of(basic::i32)},
        {"anything else", "`object`, an array of it, an unknown type", 5,
         v2::io_data_type::object(7)},
        {"anything else", "`object`, an array of it, an unknown type", some_array,
         array_of(basic::object)},
        {"anything else", "`object`, an array of it, an unknown type", "5", scalar(basic(99))},
        {"the empty value", "a scalar", v2::io_value(), scalar(basic::i32)},
        {"the empty value", "a scalar", v2::io_value(), scalar(basic::string)},
        {"the empty value", "an array", v2::io_value(), array_of(basic::i32)},
        {"an array of values with an empty element", "an array", with_empty, array_of(basic::i32)},
        {"anything", "`empty`", 5, v2::io_data_type()},
        {"anything", "`empty`", some_array, v2::io_data_type()}};
    return examples;
}

TEST(declared_types, refuse_what_the_table_says) {
    guide const document("declared_types.md");
    auto const& table = document.table("Value", "Type");
    std::map<std::pair<std::string, std::string>, int> tried;
    for (std::size_t row = 1; row < table.size(); ++row) {
        tried[{table[row][0], table[row][1]}] = 0;
        for (refusal_example const& example : refusal_examples()) {
            if (example.value != table[row][0] || example.type != table[row][1]) continue;
            ++tried[{example.value, example.type}];
            bool const fits = table[row][2] == "yes";
            EXPECT_EQ(example.given.converts_to(example.target), fits) << table[row][0];
            v2::io_error error;
            auto const converted = example.given.to_variant(example.target, error);
            EXPECT_EQ(error.code(), std::stoi(table[row][3])) << table[row][0];
            if (table[row][3].find("a copy") != std::string::npos) {
                EXPECT_TRUE(identical(converted, example.given));
            }
            if (table[row][3].find("the empty value") != std::string::npos) {
                EXPECT_TRUE(identical(converted, v2::io_value()));
            }
        }
    }
    std::size_t all = 0;
    for (auto const& [line, count] : tried) {
        EXPECT_GT(count, 0) << line.first << " to " << line.second << " has no example";
        all += static_cast<std::size_t>(count);
    }
    EXPECT_EQ(all, refusal_examples().size()) << "an example is of no line";
}

TEST(declared_types, keep_their_type_where_the_value_is_refused) {
    v2::io_error error;
    auto const number =
        v2::io_value("fast").to_variant(v2::io_data_type::scalar(basic::u16), error);
    EXPECT_TRUE(identical(number, v2::io_value(static_cast<unsigned short>(0))));
    auto const list = v2::io_value(5).to_variant(v2::io_data_type::array_of(basic::flt), error);
    EXPECT_TRUE(identical(list, v2::io_value(v2::utility::array<float>())));
}

} // namespace
} // namespace docs_test

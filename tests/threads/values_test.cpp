#include <tavi/ioapi/v2/ioapi.hpp>

#include "crowd.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace threads_test {
namespace {

namespace v2 = tavi::ioapi::v2;
using types = v2::io_data_type::basic_types;

char const values_text[] = "a text that no small buffer could hold";

TEST(threads, string) {
    expect_plain(
        v2::utility::string(values_text),
        [](auto const& text) {
            return text == values_text && text.size() == sizeof(values_text) - 1;
        },
        [](auto& text) { text = v2::utility::string("another"); });
}

TEST(threads, string_view) {
    v2::utility::string const owner(values_text);
    expect_plain(
        v2::utility::string_view(owner), [](auto view) { return view == values_text; },
        [](auto& view) { view = "another"; });
}

TEST(threads, data_view) {
    std::vector<int> const owner(100, 7);
    expect_plain(
        v2::utility::data_view<int const>(owner),
        [](auto view) { return view.size() == 100 && view[99] == 7; },
        [](auto& view) { view = {}; });
}

TEST(threads, array) {
    expect_plain(
        v2::utility::array<v2::utility::string>{"north", "south"},
        [](auto const& texts) { return texts.size() == 2 && texts[1] == "south"; },
        [](auto& texts) { texts[1] = v2::utility::string(); });
}

TEST(threads, pair) {
    expect_plain(
        v2::utility::pair<v2::utility::string, int>{values_text, 5},
        [](auto const& pair) { return pair.first == values_text && pair.second == 5; },
        [](auto& pair) {
            pair = {"another", 6};
        });
}

TEST(threads, io_data_type) {
    expect_plain(
        v2::io_data_type::array_of(types::flt),
        [](auto const& type) { return type == v2::io_data_type::array_of(types::flt); },
        [](auto& type) { type.array_extent = 4; });
}

TEST(threads, io_timestamp) {
    expect_plain(
        v2::io_timestamp(17), [](auto time) { return time.ticks() == 17; },
        [](auto& time) { time = v2::io_timestamp(18); });
}

TEST(threads, io_value) {
    expect_plain(
        v2::io_value(v2::utility::array<v2::io_value>::of(1, "two", 3.0)),
        [](auto const& value) {
            auto const* const held = value.template get_if<v2::utility::array<v2::io_value>>();
            return held != nullptr && held->size() == 3 && (*held)[1] == "two";
        },
        [](auto& value) { value = v2::io_value(5); });
}

TEST(threads, get_as) {
    v2::io_value const texts(v2::utility::array<v2::utility::string>{"1", "22", "333"});
    expect_shared_reads(texts, [](auto const& value) {
        v2::io_error error;
        auto const numbers = value.template as<std::vector<int>>(error);
        auto const refused = value.template as<int>(error);
        return numbers == std::vector<int>{1, 22, 333} && refused == 0 && error.code() == 3;
    });
}

TEST(threads, io_data_value) {
    expect_plain(
        v2::io_data_value(values_text, v2::io_timestamp(5), v2::io_data_value::value_quality::good),
        [](auto const& read) { return read.good() && read.value() == v2::io_value(values_text); },
        [](auto& read) { read.value(7, v2::io_data_value::value_quality::bad); });
}

TEST(threads, io_structure_type) {
    expect_plain(
        v2::io_structure_type("pump", {{"runs", v2::io_data_type::scalar(types::boolean)}}),
        [](auto const& type) { return type.name() == "pump" && !type.has_member("speed"); },
        [](auto& type) { type.set_member("speed", v2::io_data_type::scalar(types::flt)); });
}

TEST(threads, io_structure_type_const_iterator) {
    v2::io_structure_type const pump("pump", {{"runs", v2::io_data_type::scalar(types::boolean)},
                                              {"speed", v2::io_data_type::scalar(types::flt)}});
    expect_plain(
        pump.begin(), [&](auto const& at) { return at == pump.begin() && (*at).first == "runs"; },
        [](auto& at) { ++at; });
}

TEST(threads, io_object_const_iterator) {
    v2::io_object pump;
    pump.set("name", values_text);
    pump.set("runs", true);
    expect_plain(
        pump.begin(),
        [](auto const& at) {
            auto const [key, value] = *at;
            return key == "name" && value == v2::io_value(values_text);
        },
        [](auto& at) { ++at; });
}

TEST(threads, io_object) {
    v2::io_object pump;
    pump.set("runs", true);
    pump.set("name", values_text);
    expect_plain(
        pump,
        [](auto const& object) {
            int members = 0;
            for (auto const& [key, value] : object) members += value.empty() ? 0 : 1;
            return members == 2 && object.get("name") == v2::io_value(values_text);
        },
        [](auto& object) { object.set("speed", 2.5); });
}

TEST(threads, io_structure_dictionary) {
    v2::io_structure_dictionary dictionary;
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  v2::io_error error;
                  auto const type = dictionary.add_structure(v2::io_structure_type("pump"), error);
                  auto const id = type.structure_id;
                  bool const added = dictionary.get_structure(id, error).name() == "pump";
                  dictionary.replace_structure(id, v2::io_structure_type("valve"), error);
                  bool const put = dictionary.get_structure(id, error).name() == "valve";
                  dictionary.remove_structure(id, error);
                  return added && put && error.ok();
              }),
              0);
}

} // namespace
} // namespace threads_test

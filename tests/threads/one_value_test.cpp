#include <tavi/ioapi/v2/ioapi.hpp>

#include "crowd.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// \file
/// One value that all threads read at once, in every way that a value can be read.

namespace threads_test {
namespace {

namespace v2 = tavi::ioapi::v2;
using basic = v2::io_data_type::basic_types;

/// A value of one alternative of each kind, with what it becomes.
struct shared_sample {
    char const* name;
    v2::io_value value;
    char const* printed;
    std::string text; // empty where it converts to none
    int number;       // 0 where it converts to none
    v2::io_data_type declared;
    bool converts; // to `declared`
    bool equals_its_copy;
};

v2::io_object shared_pump() {
    v2::io_object pump;
    pump.set("runs", true);
    return pump;
}

std::vector<shared_sample> shared_samples_by_value() {
    auto const numbers = v2::io_data_type::array_of(basic::i32);
    auto const texts = v2::io_data_type::array_of(basic::string);
    using v2::utility::array;
    return {
        {"number", 12, "(i32) 12", "12", 12, v2::io_data_type::scalar(basic::u8), true, true},
        {"text", "34", "(string) \"34\"", "34", 34, v2::io_data_type::scalar(basic::i64), true,
         true},
        {"real", 1.5, "(dbl) 1.5", "1.5", 0, v2::io_data_type::scalar(basic::i32), false, true},
        {"numbers", array<int>{1, 2}, "array (2) {\n  (i32) 1\n  (i32) 2\n}", "", 0, texts, true,
         true},
        {"texts", array<v2::utility::string>{"7"}, "array (1) {\n  (string) \"7\"\n}", "", 0,
         numbers, true, true},
        {"values", array<v2::io_value>::of(1, "x"), "array (2) {\n  (i32) 1\n  (string) \"x\"\n}",
         "", 0, numbers, false, true},
        {"object", shared_pump(), "object<?> {\n[runs] =>\n  (boolean) true\n}", "", 0, numbers,
         false, false},
    };
}

using sample_pointer = std::shared_ptr<shared_sample const>;

// By pointer: parameters are destroyed where no destructor may raise, and that of a value may.
std::vector<sample_pointer> shared_samples() {
    std::vector<sample_pointer> samples;
    for (shared_sample const& one : shared_samples_by_value()) {
        samples.push_back(std::make_shared<shared_sample const>(one));
    }
    return samples;
}

class shared_value : public ::testing::TestWithParam<sample_pointer> {};

INSTANTIATE_TEST_SUITE_P(each,
                         shared_value,
                         ::testing::ValuesIn(shared_samples()),
                         [](auto const& one) { return std::string(one.param->name); });

TEST_P(shared_value, is_printed_alike_by_all) {
    v2::io_value const& value = GetParam()->value;
    EXPECT_EQ(failures_of_crowd(
                  [&](int, int) { return value.printable_string() == GetParam()->printed; }),
              0);
}

TEST_P(shared_value, converts_alike_for_all) {
    v2::io_value const& value = GetParam()->value;
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  v2::io_error error;
                  return value.as<std::string>(error) == GetParam()->text &&
                         error.ok() == !GetParam()->text.empty() &&
                         value.as<int>(error) == GetParam()->number &&
                         error.ok() == (GetParam()->number != 0);
              }),
              0);
}

TEST_P(shared_value, converts_to_a_declared_type_alike_for_all) {
    v2::io_value const& value = GetParam()->value;
    v2::io_data_type const declared = GetParam()->declared;
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  v2::io_error error;
                  auto const converted = value.to_variant(declared, error);
                  return value.converts_to(declared) == GetParam()->converts &&
                         error.ok() == GetParam()->converts &&
                         (error.failed() || converted.data_type() == declared);
              }),
              0);
}

TEST_P(shared_value, is_compared_alike_by_all) {
    v2::io_value const& value = GetParam()->value;
    v2::io_value same;
    same = value;
    bool const equal = GetParam()->equals_its_copy;
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  return (value == same) == equal && (same != value) == !equal &&
                         value.equals(same) == equal && value.equals_same_type(same) == equal &&
                         v2::identical(value, same);
              }),
              0);
}

// Each thread reads in a way of its own, all at the same time.
TEST_P(shared_value, is_read_in_all_ways_at_once) {
    v2::io_value const& value = GetParam()->value;
    EXPECT_EQ(failures_of_crowd([&](int thread, int) {
                  switch (thread) {
                  case 0: return value.printable_string() == GetParam()->printed;
                  case 1: return v2::io_value(value).data_type() == value.data_type();
                  case 2: return (value == value) == GetParam()->equals_its_copy;
                  default: return value.converts_to(GetParam()->declared) == GetParam()->converts;
                  }
              }),
              0);
}

} // namespace
} // namespace threads_test

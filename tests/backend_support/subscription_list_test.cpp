#include <backend_support/subscription_list.hpp>
#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using backend_support::subscription_list;
using quality = v2::io_data_value::value_quality;

v2::plc_identifier const level("level");
v2::plc_identifier const flow("flow");
v2::plc_identifier const flow_unit("flow", "unit");

struct fresh_value {
    v2::plc_identifier variable;
    v2::io_value value;
    quality taken_as = quality::good;
    long long ticks = 1;
};

v2::read_result fresh_result(std::vector<fresh_value> const& values) {
    std::vector<v2::plc_identifier> identifiers;
    for (auto const& one : values) identifiers.push_back(one.variable);
    v2::read_result result(identifiers);
    for (unsigned int i = 0; i < result.size(); ++i) {
        auto const& one = values[i];
        result.set(i, v2::io_data_value(one.value, v2::io_timestamp(one.ticks), one.taken_as));
    }
    return result;
}

v2::read_result fresh_error(v2::io_error const& error) {
    v2::read_result result(std::vector{level});
    result.set(0, error);
    return result;
}

/// The variables that are delivered.
std::vector<v2::plc_identifier> delivered(subscription_list& list, v2::read_result const& read) {
    v2::read_result changed(std::vector{v2::plc_identifier("of an earlier poll")});
    list.changes(read, changed);
    std::vector<v2::plc_identifier> variables;
    for (auto const& entry : changed) variables.push_back(entry.identifier());
    return variables;
}

std::vector<v2::plc_identifier> const nothing_due;
std::vector const level_alone{level};

TEST(subscription_list, is_empty_at_first) {
    subscription_list list;
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.variables(), nothing_due);
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), nothing_due);
}

TEST(subscription_list, gives_each_subscription_an_id_that_never_comes_again) {
    subscription_list list;
    std::set<unsigned long long> numbers;
    for (int i = 0; i < 3; ++i) {
        auto const id = list.add(level);
        EXPECT_EQ(id.kind(), v2::subscription_id_kind::number);
        EXPECT_TRUE(numbers.insert(id.number()).second) << id.number();
        EXPECT_TRUE(list.remove(id));
    }
}

TEST(subscription_list, ends_a_subscription_once) {
    subscription_list list;
    auto const id = list.add(level);
    EXPECT_TRUE(list.remove(id));
    EXPECT_TRUE(list.empty());
    EXPECT_FALSE(list.remove(id));
}

TEST(subscription_list, knows_no_ids_of_others) {
    subscription_list list;
    auto const id = list.add(level);
    EXPECT_FALSE(list.remove(v2::subscription_id()));
    EXPECT_FALSE(list.remove(v2::subscription_id::from_number(id.number() + 1)));
    EXPECT_FALSE(list.remove(v2::subscription_id::from_number(0)));
    EXPECT_FALSE(list.remove(v2::subscription_id::from_address(&list)));
    EXPECT_EQ(list.variables(), level_alone);
}

TEST(subscription_list, names_each_variable_once_in_the_order_of_first_subscriptions) {
    subscription_list list;
    auto const first = list.add(level);
    static_cast<void>(list.add(flow_unit));
    static_cast<void>(list.add(level));
    static_cast<void>(list.add(flow));
    std::vector const expected{level, flow_unit, flow};
    EXPECT_EQ(list.variables(), expected);
    EXPECT_TRUE(list.remove(first));
    EXPECT_EQ(list.variables(), expected);
}

TEST(subscription_list, delivers_the_first_time_whatever_it_is) {
    subscription_list list;
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, {}, quality::uncertain, 0}})), level_alone);
    subscription_list failing;
    static_cast<void>(failing.add(level));
    EXPECT_EQ(delivered(failing, fresh_error(v2::io_errc::not_found)), level_alone);
}

TEST(subscription_list, delivers_what_was_read) {
    subscription_list list;
    static_cast<void>(list.add(level));
    static_cast<void>(list.add(flow));
    auto read = fresh_result({{level, 2.5, quality::uncertain, 77}, {flow, 1}});
    v2::io_error failure = v2::io_errc::not_supported;
    v2::io_error_diagnostics_generic diagnostics;
    diagnostics.set("operation", "look");
    failure.diagnostics(diagnostics);
    read.set(1, failure);

    v2::read_result changed;
    list.changes(read, changed);
    ASSERT_EQ(changed.size(), 2U);
    EXPECT_EQ(changed[0].identifier(), level);
    EXPECT_TRUE(identical(changed[0].value().value(), 2.5));
    EXPECT_EQ(changed[0].value().timestamp(), v2::io_timestamp(77));
    EXPECT_EQ(changed[0].value().quality(), quality::uncertain);
    EXPECT_EQ(changed[1].identifier(), flow);
    EXPECT_EQ(describe(changed[1].error()), describe(failure));
}

TEST(subscription_list, delivers_a_change_once) {
    subscription_list list;
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), level_alone);
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), nothing_due);
    EXPECT_EQ(delivered(list, fresh_result({{level, 2}})), level_alone);
    EXPECT_EQ(delivered(list, fresh_result({{level, 2}})), nothing_due);
}

TEST(subscription_list, a_new_timestamp_alone_is_no_change) {
    subscription_list list;
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, 1, quality::good, 1}})), level_alone);
    EXPECT_EQ(delivered(list, fresh_result({{level, 1, quality::good, 2}})), nothing_due);
}

TEST(subscription_list, another_quality_is_a_change) {
    subscription_list list;
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, 1, quality::good}})), level_alone);
    EXPECT_EQ(delivered(list, fresh_result({{level, 1, quality::bad}})), level_alone);
}

TEST(subscription_list, an_equal_value_of_another_kind_is_a_change) {
    subscription_list list;
    static_cast<void>(list.add(level));
    for (v2::io_value const& value : {v2::io_value(5), v2::io_value(5.0), v2::io_value("5")}) {
        EXPECT_EQ(delivered(list, fresh_result({{level, value}})), level_alone) << value;
    }
}

TEST(subscription_list, what_is_unequal_to_itself_is_no_change) {
    v2::io_object object;
    object.set("speed", 3);
    for (v2::io_value const& value :
         {v2::io_value(std::numeric_limits<double>::quiet_NaN()), v2::io_value(object)}) {
        subscription_list list;
        static_cast<void>(list.add(level));
        EXPECT_EQ(delivered(list, fresh_result({{level, value}})), level_alone);
        EXPECT_EQ(delivered(list, fresh_result({{level, value}})), nothing_due) << value;
    }
}

TEST(subscription_list, a_member_that_changes_is_a_change) {
    v2::io_object object;
    object.set("speed", 3);
    subscription_list list;
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, object}})), level_alone);
    object.set("speed", 4);
    EXPECT_EQ(delivered(list, fresh_result({{level, object}})), level_alone);
}

class other_category final : public v2::io_error_category {
public:
    [[nodiscard]] char const* name() const override { return "other"; }
    [[nodiscard]] v2::utility::string message(int) const override { return "other"; }
};

TEST(subscription_list, another_error_is_a_change_by_code_and_category) {
    static other_category const other;
    subscription_list list;
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), level_alone);
    EXPECT_EQ(delivered(list, fresh_error(v2::io_errc::not_found)), level_alone);
    EXPECT_EQ(delivered(list, fresh_error(v2::io_errc::not_found)), nothing_due);
    EXPECT_EQ(delivered(list, fresh_error(v2::io_errc::not_supported)), level_alone);
    EXPECT_EQ(delivered(list, fresh_error(v2::io_error(other, 6))), level_alone);
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), level_alone);
}

TEST(subscription_list, other_diagnostics_alone_are_no_change) {
    subscription_list list;
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_error(v2::io_errc::not_found)), level_alone);
    v2::io_error error = v2::io_errc::not_found;
    v2::io_error_diagnostics_generic diagnostics;
    diagnostics.set("operation", "look");
    error.diagnostics(diagnostics);
    EXPECT_EQ(delivered(list, fresh_error(error)), nothing_due);
}

TEST(subscription_list, a_variable_subscribed_to_twice_is_delivered_once_in_a_poll) {
    subscription_list list;
    static_cast<void>(list.add(level));
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), level_alone);
}

TEST(subscription_list, a_second_subscription_makes_a_variable_due_again) {
    subscription_list list;
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), level_alone);
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), level_alone);
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), nothing_due);
}

TEST(subscription_list, a_variable_is_delivered_until_its_last_subscription_ends) {
    for (bool const first_goes_first : {true, false}) {
        subscription_list list;
        auto const first = list.add(level);
        auto const second = list.add(level);
        EXPECT_TRUE(list.remove(first_goes_first ? first : second));
        EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), level_alone);
        EXPECT_TRUE(list.remove(first_goes_first ? second : first));
        EXPECT_EQ(delivered(list, fresh_result({{level, 2}})), nothing_due);
    }
}

TEST(subscription_list, forgets_what_it_delivered_to_a_subscription_that_ended) {
    subscription_list list;
    auto const id = list.add(level);
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), level_alone);
    EXPECT_TRUE(list.remove(id));
    static_cast<void>(list.add(level));
    EXPECT_EQ(delivered(list, fresh_result({{level, 1}})), level_alone);
}

TEST(subscription_list, tells_identifiers_apart_by_both_parts) {
    subscription_list list;
    static_cast<void>(list.add(flow));
    EXPECT_EQ(delivered(list, fresh_result({{flow_unit, 1}})), nothing_due);
    EXPECT_EQ(delivered(list, fresh_result({{flow, 1}, {flow_unit, 1}})), std::vector{flow});
}

TEST(subscription_list, a_variable_that_was_left_out_stays_due) {
    subscription_list list;
    static_cast<void>(list.add(level));
    static_cast<void>(list.add(flow));
    EXPECT_EQ(delivered(list, fresh_result({{flow, 1}})), std::vector{flow});
    EXPECT_EQ(delivered(list, fresh_result({{flow, 1}, {level, 1}})), level_alone);
}

TEST(subscription_list, may_be_given_one_result_for_both) {
    subscription_list list;
    static_cast<void>(list.add(flow));
    auto result = fresh_result({{level, 1}, {flow, 2}});
    list.changes(result, result);
    ASSERT_EQ(result.size(), 1U);
    EXPECT_EQ(result[0].identifier(), flow);
    EXPECT_EQ(result[0].value().value(), 2);
}

} // namespace

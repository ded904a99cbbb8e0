#include <gtest/gtest.h>
#include <modbus_backend/request_plan.hpp>

#include <string>
#include <vector>

namespace {

using namespace modbus_backend;

/// Variables that stay where they are while requests point at them.
class request_plan : public ::testing::Test {
protected:
    void want(register_kind kind, unsigned int address, unsigned int width = 1) {
        variable described;
        described.kind = kind;
        described.address = address;
        described.type.element_width = width;
        variables_.push_back(std::make_unique<variable>(described));
        wanted_.push_back({variables_.back().get(), wanted_.size()});
    }

    void want_array(register_kind kind, unsigned int address, unsigned int count) {
        want(kind, address, 2);
        variables_.back()->type.count = count;
    }

    /// Every request as `first+count[places of the members]`.
    static std::string shown(request const& one) {
        std::string text = std::to_string(one.first) + "+" + std::to_string(one.count) + "[";
        for (auto const& member : one.members) text += std::to_string(member.where) + " ";
        text.back() = ']';
        return text;
    }

    [[nodiscard]] std::vector<std::string> planned() const {
        std::vector<std::string> lines;
        for (auto const& one : plan_requests(wanted_)) lines.push_back(shown(one));
        return lines;
    }

    [[nodiscard]] std::vector<std::string> halves() const {
        auto const plan = plan_requests(wanted_);
        EXPECT_EQ(plan.size(), 1U);
        auto const [lower, upper] = split(plan.at(0));
        return {shown(lower), shown(upper)};
    }

    static constexpr auto coil = register_kind::coil;
    static constexpr auto discrete = register_kind::discrete;
    static constexpr auto holding = register_kind::holding;
    static constexpr auto input = register_kind::input;

private:
    std::vector<std::unique_ptr<variable>> variables_;
    std::vector<wanted_variable> wanted_;
};

using texts = std::vector<std::string>;

TEST_F(request_plan, nothing_wanted_needs_no_request) {
    EXPECT_EQ(planned(), texts());
}

TEST_F(request_plan, one_variable_is_one_request_of_its_width) {
    want(holding, 7, 4);
    EXPECT_EQ(planned(), texts({"7+4[0]"}));
}

TEST_F(request_plan, adjacent_and_near_variables_share_a_request) {
    want(input, 10, 2);
    want(input, 12, 1);
    want(input, 40, 2);
    EXPECT_EQ(planned(), texts({"10+32[0 1 2]"}));
}

TEST_F(request_plan, the_order_of_asking_does_not_matter) {
    want(input, 40, 2);
    want(input, 12, 1);
    want(input, 10, 2);
    EXPECT_EQ(planned(), texts({"10+32[2 1 0]"}));
}

TEST_F(request_plan, every_kind_has_requests_of_its_own) {
    want(input, 0);
    want(coil, 0);
    want(holding, 0);
    want(discrete, 0);
    EXPECT_EQ(planned(), texts({"0+1[1]", "0+1[3]", "0+1[2]", "0+1[0]"}));
}

TEST_F(request_plan, a_request_for_registers_ends_at_125) {
    want(holding, 100);
    want(holding, 224);
    want(holding, 225);
    EXPECT_EQ(planned(), texts({"100+125[0 1]", "225+1[2]"}));
}

TEST_F(request_plan, a_wide_variable_is_never_cut) {
    want(holding, 0);
    want(holding, 121, 4);
    want(holding, 124, 2);
    EXPECT_EQ(planned(), texts({"0+125[0 1]", "124+2[2]"}));
}

TEST_F(request_plan, an_array_counts_with_all_of_its_elements) {
    want_array(input, 10, 8);
    want(input, 26);
    EXPECT_EQ(planned(), texts({"10+17[0 1]"}));
}

TEST_F(request_plan, the_widest_variables_have_requests_of_their_own) {
    want(holding, 0, 125);
    want(holding, 125, 125);
    want(holding, 130);
    want(coil, 0, 2000);
    want(coil, 2000);
    EXPECT_EQ(planned(), texts({"0+2000[3]", "2000+1[4]", "0+125[0]", "125+125[1 2]"}));
}

TEST_F(request_plan, an_array_is_never_cut) {
    want(holding, 100);
    want_array(holding, 200, 13);
    want_array(holding, 150, 8);
    EXPECT_EQ(planned(), texts({"100+66[0 2]", "200+26[1]"}));
}

TEST_F(request_plan, a_request_for_bits_ends_at_2000) {
    want(coil, 5);
    want(coil, 2004);
    want(coil, 2005);
    want(discrete, 0);
    want(discrete, 2000);
    EXPECT_EQ(planned(), texts({"5+2000[0 1]", "2005+1[2]", "0+1[3]", "2000+1[4]"}));
}

TEST_F(request_plan, overlapping_and_repeated_variables_share_what_they_cover) {
    want(holding, 10, 8);
    want(holding, 12, 2);
    want(holding, 10, 8);
    EXPECT_EQ(planned(), texts({"10+8[0 2 1]"}));
}

TEST_F(request_plan, the_last_addresses_are_reached) {
    want(input, 65535);
    want(input, 65411);
    EXPECT_EQ(planned(), texts({"65411+125[1 0]"}));
}

TEST_F(request_plan, a_split_goes_through_the_widest_gap) {
    want(input, 0, 2);
    want(input, 4, 2);
    want(input, 20, 2);
    want(input, 22, 2);
    EXPECT_EQ(halves(), texts({"0+6[0 1]", "20+4[2 3]"}));
}

TEST_F(request_plan, a_split_without_a_gap_goes_through_the_middle) {
    want(input, 0, 2);
    want(input, 2, 2);
    want(input, 4, 2);
    want(input, 6, 2);
    EXPECT_EQ(halves(), texts({"0+4[0 1]", "4+4[2 3]"}));
}

TEST_F(request_plan, a_split_sees_no_gap_that_another_variable_covers) {
    want(input, 0, 20);
    want(input, 1, 1);
    want(input, 15, 1);
    want(input, 22, 1);
    EXPECT_EQ(halves(), texts({"0+20[0 1 2]", "22+1[3]"}));
}

TEST_F(request_plan, a_split_of_the_same_place_makes_two_of_it) {
    want(input, 3, 2);
    want(input, 3, 2);
    EXPECT_EQ(halves(), texts({"3+2[0]", "3+2[1]"}));
}

} // namespace

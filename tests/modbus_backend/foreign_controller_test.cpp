#include "support/module_test.hpp"
#include "support/server_process.hpp"

#include <examples/support/temporary_file.hpp>

#include <string>
#include <utility>
#include <vector>

// The controller here is that of somebody else: its protocol and the formats of its numbers.

namespace {

namespace v2 = tavi::ioapi::v2;
using test_support::summaries;
using test_support::summary;

constexpr char const* foreign_map = "u16 holding 0 u16\n"
                                    "i16 holding 1 i16\n"
                                    "big.i32 holding 10 i32\n"
                                    "big.u32 holding 12 u32\n"
                                    "big.flt holding 14 flt\n"
                                    "big.i64 holding 16 i64\n"
                                    "big.u64 holding 20 u64\n"
                                    "big.dbl holding 24 dbl\n"
                                    "little.i32 input 30 i32 word_order=little\n"
                                    "little.u32 input 32 u32 word_order=little\n"
                                    "little.flt input 34 flt word_order=little\n"
                                    "little.i64 input 36 i64 word_order=little\n"
                                    "little.u64 input 40 u64 word_order=little\n"
                                    "little.dbl input 44 dbl word_order=little\n"
                                    "text holding 50 string(4)\n"
                                    "list holding 60 u16[4]\n"
                                    "input.u16 input 0 u16\n"
                                    "coil coil 3 boolean\n"
                                    "coils coil 0 boolean[2000]\n"
                                    "discretes discrete 0 boolean[5]\n"
                                    "wide holding 100 u16[125]\n"
                                    "last holding 299 u16\n"
                                    "beyond holding 300 u16\n"
                                    "far.coil coil 2000 boolean\n"
                                    "structure motor\n"
                                    "  speed 0 flt\n"
                                    "  name 3 string(2)\n"
                                    "  limits 5 i16[2]\n"
                                    "end\n"
                                    "motor holding 250 motor\n"
                                    "gap holding 252 u16\n"
                                    "shown input 250 motor\n";

class foreign_controller : public test_support::module_test {
protected:
    using value_list = std::vector<std::pair<std::string, v2::io_value>>;

    [[nodiscard]] v2::config::store settings() const {
        return settings_for(server_.port(), map_.path(), 5000);
    }

    void expect(value_list const& expected) const {
        texts names;
        for (auto const& [name, value] : expected) names.push_back(name);
        auto const result = read(*opened_, names);
        for (unsigned int i = 0; i < result.size(); ++i) {
            EXPECT_EQ(summary(result[i].error()), "ok") << names[i];
            EXPECT_TRUE(identical(result[i].value().value(), expected[i].second))
                << names[i] << ": " << result[i].value().value().printable_string();
        }
    }

    /// Write, and read the same again.
    void expect_returned(value_list const& given) const {
        EXPECT_EQ(summaries(write(*opened_, given)), texts(given.size(), "ok"));
        expect(given);
    }

    test_support::temporary_file const map_{foreign_map};
    test_support::server_process server_{test_support::foreign_server()};
    test_support::opened_backend const opened_ = module.open(settings());
};

TEST_F(foreign_controller, gives_numbers_with_the_high_word_first) {
    expect({{"u16", static_cast<unsigned short>(1234)},
            {"i16", static_cast<short>(-2)},
            {"big.i32", -123456},
            {"big.u32", 0x12345678U},
            {"big.flt", -1.5F},
            {"big.i64", -9'000'000'000LL},
            {"big.u64", 0xFEDCBA9876543210ULL},
            {"big.dbl", 1234.0625}});
}

TEST_F(foreign_controller, gives_numbers_with_the_low_word_first) {
    expect({{"little.i32", -123456},
            {"little.u32", 0x12345678U},
            {"little.flt", -1.5F},
            {"little.i64", -9'000'000'000LL},
            {"little.u64", 0xFEDCBA9876543210ULL},
            {"little.dbl", 1234.0625}});
}

TEST_F(foreign_controller, gives_texts_and_arrays) {
    expect({{"text", "Modbus"}, {"list", v2::utility::array<unsigned short>{60, 61, 62, 63}}});
    auto const wide = read_value(*opened_, "wide").as<std::vector<int>>();
    ASSERT_EQ(wide.size(), 125U);
    EXPECT_EQ(wide.front(), 1000);
    EXPECT_EQ(wide.back(), 1124);
}

TEST_F(foreign_controller, gives_all_four_kinds) {
    expect({{"u16", static_cast<unsigned short>(1234)},
            {"input.u16", static_cast<unsigned short>(4321)},
            {"coil", true},
            {"discretes", v2::utility::array<bool>{false, true, false, true, false}}});
    auto const coils = read_value(*opened_, "coils").as<std::vector<bool>>();
    ASSERT_EQ(coils.size(), 2000U);
    for (std::size_t i = 0; i < coils.size(); ++i) ASSERT_EQ(coils[i], i % 3 == 0) << i;
}

TEST_F(foreign_controller, refuses_what_lies_beyond_its_end_alone) {
    auto const result = read(*opened_, {"last", "beyond", "far.coil", "coil"});
    EXPECT_EQ(summaries(result), texts({"ok", "modbus:2 illegal data address",
                                        "modbus:2 illegal data address", "ok"}));
}

TEST_F(foreign_controller, other_units_have_other_contents) {
    auto values = settings();
    values.set("unit", 7);
    auto const other = module.open(values);
    EXPECT_EQ(read_value(*other, "u16").as<int>(), 700);
    EXPECT_EQ(read_value(*opened_, "u16").as<int>(), 1234);
}

TEST_F(foreign_controller, takes_every_type) {
    expect_returned({{"u16", static_cast<unsigned short>(65535)},
                     {"i16", static_cast<short>(-32768)},
                     {"big.i32", -2},
                     {"big.u32", 0xFFFF0001U},
                     {"big.flt", 0.1F},
                     {"big.i64", -1'000'000'000'001LL},
                     {"big.u64", 0x0123456789ABCDEFULL},
                     {"big.dbl", -0.1},
                     {"text", "12345678"},
                     {"list", v2::utility::array<unsigned short>{1, 0, 65535, 7}},
                     {"coil", false}});
}

TEST_F(foreign_controller, takes_the_widest_variables) {
    v2::utility::array<unsigned short> words(125);
    for (unsigned int i = 0; i < 125; ++i) words[i] = static_cast<unsigned short>(7 * i);
    v2::utility::array<bool> bits(2000);
    for (unsigned int i = 0; i < 2000; ++i) bits[i] = i % 7 == 0;
    expect_returned({{"wide", words}, {"coils", bits}});
}

TEST_F(foreign_controller, what_is_written_elsewhere_stays) {
    EXPECT_EQ(summaries(write(*opened_, {{"list", v2::utility::array<int>{9, 9, 9, 9}}})),
              texts{"ok"});
    expect({{"text", "Modbus"}, {"big.dbl", 1234.0625}});
}

TEST_F(foreign_controller, writes_in_the_order_given) {
    auto const result = write(*opened_, {{"u16", 1}, {"u16", 2}, {"u16", "no"}, {"u16", 3}});
    EXPECT_EQ(summaries(result), texts({"ok", "ok", "generic:3 incompatible type", "ok"}));
    expect({{"u16", static_cast<unsigned short>(3)}});
}

TEST_F(foreign_controller, every_entry_of_a_write_says_what_has_happened) {
    auto const result = write(*opened_, {{"u16", 5},
                                         {"input.u16", 5},
                                         {"discretes", v2::utility::array<bool>(5)},
                                         {"no", 5},
                                         {"u16/speed", 5},
                                         {"u16", 70000},
                                         {"u16", {}},
                                         {"list", v2::utility::array<int>{1, 2}},
                                         {"text", "123456789"},
                                         {"beyond", 5},
                                         {"motor/torque", 5},
                                         {"motor/speed", "fast"},
                                         {"motor", 5},
                                         {"coil", true}});
    EXPECT_EQ(
        summaries(result),
        texts({"ok", "modbus:262 read only", "modbus:262 read only", "generic:1 not found",
               "generic:1 not found", "generic:4 value too large", "generic:3 incompatible type",
               "modbus:263 wrong count of values", "modbus:264 text too long or with a zero byte",
               "modbus:2 illegal data address", "generic:2 invalid property",
               "generic:3 incompatible type", "generic:3 incompatible type", "ok"}));
    EXPECT_EQ(describe(result[9].error()),
              "modbus:2 illegal data address {address: (u32) 300, device_code: (i32) 2, "
              "function: (u32) 6, operation: (string) \"write single register\", "
              "variable: (string) \"beyond\"}");
}

TEST_F(foreign_controller, takes_single_members_and_leaves_the_others) {
    EXPECT_EQ(summaries(write(*opened_, {{"gap", 77}, {"motor/name", "M1"}})), texts(2, "ok"));
    EXPECT_EQ(summaries(write(*opened_, {{"motor/speed", 12.5}})), texts{"ok"});
    expect({{"motor/speed", 12.5F},
            {"motor/name", "M1"},
            {"motor/limits", v2::utility::array<short>{0, 0}},
            {"gap", static_cast<unsigned short>(77)}});
}

TEST_F(foreign_controller, takes_whole_structures_and_leaves_their_gaps) {
    EXPECT_EQ(summaries(write(*opened_, {{"gap", 77}})), texts{"ok"});
    auto const held = read_value(*opened_, "motor");
    v2::io_object motor = *held.get_if<v2::io_object>();
    motor.set("speed", 3);
    motor.set("name", "abcd");
    motor.set("limits", v2::utility::array<int>{-1, 1});
    EXPECT_EQ(summaries(write(*opened_, {{"motor", motor}})), texts{"ok"});
    expect({{"motor/speed", 3.0F},
            {"motor/name", "abcd"},
            {"motor/limits", v2::utility::array<short>{-1, 1}},
            {"gap", static_cast<unsigned short>(77)}});
}

TEST_F(foreign_controller, a_structure_of_input_registers_is_read_only) {
    auto const result = write(*opened_, {{"shown", v2::io_object()}, {"shown/speed", 1}});
    EXPECT_EQ(summaries(result), texts(2, "modbus:262 read only"));
}

TEST_F(foreign_controller, another_count_of_values_than_entries_is_refused) {
    v2::io_value const one[] = {5};
    v2::write_result result(test_support::identifiers_of({"u16", "i16"}));
    v2::io_error error;
    opened_->write(one, result, error);
    EXPECT_EQ(summary(error), "modbus:263 wrong count of values");
    EXPECT_EQ(summaries(result), texts(2, "generic:5 no result"));
    expect({{"u16", static_cast<unsigned short>(1234)}});
}

TEST_F(foreign_controller, writing_nothing_is_no_error) {
    EXPECT_TRUE(write(*opened_, {}).empty());
}

TEST_F(foreign_controller, that_vanishes_is_found_again_at_its_port) {
    int const port = server_.port();
    expect({{"u16", static_cast<unsigned short>(1234)}});
    server_.kill();
    texts const names{"u16", "input.u16", "coil", "no"};
    auto const lost = [](char const* error) {
        return texts{error, error, error, "generic:1 not found"};
    };
    EXPECT_EQ(summaries(read(*opened_, names)), lost("modbus:257 connection lost"));
    EXPECT_EQ(summaries(read(*opened_, names)), lost("modbus:256 not connected"));
    EXPECT_EQ(summaries(write(*opened_, {{"u16", 1}, {"coil", true}, {"motor/speed", 1}})),
              texts(3, "modbus:256 not connected"));

    test_support::server_process const back(test_support::foreign_server(port));
    expect({{"u16", static_cast<unsigned short>(1234)}, {"coil", true}});
}

TEST_F(foreign_controller, that_was_started_anew_in_between_is_used_without_an_error) {
    int const port = server_.port();
    expect({{"u16", static_cast<unsigned short>(1234)}});
    server_.kill();
    test_support::server_process const back(test_support::foreign_server(port));
    expect({{"u16", static_cast<unsigned short>(1234)}});
}

} // namespace

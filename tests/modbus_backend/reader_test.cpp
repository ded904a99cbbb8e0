#include <examples/support/recording_host.hpp>
#include <gtest/gtest.h>
#include <modbus_backend/error_category.hpp>
#include <modbus_backend/reader.hpp>
#include <modbus_backend/structure_registration.hpp>

#include <memory>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using namespace modbus_backend;

/// Serves addresses up to an end, each with its own number as contents, and counts the requests.
class scripted_source final : public register_access {
public:
    unsigned int served_end = 1000;
    v2::io_error beyond = make_modbus_error(modbus_errc::illegal_data_address);
    std::vector<std::string> asked;

    v2::io_error read_bits(register_kind,
                           unsigned int first,
                           std::span<std::uint8_t> bits) override {
        if (auto const error = ask(first, bits.size())) return error;
        for (std::size_t i = 0; i < bits.size(); ++i) bits[i] = (first + i) % 2 == 1;
        return {};
    }

    v2::io_error read_registers(register_kind,
                                unsigned int first,
                                std::span<std::uint16_t> registers) override {
        if (auto const error = ask(first, registers.size())) return error;
        for (std::size_t i = 0; i < registers.size(); ++i) {
            registers[i] = static_cast<std::uint16_t>(first + i);
        }
        return {};
    }

    v2::io_error write_coils(unsigned int, std::span<std::uint8_t const>) override {
        return v2::io_errc::not_supported;
    }
    v2::io_error write_holdings(unsigned int, std::span<std::uint16_t const>) override {
        return v2::io_errc::not_supported;
    }

private:
    v2::io_error ask(unsigned int first, std::size_t count) {
        asked.push_back(std::to_string(first) + "+" + std::to_string(count));
        return first + count > served_end ? beyond : v2::io_error();
    }
};

/// A clock that stands.
class clock_at final : public backend_support::clock {
public:
    explicit clock_at(long long ticks) : ticks_(ticks) {}
    [[nodiscard]] v2::io_timestamp now() const noexcept override {
        return v2::io_timestamp(ticks_);
    }

private:
    long long ticks_;
};

class reader : public ::testing::Test {
protected:
    // Values may throw when they end, and a result with it; the fixture's base does not allow that.
    ~reader() noexcept override = default;

    void want(unsigned int address, register_kind kind = register_kind::holding) {
        variable_type type;
        if (holds_bits(kind)) type.element = value_type::boolean;
        want(kind, address, type);
    }

    void want_array(unsigned int address,
                    unsigned int count,
                    register_kind kind = register_kind::holding) {
        variable_type type;
        if (holds_bits(kind)) type.element = value_type::boolean;
        type.count = count;
        want(kind, address, type);
    }

    /// A structure of three registers, whose members `first` and `last` leave one between them.
    void want_structure(unsigned int address) {
        auto const shape = std::make_shared<structure>();
        shape->name = "ends";
        shape->members = {{"first", 0, {}}, {"last", 2, {}}};
        shape->width = 3;
        register_structures({shape}, v2::backend_query(host));
        variable_type type;
        type.element = value_type::object;
        type.element_width = 3;
        type.members = shape;
        want(register_kind::holding, address, type);
    }

    void read(backend_support::clock const& time = backend_support::machine_clock()) {
        result.assign(identifiers_);
        for (auto const& one : plan_requests(wanted_)) {
            carry_out(one, source, refusals, time, result);
        }
        refusals.tell();
    }

    void expect_value(unsigned int index, int expected) const {
        EXPECT_EQ(result[index].error(), v2::io_error());
        EXPECT_EQ(result[index].value().value().try_as<int>(), expected);
        EXPECT_TRUE(result[index].value().good());
    }

    void expect_values(unsigned int index, std::vector<int> const& expected) const {
        EXPECT_EQ(result[index].error(), v2::io_error());
        EXPECT_EQ(result[index].value().value().try_as<std::vector<int>>(), expected);
        EXPECT_TRUE(result[index].value().good());
    }

    void expect_ends(unsigned int index, int first, int last) const {
        EXPECT_EQ(result[index].error(), v2::io_error());
        auto const* const object = result[index].value().value().get_if<v2::io_object>();
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->get("first").try_as<int>(), first);
        EXPECT_EQ(object->get("last").try_as<int>(), last);
    }

    void expect_error(unsigned int index, modbus_errc code) const {
        EXPECT_EQ(result[index].error(), make_modbus_error(code));
        EXPECT_TRUE(result[index].value().empty());
        EXPECT_FALSE(result[index].value().timestamp().has_value());
        EXPECT_EQ(result[index].value().quality(), v2::io_data_value::value_quality());
    }

    scripted_source source;
    test_support::recording_host host;
    refusal_log refusals{journal(v2::backend_query(host))};
    v2::read_result result;

private:
    void want(register_kind kind, unsigned int address, variable_type const& type) {
        auto const name = std::to_string(address);
        variables_.push_back(std::make_unique<variable>(variable{name, "", kind, address, type}));
        wanted_.push_back({variables_.back().get(), wanted_.size()});
        identifiers_.emplace_back(name);
    }

    std::vector<std::unique_ptr<variable>> variables_;
    std::vector<wanted_variable> wanted_;
    std::vector<v2::plc_identifier> identifiers_;
};

using texts = std::vector<std::string>;

TEST_F(reader, fills_all_entries_of_a_request_with_one_time) {
    want(30);
    want(10);
    auto const before = v2::io_timestamp::now();
    read();
    auto const after = v2::io_timestamp::now();

    expect_value(0, 30);
    expect_value(1, 10);
    EXPECT_EQ(source.asked, texts({"10+21"}));
    EXPECT_EQ(result[0].value().timestamp(), result[1].value().timestamp());
    EXPECT_LE(before, result[0].value().timestamp());
    EXPECT_LE(result[0].value().timestamp(), after);
}

TEST_F(reader, takes_the_time_from_the_clock_that_it_is_given) {
    want(3);
    want(4, register_kind::coil);
    read(clock_at(638'000'000'000'000'000));
    EXPECT_EQ(result[0].value().timestamp().ticks(), 638'000'000'000'000'000);
    EXPECT_EQ(result[1].value().timestamp().ticks(), 638'000'000'000'000'000);
}

TEST_F(reader, gives_bits_as_truth_values) {
    want(4, register_kind::coil);
    want(7, register_kind::coil);
    read();
    ASSERT_NE(result[0].value().value().get_if<bool>(), nullptr);
    ASSERT_NE(result[1].value().value().get_if<bool>(), nullptr);
    EXPECT_FALSE(*result[0].value().value().get_if<bool>());
    EXPECT_TRUE(*result[1].value().value().get_if<bool>());
}

TEST_F(reader, gives_arrays_and_structures_beside_other_variables) {
    want(10);
    want_array(12, 3);
    want_structure(20);
    want(21);
    read();
    expect_value(0, 10);
    expect_values(1, {12, 13, 14});
    expect_ends(2, 20, 22);
    expect_value(3, 21);
    EXPECT_EQ(source.asked, texts({"10+13"}));
}

TEST_F(reader, gives_arrays_of_bits) {
    want(3, register_kind::discrete);
    want_array(4, 3, register_kind::discrete);
    read();
    auto const* const bits = result[1].value().value().get_if<v2::utility::array<bool>>();
    ASSERT_NE(bits, nullptr);
    EXPECT_EQ(bits->to_vector(), (std::vector<bool>{false, true, false}));
    EXPECT_EQ(source.asked, texts({"3+4"}));
}

TEST_F(reader, an_array_that_is_not_served_whole_fails_whole_and_alone) {
    source.served_end = 15;
    want(10);
    want_array(12, 4);
    want_structure(12);
    read();
    expect_value(0, 10);
    expect_error(1, modbus_errc::illegal_data_address);
    expect_ends(2, 12, 14);
    EXPECT_EQ(source.asked, texts({"10+6", "10+1", "12+4", "12+4", "12+3"}));
}

TEST_F(reader, a_structure_that_is_not_served_whole_fails_whole_and_alone) {
    source.served_end = 22;
    want_structure(20);
    want_array(10, 5);
    read();
    expect_error(0, modbus_errc::illegal_data_address);
    expect_values(1, {10, 11, 12, 13, 14});
    EXPECT_EQ(source.asked, texts({"10+13", "10+5", "20+3"}));
}

TEST_F(reader, a_variable_asked_for_twice_is_answered_twice) {
    want(5);
    want(5);
    read();
    expect_value(0, 5);
    expect_value(1, 5);
    EXPECT_EQ(source.asked, texts({"5+1"}));
}

TEST_F(reader, only_what_is_not_served_gets_the_exception) {
    source.served_end = 20;
    want(10);
    want(12);
    want(40);
    read();
    expect_value(0, 10);
    expect_value(1, 12);
    expect_error(2, modbus_errc::illegal_data_address);
    EXPECT_EQ(source.asked, texts({"10+31", "10+3", "40+1"}));
}

TEST_F(reader, ranges_without_a_gap_are_halved_down_to_the_culprit) {
    source.served_end = 13;
    for (unsigned int address = 10; address < 14; ++address) want(address);
    read();
    expect_value(0, 10);
    expect_value(1, 11);
    expect_value(2, 12);
    expect_error(3, modbus_errc::illegal_data_address);
    EXPECT_EQ(source.asked, texts({"10+4", "10+2", "12+2", "12+1", "13+1"}));
}

TEST_F(reader, bits_fall_back_like_registers) {
    source.served_end = 10;
    want(9, register_kind::discrete);
    want(10, register_kind::discrete);
    read();
    EXPECT_EQ(result[0].value().value().try_as<bool>(), true);
    expect_error(1, modbus_errc::illegal_data_address);
}

class reader_by_range : public reader, public ::testing::WithParamInterface<modbus_errc> {};

TEST_P(reader_by_range, an_exception_that_may_come_of_the_range_is_narrowed_down) {
    source.beyond = make_modbus_error(GetParam());
    source.served_end = 11;
    want(10);
    want(11);
    read();
    expect_value(0, 10);
    expect_error(1, GetParam());
    EXPECT_EQ(source.asked.size(), 3U);
}

INSTANTIATE_TEST_SUITE_P(codes,
                         reader_by_range,
                         ::testing::Values(modbus_errc::illegal_data_address,
                                           modbus_errc::illegal_data_value,
                                           modbus_errc::device_failure,
                                           modbus_errc::memory_parity_error));

class reader_by_controller : public reader, public ::testing::WithParamInterface<modbus_errc> {};

// A narrower range would meet the same, and each try may take as long as a timeout.
TEST_P(reader_by_controller, any_other_failure_is_that_of_all_members) {
    source.beyond = make_modbus_error(GetParam());
    source.served_end = 11;
    want(10);
    want(11);
    read();
    expect_error(0, GetParam());
    expect_error(1, GetParam());
    EXPECT_EQ(source.asked.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(codes,
                         reader_by_controller,
                         ::testing::Values(modbus_errc::illegal_function,
                                           modbus_errc::device_busy,
                                           modbus_errc::gateway_path_unavailable,
                                           modbus_errc::gateway_target_silent,
                                           modbus_errc::not_connected,
                                           modbus_errc::connection_lost,
                                           modbus_errc::timeout,
                                           modbus_errc::bad_answer));

TEST_F(reader, an_error_of_another_category_is_never_narrowed_down) {
    source.beyond = v2::io_errc::invalid_property; // its number is that of an illegal address
    source.served_end = 11;
    want(10);
    want(11);
    read();
    EXPECT_EQ(result[0].error(), v2::io_error(v2::io_errc::invalid_property));
    EXPECT_EQ(source.asked.size(), 1U);
}

TEST_F(reader, an_error_says_what_was_tried_for_which_variable) {
    source.served_end = 10;
    want(40, register_kind::input);
    read();
    namespace key = v2::diagnostics_key;
    auto const diagnostics = result[0].error().diagnostics();
    EXPECT_EQ(diagnostics.get(key::operation), v2::io_value("read input registers"));
    EXPECT_EQ(diagnostics.get("function").as<int>(), 4);
    EXPECT_EQ(diagnostics.get(key::address).as<int>(), 40);
    EXPECT_EQ(diagnostics.get("variable"), v2::io_value("40"));
    EXPECT_EQ(diagnostics.get(key::device_code).as<int>(), 2);
    EXPECT_EQ(diagnostics.size(), 5U);
}

TEST_F(reader, the_function_is_that_of_the_kind) {
    source.served_end = 0;
    want(1, register_kind::coil);
    want(2, register_kind::discrete);
    want(3, register_kind::holding);
    want(4, register_kind::input);
    read();
    for (unsigned int i = 0; i < 4; ++i) {
        EXPECT_EQ(result[i].error().diagnostics().get("function").as<unsigned int>(), i + 1);
    }
}

TEST_F(reader, an_error_that_is_no_exception_has_no_code_of_the_controller) {
    source.beyond = make_modbus_error(modbus_errc::timeout);
    source.served_end = 0;
    want(1);
    read();
    EXPECT_FALSE(result[0].error().diagnostics().contains(v2::diagnostics_key::device_code));
    EXPECT_EQ(result[0].error().diagnostics().size(), 4U);
}

TEST_F(reader, a_refusal_is_logged_once_until_it_ends_or_changes) {
    want(40);
    source.served_end = 10;
    read();
    read();
    ASSERT_EQ(host.log().size(), 1U);
    EXPECT_EQ(host.log()[0].level, v2::log_severity_level::warning);
    EXPECT_EQ(host.log()[0].text, "the controller refuses to read holding registers 40 (40): "
                                  "illegal data address");
    source.beyond = make_modbus_error(modbus_errc::device_busy);
    read();
    EXPECT_EQ(host.log().size(), 2U);
    source.served_end = 100;
    read();
    EXPECT_EQ(host.log().size(), 2U);
    source.served_end = 10;
    read();
    EXPECT_EQ(host.log().size(), 3U);
}

TEST_F(reader, of_ranges_that_are_narrowed_down_only_the_last_is_logged) {
    source.served_end = 20;
    want(10);
    want_array(39, 3);
    read();
    ASSERT_EQ(host.log().size(), 1U);
    EXPECT_EQ(host.log()[0].text, "the controller refuses to read holding registers 39 to 41 "
                                  "(39): illegal data address");
}

TEST_F(reader, variables_that_are_refused_together_are_logged_together) {
    source.beyond = make_modbus_error(modbus_errc::illegal_function);
    source.served_end = 0;
    want(1);
    want(2);
    read();
    ASSERT_EQ(host.log().size(), 1U);
    EXPECT_EQ(host.log()[0].text, "the controller refuses to read holding registers 1 to 2 "
                                  "(2 variables): illegal function");
}

TEST_F(reader, what_many_requests_are_refused_for_the_same_reason_is_logged_once) {
    source.served_end = 0;
    for (unsigned int address = 0; address < 3000; ++address) want(address);
    want(7, register_kind::input);
    read();
    ASSERT_EQ(host.log().size(), 2U);
    EXPECT_EQ(host.log()[0].text, "the controller refuses to read holding registers for 3000 "
                                  "variables, first 0 (0): illegal data address");
    EXPECT_EQ(host.log()[1].text,
              "the controller refuses to read input registers 7 (7): illegal data address");
    read();
    EXPECT_EQ(host.log().size(), 2U);
}

TEST_F(reader, a_lost_connection_is_no_refusal) {
    source.beyond = make_modbus_error(modbus_errc::connection_lost);
    source.served_end = 0;
    want(1);
    read();
    EXPECT_TRUE(host.log().empty());
}

} // namespace

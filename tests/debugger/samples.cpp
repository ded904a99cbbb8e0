// One value of each class for transcript.txt. It stops in `everything_is_built`.
#include <tavi/ioapi/v2/ioapi.hpp>

#include <cstddef>
#include <cstring>
#include <string>
#include <tuple>
#include <utility>

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;

extern "C" [[gnu::noinline]] void everything_is_built() {
    asm volatile("");
}

namespace {

class pump_category : public v2::io_error_category {
public:
    [[nodiscard]] char const* name() const override { return "pump"; }
    [[nodiscard]] v2::utility::string message(int) const override { return "is dry"; }
};

class foreign_list
    : public v2::make_object_implementation<v2::interfaces::io_error_diagnostics_impl> {
public:
    [[nodiscard]] unsigned int size() const override { return 0; }
    [[nodiscard]] bool has(v2::utility::string_view) const override { return false; }
    [[nodiscard]] v2::io_value get(v2::utility::string_view) const override { return {}; }
    [[nodiscard]] iterator_impl* make_iterator() const override { return nullptr; }
};

class quiet_host final : public v2::host_interface {
public:
    [[nodiscard]] v2::backend_version_info backend_version() const override { return {}; }
    [[nodiscard]] v2::utility::string p_backend_data_directory() const override { return {}; }
    [[nodiscard]] v2::utility::string p_project_directory() const override { return {}; }
    [[nodiscard]] v2::utility::string p_shared_extension_directory() const override { return {}; }
    [[nodiscard]] v2::utility::string p_private_extension_directory() const override { return {}; }
    void push_log_record(v2::log_severity_level, v2::utility::string_view) const override {}
    [[nodiscard]] v2::io_data_type lookup_data_type(v2::plc_identifier const&,
                                                    v2::io_error&) const override {
        return {};
    }
    [[nodiscard]] v2::io_structure_type lookup_structure_type(v2::io_data_type const&,
                                                              v2::io_error&) const override {
        return {};
    }
    [[nodiscard]] v2::io_data_type register_structure_type(v2::plc_identifier const&,
                                                           v2::io_structure_type,
                                                           v2::io_error&) override {
        return {};
    }
    void replace_structure_type(v2::io_data_type const&,
                                v2::io_structure_type,
                                v2::io_error&) override {}
    void unregister_structure_type(v2::io_data_type const&, v2::io_error&) override {}
    void clear_structure_types() override {}
};

/// Stands at the one entry of another module's list.
class foreign_position final : public v2::interfaces::io_error_diagnostics_impl::iterator_impl {
public:
    bool advance() override { return false; }
    [[nodiscard]] bool equal_to(iterator_impl const&) const override { return true; }
    [[nodiscard]] entry get() const override { return {"key", nullptr}; }
    [[nodiscard]] iterator_impl* clone() const override { return new foreign_position; }
    void release() override { delete this; }
};

/// Room for a value that nobody ends: a corrupt one cannot be.
template <class T>
union unended {
    T value;
    unended() : value() {}
    unended(unended const&) = delete;
    unended& operator=(unended const&) = delete;
    ~unended() {}

    /// Puts a number in place of what stands `distance` bytes behind the start.
    template <class Number>
    void overwrite(std::size_t distance, Number number) {
        std::memcpy(reinterpret_cast<unsigned char*>(&value) + distance, &number, sizeof(number));
    }
};

constexpr std::size_t index_place = sizeof(v2::io_value) - 8;
constexpr std::size_t payload_place = 24;

} // namespace

int main() {
    using types = v2::io_data_type::basic_types;
    using v2::io_data_type;
    using v2::io_value;
    using v2::plc_identifier;
    using v2::utility::array;

    v2::utility::string const text("north");
    v2::utility::string const no_text;
    v2::utility::string const odd_text(std::string("a\"b\\c\n-\0e\x01\xff"
                                                   "f",
                                                   12));
    v2::utility::string const wide_text("Füllstand");
    [[maybe_unused]] v2::utility::string_view const view("a view");
    v2::utility::string const long_text(std::string(1000, 'x'));
    int const three_numbers[] = {1, 2, 3};
    v2::utility::data_view<int const> const numbers_view(three_numbers);
    array<double> const doubles{0.1, 2.0, -1e300};
    array<bool> const truths{true, false};

    io_data_type const scalar_type = io_data_type::scalar(types::u16);
    [[maybe_unused]] io_data_type const array_type = io_data_type::array_of(types::flt);
    [[maybe_unused]] io_data_type const object_type = io_data_type::object(7);
    [[maybe_unused]] io_data_type const odd_type{static_cast<types>(99), 0, 3, 8};

    io_value const nothing;
    io_value const nothing_typed(io_data_type::scalar(types::string), nullptr);
    io_value const truth(true);
    io_value const schar_value(static_cast<signed char>(-1));
    io_value const short_value(static_cast<short>(-300));
    io_value const int_value(42);
    io_value const long_value(-7L);
    io_value const longlong_value(-5'000'000'000LL);
    io_value const uchar_value(static_cast<unsigned char>(65));
    io_value const ushort_value(static_cast<unsigned short>(65535));
    io_value const uint_value(4'000'000'000U);
    io_value const ulong_value(8UL);
    io_value const ulonglong_value(18'446'744'073'709'551'615ULL);
    io_value const float_value(0.1F);
    io_value const double_value(2.75);
    io_value const char_value(static_cast<char>(200));
    io_value const text_value("say \"hello\"");
    io_value const retyped(io_data_type::scalar(types::u8), 5);

    io_value const truth_array(array<bool>{true, false});
    io_value const schar_array(array<signed char>{-1, 65});
    io_value const short_array(array<short>{-300});
    io_value const int_array(array<int>{1, 2, 3});
    io_value const long_array(array<long>{-7, 7});
    io_value const longlong_array(array<long long>{-5'000'000'000});
    io_value const uchar_array(array<unsigned char>{65, 66});
    io_value const ushort_array(array<unsigned short>{65535});
    io_value const uint_array(array<unsigned int>{4'000'000'000});
    io_value const ulong_array(array<unsigned long>{8, 9});
    io_value const ulonglong_array(array<unsigned long long>{1, 18'446'744'073'709'551'615ULL});
    io_value const float_array(array<float>{0.1F, 1.5F});
    io_value const double_array(array<double>{0.1, 3.0});
    io_value const char_array(array<char>{'A', static_cast<char>(200)});
    io_value const text_array(array<v2::utility::string>{"a", "b"});
    io_value const empty_array{array<int>()};
    io_value const nested(io_data_type::array_of(types::i32),
                          array<io_value>::of(io_value(1), io_value(array<int>{2, 3})));

    v2::io_structure_type const pump_state(
        "pump_state", {{"speed", io_data_type::scalar(types::flt)}, {"runs", scalar_type}});
    v2::io_structure_type const no_members;
    v2::io_object pump(7, pump_state);
    pump.set("speed", 2.5);
    pump.set("runs", static_cast<unsigned short>(1));
    v2::io_object free_object;
    for (int i = 0; i < 9; ++i) free_object.set("key" + std::to_string(i), i);
    io_value const pump_value(pump);
    io_value const retyped_pump(io_data_type::object(9), pump);
    array<v2::io_object> two_pumps(2);
    two_pumps[0] = pump;
    io_value const object_array(io_data_type{types::object, 7, 2, 0}, two_pumps);

    v2::io_structure_dictionary dictionary;
    v2::io_error error;
    (void)dictionary.add_structure(pump_state, error);

    v2::plc_identifier_part const no_part;
    v2::plc_identifier_part const text_part("tank");
    v2::plc_identifier_part const number_part(4);
    plc_identifier const level("tank.level");
    plc_identifier const two_parts(4, "level");
    plc_identifier const no_identifier;

    pump_category const pump_errors;
    v2::io_error const no_error;
    v2::io_error const not_found(v2::io_errc::not_found);
    v2::io_error const unknown_code(v2::generic_io_error_category(), 77);
    v2::io_error const pump_error(pump_errors, 3);
    v2::io_error explained(v2::io_errc::incompatible_type);
    v2::io_error_diagnostics_generic diagnostics;
    diagnostics.set("index", 4U);
    diagnostics.set("address", "40001");
    explained.diagnostics(diagnostics);
    v2::io_error_diagnostics const no_diagnostics;
    v2::io_error foreign_error(v2::io_errc::todo);
    foreign_error.diagnostics(v2::io_error_diagnostics(new foreign_list));
    v2::io_exception const raised(not_found);

    v2::io_timestamp const no_time;
    v2::io_timestamp const leap_day(1'709'207'999'123'456'7);
    [[maybe_unused]] v2::io_timestamp const first_tick(1);
    [[maybe_unused]] v2::io_timestamp const before_epoch(-1);
    [[maybe_unused]] v2::io_timestamp const far_future(9'223'372'036'854'775'807);
    auto const good = v2::io_data_value::value_quality::good;
    v2::io_data_value const data_value(2.75, leap_day, good);
    v2::io_data_value const odd_quality(1, no_time,
                                        static_cast<v2::io_data_value::value_quality>(5));

    plc_identifier const wanted[] = {level, plc_identifier("tank.colour")};
    v2::read_result read(wanted);
    read.set(0, data_value);
    read.set(1, not_found);
    v2::write_result write(wanted);
    write.set(0, no_error);
    v2::read_result const nothing_read;
    v2::browse_result browsed;
    browsed.push({v2::browsing::node_class::variable, level, plc_identifier("level"), "in metres",
                  io_data_type::scalar(types::dbl)});
    browsed.push({static_cast<v2::browsing::node_class>(9), {}, {}, {}, {}});
    v2::subscription_id const no_id;
    auto const number_id = v2::subscription_id::from_number(12);
    static char const somewhere = 0;
    auto const address_id = v2::subscription_id::from_address(const_cast<char*>(&somewhere));
    v2::subscription_result subscribed;
    subscribed.set(level, io_data_type::scalar(types::dbl), 5,
                   v2::subscription_id::from_number(12));
    subscribed.set(plc_identifier(8), not_found);

    v2::utility::pair<int, v2::utility::string> const numbered{3, "three"};
    v2::utility::pair<v2::utility::string, io_value> const named{"level", 2.75};

    v2::subscription_result::variable_result const& subscribed_level = subscribed[level];
    v2::subscription_result::variable_result const& not_subscribed =
        v2::subscription_result::not_found();
    [[maybe_unused]] auto const level_answer = subscribed_level.ok() && not_subscribed.ok();
    auto const at_subscribed = ++subscribed.begin();
    auto const behind_subscribed = subscribed.end();
    v2::subscription_result const nothing_subscribed;
    auto const nowhere_subscribed = nothing_subscribed.begin();
    auto const at_member = pump.begin();
    auto const at_other_member = ++pump.begin();
    auto const behind_members = pump.end();
    v2::io_object const bare_object;
    auto const nowhere = bare_object.begin();
    auto gone_position = pump.begin();
    auto const taken_position(std::move(gone_position));
    auto const at_declared = pump_state.begin();
    auto const behind_declared = pump_state.end();
    auto const at_diagnostic = diagnostics.begin();
    auto const behind_diagnostics = diagnostics.end();
    v2::io_error_diagnostics::const_iterator const at_foreign(new foreign_position);
    auto const diagnostic = *at_diagnostic;
    v2::interfaces::io_error_diagnostics_impl::iterator_impl::entry const diagnostic_entry{
        diagnostic.key, &diagnostic.value};
    v2::interfaces::io_error_diagnostics_impl::iterator_impl::entry const null_entry{"key",
                                                                                     nullptr};
    v2::io_error_category const& generic_errors = v2::generic_io_error_category();
    auto const& exact_generic_errors =
        static_cast<v2::io_error_generic_category const&>(generic_errors);
    v2::io_error_category const& pump_errors_seen = pump_errors;
    [[maybe_unused]] auto const seen =
        std::tuple(&exact_generic_errors, &pump_errors_seen, &diagnostic_entry, &null_entry);
    foreign_list const uncounted_list;

    quiet_host host;
    v2::backend_query const query(host);
    v2::backend_version_info const release{1, 20, 3, ""};
    v2::backend_version_info const trial{2, 0, 0, "beta"};

    config::option::value_option const choices[] = {{"Fast", "often", 10},
                                                    {"Slow", "seldom", 1000}};
    config::option const host_option("host", "Host", "Its name", types::string);
    config::option const cycle_option("cycle", "Cycle", "In ms", io_value(10), choices);
    config::option const options[] = {host_option, cycle_option};
    config::category const connection("connection", "How to reach it", true, false, options);
    config::category const categories[] = {connection};
    config::config_template const form(categories);
    config::store store;
    store.set("host", "north");
    store.set("cycle", 10);
    config::verification_result verdict;
    verdict.add_issue(
        {config::verification_result::severity_type::warning, "slow", {"cycle", "host"}});
    verdict.add_issue({static_cast<config::verification_result::severity_type>(9), "odd", {}});

    v2::io_object gone_object;
    v2::io_structure_type gone_structure;
    v2::browse_result gone_browse;
    v2::subscription_result gone_subscription;
    config::option gone_option(host_option);
    config::category gone_category(connection);
    config::config_template gone_form;
    config::store gone_store;
    config::verification_result gone_verdict;
    auto const taken =
        std::tuple(std::move(gone_object), std::move(gone_structure), std::move(gone_browse),
                   std::move(gone_subscription), std::move(gone_option), std::move(gone_category),
                   std::move(gone_form), std::move(gone_store), std::move(gone_verdict));

    io_value const gone_value(io_data_type::object(7), gone_object);

    auto const unmapped = static_cast<std::size_t>(16);
    unended<io_value> index_34, index_minus_1, index_minus_2, wild_text, wild_array, endless_array,
        wild_values, odd_truth, odd_truths, wild_object;
    index_34.overwrite(index_place, 34);
    index_minus_1.overwrite(index_place, -1);
    index_minus_2.overwrite(index_place, -2);
    wild_text.overwrite(payload_place + sizeof(void*), 5U);
    wild_text.overwrite(payload_place + (sizeof(void*) == 4 ? 8 : 16), unmapped);
    wild_text.overwrite(index_place, 15);
    wild_array.overwrite(payload_place, unmapped);
    wild_array.overwrite(payload_place + sizeof(void*), 0xFFFFFFFFU);
    wild_array.overwrite(index_place, 20);
    static int const many_numbers[20'000] = {1, 2, 3};
    endless_array.overwrite(payload_place, &many_numbers);
    endless_array.overwrite(payload_place + sizeof(void*), 0xFFFFFFFFU);
    endless_array.overwrite(index_place, 20);
    wild_values.overwrite(payload_place, unmapped);
    wild_values.overwrite(payload_place + sizeof(void*), 0xFFFFFFFFU);
    wild_values.overwrite(index_place, 33);
    // Another module may store any byte as a truth value.
    odd_truth.overwrite(payload_place, static_cast<unsigned char>(2));
    odd_truth.overwrite(index_place, 1);
    static unsigned char const odd_bytes[] = {2, 0};
    odd_truths.overwrite(payload_place, &odd_bytes);
    odd_truths.overwrite(payload_place + sizeof(void*), 2U);
    odd_truths.overwrite(index_place, 17);
    wild_object.overwrite(payload_place, unmapped);
    wild_object.overwrite(index_place, 16);
    unended<v2::plc_identifier_part> odd_part;
    odd_part.overwrite(0, 9U);
    unended<v2::subscription_id> odd_id;
    odd_id.overwrite(0, 9U);
    unended<v2::io_error> wild_error;
    wild_error.overwrite(sizeof(void*), unmapped);

    // Maps of the private parts are corrupted where the links of their nodes stand.
    unended<config::store> wild_store, endless_store;
    wild_store.value.set("key", 1);
    endless_store.value.set("key", 1);
    endless_store.value.set("other", 2);
    // A map is what it compares by, the head of the tree (colour, parent, left, right) and a count.
    auto const map_at = [](unended<config::store>& changed, std::size_t place) {
        unsigned char* map = nullptr;
        std::memcpy(&map, &changed.value, sizeof(map));
        return map + place * sizeof(void*);
    };
    std::memcpy(map_at(wild_store, 3), &unmapped, sizeof(unmapped));
    auto const too_many = static_cast<std::size_t>(1000);
    std::memcpy(map_at(endless_store, 5), &too_many, sizeof(too_many));

    everything_is_built();
}

#include <examples/support/running_station.hpp>
#include <examples/support/temporary_file.hpp>
#include <gtest/gtest.h>
#include <iohost/loaded_module.hpp>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <iterator>
#include <string>
#include <vector>

// Here the module is loaded and used as a host does it.

namespace {

namespace v2 = tavi::ioapi::v2;
using test_support::running_station;
using test_support::temporary_file;

class tcp_backend : public ::testing::Test {
protected:
    [[nodiscard]] iohost::backend_ptr open(int port,
                                           std::string const& map = STATION_MAP_PATH,
                                           int timeout_ms = 30'000) const {
        example::setting const settings[] = {
            {"map", map}, {"host", "127.0.0.1"}, {"port", port}, {"timeout_ms", timeout_ms}};
        return module.open(settings);
    }

    static v2::read_result read(example::backend& backend, std::vector<std::string> const& names) {
        std::vector<v2::plc_identifier> const identifiers(names.begin(), names.end());
        v2::read_result result(identifiers);
        v2::io_error error(v2::io_errc::todo); // must be cleared
        backend.read(result, error);
        EXPECT_EQ(error, v2::io_error());
        return result;
    }

    /// What each entry reports, as text.
    static std::vector<std::string> errors(v2::read_result const& result) {
        std::vector<std::string> described;
        for (auto const& entry : result) {
            described.push_back(entry.ok() ? "ok" : describe(entry.error()));
        }
        return described;
    }

    iohost::loaded_module module{BACKEND_PATH};
};

using texts = std::vector<std::string>;
texts const one_of_each_kind{"pump1.runs", "tank.is_low", "tank.level", "tank.setpoint"};

TEST_F(tcp_backend, lists_the_variables_of_its_map_in_order) {
    running_station const station;
    temporary_file const map("z holding 1 u16\na coil 0 boolean\n");
    auto const backend = open(station.port(), map.path());
    v2::utility::array<v2::plc_identifier> list{v2::plc_identifier("old")};
    v2::io_error error(v2::io_errc::todo);
    backend->variables(list, error);
    EXPECT_EQ(error, v2::io_error());
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0], v2::plc_identifier("z"));
    EXPECT_EQ(list[1], v2::plc_identifier("a"));
}

TEST_F(tcp_backend, gives_values_with_their_declared_types) {
    running_station const station;
    auto const backend = open(station.port());
    auto const result = read(*backend, {"tank.volume", "tank.balance", "tank.level"});
    ASSERT_EQ(errors(result), texts(3, "ok"));
    EXPECT_EQ(result[0].value().value().data_type(),
              v2::io_data_type::scalar(v2::io_data_type::basic_types::u64));
    EXPECT_EQ(result[0].value().value().as<unsigned long long>(), 10'000'000'000'000'001U);
    EXPECT_EQ(result[1].value().value().data_type(),
              v2::io_data_type::scalar(v2::io_data_type::basic_types::i64));
    EXPECT_EQ(result[1].value().value().as<long long>(), -9'000'000'000);
    EXPECT_EQ(result[2].value().value().as<float>(), 2.0F);
    EXPECT_TRUE(result[2].value().good());
    EXPECT_TRUE(result[2].value().timestamp().has_value());
}

TEST_F(tcp_backend, gives_structures_under_the_id_in_the_dictionary_of_the_host) {
    running_station const station;
    auto const backend = open(station.port());
    v2::io_structure_dictionary dictionary;
    v2::io_error error(v2::io_errc::todo); // must be cleared
    backend->register_structures(dictionary, error);
    EXPECT_EQ(error, v2::io_error());
    auto const result = read(*backend, {"pump1.state", "pump2.state"});
    ASSERT_EQ(errors(result), texts(2, "ok"));

    auto const& type = result[0].value().value().data_type();
    EXPECT_EQ(result[1].value().value().data_type(), type);
    auto const structure = dictionary.get_structure(type.structure_id, error);
    EXPECT_EQ(error, v2::io_error());
    EXPECT_EQ(structure.name(), "pump_state");
    using member = v2::io_data_type;
    using member_kind = member::basic_types;
    EXPECT_EQ(structure.get_member("runs"), member::scalar(member_kind::u16));
    EXPECT_EQ(structure.get_member("speed"), member::scalar(member_kind::flt));
    EXPECT_EQ(structure.get_member("starts"), member::scalar(member_kind::u32));
    EXPECT_EQ(structure.get_member("currents"), member::array_of(member_kind::u16));
    EXPECT_EQ(std::distance(structure.begin(), structure.end()), 4);
}

TEST_F(tcp_backend, gives_the_members_of_structures_and_the_elements_of_arrays) {
    running_station const station;
    auto const backend = open(station.port());
    v2::io_structure_dictionary dictionary;
    v2::io_error error;
    backend->register_structures(dictionary, error);
    auto const result = read(*backend, {"pump1.state", "tank.profile", "pumps.run"});
    ASSERT_EQ(errors(result), texts(3, "ok"));

    auto const* const pump = result[0].value().value().get_if<v2::io_object>();
    ASSERT_NE(pump, nullptr);
    EXPECT_EQ(pump->get("runs").as<int>(), 1);
    EXPECT_EQ(pump->get("speed").as<float>(), 1450.0F);
    EXPECT_EQ(pump->get("starts").as<int>(), 1000);
    EXPECT_EQ(pump->get("currents").as<std::vector<int>>(), (std::vector<int>{120, 122, 124}));
    EXPECT_EQ(result[1].value().value().as<std::vector<float>>(),
              (std::vector<float>{2, 1.875, 1.75, 1.625, 1.5, 1.375, 1.25, 1.125}));
    EXPECT_EQ(result[2].value().value().as<std::vector<bool>>(), (std::vector<bool>{true, false}));
}

TEST_F(tcp_backend, structures_wait_for_their_registration_and_others_do_not) {
    running_station const station;
    auto const backend = open(station.port());
    texts const names{"pump1.state", "tank.level", "tank.profile"};
    EXPECT_EQ(errors(read(*backend, names)),
              texts({"modbus:262 structure not registered with the host", "ok", "ok"}));
    v2::io_structure_dictionary dictionary;
    v2::io_error error;
    backend->register_structures(dictionary, error);
    EXPECT_EQ(errors(read(*backend, names)), texts(3, "ok"));
}

TEST_F(tcp_backend, structured_values_and_their_types_outlive_the_backend) {
    running_station const station;
    auto backend = open(station.port());
    v2::io_structure_dictionary dictionary;
    v2::io_error error;
    backend->register_structures(dictionary, error);
    auto const result = read(*backend, {"pump1.state"});
    backend.reset();

    auto const id = result[0].value().value().data_type().structure_id;
    EXPECT_TRUE(dictionary.get_structure(id, error).has_member("speed"));
    EXPECT_EQ(result[0].value().value().get_if<v2::io_object>()->get("starts").as<int>(), 1000);
}

TEST_F(tcp_backend, needs_the_dictionary_for_no_longer_than_the_registration) {
    running_station const station;
    auto const backend = open(station.port());
    v2::io_error error;
    {
        v2::io_structure_dictionary passing;
        backend->register_structures(passing, error);
    }
    auto const first = read(*backend, {"pump1.state"});
    EXPECT_EQ(errors(first), texts(1, "ok"));
    v2::io_structure_dictionary lasting;
    backend->register_structures(lasting, error);
    auto const second = read(*backend, {"pump1.state"});
    auto const id = second[0].value().value().data_type().structure_id;
    EXPECT_NE(first[0].value().value().data_type().structure_id, id);
    EXPECT_EQ(lasting.get_structure(id, error).name(), "pump_state");
}

TEST_F(tcp_backend, tells_apart_what_is_in_no_map_and_what_the_controller_refuses) {
    running_station const station;
    auto const backend = open(station.port());
    auto const result = read(*backend, {"tank.level", "tank2.level", "tank3.level"});
    EXPECT_EQ(errors(result),
              texts({"ok", "modbus:2 illegal data address", "generic:1 not found"}));
    EXPECT_TRUE(result[1].value().empty());
    EXPECT_FALSE(result[1].value().timestamp().has_value());
    EXPECT_EQ(result[1].value().quality(), v2::io_data_value::value_quality());
}

TEST_F(tcp_backend, a_name_with_a_secondary_part_and_a_number_are_in_no_map) {
    running_station const station;
    auto const backend = open(station.port());
    v2::plc_identifier const strange[] = {v2::plc_identifier("tank.level", 1),
                                          v2::plc_identifier(1), v2::plc_identifier()};
    v2::read_result result(strange);
    v2::io_error error;
    backend->read(result, error);
    EXPECT_EQ(errors(result), texts(3, "generic:1 not found"));
}

TEST_F(tcp_backend, reading_nothing_is_no_error) {
    running_station const station;
    auto const backend = open(station.port());
    EXPECT_TRUE(read(*backend, {}).empty());
}

TEST_F(tcp_backend, marks_every_variable_of_a_lost_controller_and_finds_it_again) {
    auto station = std::make_unique<running_station>();
    int const port = station->port();
    auto const backend = open(port);
    EXPECT_EQ(errors(read(*backend, one_of_each_kind)), texts(4, "ok"));

    EXPECT_EQ(station->stop(SIGTERM).status, 0);
    auto const lost = read(*backend, one_of_each_kind);
    EXPECT_EQ(errors(lost), texts(4, "modbus:257 connection lost"));
    EXPECT_TRUE(lost[0].value().empty());
    EXPECT_EQ(errors(read(*backend, one_of_each_kind)), texts(4, "modbus:256 not connected"));

    station = std::make_unique<running_station>(port);
    EXPECT_EQ(errors(read(*backend, one_of_each_kind)), texts(4, "ok"));
}

TEST_F(tcp_backend, a_lost_connection_leaves_other_errors_as_they_are) {
    running_station station;
    auto const backend = open(station.port());
    station.stop(SIGKILL);
    EXPECT_EQ(errors(read(*backend, {"tank.level", "tank3.level"})),
              texts({"modbus:257 connection lost", "generic:1 not found"}));
}

TEST_F(tcp_backend, several_of_them_share_a_controller) {
    running_station const station;
    auto first = open(station.port());
    auto const second = open(station.port());
    EXPECT_EQ(errors(read(*first, one_of_each_kind)), texts(4, "ok"));
    first.reset();
    EXPECT_EQ(errors(read(*second, one_of_each_kind)), texts(4, "ok"));
}

/// Accepts connections by its backlog and never says a word.
class silent_listener {
public:
    silent_listener() : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        auto* const plain = reinterpret_cast<sockaddr*>(&address);
        EXPECT_EQ(::bind(socket_, plain, size), 0);
        EXPECT_EQ(::listen(socket_, 4), 0);
        EXPECT_EQ(::getsockname(socket_, plain, &size), 0);
        port_ = ntohs(address.sin_port);
    }
    silent_listener(silent_listener const&) = delete;
    silent_listener& operator=(silent_listener const&) = delete;
    ~silent_listener() { ::close(socket_); }

    [[nodiscard]] int port() const noexcept { return port_; }

private:
    int socket_;
    int port_ = 0;
};

// One timeout is enough: what comes after it in the same read gets its error without waiting.
TEST_F(tcp_backend, a_controller_that_does_not_answer_costs_one_timeout) {
    silent_listener const listener;
    auto const backend = open(listener.port(), STATION_MAP_PATH, 200);
    auto const before = std::chrono::steady_clock::now();
    EXPECT_EQ(errors(read(*backend, one_of_each_kind)), texts(4, "modbus:258 no answer in time"));
    auto const took = std::chrono::steady_clock::now() - before;
    EXPECT_GE(took, std::chrono::milliseconds(150));
}

TEST_F(tcp_backend, opening_without_a_listener_fails_by_its_category) {
    int port = 0;
    {
        silent_listener const listener;
        port = listener.port();
    }
    example::setting const settings[] = {
        {"map", STATION_MAP_PATH}, {"host", "127.0.0.1"}, {"port", port}};
    try {
        static_cast<void>(module.open(settings));
        FAIL() << "opened";
    } catch (iohost::setup_failure const& failure) {
        EXPECT_EQ(failure.what(),
                  "cannot connect to 127.0.0.1:" + std::to_string(port) + ": Connection refused");
    }
}

} // namespace

#include "support/module_test.hpp"

#include <examples/support/running_station.hpp>
#include <signal.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
using test_support::running_station;

/// What the host hears of a backend, as `warning text`.
class logging : public test_support::module_test {
protected:
    static texts heard(test_support::opened_backend const& opened) {
        static constexpr char const* names[] = {"trace",   "debug", "information",
                                                "warning", "error", "fatal"};
        texts lines;
        for (auto const& record : opened.host().log()) {
            lines.push_back(names[static_cast<unsigned int>(record.level)] + (" " + record.text));
        }
        return lines;
    }

    [[nodiscard]] std::string where() const {
        return "127.0.0.1:" + std::to_string(station_->port());
    }

    std::unique_ptr<running_station> station_ = std::make_unique<running_station>();
    test_support::opened_backend opened_ =
        module.open(settings_for(station_->port(), STATION_MAP_PATH));
};

TEST_F(logging, says_when_it_is_connected_and_closed) {
    EXPECT_EQ(heard(opened_), texts({"information connected to " + where()}));
    opened_.close();
    EXPECT_EQ(heard(opened_), texts({"information connected to " + where(),
                                     "information connection to " + where() + " closed"}));
}

TEST_F(logging, reading_and_writing_without_an_event_says_nothing) {
    static_cast<void>(read(*opened_, {"tank.level", "no"}));
    static_cast<void>(write(*opened_, {{"tank.level", 1}}));
    EXPECT_EQ(heard(opened_).size(), 1U);
}

TEST_F(logging, says_once_that_a_connection_is_lost_and_once_that_it_is_back) {
    auto const place = where();
    int const port = station_->port();
    station_->stop(SIGKILL);
    for (int i = 0; i < 3; ++i) static_cast<void>(read(*opened_, {"tank.level", "pump1.runs"}));
    texts const lost{"information connected to " + place,
                     "warning connection to " + place + " is down: connection lost"};
    EXPECT_EQ(heard(opened_), lost);

    station_ = std::make_unique<running_station>(port);
    for (int i = 0; i < 3; ++i) static_cast<void>(read(*opened_, {"tank.level"}));
    texts back = lost;
    back.push_back("information connected to " + place + " again");
    EXPECT_EQ(heard(opened_), back);
}

TEST_F(logging, a_connection_that_is_down_is_not_closed_once_more) {
    station_->stop(SIGKILL);
    static_cast<void>(read(*opened_, {"tank.level"}));
    opened_.close();
    EXPECT_EQ(heard(opened_).size(), 2U);
}

TEST_F(logging, says_once_what_the_controller_refuses) {
    for (int i = 0; i < 3; ++i) static_cast<void>(read(*opened_, {"tank.level", "tank2.level"}));
    EXPECT_EQ(heard(opened_),
              texts({"information connected to " + where(),
                     "warning the controller refuses to read input registers 40 to 41 "
                     "(tank2.level): illegal data address"}));
}

/// A host that cannot take a record.
class deaf_host final : public v2::host_interface {
public:
    v2::backend_version_info backend_version() const override { return {}; }
    v2::utility::string p_backend_data_directory() const override { return {}; }
    v2::utility::string p_project_directory() const override { return {}; }
    v2::utility::string p_shared_extension_directory() const override { return {}; }
    v2::utility::string p_private_extension_directory() const override { return {}; }
    void push_log_record(v2::log_severity_level, v2::utility::string_view) const override {
        throw std::runtime_error("no room");
    }
    v2::io_data_type lookup_data_type(v2::plc_identifier const&, v2::io_error&) const override {
        return {};
    }
    v2::io_structure_type lookup_structure_type(v2::io_data_type const&,
                                                v2::io_error&) const override {
        return {};
    }
    v2::io_data_type register_structure_type(v2::plc_identifier const&,
                                             v2::io_structure_type,
                                             v2::io_error& error) override {
        error.reset();
        return v2::io_data_type::object(1);
    }
    void replace_structure_type(v2::io_data_type const&,
                                v2::io_structure_type,
                                v2::io_error&) override {}
    void unregister_structure_type(v2::io_data_type const&, v2::io_error&) override {}
    void clear_structure_types() override {}
};

TEST_F(logging, a_host_that_takes_no_records_is_served_all_the_same) {
    deaf_host host;
    v2::utility::string problem;
    v2::io_error error;
    auto* const backend = module->open(settings_for(station_->port(), STATION_MAP_PATH),
                                       v2::backend_query(host), problem, error);
    ASSERT_NE(backend, nullptr) << problem;
    EXPECT_EQ(test_support::summaries(read(*backend, {"tank.level", "tank2.level"})),
              texts({"ok", "modbus:2 illegal data address"}));
    backend->release();
}

} // namespace

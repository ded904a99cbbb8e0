#include <tavi/ioapi/v2/ioapi.hpp>

#include "crowd.hpp"

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <utility>

namespace threads_test {
namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;

config::option port_option() {
    return {"port", "Port", "Where the controller listens", v2::io_value(502)};
}

config::category connection_category() {
    config::option const options[] = {port_option()};
    return {"connection", "How to reach the controller", true, false, options};
}

TEST(threads, option) {
    expect_plain(
        port_option(),
        [](auto const& option) { return option.key() == "port" && option.options().empty(); },
        [](auto& option) {
            config::option::value_option const choices[] = {{"usual", "", v2::io_value(502)}};
            option.options(choices);
        });
}

TEST(threads, option_value_option) {
    expect_plain(
        config::option::value_option{"usual", "Where most listen", v2::io_value(502)},
        [](auto const& choice) {
            return choice.display_name == "usual" && choice.value == v2::io_value(502);
        },
        [](auto& choice) { choice.value = v2::io_value("another"); });
}

TEST(threads, category) {
    expect_plain(
        connection_category(), [](auto const& category) { return category.has_option("port"); },
        [](auto& category) { category.remove_option("port"); });
}

TEST(threads, config_template) {
    config::config_template form;
    form.add_category(connection_category());
    expect_plain(
        form, [](auto const& each) { return each.get_option("port") != nullptr; },
        [](auto& each) { each.remove_category("connection"); });
}

TEST(threads, store) {
    config::store values;
    values.set("port", 502);
    expect_plain(
        values, [](auto const& each) { return each.get("port") == v2::io_value(502); },
        [](auto& each) { each.set("port", 503); });
}

TEST(threads, verification_result) {
    config::verification_result verdict;
    auto const bad = config::verification_result::severity_type::error;
    verdict.add_issue({bad, "no such port", v2::utility::array<v2::utility::string>{"port"}});
    expect_plain(
        verdict,
        [bad](auto const& each) {
            return each.severity_for_option("port") == bad && each.begin() + 1 == each.end();
        },
        [](auto& each) { each.add_issue({}); });
}

TEST(threads, verification_result_issue_type) {
    auto const bad = config::verification_result::severity_type::error;
    expect_plain(
        config::verification_result::issue_type{bad, "no such port", {"port"}},
        [bad](auto const& issue) {
            return issue.severity == bad && issue.message == "no such port" &&
                   issue.options.size() == 1;
        },
        [](auto& issue) { issue.options = {}; });
}

TEST(threads, backend_version_info) {
    expect_plain(
        v2::backend_version_info{1, 20, 3, "beta"},
        [](auto const& version) { return version.minor_version == 20 && version.label == "beta"; },
        [](auto& version) { version.label = "another"; });
}

/// A host that lets its operations be called from several threads, and locks for that itself.
class locking_host final : public v2::host_interface {
public:
    [[nodiscard]] v2::backend_version_info backend_version() const override { return {}; }
    [[nodiscard]] v2::utility::string p_backend_data_directory() const override { return "/data"; }
    [[nodiscard]] v2::utility::string p_project_directory() const override { return "/project"; }
    [[nodiscard]] v2::utility::string p_shared_extension_directory() const override { return ""; }
    [[nodiscard]] v2::utility::string p_private_extension_directory() const override { return ""; }
    void push_log_record(v2::log_severity_level, v2::utility::string_view text) const override {
        std::lock_guard<std::mutex> const held(lock_);
        log_ += text.str().substr(0, 1);
    }
    [[nodiscard]] v2::io_data_type lookup_data_type(v2::plc_identifier const&,
                                                    v2::io_error& error) const override {
        error = v2::io_errc::not_found;
        return {};
    }
    [[nodiscard]] v2::io_structure_type lookup_structure_type(v2::io_data_type const& type,
                                                              v2::io_error& error) const override {
        return structures_.get_structure(type.structure_id, error);
    }
    [[nodiscard]] v2::io_data_type register_structure_type(v2::plc_identifier const&,
                                                           v2::io_structure_type structure,
                                                           v2::io_error& error) override {
        return structures_.add_structure(std::move(structure), error);
    }
    void replace_structure_type(v2::io_data_type const& type,
                                v2::io_structure_type structure,
                                v2::io_error& error) override {
        structures_.replace_structure(type.structure_id, std::move(structure), error);
    }
    void unregister_structure_type(v2::io_data_type const& type, v2::io_error& error) override {
        structures_.remove_structure(type.structure_id, error);
    }
    void clear_structure_types() override {}

    [[nodiscard]] std::size_t records() const {
        std::lock_guard<std::mutex> const held(lock_);
        return log_.size();
    }

private:
    mutable std::mutex lock_;
    mutable std::string log_;
    mutable v2::io_structure_dictionary structures_; // has a lock of its own
};

TEST(threads, host_interface) {
    locking_host host;
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  host.push_log_record(v2::log_severity_level::debug, "x");
                  return host.p_project_directory() == "/project";
              }),
              0);
    EXPECT_EQ(host.records(), static_cast<std::size_t>(crowd_size) * rounds);
}

// The query adds no lock: what is safe is what the host makes so.
TEST(threads, backend_query) {
    locking_host host;
    v2::backend_query const shared(host);
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  v2::backend_query own(shared);
                  v2::io_error error;
                  auto const type =
                      own.register_structure_type(v2::plc_identifier("pump"), {}, error);
                  (void)own.lookup_structure_type(type, error);
                  if (error.failed()) return false;
                  own.unregister_structure_type(type, error);
                  own.log(v2::log_severity_level::debug, "x");
                  return error.ok() && shared.project_directory() == "/project";
              }),
              0);
    EXPECT_EQ(host.records(), static_cast<std::size_t>(crowd_size) * rounds);
}

} // namespace
} // namespace threads_test

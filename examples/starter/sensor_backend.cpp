#include <tavi/ioapi/v2/ioapi.hpp>

#include <backend_module.hpp>
#include <backend_support/form_check.hpp>
#include <backend_support/guard.hpp>
#include <backend_support/subscribe_each.hpp>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

namespace v2 = tavi::ioapi::v2;
namespace config = v2::config;
namespace fs = std::filesystem;
using backend_support::guarded;
using types = v2::io_data_type::basic_types;

enum sensor_errc : int { unreadable = 1, no_number = 2, read_only = 3, unusable = 4 };

// What goes wrong has a number here, and the module's own words.
class sensor_category final : public v2::io_error_category {
public:
    [[nodiscard]] char const* name() const override { return "sensor"; }
    [[nodiscard]] v2::utility::string message(int code) const override {
        switch (code) {
        case unreadable: return "cannot be read";
        case no_number: return "holds no whole number";
        case read_only: return "can only be read";
        case unusable: return "the configuration is unusable";
        default: return "";
        }
    }
};

// Categories are told apart by address: there is one instance.
v2::io_error failure(sensor_errc code) {
    static sensor_category const category;
    return {category, code};
}

config::config_template settings() {
    config::option const options[] = {
        config::option("folder", "Folder", "Where the files of the sensors are", types::string)};
    config::config_template form;
    form.add_category(config::category("sensors", "The sensors", false, false, options));
    return form;
}

// Devices are not opened at all, for some of them that alone is an order; and with O_NONBLOCK
// nothing that has just taken the place of a file makes the host wait.
std::string beginning_of(fs::path const& file) {
    std::error_code error;
    if (!fs::is_regular_file(file, error)) throw v2::io_exception(failure(unreadable));
    int const opened = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (opened < 0) throw v2::io_exception(failure(unreadable));
    char bytes[64];
    auto const size = ::read(opened, bytes, sizeof bytes);
    ::close(opened);
    if (size < 0) throw v2::io_exception(failure(unreadable));
    return {bytes, static_cast<std::size_t>(size)};
}

// A number and perhaps the end of its line.
long long number_in(fs::path const& file) {
    auto const text = beginning_of(file);
    long long number = 0;
    auto const* const end = text.data() + text.size();
    auto const [rest, error] = std::from_chars(text.data(), end, number);
    bool const is_all = rest == end || std::string_view(rest, end) == "\n";
    if (error != std::errc() || !is_all) throw v2::io_exception(failure(no_number));
    return number;
}

// The files of one folder: each is a variable, and its name is that of the variable.
class sensors final : public example::backend {
public:
    explicit sensors(fs::path folder) : folder_(std::move(folder)) {}

    void release() noexcept override { delete this; }

    void browse(v2::plc_identifier const& folder,
                v2::browse_result& result,
                v2::io_error& error) noexcept override {
        guarded(error, [&] {
            if (folder != v2::plc_identifier()) throw v2::io_exception(v2::io_errc::not_found);
            for (auto const& name : names()) {
                v2::browsing::node node;
                node.node_class = v2::browsing::node_class::variable;
                node.identifier = v2::plc_identifier(name);
                node.browse_name = node.identifier;
                node.data_type = v2::io_data_type::scalar(types::i64);
                result.push(std::move(node));
            }
        });
    }

    void read(v2::read_result& result, v2::io_error& error) noexcept override {
        guarded(error, [&] { answer(result); });
    }

    void write(v2::utility::data_view<v2::io_value const>,
               v2::write_result& result,
               v2::io_error& error) noexcept override {
        guarded(error, [&] {
            for (auto& entry : result) {
                bool const is_known = is_variable(entry.identifier());
                entry.set(is_known ? failure(read_only) : v2::io_errc::not_found);
            }
        });
    }

    void subscribe(v2::utility::data_view<v2::plc_identifier const> variables,
                   v2::subscription_result& result,
                   v2::io_error& error) noexcept override {
        auto const look_up = [this](v2::plc_identifier const& variable) {
            backend_support::subscribable found{v2::io_data_type::scalar(types::i64)};
            if (!is_variable(variable)) found.error = v2::io_errc::not_found;
            return found;
        };
        guarded(error, [&] {
            backend_support::subscribe_each(variables, look_up, subscriptions_, result);
        });
    }

    [[nodiscard]] unsigned int poll_interval() const noexcept override { return 1000; }

    void poll(v2::read_result& changes, v2::io_error& error) noexcept override {
        guarded(error, [&] {
            v2::read_result fresh(subscriptions_.variables());
            answer(fresh);
            subscriptions_.changes(fresh, changes);
        });
    }

    void unsubscribe(v2::subscription_id const& id, v2::io_error& error) noexcept override {
        guarded(error, [&] {
            if (!subscriptions_.remove(id)) error = v2::io_errc::not_found;
        });
    }

private:
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> all;
        std::error_code error;
        fs::directory_iterator at(folder_, error);
        if (error) throw v2::io_exception(failure(unreadable));
        for (; !error && at != fs::directory_iterator(); at.increment(error)) {
            if (at->is_regular_file(error)) all.push_back(at->path().filename());
        }
        std::sort(all.begin(), all.end());
        return all;
    }

    [[nodiscard]] bool is_variable(v2::plc_identifier const& variable) const {
        bool const is_text = variable.primary().kind() == v2::plc_identifier_kind::text;
        // A sensor has no members.
        if (!is_text || !variable.secondary().is_none()) return false;
        // Nothing leads out of the folder.
        auto const name = static_cast<std::string_view>(variable.primary().text());
        bool const is_path =
            name.find_first_of(std::string_view("/\0", 2)) != std::string_view::npos;
        std::error_code error;
        return !name.empty() && !is_path && fs::is_regular_file(folder_ / name, error);
    }

    // One variable that fails does not touch the others.
    void answer(v2::read_result& result) const {
        for (auto& entry : result) {
            v2::io_error error;
            guarded(error, [&] {
                if (!is_variable(entry.identifier())) {
                    throw v2::io_exception(v2::io_errc::not_found);
                }
                auto const name = entry.identifier().primary().text().str();
                entry.set(v2::io_data_value(number_in(folder_ / name), v2::io_timestamp::now(),
                                            v2::io_data_value::value_quality::good));
            });
            if (error) entry.set(error);
        }
    }

    fs::path folder_;
    backend_support::subscription_list subscriptions_;
};

class sensor_module final : public example::backend_module {
public:
    void describe(example::module_info& info, v2::io_error& error) const noexcept override {
        guarded(error, [&] {
            info = {"sensor", "sensors that are files with one whole number each", {1, 0, 0, {}}};
        });
    }

    void form(config::config_template& form, v2::io_error& error) const noexcept override {
        guarded(error, [&] { form = settings(); });
    }

    void verify(config::store const& values,
                config::verification_result& verdict,
                v2::io_error& error) const noexcept override {
        guarded(error, [&] {
            verdict = {};
            backend_support::check_values(settings(), values, verdict);
        });
    }

    [[nodiscard]] example::backend* open(config::store const& values,
                                         v2::backend_query,
                                         v2::utility::string& problem,
                                         v2::io_error& error) const noexcept override {
        example::backend* opened = nullptr;
        guarded(error, [&] {
            config::verification_result verdict;
            backend_support::check_values(settings(), values, verdict);
            if (auto const* const issue = backend_support::first_error(verdict)) {
                problem = issue->message;
                throw v2::io_exception(failure(unusable));
            }
            fs::path const folder = values.get("folder").as<std::string>();
            std::error_code missing;
            if (!fs::is_directory(folder, missing)) {
                problem = "there is no folder '" + folder.string() + "'";
                throw v2::io_exception(failure(unreadable));
            }
            opened = std::make_unique<sensors>(folder).release();
        });
        return opened;
    }
};

} // namespace

example::backend_module const* example_backend_module_3() noexcept {
    static sensor_module const instance;
    return &instance;
}

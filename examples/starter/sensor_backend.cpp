#include "sensor_backend.hpp"

#include <tavi/ioapi/v2/ioapi.hpp>

#include <fstream>
#include <string>
#include <string_view>

namespace v2 = tavi::ioapi::v2;

namespace {

enum sensor_errc : int { unreadable = 1, no_number = 2 };

// What goes wrong has a number here, and the module's own words.
class sensor_category final : public v2::io_error_category {
public:
    [[nodiscard]] char const* name() const override { return "sensor"; }
    [[nodiscard]] v2::utility::string message(int code) const override {
        switch (code) {
        case unreadable: return "cannot be read";
        case no_number: return "holds no whole number";
        default: return "";
        }
    }
};

// Categories are told apart by address: there is one instance.
v2::io_error failure(sensor_errc code) {
    static sensor_category const category;
    return {category, code};
}

// A variable is named by the file of its sensor.
void answer(v2::read_result::result_type& entry) {
    v2::plc_identifier_part const& name = entry.identifier().primary();
    if (name.kind() != v2::plc_identifier_kind::text) {
        entry.set(v2::io_errc::not_found);
        return;
    }
    std::ifstream file{std::string(static_cast<std::string_view>(name.text()))};
    if (!file) {
        entry.set(failure(unreadable));
        return;
    }
    long long number = 0;
    if (!(file >> number)) {
        entry.set(failure(no_number));
        return;
    }
    auto const good = v2::io_data_value::value_quality::good;
    entry.set(v2::io_data_value(number, v2::io_timestamp::now(), good));
}

} // namespace

// No exception leaves a module: it may be built by another compiler than its host.
void sensor_backend_read(v2::read_result& result) noexcept {
    for (auto& entry : result) {
        try {
            answer(entry);
        } catch (...) {
            entry.set(v2::io_errc::unhandled_exception);
        }
    }
}

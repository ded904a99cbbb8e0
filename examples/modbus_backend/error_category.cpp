#include "error_category.hpp"

namespace modbus_backend {

namespace {

namespace v2 = tavi::ioapi::v2;

char const* text_of(modbus_errc code) noexcept {
    switch (code) {
    case modbus_errc::illegal_function: return "illegal function";
    case modbus_errc::illegal_data_address: return "illegal data address";
    case modbus_errc::illegal_data_value: return "illegal data value";
    case modbus_errc::device_failure: return "device failure";
    case modbus_errc::acknowledge: return "accepted, but still being worked on";
    case modbus_errc::device_busy: return "device busy";
    case modbus_errc::negative_acknowledge: return "negative acknowledge";
    case modbus_errc::memory_parity_error: return "memory parity error";
    case modbus_errc::gateway_path_unavailable: return "gateway path unavailable";
    case modbus_errc::gateway_target_silent: return "device behind the gateway does not answer";
    case modbus_errc::not_connected: return "not connected";
    case modbus_errc::connection_lost: return "connection lost";
    case modbus_errc::timeout: return "no answer in time";
    case modbus_errc::bad_answer: return "answer not understood";
    case modbus_errc::bad_setting: return "unusable setting";
    case modbus_errc::bad_map: return "unusable map";
    case modbus_errc::read_only: return "read only";
    case modbus_errc::wrong_count: return "wrong count of values";
    case modbus_errc::unfit_text: return "text too long or with a zero byte";
    case modbus_errc::member_subscription: return "a member cannot be subscribed to";
    }
    return "";
}

class category final : public v2::io_error_category {
public:
    [[nodiscard]] char const* name() const override { return "modbus"; }
    [[nodiscard]] v2::utility::string message(int code) const override {
        return text_of(static_cast<modbus_errc>(code));
    }
};

} // namespace

v2::io_error_category const& modbus_error_category() noexcept {
    static category const instance;
    return instance;
}

v2::io_error make_modbus_error(modbus_errc code) noexcept {
    return {modbus_error_category(), static_cast<int>(code)};
}

int exception_in(v2::io_error const& error) noexcept {
    bool const is_ours = &error.category() == &modbus_error_category();
    bool const is_exception = error.code() > 0 && error.code() < 256;
    return is_ours && is_exception ? error.code() : 0;
}

} // namespace modbus_backend

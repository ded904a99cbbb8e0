#include "error_category.hpp"

namespace linux_backend {

namespace {

namespace v2 = tavi::ioapi::v2;

char const* text_of(linux_errc code) noexcept {
    switch (code) {
    case linux_errc::file_absent: return "no such file";
    case linux_errc::file_unreadable: return "file cannot be read";
    case linux_errc::file_malformed: return "file not understood";
    case linux_errc::value_absent: return "value not in the file";
    case linux_errc::read_only: return "variable can only be read";
    case linux_errc::bad_option: return "unusable configuration";
    }
    return "";
}

class category final : public v2::io_error_category {
public:
    [[nodiscard]] char const* name() const override { return "linux"; }
    [[nodiscard]] v2::utility::string message(int code) const override {
        return text_of(static_cast<linux_errc>(code));
    }
};

} // namespace

v2::io_error_category const& linux_error_category() noexcept {
    static category const instance;
    return instance;
}

v2::io_error make_linux_error(linux_errc code) noexcept {
    return {linux_error_category(), static_cast<int>(code)};
}

} // namespace linux_backend

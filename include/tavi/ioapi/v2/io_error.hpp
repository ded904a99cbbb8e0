#pragma once

#include "api.hpp"
#include "detail/data_model.hpp"
#include "io_errc.hpp"
#include "io_error_category.hpp"
#include "io_error_diagnostics.hpp"
#include "utility/string.hpp"

#include <cstddef>
#include <cstdio>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tavi::ioapi::v2 {

/// The outcome of an operation: a code, the category that gives it its meaning, and perhaps
/// diagnostics, which copies share by reference count. A fresh record says success.
///
/// A record is filled in by a call that takes `io_error&`, which clears it first, or stored in a
/// result. Only the code decides success, whatever the category. Nothing here allocates, save
/// `message()` and printing; records are not synchronised.
class io_error {
public:
    /// Success of the generic category.
    io_error() noexcept : category_(&generic_io_error_category()) {}

    /// A code of the generic category.
    io_error(io_errc code) noexcept
        : code_(static_cast<int>(code)), category_(&generic_io_error_category()) {}

    /// A code of a category of your own, which must outlive the record and its copies.
    io_error(io_error_category const& category TAVI_IOAPI_LIFETIMEBOUND, int code) noexcept
        : code_(code), category_(&category) {}

    /// Shares the diagnostics.
    io_error(io_error const& other) noexcept
        : code_(other.code_), category_(other.category_), diagnostics_(other.diagnostics_) {
        if (diagnostics_ != nullptr) diagnostics_->add_ref();
    }

    /// Takes the diagnostics; code and category of the source stay as they are.
    io_error(io_error&& other) noexcept
        : code_(other.code_),
          category_(other.category_),
          diagnostics_(std::exchange(other.diagnostics_, nullptr)) {}

    /// Drops the reference to the diagnostics.
    ~io_error() { drop(); }

    /// Drops the diagnostics held, then shares those of the source. Never assign a record to
    /// itself when it holds the only reference to its diagnostics.
    // Intended: the release comes before the add, unguarded.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
    io_error& operator=(io_error const& other) noexcept {
        code_ = other.code_;
        category_ = other.category_;
        auto* const shared = other.diagnostics_;
        drop();
        diagnostics_ = shared;
        if (diagnostics_ != nullptr) diagnostics_->add_ref();
        return *this;
    }

    /// Drops the diagnostics held, then takes those of the source; code and category of the source
    /// stay as they are. A record assigned to itself ends without diagnostics.
    io_error& operator=(io_error&& other) noexcept {
        code_ = other.code_;
        category_ = other.category_;
        drop();
        diagnostics_ = other.diagnostics_;
        other.diagnostics_ = nullptr;
        return *this;
    }

    /// The number within the category; 0 is success.
    [[nodiscard]] int code() const noexcept { return code_; }
    /// What gives the code its meaning.
    [[nodiscard]] io_error_category const& category() const noexcept { return *category_; }
    /// What the code means, in the words of the category. \throws std::bad_alloc
    [[nodiscard]] utility::string message() const { return category_->message(code_); }

    /// Whether the code is 0.
    [[nodiscard]] bool ok() const noexcept { return code_ == 0; }
    /// Whether the code is not 0.
    [[nodiscard]] bool failed() const noexcept { return code_ != 0; }
    /// True on failure, as for `std::error_code`.
    [[nodiscard]] explicit operator bool() const noexcept { return failed(); }

    /// Whether a list of diagnostics is attached, be it empty.
    [[nodiscard]] bool has_diagnostics() const noexcept { return diagnostics_ != nullptr; }
    /// What the error can tell beyond its code; null where nothing was attached. Shares the list.
    [[nodiscard]] io_error_diagnostics diagnostics() const noexcept {
        return io_error_diagnostics(diagnostics_);
    }
    /// Attach a list, or null, in place of the one held; it is shared.
    void diagnostics(io_error_diagnostics list) noexcept { std::swap(diagnostics_, list.impl_); }

    /// Back to success of the generic category, without diagnostics.
    void reset() noexcept {
        drop();
        code_ = 0;
        category_ = &generic_io_error_category();
        diagnostics_ = nullptr;
    }

    /// Equal by code and category; diagnostics do not count.
    [[nodiscard]] friend bool operator==(io_error const& left, io_error const& right) noexcept {
        return left.code_ == right.code_ && left.category_ == right.category_;
    }
    [[nodiscard]] friend bool operator!=(io_error const& left, io_error const& right) noexcept {
        return !(left == right);
    }

private:
    friend struct detail::layout_of<io_error>;

    void drop() noexcept {
        if (diagnostics_ != nullptr) diagnostics_->release();
    }

    int code_ = 0;
    io_error_category const* category_;
    interfaces::io_error_diagnostics_impl* diagnostics_ = nullptr;
};

/// \return a record of the generic category, without diagnostics.
[[nodiscard]] TAVI_IOAPI_API io_error make_io_error(io_errc code) noexcept;

/// \return the record as a line, with its diagnostics where it has any:
/// `generic:3 incompatible type {index: (u32) 4}`. Arrays and objects among these print on several
/// lines. Compiles where `io_value.hpp` or `ioapi.hpp` is included. \throws std::bad_alloc
template <class Error, std::enable_if_t<std::is_same_v<Error, io_error>, bool> = true>
[[nodiscard]] std::string describe(Error const& error) {
    // Not std::to_string: its table of digits is bound so that a module could never be unloaded.
    char code[16];
    (void)std::snprintf(code, sizeof(code), ":%d", error.code());
    std::string line = error.category().name();
    line += code;
    auto const append = [&line](auto const& text) { line.append(text.data(), text.size()); };
    utility::string const message = error.message();
    if (!message.empty()) {
        line += ' ';
        append(message);
    }
    char const* before = " {";
    for (auto const& entry : error.diagnostics()) {
        line += before;
        append(entry.key);
        line += ": ";
        append(entry.value.printable_string());
        before = ", ";
    }
    if (*before == ',') line += '}';
    return line;
}

/// The same of a code of the generic category.
template <class Code, std::enable_if_t<std::is_same_v<Code, io_errc>, int> = 0>
[[nodiscard]] std::string describe(Code code) {
    return describe(io_error(code));
}

/// Print as `describe` does.
template <class Traits, class Error, std::enable_if_t<std::is_same_v<Error, io_error>, bool> = true>
std::basic_ostream<char, Traits>& operator<<(std::basic_ostream<char, Traits>& out,
                                             Error const& error) {
    std::string const line = describe(error);
    return out << std::basic_string_view<char, Traits>(line.data(), line.size());
}

} // namespace tavi::ioapi::v2

namespace tavi::ioapi::v2::detail {

static_assert(std::is_nothrow_move_constructible_v<io_error>);

template <>
struct layout_of<io_error> {
    static_assert(sizeof(io_error) == by_data_model(12, 24));
    static_assert(offsetof(io_error, code_) == 0);
    static_assert(offsetof(io_error, category_) == sizeof(void*));
    static_assert(offsetof(io_error, diagnostics_) == 2 * sizeof(void*));
};

} // namespace tavi::ioapi::v2::detail

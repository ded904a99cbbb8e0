#pragma once

#include <tavi/ioapi/v2/interfaces/io_error_diagnostics_impl.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Counted diagnostics that tell what was asked of them.

namespace test_support {

/// Counts by itself and writes each call of `add_ref` and `release` to a log. It has no entries.
class logged_diagnostics final : public tavi::ioapi::v2::interfaces::io_error_diagnostics_impl {
public:
    using log = std::vector<std::string>;

    explicit logged_diagnostics(std::shared_ptr<log> calls, std::string label = {})
        : calls_(std::move(calls)), label_(std::move(label)) {}
    ~logged_diagnostics() override { note("destroy"); }

    unsigned int add_ref() override {
        note("add_ref");
        return ++count_;
    }
    unsigned int release() override {
        note("release");
        unsigned int const left = --count_;
        if (left == 0) delete this;
        return left;
    }
    unsigned int size() const override { return 0; }
    bool has(tavi::ioapi::v2::utility::string_view) const override { return false; }
    tavi::ioapi::v2::io_value get(tavi::ioapi::v2::utility::string_view) const override {
        return {};
    }
    iterator_impl* make_iterator() const override { return nullptr; }

    unsigned int count() const { return count_; }

private:
    void note(char const* call) { calls_->push_back(label_ + call); }

    std::shared_ptr<log> calls_;
    std::string label_;
    unsigned int count_ = 1;
};

/// Diagnostics on which the test holds a reference of its own for as long as it lives.
class watched_diagnostics {
public:
    explicit watched_diagnostics(std::string label = {})
        : object_(new logged_diagnostics(calls_, std::move(label))) {}
    ~watched_diagnostics() { object_->release(); }
    watched_diagnostics(watched_diagnostics const&) = delete;
    watched_diagnostics& operator=(watched_diagnostics const&) = delete;

    [[nodiscard]] logged_diagnostics* get() const { return object_; }
    /// The references held beside the test's own.
    [[nodiscard]] unsigned int others() const { return object_->count() - 1; }
    /// The calls since the last asking.
    logged_diagnostics::log take_calls() { return std::exchange(*calls_, {}); }

private:
    std::shared_ptr<logged_diagnostics::log> calls_ = std::make_shared<logged_diagnostics::log>();
    logged_diagnostics* object_;
};

} // namespace test_support

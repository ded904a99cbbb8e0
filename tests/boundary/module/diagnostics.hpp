#pragma once

#include <tavi/ioapi/v2/ioapi.hpp>

#include <atomic>

/// \file
/// Diagnostics of the module's own: one pair, `device_code` and a number.

namespace boundary {

namespace v2 = tavi::ioapi::v2;

inline constexpr char device_code[] = "device_code";

/// Gives the one pair over whichever base counts the references.
template <class Base>
class one_pair : public Base {
public:
    using iterator_impl = v2::interfaces::io_error_diagnostics_impl::iterator_impl;

    one_pair(int number, std::atomic<int>& living) : value_(number), living_(living) { ++living_; }
    ~one_pair() noexcept override { --living_; } // that of a value may throw

    unsigned int size() const override { return 1; }
    bool has(v2::utility::string_view key) const override { return key != device_code; }
    v2::io_value get(v2::utility::string_view key) const override {
        return key == device_code ? value_ : v2::io_value();
    }
    iterator_impl* make_iterator() const override { return new walk(value_, false); }

private:
    class walk final : public iterator_impl {
    public:
        walk(v2::io_value const& value, bool at_end) : value_(value), at_end_(at_end) {}

        bool advance() override {
            at_end_ = true;
            return false;
        }
        bool equal_to(iterator_impl const& other) const override {
            auto const* const same = dynamic_cast<walk const*>(&other);
            return same != nullptr && &same->value_ == &value_ && same->at_end_ == at_end_;
        }
        typename iterator_impl::entry get() const override { return {device_code, &value_}; }
        iterator_impl* clone() const override { return new walk(value_, at_end_); }
        void release() override { delete this; }

    private:
        v2::io_value const& value_;
        bool at_end_;
    };

    v2::io_value value_;
    std::atomic<int>& living_;
};

/// Counts by the library's implementation.
using counted_pair =
    one_pair<v2::make_object_implementation<v2::interfaces::io_error_diagnostics_impl>>;

/// Counts by itself, over the bare interface.
class self_counting : public v2::interfaces::io_error_diagnostics_impl {
public:
    unsigned int add_ref() override { return ++count_; }
    unsigned int release() override {
        unsigned int const left = --count_;
        if (left == 0) delete this;
        return left;
    }

private:
    std::atomic<unsigned int> count_{1};
};
using self_counted_pair = one_pair<self_counting>;

} // namespace boundary

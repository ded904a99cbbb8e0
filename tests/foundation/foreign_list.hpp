#pragma once

#include <tavi/ioapi/v2/interfaces/io_error_diagnostics_impl.hpp>
#include <tavi/ioapi/v2/io_value.hpp>

#include <string>
#include <utility>
#include <vector>

namespace foundation_test {

/// What another module may implement: a list that keeps its own order, tells by `has` whether a key
/// is there and writes down what is asked of it and of its iterators. The test owns it.
class foreign_list final : public tavi::ioapi::v2::interfaces::io_error_diagnostics_impl {
public:
    using pairs = std::vector<std::pair<std::string, tavi::ioapi::v2::io_value>>;

    explicit foreign_list(pairs content) : content_(std::move(content)) {}

    unsigned int add_ref() override { return ++references; }
    unsigned int release() override { return --references; }
    unsigned int size() const override {
        calls.push_back("size");
        return static_cast<unsigned int>(content_.size());
    }
    bool has(tavi::ioapi::v2::utility::string_view key) const override {
        calls.push_back("has " + key.str());
        return find(key) != nullptr;
    }
    tavi::ioapi::v2::io_value get(tavi::ioapi::v2::utility::string_view key) const override {
        calls.push_back("get " + key.str());
        auto const* const found = find(key);
        return found != nullptr ? *found : tavi::ioapi::v2::io_value();
    }
    iterator_impl* make_iterator() const override {
        calls.push_back("make_iterator");
        return new walk(*this, 0);
    }

    /// The calls since the last asking.
    std::vector<std::string> take_calls() { return std::exchange(calls, {}); }

    unsigned int references = 1;
    mutable int walks = 0; ///< iterators that are alive
    mutable std::vector<std::string> calls;

private:
    class walk final : public iterator_impl {
    public:
        walk(foreign_list const& list, std::size_t at) : list_(list), at_(at) { ++list_.walks; }
        ~walk() override { --list_.walks; }

        bool advance() override {
            list_.calls.push_back("advance");
            if (at_ == list_.content_.size()) return false;
            return ++at_ != list_.content_.size();
        }
        bool equal_to(iterator_impl const& other) const override {
            list_.calls.push_back("equal_to");
            auto const* const same = dynamic_cast<walk const*>(&other);
            return same != nullptr && &same->list_ == &list_ && same->at_ == at_;
        }
        entry get() const override {
            auto const& [key, value] = list_.content_[at_];
            return {key, &value};
        }
        iterator_impl* clone() const override {
            list_.calls.push_back("clone");
            return new walk(list_, at_);
        }
        void release() override {
            list_.calls.push_back("release");
            delete this;
        }

    private:
        foreign_list const& list_;
        std::size_t at_;
    };

    tavi::ioapi::v2::io_value const* find(tavi::ioapi::v2::utility::string_view key) const {
        for (auto const& [name, value] : content_) {
            if (name == key) return &value;
        }
        return nullptr;
    }

    pairs content_;
};

} // namespace foundation_test

#include <tavi/ioapi/v2/io_error.hpp>
#include <tavi/ioapi/v2/io_value.hpp>
#include <tavi/ioapi/v2/make_object_implementation.hpp>

#include "support/object_bytes.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace tavi::ioapi::v2;
using diagnostics_interface = interfaces::io_error_diagnostics_impl;

using entries = std::vector<std::pair<std::string, io_value>>;

// What a backend writes to give diagnostics of its own.
class listed_diagnostics : public make_object_implementation<diagnostics_interface> {
public:
    listed_diagnostics(entries list, std::atomic<int>& destroyed)
        : list_(std::move(list)), destroyed_(destroyed) {}
    ~listed_diagnostics() override { ++destroyed_; }

    unsigned int size() const override { return static_cast<unsigned int>(list_.size()); }
    bool has(utility::string_view key) const override { return find(key) != nullptr; }
    io_value get(utility::string_view key) const override {
        io_value const* const found = find(key);
        return found != nullptr ? *found : io_value();
    }
    iterator_impl* make_iterator() const override { return new walk(list_.begin(), list_.end()); }

private:
    class walk final : public iterator_impl {
    public:
        walk(entries::const_iterator current, entries::const_iterator end)
            : current_(current), end_(end) {}

        bool advance() override {
            if (current_ == end_) return false;
            return ++current_ != end_;
        }
        bool equal_to(iterator_impl const& other) const override {
            auto const* const same = dynamic_cast<walk const*>(&other);
            return same != nullptr && same->current_ == current_;
        }
        entry get() const override { return {current_->first, &current_->second}; }
        iterator_impl* clone() const override { return new walk(current_, end_); }
        void release() override { delete this; }

    private:
        entries::const_iterator current_;
        entries::const_iterator end_;
    };

    io_value const* find(utility::string_view key) const {
        for (auto const& [name, value] : list_) {
            if (name == key) return &value;
        }
        return nullptr;
    }

    entries list_;
    std::atomic<int>& destroyed_;
};

class derived_diagnostics final : public listed_diagnostics {
public:
    derived_diagnostics(std::atomic<int>& destroyed, std::atomic<int>& most_derived)
        : listed_diagnostics({}, destroyed), most_derived_(most_derived) {}
    ~derived_diagnostics() override { ++most_derived_; }

private:
    std::atomic<int>& most_derived_;
};

entries two_entries() {
    return {{"address", io_value(7)}, {"operation", io_value("read")}};
}

TEST(CountedObject, StartsWithOneReference) {
    std::atomic<int> destroyed{0};
    interfaces::object* const object = new listed_diagnostics({}, destroyed);
    EXPECT_EQ(object->add_ref(), 2U);
    EXPECT_EQ(object->release(), 1U);
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(object->release(), 0U);
    EXPECT_EQ(destroyed, 1);
}

TEST(CountedObject, IsDestroyedThroughTheMostDerivedDestructor) {
    std::atomic<int> destroyed{0};
    std::atomic<int> most_derived{0};
    interfaces::object* const object = new derived_diagnostics(destroyed, most_derived);
    EXPECT_EQ(object->release(), 0U);
    EXPECT_EQ(most_derived, 1);
    EXPECT_EQ(destroyed, 1);
}

TEST(CountedObject, KeepsItsCountBehindTheTablePointer) {
    std::atomic<int> destroyed{0};
    auto* const object = new listed_diagnostics({}, destroyed);
    auto const count = [&] { return test_support::field_at<unsigned int>(*object, sizeof(void*)); };
    EXPECT_EQ(count(), 1U);
    object->add_ref();
    EXPECT_EQ(count(), 2U);
    object->release();
    EXPECT_EQ(count(), 1U);
    object->release();
    static_assert(sizeof(make_object_implementation<diagnostics_interface>) ==
                  test_support::by_word(8, 16));
}

TEST(CountedObject, IsDestroyedOnceByTwoThreadsThatReleaseIt) {
    for (int round = 0; round < 50; ++round) {
        std::atomic<int> destroyed{0};
        std::atomic<int> zeros{0};
        auto* const object = new listed_diagnostics({}, destroyed);
        object->add_ref();
        std::atomic<int> ready{0};
        auto const drop = [&] {
            ++ready;
            while (ready < 2) std::this_thread::yield();
            if (object->release() == 0) ++zeros;
        };
        std::thread first(drop);
        std::thread second(drop);
        first.join();
        second.join();
        EXPECT_EQ(destroyed, 1);
        EXPECT_EQ(zeros, 1);
    }
}

TEST(CountedObject, LosesNoReferenceBetweenThreads) {
    std::atomic<int> destroyed{0};
    auto* const object = new listed_diagnostics({}, destroyed);
    io_error error(io_errc::no_result);
    error.diagnostics(io_error_diagnostics(object));
    object->release();
    auto const copy_often = [&error] {
        for (int i = 0; i < 500; ++i) {
            io_error const copy(error);
            io_error other;
            other = copy;
        }
    };
    std::thread first(copy_often);
    std::thread second(copy_often);
    first.join();
    second.join();
    EXPECT_EQ(object->add_ref(), 2U);
    EXPECT_EQ(object->release(), 1U);
    EXPECT_EQ(destroyed, 0);
    error.reset();
    EXPECT_EQ(destroyed, 1);
}

class DiagnosticsInterface : public ::testing::Test {
protected:
    ~DiagnosticsInterface() override { diagnostics->release(); }

    std::atomic<int> destroyed{0};
    diagnostics_interface* diagnostics = new listed_diagnostics(two_entries(), destroyed);
};

TEST_F(DiagnosticsInterface, GivesSizeAndValues) {
    EXPECT_EQ(diagnostics->size(), 2U);
    EXPECT_TRUE(diagnostics->has("operation"));
    EXPECT_FALSE(diagnostics->has("missing"));
    EXPECT_EQ(*diagnostics->get("address").get_if<int>(), 7);
    EXPECT_TRUE(diagnostics->get("missing").empty());
}

TEST_F(DiagnosticsInterface, IsWalkedByAnIterator) {
    auto* const iterator = diagnostics->make_iterator();
    EXPECT_EQ(iterator->get().key, "address");
    EXPECT_EQ(*iterator->get().value->get_if<int>(), 7);
    EXPECT_TRUE(iterator->advance());
    EXPECT_EQ(iterator->get().key, "operation");
    EXPECT_FALSE(iterator->advance());
    EXPECT_FALSE(iterator->advance());
    iterator->release();
}

TEST_F(DiagnosticsInterface, HasIteratorsThatAreClonedAndCompared) {
    auto* const iterator = diagnostics->make_iterator();
    auto* const clone = iterator->clone();
    EXPECT_TRUE(iterator->equal_to(*clone));
    clone->advance();
    EXPECT_FALSE(iterator->equal_to(*clone));
    EXPECT_EQ(iterator->get().key, "address");
    clone->release();
    iterator->release();
}

TEST_F(DiagnosticsInterface, GivesAnEntryOfKeyThenValue) {
    auto* const iterator = diagnostics->make_iterator();
    auto const entry = iterator->get();
    EXPECT_EQ(test_support::offset_of(entry, entry.key), 0U);
    EXPECT_EQ(test_support::offset_of(entry, entry.value), sizeof(utility::string_view));
    iterator->release();
}

TEST_F(DiagnosticsInterface, IsReachedThroughAnError) {
    io_error error(io_errc::no_result);
    error.diagnostics(io_error_diagnostics(diagnostics));
    EXPECT_EQ(error.diagnostics().list()->size(), 2U);
    EXPECT_EQ(*error.diagnostics().list()->get("operation").get_if<utility::string>(), "read");
}

} // namespace

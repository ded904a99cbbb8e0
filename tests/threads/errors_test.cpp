#include <tavi/ioapi/v2/ioapi.hpp>

#include "crowd.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <string>

namespace threads_test {
namespace {

namespace v2 = tavi::ioapi::v2;

v2::io_error with_diagnostics() {
    v2::io_error_diagnostics_generic list;
    list.set(v2::diagnostics_key::index, 4);
    v2::io_error error(v2::io_errc::incompatible_type);
    error.diagnostics(list);
    return error;
}

// The copies of all threads share one list, whose count they change at once.
TEST(threads, io_error) {
    expect_plain(
        with_diagnostics(),
        [](auto const& error) { return error.code() == 3 && error.diagnostics().size() == 1; },
        [](auto& error) { error.reset(); });
}

TEST(threads, io_error_category) {
    expect_shared_reads(v2::generic_io_error_category(), [](auto const& category) {
        return category.message(1) == "not found" && std::string(category.name()) == "generic";
    });
}

TEST(threads, io_error_diagnostics) {
    v2::io_error const error = with_diagnostics();
    expect_shared_reads(error.diagnostics(), [](auto const& list) {
        v2::io_error_diagnostics shared;
        shared = list;
        return shared.contains("index") && shared.get("index") == v2::io_value(4);
    });
}

TEST(threads, io_error_diagnostics_const_iterator) {
    v2::io_error_diagnostics_generic list;
    list.set("address", "a text that no small buffer could hold");
    list.set("index", 4);
    expect_plain(
        list.begin(),
        [](auto const& at) {
            v2::io_error_diagnostics::const_iterator::reference const entry = *at;
            return entry.key == "address" && entry.value.as<std::string>().size() == 38;
        },
        [](auto& at) { ++at; });
}

// The interface behind it, whose positions each thread makes for itself.
TEST(threads, io_error_diagnostics_impl) {
    v2::io_error const error = with_diagnostics();
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  auto* const list = error.diagnostics().list();
                  auto* const position = list->make_iterator();
                  auto* const same = position->clone();
                  v2::interfaces::io_error_diagnostics_impl::iterator_impl::entry const entry =
                      same->get();
                  bool const reads_well = entry.key == "index" && *entry.value == v2::io_value(4) &&
                                          position->equal_to(*same) && !same->advance() &&
                                          list->size() == 1 && list->get("index") == *entry.value;
                  same->release();
                  position->release();
                  return reads_well;
              }),
              0);
}

// A copy is the same list: one lock guards them all.
TEST(threads, io_error_diagnostics_generic) {
    v2::io_error_diagnostics_generic const list;
    std::mutex lock;
    EXPECT_EQ(failures_of_crowd([&](int thread, int round) {
                  v2::io_error_diagnostics_generic same(list);
                  std::string const key = "thread " + std::to_string(thread);
                  std::lock_guard<std::mutex> const held(lock);
                  same.set(key, round);
                  return list.get(key) == v2::io_value(round);
              }),
              0);
    EXPECT_EQ(list.size(), static_cast<unsigned int>(crowd_size));
}

TEST(threads, io_exception) {
    expect_plain(
        v2::io_exception(with_diagnostics()),
        [](auto const& thrown) { return thrown.code() == 3 && thrown.what() != nullptr; },
        [](auto& thrown) { thrown = v2::io_exception(v2::io_errc::not_found); });
}

class counted_object final : public v2::interfaces::object {
public:
    static std::atomic<int> alive;
    counted_object() noexcept { ++alive; }
    ~counted_object() override { --alive; }
    unsigned int add_ref() override { return ++count_; }
    unsigned int release() override {
        unsigned int const left = --count_;
        if (left == 0) delete this;
        return left;
    }

private:
    std::atomic<unsigned int> count_{1};
};

std::atomic<int> counted_object::alive{0};

TEST(threads, object) {
    auto* const shared = new counted_object;
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  bool const held_by_two = shared->add_ref() >= 2;
                  return shared->release() >= 1 && held_by_two;
              }),
              0);
    EXPECT_EQ(counted_object::alive, 1);
    EXPECT_EQ(shared->release(), 0U);
    EXPECT_EQ(counted_object::alive, 0);
}

// The library's own count, of a list that each thread makes, shares and drops.
TEST(threads, make_object_implementation) {
    v2::io_error const shared = with_diagnostics();
    EXPECT_EQ(failures_of_crowd([&](int, int) {
                  auto* const list = shared.diagnostics().list();
                  bool const held = list->add_ref() >= 2;
                  return list->release() >= 1 && held;
              }),
              0);
    EXPECT_EQ(shared.diagnostics().size(), 1U);
}

TEST(threads, iokern_allocator_base) {
    using gateway = v2::detail::iokern_allocator_base;
    EXPECT_EQ(failures_of_crowd([](int, int round) {
                  auto const size = static_cast<unsigned int>(round + 1);
                  auto* const block = static_cast<unsigned char*>(gateway::allocate(size, 16));
                  if (block == nullptr) return false;
                  block[0] = block[size - 1] = 7;
                  gateway::deallocate(block, size, 16);
                  return true;
              }),
              0);
}

} // namespace
} // namespace threads_test

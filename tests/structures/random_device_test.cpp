#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>

// Stands before the function of the standard library that opens a random device, for the library
// under test as well.

namespace {

std::atomic<bool> device_is_missing{false};
std::atomic<int> devices_opened{0};

} // namespace

extern "C" void open_random_device(void* device, std::string const& token) __asm__(
    "_ZNSt13random_device7_M_initERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE");

void open_random_device(void* device, std::string const& token) {
    if (device_is_missing) throw std::runtime_error("there is no random device");
    ++devices_opened;
    using open = void (*)(void*, std::string const&);
    static auto const next = reinterpret_cast<open>(::dlsym(
        RTLD_NEXT,
        "_ZNSt13random_device7_M_initERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"));
    EXPECT_EQ(token, "default");
    next(device, token);
}

namespace {

using namespace tavi::ioapi::v2;

class DictionaryWithoutARandomDevice : public ::testing::Test {
protected:
    ~DictionaryWithoutARandomDevice() override { device_is_missing = false; }

    // Each thread draws from the device once: a new one has not yet.
    template <class Action>
    static void on_a_new_thread(Action action) {
        std::thread(action).join();
    }
    void add(io_error& error) { dictionary.add_structure(io_structure_type("pump", {}), error); }

    io_structure_dictionary dictionary;
};

TEST_F(DictionaryWithoutARandomDevice, PassesOnWhatItRaises) {
    device_is_missing = true;
    on_a_new_thread([this] {
        io_error error(io_errc::not_found);
        std::string raised;
        try {
            add(error);
        } catch (std::runtime_error const& failure) {
            raised = failure.what();
        }
        EXPECT_EQ(raised, "there is no random device");
        EXPECT_EQ(error, io_error(io_errc::not_found));
    });
}

TEST_F(DictionaryWithoutARandomDevice, ReleasesItsLockAndTriesAgain) {
    device_is_missing = true;
    on_a_new_thread([this] {
        io_error error;
        EXPECT_THROW(add(error), std::runtime_error);
        dictionary.replace_structure(5, io_structure_type("valve", {}), error);
        EXPECT_TRUE(error.ok());
        device_is_missing = false;
        add(error);
        EXPECT_TRUE(error.ok());
    });
}

TEST_F(DictionaryWithoutARandomDevice, NeedsNoneForOtherOperationsOrAThreadThatHasDrawn) {
    on_a_new_thread([this] {
        io_error error;
        add(error);
        device_is_missing = true;
        add(error);
        EXPECT_TRUE(error.ok());
        EXPECT_EQ(dictionary.get_structure(1, error).name(), "");
    });
}

TEST_F(DictionaryWithoutARandomDevice, IsOpenedOnceForAThreadWhateverTheDictionary) {
    int const before = devices_opened;
    on_a_new_thread([this] {
        io_error error;
        for (int i = 0; i < 3; ++i) add(error);
        io_structure_dictionary other;
        other.add_structure(io_structure_type(), error);
    });
    EXPECT_EQ(devices_opened, before + 1);
    on_a_new_thread([this] {
        io_error error;
        add(error);
    });
    EXPECT_EQ(devices_opened, before + 2);
}

} // namespace

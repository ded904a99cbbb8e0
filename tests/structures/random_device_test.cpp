#include <tavi/ioapi/v2/io_structure_dictionary.hpp>

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>

// Stands before the functions of the standard library that open a random device and draw from it,
// for the library under test as well.

namespace {

std::atomic<bool> device_is_missing{false};
std::atomic<int> devices_opened{0};
constexpr unsigned int random_seed = 0; // whatever the device gives
std::atomic<unsigned int> seed{random_seed};

template <class Function>
Function next_of(char const* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

} // namespace

#define OPEN_RANDOM_DEVICE                                                                         \
    "_ZNSt13random_device7_M_initERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"
#define DRAW_FROM_RANDOM_DEVICE "_ZNSt13random_device9_M_getvalEv"

extern "C" void open_random_device(void* device,
                                   std::string const& token) __asm__(OPEN_RANDOM_DEVICE);
extern "C" unsigned int draw_from_random_device(void* device) __asm__(DRAW_FROM_RANDOM_DEVICE);

void open_random_device(void* device, std::string const& token) {
    if (device_is_missing) throw std::runtime_error("there is no random device");
    ++devices_opened;
    EXPECT_EQ(token, "default");
    static auto const open = next_of<void (*)(void*, std::string const&)>(OPEN_RANDOM_DEVICE);
    open(device, token);
}

unsigned int draw_from_random_device(void* device) {
    static auto const draw = next_of<unsigned int (*)(void*)>(DRAW_FROM_RANDOM_DEVICE);
    return seed != random_seed ? seed.load() : draw(device);
}

namespace {

using namespace tavi::ioapi::v2;

class RandomDeviceOfADictionary : public ::testing::Test {
protected:
    ~RandomDeviceOfADictionary() override {
        device_is_missing = false;
        seed = random_seed;
    }

    // Each thread draws from the device once: a new one has not yet.
    template <class Action>
    static void on_a_new_thread(Action action) {
        std::thread(action).join();
    }
    unsigned long long add(io_error& error) {
        return dictionary.add_structure(io_structure_type("pump", {}), error).structure_id;
    }

    io_structure_dictionary dictionary;
};

TEST_F(RandomDeviceOfADictionary, RaisesWhatGetsOutWhereItCannotBeOpened) {
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

TEST_F(RandomDeviceOfADictionary, LeavesTheLockOpenAndIsTriedAgain) {
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

TEST_F(RandomDeviceOfADictionary, IsNotNeededByAThreadThatHasDrawn) {
    on_a_new_thread([this] {
        io_error error;
        add(error);
        device_is_missing = true;
        add(error);
        EXPECT_TRUE(error.ok());
    });
}

TEST_F(RandomDeviceOfADictionary, IsNotNeededByOtherOperations) {
    device_is_missing = true;
    on_a_new_thread([this] {
        io_error error;
        dictionary.replace_structure(5, io_structure_type("valve", {}), error);
        EXPECT_EQ(dictionary.get_structure(5, error).name(), "valve");
        dictionary.remove_structure(5, error);
        EXPECT_TRUE(error.ok());
    });
}

TEST_F(RandomDeviceOfADictionary, IsOpenedOnceForAThreadWhateverTheDictionary) {
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

TEST_F(RandomDeviceOfADictionary, SeedsTheGeneratorWithOneNumber) {
    seed = 5;
    std::mt19937_64 generator(5U);
    on_a_new_thread([&] {
        io_error error;
        for (int i = 0; i < 3; ++i) EXPECT_EQ(add(error), generator());
    });
}

TEST_F(RandomDeviceOfADictionary, SeedsAGeneratorThatDrawsAgainWhereAnIdIsTaken) {
    seed = 5;
    std::mt19937_64 generator(5U);
    unsigned long long const first = generator();
    unsigned long long const second = generator();
    unsigned long long const third = generator();
    io_error error;
    dictionary.replace_structure(second, io_structure_type("valve", {}), error);
    on_a_new_thread([&] { EXPECT_EQ(add(error), first); });
    // The generator of another thread, seeded alike, draws the same numbers.
    on_a_new_thread([&] { EXPECT_EQ(add(error), third); });
    EXPECT_EQ(dictionary.get_structure(second, error).name(), "valve");
    EXPECT_EQ(dictionary.get_structure(third, error).name(), "pump");
}

} // namespace

#include "harness.hpp"
#include "operations.hpp"
#include "structures.hpp"

#include <atomic>
#include <shared_mutex>

/// \file
/// A structure type out of a dictionary of 64, by one thread and by two, each of which reads its
/// own half. One item is one get; the time is that of the clock divided by the gets of all threads.

namespace bench {

namespace {

constexpr int structure_count = 64;
constexpr int gets = 1024;

/// Readers share it.
class shared_lock {
public:
    void lock() { mutex_.lock_shared(); }
    void unlock() { mutex_.unlock_shared(); }

private:
    std::shared_mutex mutex_;
};

class glib_lock {
public:
    glib_lock() { g_mutex_init(&mutex_); }
    glib_lock(glib_lock const&) = delete;
    glib_lock& operator=(glib_lock const&) = delete;
    ~glib_lock() { g_mutex_clear(&mutex_); }

    void lock() { g_mutex_lock(&mutex_); }
    void unlock() { g_mutex_unlock(&mutex_); }

private:
    GMutex mutex_;
};

/// \tparam Dictionary  one instance serves all threads
template <class Dictionary>
void add_dictionary_peer(char const* name) {
    auto const prepare = [] {
        static Dictionary dictionary(structure_count);
        static std::atomic<int> threads = 0;
        int const first = threads++ % 2 * (structure_count / 2);
        auto const run = [=] {
            for (int i = 0; i < gets; ++i) {
                auto structure = dictionary.get(structure_id(first + i % (structure_count / 2)));
                DoNotOptimize(structure);
            }
        };
        return job{run, [=] {
                       return Dictionary::is_motor(dictionary.get(structure_id(first))) &&
                              Dictionary::is_motor(
                                  dictionary.get(structure_id(structure_count - 1))) &&
                              !Dictionary::is_motor(dictionary.get(structure_id(structure_count)));
                   }};
    };
    add("dictionary_get", name, gets, prepare)->Threads(1)->Threads(2)->UseRealTime();
}

} // namespace

void add_dictionary() {
    add_dictionary_peer<iokern_dictionary>("iokern");
    add_dictionary_peer<locked_map<std::mutex>>("limit");
    add_dictionary_peer<locked_map<shared_lock>>("std_shared_mutex");
    add_dictionary_peer<locked_map<QMutex>>("qt_qmutex");
    add_dictionary_peer<locked_map<Poco::FastMutex>>("poco_fastmutex");
    add_dictionary_peer<locked_map<glib_lock>>("glib_gmutex");
}

} // namespace bench

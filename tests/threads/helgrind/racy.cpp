#include <cstdio>
#include <thread>

/// \file
/// A count that two threads change without a lock. The watch over races must report it, or its
/// silence says nothing.

namespace {

int volatile count = 0;

void add_many() {
    for (int i = 0; i < 1000; ++i) count = count + 1;
}

} // namespace

int main() {
    std::thread other(add_many);
    add_many();
    other.join();
    std::printf("racy: counted to %d\n", static_cast<int>(count));
    return 0;
}

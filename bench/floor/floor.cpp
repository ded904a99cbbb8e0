#include "floor.hpp"

#include <cstring>
#include <utility>

namespace bench::floor {

namespace {

char const category = 0;

[[gnu::noinline, gnu::cold]] void copy_block(value& target, value const& source) {
    auto const length = static_cast<unsigned int>(source.words[1]);
    char* const block = new char[length];
    std::memcpy(block, source.block, length);
    target.words[1] = length;
    target.block = block;
    target.index = source.index;
}

[[gnu::noinline, gnu::cold]] void release_block(value& target) {
    delete[] target.block;
    target.index = 0;
}

[[gnu::noinline, gnu::cold]] void release(void* diagnostics) {
    delete static_cast<int*>(diagnostics);
}

void reset(error& outcome) {
    if (outcome.diagnostics != nullptr) release(outcome.diagnostics);
    outcome = {0, &category, nullptr};
}

template <class T, class S>
bool whole(S source, T& target) {
    if (!std::in_range<T>(source)) return false;
    target = static_cast<T>(source);
    return true;
}

template <class T>
bool whole(double source, T& target) {
    if (!(source >= -9007199254740991.0 && source <= 9007199254740991.0)) return false;
    auto const number = static_cast<long long>(source);
    if (static_cast<double>(number) != source) return false;
    return whole(number, target);
}

template <class T>
T convert(value const& source, error& outcome) {
    reset(outcome);
    T target{};
    bool fits = false;
    switch (source.index) {
    case 1: fits = whole(source.i32, target); break;
    case 2: fits = whole(source.i64, target); break;
    case 3: fits = whole(source.u8, target); break;
    case 4: fits = whole(source.dbl, target); break;
    default: break;
    }
    if (!fits) outcome.code = 4;
    return target;
}

} // namespace

void copy(value& target, value const& source) {
    if (source.index > 4) return copy_block(target, source);
    std::memcpy(static_cast<void*>(&target), &source, sizeof(value));
}

void move(value& target, value& source) {
    copy(target, source);
    std::memset(static_cast<void*>(&source), 0, sizeof(value));
}

long long to_i64(value const& source, error& outcome) {
    return convert<long long>(source, outcome);
}

unsigned char to_u8(value const& source, error& outcome) {
    return convert<unsigned char>(source, outcome);
}

int to_i32(value const& source, error& outcome) {
    return convert<int>(source, outcome);
}

void make(data_value& target, value& source, long long stamp, int quality) {
    target = {source, stamp, quality};
    source.index = 0;
}

void store(entry* entries, unsigned int index, data_value& source) {
    entry& target = entries[index];
    if (target.answer.held.index > 4) release_block(target.answer.held);
    target.answer = source;
    source.held.index = 0;
    reset(target.outcome);
}

} // namespace bench::floor

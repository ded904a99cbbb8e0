#include "toy.hpp"

namespace toy {

namespace {

int calls;

} // namespace

int first_digit(char const* text) {
    ++calls;
    if (text == nullptr) return 0;
    return *text - '0';
}

int next(int number) {
    return number + 1;
}

} // namespace toy


#include <cstdlib>
#include <string_view>

// What the judge of coverage must tell apart. Each word that the program is given runs one part.

namespace {

template <class T>
int kind_of(T value) {
    if constexpr (sizeof(T) == 1) {
        return value > 0 ? 1 : 2; // taken in one instantiation
    } else {
        return value > 0 ? 3 : 4; // and in the other one
    }
}

template <bool is_long>
int length() {
    return is_long ? 20 : 10; // a constant is no branch
}

int last_words() {
    return 5; // runs in a process that aborts
}

void die() {
    static_cast<void>(last_words());
    std::abort();
}

int direction(int value) {
    return value > 0 ? 6 : 7;
}

int second_condition(bool first, bool second) {
    return first && second ? 8 : 9;
}

int result(std::string_view word) {
    if (word == "large") return kind_of(char{1}) + kind_of(1) + length<true>() + direction(1);
    if (word == "small") return kind_of(char{0}) + kind_of(0) + length<false>() + direction(0);
    if (word == "huge") return 2000; // one direction of its branch
    if (word == "dies") die();
    if (word == "met") {
        return second_condition(false, false) + second_condition(true, false) +
               second_condition(true, true);
    }
    return 0;
}

} // namespace

int main(int count, char** words) {
    int sum = 0;
    for (int i = 1; i < count; ++i) sum += result(words[i]);
    return static_cast<int>(sum < 0);
}

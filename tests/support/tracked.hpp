#pragma once

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Elements for containers that tell what happens to them and fail on demand.

namespace test_support {

struct element_failure : std::runtime_error {
    explicit element_failure(int element) : std::runtime_error("element"), id(element) {}
    int id;
};

/// What all elements of one class share. Reset by each test.
struct element_history {
    std::vector<std::string> calls;
    int alive = 0;
    int constructions_left = -1; ///< the one that makes it 0 fails; below 0: none fails
    int assignments_left = -1;

    static void spend(int& left, int element) {
        if (left > 0 && --left == 0) throw element_failure(element);
    }
};

/// An element whose destructor throws where `throws` is set, if `CanThrow`.
template <bool CanThrow>
class tracked_element {
public:
    inline static element_history history;

    tracked_element() : tracked_element(0, "make") {}
    tracked_element(int number) : tracked_element(number, "make") {}
    tracked_element(tracked_element const& other) : tracked_element(other.id, "copy") {
        throws = other.throws;
    }
    tracked_element(tracked_element&& other) : tracked_element(other.id, "move") {
        throws = std::exchange(other.throws, false);
    }
    tracked_element& operator=(tracked_element const& other) {
        element_history::spend(history.assignments_left, other.id);
        history.calls.push_back("assign " + std::to_string(other.id));
        id = other.id;
        return *this;
    }
    tracked_element& operator=(tracked_element&& other) {
        history.calls.push_back("take " + std::to_string(other.id));
        id = other.id;
        return *this;
    }
    ~tracked_element() noexcept(!CanThrow) {
        --history.alive;
        history.calls.push_back("destroy " + std::to_string(id));
        if constexpr (CanThrow) {
            if (throws) throw element_failure(id);
        }
    }

    int id;
    bool throws = false;

private:
    tracked_element(int number, char const* call) : id(number) {
        element_history::spend(history.constructions_left, number);
        ++history.alive;
        history.calls.push_back(std::string(call) + ' ' + std::to_string(number));
    }
};

using tracked = tracked_element<false>;
using fragile = tracked_element<true>;

} // namespace test_support

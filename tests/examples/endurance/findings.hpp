#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace endurance {

/// What did not hold in a long run: the count of it, and the first few in words.
class findings {
public:
    void add(std::string what) {
        if (++count_ <= most_words_) words_.push_back(std::move(what));
    }

    [[nodiscard]] unsigned long long count() const noexcept { return count_; }
    [[nodiscard]] std::vector<std::string> const& words() const noexcept { return words_; }

private:
    static constexpr unsigned long long most_words_ = 10;

    unsigned long long count_ = 0;
    std::vector<std::string> words_;
};

} // namespace endurance

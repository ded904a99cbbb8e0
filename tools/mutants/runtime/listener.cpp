#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

// Linked into every test program: writes for each test case which places of the mutated library it
// reached. The file IOKERN_MUTANTS_REACHED holds a byte for each place, shared with the library;
// beside it, with ".cases" behind its name, comes a line for each case: its name, milliseconds of
// the processor and the numbers of the places, between tabs. The first line, without a name, is for
// what was reached before the first case.

namespace {

class reached_places : public ::testing::EmptyTestEventListener {
public:
    reached_places(std::string const& name, int file) {
        struct stat about {};
        if (::fstat(file, &about) != 0) std::abort();
        size_ = static_cast<std::size_t>(about.st_size);
        void* const shared = ::mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        if (shared == MAP_FAILED) std::abort();
        places_ = static_cast<unsigned char*>(shared);
        cases_ = std::fopen((name + ".cases").c_str(), "we");
        if (cases_ == nullptr) std::abort();
    }

    void OnTestProgramStart(::testing::UnitTest const&) override { write(""); }

    void OnTestEnd(::testing::TestInfo const& test) override {
        write(std::string(test.test_suite_name()) + '.' + test.name());
    }

private:
    void write(std::string const& name) {
        std::clock_t const now = std::clock();
        std::fprintf(cases_, "%s\t%ld\t", name.c_str(), (now - last_) * 1000 / CLOCKS_PER_SEC);
        last_ = now;
        for (std::size_t place = 0; place < size_; ++place) {
            if (places_[place] != 0) std::fprintf(cases_, "%zu ", place);
        }
        std::fputc('\n', cases_);
        std::fflush(cases_); // a child that is forked would write it once more
        std::fill_n(places_, size_, static_cast<unsigned char>(0));
    }

    unsigned char* places_ = nullptr;
    std::size_t size_ = 0;
    std::FILE* cases_ = nullptr;
    std::clock_t last_ = 0;
};

// A death test may run its program once more: what that reaches counts for the case that runs it.
bool const is_listening = [] {
    char const* const name = std::getenv("IOKERN_MUTANTS_REACHED");
    if (name == nullptr || std::getenv("IOKERN_MUTANTS_LISTENING") != nullptr) return false;
    if (::setenv("IOKERN_MUTANTS_LISTENING", "1", 1) != 0) std::abort();
    int const file = ::open(name, O_RDWR | O_CLOEXEC);
    if (file < 0) std::abort();
    ::testing::UnitTest::GetInstance()->listeners().Append(new reached_places(name, file));
    ::close(file);
    return true;
}();

} // namespace

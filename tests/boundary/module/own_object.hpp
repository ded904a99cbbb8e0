#pragma once

#include <tavi/ioapi/v2/interfaces/object.hpp>

#include <atomic>

namespace boundary {

/// A counted object of the module's own.
class own_object final : public tavi::ioapi::v2::interfaces::object {
public:
    own_object() { ++living; }
    ~own_object() override { --living; }

    unsigned int add_ref() override { return ++count_; }
    unsigned int release() override {
        unsigned int const left = --count_;
        if (left == 0) delete this;
        return left;
    }

    static std::atomic<int> living;

private:
    std::atomic<unsigned int> count_{1};
};

} // namespace boundary

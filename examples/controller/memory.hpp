#pragma once

#include "station.hpp"

#include <memory>
#include <string>

namespace station {

/// The image that a station answers from. What is written to it is in the system's hands at once:
/// where there is a file, it outlasts the process, however that ends.
class memory {
public:
    /// \param file  made where there is none; shows the station at tick 0 at first. An empty name
    ///     for a memory without a file \throws std::runtime_error  also for the file of another
    ///     kind
    explicit memory(std::string const& file = {});

    [[nodiscard]] image& operator*() const noexcept { return *image_; }
    [[nodiscard]] image* operator->() const noexcept { return image_.get(); }

private:
    struct unmap {
        void operator()(image* mapped) const noexcept;
    };

    std::unique_ptr<image, unmap> image_;
};

} // namespace station

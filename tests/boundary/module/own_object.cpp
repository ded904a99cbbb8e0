#include "own_object.hpp"

namespace boundary {

std::atomic<int> own_object::living{0};

} // namespace boundary

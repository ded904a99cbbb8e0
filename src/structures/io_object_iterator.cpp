#include "io_object_impl.hpp"
#include "member_iterator.hpp"

namespace tavi::ioapi::v2 {

io_object::const_iterator::impl::impl(io_object_impl::members::const_iterator position)
    : position_(position) {}

io_object::const_iterator::value_type io_object::const_iterator::impl::get() const {
    return {position_->first, position_->second};
}

void io_object::const_iterator::impl::increment() {
    ++position_;
}

bool io_object::const_iterator::impl::equal(impl const& other) const noexcept {
    return position_ == other.position_;
}

TAVI_IOAPI_DEFINE_MEMBER_ITERATOR(io_object::const_iterator);

} // namespace tavi::ioapi::v2

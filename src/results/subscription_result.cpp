#include "subscription_result_impl.hpp"

#include <utility>

namespace tavi::ioapi::v2 {

// --- the map

subscription_result::variable_result const subscription_result::impl::S_resultNotFound{};

void subscription_result::impl::store(plc_identifier const& identifier, variable_result result) {
    auto const place = variables_.lower_bound(identifier);
    if (place != variables_.end() && !(identifier < place->first)) {
        place->second = std::move(result);
    } else {
        variables_.emplace_hint(place, identifier, std::move(result));
    }
}

void subscription_result::impl::set(plc_identifier const& identifier,
                                    io_data_type data_type,
                                    unsigned int aux_value,
                                    subscription_id id) {
    store(identifier, {identifier, data_type, io_error(), aux_value, std::move(id)});
}

void subscription_result::impl::set(plc_identifier const& identifier, io_error error) {
    store(identifier, {identifier, io_data_type(), std::move(error), 0, subscription_id()});
}

unsigned int subscription_result::impl::remove(plc_identifier const& identifier) {
    return static_cast<unsigned int>(variables_.erase(identifier));
}

bool subscription_result::impl::has(plc_identifier const& identifier) const {
    return variables_.find(identifier) != variables_.end();
}

subscription_result::variable_result const& subscription_result::impl::get(
    plc_identifier const& identifier) const {
    auto const place = variables_.find(identifier);
    return place != variables_.end() ? place->second : S_resultNotFound;
}

subscription_result::impl::variables::const_iterator subscription_result::impl::begin() const {
    return variables_.begin();
}

subscription_result::impl::variables::const_iterator subscription_result::impl::end() const {
    return variables_.end();
}

// --- the handle

subscription_result::subscription_result() : impl_(new impl) {}

subscription_result::~subscription_result() {
    delete impl_;
}

void subscription_result::set(plc_identifier const& identifier,
                              io_data_type data_type,
                              unsigned int aux_value,
                              subscription_id id) {
    impl_->set(identifier, data_type, aux_value, std::move(id));
}

void subscription_result::set(plc_identifier const& identifier, io_error error) {
    impl_->set(identifier, std::move(error));
}

unsigned int subscription_result::remove(plc_identifier const& identifier) {
    return impl_->remove(identifier);
}

bool subscription_result::has(plc_identifier const& identifier) const {
    return impl_->has(identifier);
}

subscription_result::variable_result const& subscription_result::get(
    plc_identifier const& identifier) const {
    return impl_->get(identifier);
}

subscription_result::variable_result const& subscription_result::operator[](
    plc_identifier const& identifier) const {
    return impl_->get(identifier);
}

subscription_result::variable_result const& subscription_result::not_found() noexcept {
    return impl::S_resultNotFound;
}

subscription_result::const_iterator subscription_result::begin() const {
    return const_iterator(new const_iterator::impl(impl_->begin()));
}

subscription_result::const_iterator subscription_result::end() const {
    return const_iterator(new const_iterator::impl(impl_->end()));
}

} // namespace tavi::ioapi::v2

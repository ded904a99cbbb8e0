#pragma once

#include "behaviour.hpp"
#include "plant.hpp"

#include <backend_module.hpp>

#include <map>

namespace test_backend {

namespace v2 = tavi::ioapi::v2;

/// A connection to a plant of its own. It tells the log what is written, and in the end how many
/// subscriptions were left.
class connection final : public example::backend {
public:
    connection(behaviour how, v2::backend_query host);

    void release() noexcept override;
    void browse(v2::plc_identifier const& folder,
                v2::browse_result& result,
                v2::io_error& error) noexcept override;
    void read(v2::read_result& result, v2::io_error& error) noexcept override;
    void write(v2::utility::data_view<v2::io_value const> values,
               v2::write_result& result,
               v2::io_error& error) noexcept override;
    void subscribe(v2::utility::data_view<v2::plc_identifier const> variables,
                   v2::subscription_result& result,
                   v2::io_error& error) noexcept override;
    [[nodiscard]] unsigned int poll_interval() const noexcept override;
    void poll(v2::read_result& changes, v2::io_error& error) noexcept override;
    void unsubscribe(v2::subscription_id const& id, v2::io_error& error) noexcept override;

private:
    struct subscription {
        v2::plc_identifier variable;
        unsigned long long seen_version = 0;
        bool ended = false;
    };

    ~connection() = default;

    void answer(v2::read_result::result_type& entry);
    void answer_member(v2::read_result::result_type& entry, variable const& known);
    [[nodiscard]] v2::io_error unknown() const;
    [[nodiscard]] v2::io_error write_one(v2::plc_identifier const& target,
                                         v2::io_value const& value);
    [[nodiscard]] v2::io_error write_member(variable& known,
                                            v2::plc_identifier const& target,
                                            v2::io_value const& value);
    void hang(char const* where) const;
    [[nodiscard]] bool takes_other_shape(v2::io_value const& value) const;
    [[nodiscard]] v2::io_value converted_object(variable const& known,
                                                v2::io_value const& value,
                                                v2::io_error& error) const;
    [[nodiscard]] v2::io_value converted(variable const& known,
                                         v2::io_value const& value,
                                         v2::io_error& error) const;
    void store(variable& known, v2::io_value value);
    void subscribe_one(v2::plc_identifier const& wanted, v2::subscription_result& result);
    [[nodiscard]] bool has_news(subscription& each);

    behaviour how_;
    v2::backend_query host_;
    plant plant_;
    std::map<unsigned long long, subscription> subscriptions_;
    unsigned long long next_id_ = 1;
    unsigned long long polls_ = 0;
};

} // namespace test_backend

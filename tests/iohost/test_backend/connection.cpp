#include "connection.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <list>
#include <memory>
#include <set>
#include <sstream>
#include <thread>
#include <utility>
#include <vector>

namespace test_backend {

namespace {

using quality = v2::io_data_value::value_quality;

void leak(behaviour const& how) {
    static std::vector<std::unique_ptr<std::array<char, 4096>>> kept;
    static std::list<std::unique_ptr<char>> kept_words;
    if (how.has("leaks_memory")) {
        kept.push_back(std::make_unique<std::array<char, 4096>>());
        kept.back()->fill('x');
    }
    if (how.has("leaks_a_little")) kept_words.push_back(std::make_unique<char>('x'));
    if (how.has("leaks_descriptor")) (void)::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (how.has("leaks_thread")) {
        std::thread([] {
            for (;;) ::pause();
        }).detach();
    }
}

std::string text_of(v2::plc_identifier const& identifier) {
    std::ostringstream text;
    text << identifier;
    return text.str();
}

} // namespace

connection::connection(behaviour how, v2::backend_query host)
    : how_(std::move(how)), host_(host), plant_(how_, host) {
    leak(how_);
    host_.log(how_.has("odd_log_record") ? static_cast<v2::log_severity_level>(9)
                                         : v2::log_severity_level::information,
              "opened");
    if (how_.has("open_hangs")) hang("open");
    if (how_.mode == "busy") host_.log(v2::log_severity_level::warning, "busy\x1b today");
}

/// As a controller that never answers.
void connection::hang(char const* where) const {
    host_.log(v2::log_severity_level::warning, std::string("hangs in ") + where);
    for (;;) ::pause();
}

void connection::release() noexcept {
    if (how_.has("release_hangs")) hang("release");
    host_.log(v2::log_severity_level::information,
              "released with " + std::to_string(subscriptions_.size()) + " subscriptions");
    delete this;
}

void connection::browse(v2::plc_identifier const& folder,
                        v2::browse_result& result,
                        v2::io_error& error) noexcept {
    if (!how_.has("keeps_old_error")) error.reset();
    if (how_.has("browse_replaces")) result.clear();
    if (how_.has("browse_fails")) {
        error = v2::io_error(device_category(), 7);
        return;
    }
    bool const found = plant_.browse(folder, result);
    if (!found && !how_.has("browses_anything")) error = v2::io_errc::not_found;
}

v2::io_error connection::unknown() const {
    if (how_.has("wordless_errors")) return {device_category(), 8};
    return v2::io_errc::not_found;
}

void connection::answer_member(v2::read_result::result_type& entry, variable const& known) {
    auto const* const object = known.value.value().get_if<v2::io_object>();
    auto const member = entry.identifier().secondary().text();
    if (object != nullptr && object->has(member)) {
        entry.set(v2::io_data_value(object->get(member), known.value.timestamp(), quality::good));
    } else if (how_.has("invents_members")) {
        entry.set(v2::io_data_value(0, quality::good));
    } else {
        entry.set(v2::io_errc::invalid_property);
    }
}

void connection::answer(v2::read_result::result_type& entry) {
    auto const* const known = plant_.find(entry.identifier());
    if (known == nullptr) {
        if (how_.has("invents_variables")) {
            entry.set(v2::io_data_value(0, quality::good));
        } else {
            entry.set(unknown());
        }
    } else if (!entry.identifier().secondary().is_none()) {
        answer_member(entry, *known);
    } else if (known->error) {
        entry.set(known->error);
    } else {
        entry.set(known->value);
    }
}

void connection::read(v2::read_result& result, v2::io_error& error) noexcept {
    error.reset();
    if (how_.has("read_fails") || (how_.has("reads_of_nothing_fail") && result.empty())) {
        error = v2::io_error(device_category(), 7);
        return;
    }
    std::set<std::string> done;
    for (auto& entry : result) {
        bool const is_unknown = plant_.find(entry.identifier()) == nullptr;
        if (how_.has("keeps_no_result") && is_unknown && result.size() > 1) continue;
        if (how_.has("silent_variable") && entry.identifier() == v2::plc_identifier("tank.count")) {
            continue;
        }
        answer(entry);
        if (how_.has("forgets_the_repeated") && !done.insert(text_of(entry.identifier())).second) {
            entry.set(v2::io_errc::not_found);
        }
    }
}

bool connection::takes_other_shape(v2::io_value const& value) const {
    if (value.get_if<v2::io_object>() != nullptr) return how_.has("takes_objects_for_scalars");
    return how_.has(value.is_array() ? "takes_arrays_for_scalars" : "takes_scalars_for_arrays");
}

/// The members that are given, in what the variable holds.
v2::io_value connection::converted_object(variable const& known,
                                          v2::io_value const& value,
                                          v2::io_error& error) const {
    v2::io_object changed(*known.value.value().get_if<v2::io_object>());
    auto const* const given = value.get_if<v2::io_object>();
    if (given == nullptr) {
        error = v2::io_errc::incompatible_type;
        return changed;
    }
    for (auto const& [name, member] : *given) {
        if (changed.has(name)) {
            changed.set(name, member, error);
        } else if (!how_.has("takes_any_object")) {
            error = v2::io_errc::invalid_property;
        }
        if (error) break;
    }
    return changed;
}

v2::io_value connection::converted(variable const& known,
                                   v2::io_value const& value,
                                   v2::io_error& error) const {
    auto const& type = known.value.value().data_type();
    bool const is_object = type.basic_type == v2::io_data_type::basic_types::object;
    if (value.empty()) {
        if (!how_.has("takes_the_empty_value")) error = v2::io_errc::incompatible_type;
        v2::io_error ignored;
        return is_object ? known.value.value() : value.to_variant(type, ignored);
    }
    if (is_object) return converted_object(known, value, error);
    if (value.is_array() != type.is_array() || value.get_if<v2::io_object>() != nullptr) {
        if (!takes_other_shape(value)) error = v2::io_errc::incompatible_type;
        v2::io_error ignored;
        return v2::io_value().to_variant(type, ignored);
    }
    auto fit = value.to_variant(type, error);
    if (error == v2::io_error(v2::io_errc::incompatible_type) &&
        how_.has("takes_texts_for_numbers")) {
        error.reset();
    }
    if (error == v2::io_error(v2::io_errc::value_too_large) && how_.has("cuts_numbers")) {
        error.reset();
    }
    return fit;
}

void connection::store(variable& known, v2::io_value value) {
    host_.log(v2::log_severity_level::information,
              "write " + text_of(known.identifier) + " = " + value.printable_string().str());
    if (how_.has("loses_writes")) return;
    known.value.value(std::move(value), known.value.timestamp(), quality::good);
    ++known.version;
}

v2::io_error connection::write_member(variable& known,
                                      v2::plc_identifier const& target,
                                      v2::io_value const& value) {
    auto const* const object = known.value.value().get_if<v2::io_object>();
    auto const member = target.secondary().text();
    if (object == nullptr || !object->has(member)) {
        return how_.has("takes_any_member") ? v2::io_errc::success : v2::io_errc::invalid_property;
    }
    v2::io_object changed(*object);
    v2::io_error error;
    changed.set(member, value, error);
    if (!error) store(known, changed);
    return error;
}

v2::io_error connection::write_one(v2::plc_identifier const& target, v2::io_value const& value) {
    auto* const known = plant_.find(target);
    if (known == nullptr) {
        return how_.has("accepts_unknown_writes") ? v2::io_error() : unknown();
    }
    if (!known->writable) return v2::io_errc::not_supported;
    if (!target.secondary().is_none()) return write_member(*known, target, value);
    v2::io_error error;
    auto fit = converted(*known, value, error);
    if (!error || how_.has("changes_what_it_refuses")) store(*known, std::move(fit));
    return error;
}

void connection::write(v2::utility::data_view<v2::io_value const> values,
                       v2::write_result& result,
                       v2::io_error& error) noexcept {
    error.reset();
    if (how_.has("writes_of_nothing_fail") && result.empty()) {
        error = v2::io_error(device_category(), 7);
        return;
    }
    bool const same = result.size() == 2 && result[0].identifier() == result[1].identifier() &&
                      plant_.find(result[0].identifier()) != nullptr;
    for (unsigned int i = 0; i < result.size(); ++i) {
        if (i == 1 && same && how_.has("writes_the_repeated_once")) continue;
        auto outcome = write_one(result[i].identifier(), values[i]);
        bool const keeps = how_.has("keeps_no_outcome") && !outcome;
        if (!keeps) result.set(i, std::move(outcome));
    }
}

void connection::subscribe_one(v2::plc_identifier const& wanted, v2::subscription_result& result) {
    auto const* const known = plant_.find(wanted);
    if (known == nullptr && !how_.has("subscribes_to_anything")) {
        result.set(wanted, unknown());
        return;
    }
    if (!wanted.secondary().is_none() && !how_.has("subscribes_to_members")) {
        result.set(wanted, v2::io_errc::not_supported);
        return;
    }
    auto type = known != nullptr ? plant_.declared_type(*known) : v2::io_data_type();
    if (how_.has("lies_about_subscribed_types"))
        type.basic_type = v2::io_data_type::basic_types::u64;
    subscriptions_[next_id_] = {wanted, 0, false};
    result.set(wanted, type, 0, v2::subscription_id::from_number(next_id_));
    ++next_id_;
}

void connection::subscribe(v2::utility::data_view<v2::plc_identifier const> variables,
                           v2::subscription_result& result,
                           v2::io_error& error) noexcept {
    error.reset();
    bool const same = variables.size() == 2 && variables[0] == variables[1];
    if ((how_.has("subscribes_of_nothing_fail") && variables.empty()) ||
        (how_.has("repeats_fail") && same)) {
        error = v2::io_error(device_category(), 7);
        return;
    }
    for (auto const& wanted : variables) subscribe_one(wanted, result);
    if (how_.has("silent_first_poll")) {
        for (auto& [id, each] : subscriptions_) each.seen_version = 1;
    }
}

unsigned int connection::poll_interval() const noexcept {
    return how_.has("no_interval") ? 0 : how_.poll_interval;
}

bool connection::has_news(subscription& each) {
    auto const* const known = plant_.find(each.variable);
    if (known == nullptr) return false;
    if (how_.has("delivers_the_unsubscribed") && each.ended) return true;
    return std::exchange(each.seen_version, known->version) != known->version;
}

void connection::poll(v2::read_result& changes, v2::io_error& error) noexcept {
    error.reset();
    if (!how_.has("poll_appends")) changes.resize(0);
    if (how_.has("poll_hangs") && polls_ == 1) hang("poll");
    if (++polls_ > 1 && how_.has("poll_fails")) {
        error = v2::io_error(device_category(), 7);
        return;
    }
    if (polls_ > 1) plant_.tick();
    std::vector<v2::plc_identifier> news;
    for (auto& [id, each] : subscriptions_) {
        bool const fresh = has_news(each);
        if (fresh && std::find(news.begin(), news.end(), each.variable) == news.end()) {
            news.push_back(each.variable);
        }
    }
    std::vector<v2::plc_identifier> all;
    for (auto const& entry : changes) all.push_back(entry.identifier());
    all.insert(all.end(), news.begin(), news.end());
    changes.assign(all);
    for (auto& entry : changes) answer(entry);
}

void connection::unsubscribe(v2::subscription_id const& id, v2::io_error& error) noexcept {
    error.reset();
    auto const found = subscriptions_.find(id.number());
    if (found == subscriptions_.end() || found->second.ended) {
        if (!how_.has("forgives_unknown_ids")) error = v2::io_errc::not_found;
    } else if (how_.has("delivers_the_unsubscribed")) {
        found->second.ended = true;
    } else if (how_.has("unsubscribes_all")) {
        auto const variable = found->second.variable;
        std::erase_if(subscriptions_,
                      [&](auto const& each) { return each.second.variable == variable; });
    } else {
        subscriptions_.erase(found);
    }
}

} // namespace test_backend

#include "iso_time.hpp"

#include <chrono>
#include <iomanip>
#include <sstream>

namespace iohost {

std::string iso_time(tavi::ioapi::v2::io_timestamp time) {
    if (!time.has_value()) return "-";
    auto const point = time.to_time_point();
    auto const day = std::chrono::floor<std::chrono::days>(point);
    std::chrono::year_month_day const date(day);
    std::chrono::hh_mm_ss const clock(point - day);

    std::ostringstream text;
    auto const field = [&text](int width, auto number) -> std::ostream& {
        return text << std::setw(width) << number;
    };
    text << std::setfill('0') << std::internal;
    field(4, static_cast<int>(date.year())) << '-';
    field(2, static_cast<unsigned int>(date.month())) << '-';
    field(2, static_cast<unsigned int>(date.day())) << 'T';
    field(2, clock.hours().count()) << ':';
    field(2, clock.minutes().count()) << ':';
    field(2, clock.seconds().count()) << '.';
    field(7, clock.subseconds().count()) << 'Z';
    return text.str();
}

} // namespace iohost

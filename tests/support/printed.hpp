#pragma once

#include <iterator>
#include <locale>
#include <sstream>
#include <string>

namespace test_support {

/// A stream of characters whose traits are not the standard's.
struct own_traits : std::char_traits<char> {};
using own_stream = std::basic_ostringstream<char, own_traits>;

/// \return what `out << value` writes.
template <class T>
[[nodiscard]] std::string printed(T const& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

/// The same to a stream of traits of its own.
template <class T>
[[nodiscard]] std::string printed_by_own_traits(T const& value) {
    own_stream out;
    // A stream of such traits finds no facet for numbers unless it is given one.
    using number_facet = std::num_put<char, std::ostreambuf_iterator<char, own_traits>>;
    out.imbue(std::locale(out.getloc(), new number_facet));
    out << value;
    auto const text = out.str();
    return std::string(text.data(), text.size());
}

} // namespace test_support

#!/usr/bin/env bash
# Holds the tool that names the public classes of headers to its rules.
# Usage: check_public_classes.sh PUBLIC_CLASSES
set -euo pipefail

public_classes=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
  echo "check_public_classes: $1"
  failures=$((failures + 1))
}

# finds NAME...: the header on standard input has these classes and no others.
finds() {
  mkdir -p "$work/include/below"
  cat >"$work/include/below/one.hpp"
  "$public_classes" "$work/include" >"$work/found"
  if ! diff <(printf '%s\n' "$@" | sed '/^$/d') "$work/found"; then
    fail "of the header that should have: $*"
  fi
}

finds a::b::first a::b::second a::third a::u <<'END'
namespace a::b {
class first {};
struct second : first { int number = 0; };
} // namespace a::b
namespace a {
class [[nodiscard]] A_MACRO alignas(8) third final : public b::first, private b::second {};
union u { int i; };
enum class no_class : int { one };
}
END
finds a <<'END'
class declared;
class a {
    class closed {};
    struct { int without_a_name; } field;
protected:
    struct hidden {};
private:
    struct hidden_too { struct below {}; };
};
END
finds a a::later a::shown a::shown::below <<'END'
struct a {
    class later;
    struct shown {
        struct below {};
    private:
        struct closed {};
    };
private:
    class never;
};
class a::later {};
class a::never {
public:
    struct below {};
};
END
finds a b <<'END'
template <class T, class = other<T>>
class a {};
template <>
struct a<int> {};
template <class T>
struct std::hash<a<T>> {};
template <template <class> class T>
struct b {};
END
finds a <<'END'
#define BRACE {
#define LONG \
    class never {
// class never {
/* class never { */
inline char const* text() { return "class never {"; }
inline char brace() { struct local {}; return '{'; }
inline int number{1'000};
struct a made() noexcept { return {}; }
struct a {
    a() : field{1} {}
    int field;
};
namespace detail { struct never {}; }
namespace x::detail { struct never {}; }
namespace { struct never {}; }
END
finds "" <<'END'
using nothing = int;
END

# refuses WORDS ARGUMENT...: it says in one line what is wrong.
refuses() {
  local words=$1 status=0
  shift
  "$public_classes" "$@" >"$work/found" 2>"$work/report" || status=$?
  if [[ $status != 2 || $(wc -l <"$work/report") != 1 || -s $work/found ]] ||
    ! grep -qF -- "$words" "$work/report"; then
    fail "arguments '$*' end with $status and: $(cat "$work/report")"
  fi
}

refuses "usage:"
refuses "usage:" "$work" "$work"
refuses "no headers in $work/none" "$work/none"
echo "struct a {" >"$work/include/below/one.hpp"
refuses "a brace without its end" "$work/include"
echo "}" >"$work/include/below/one.hpp"
refuses "a brace too many" "$work/include"

((failures == 0))

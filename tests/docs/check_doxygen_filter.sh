#!/usr/bin/env bash
# Holds the filter for Doxygen to what it says: a comment serves all forms of a name and no other
# name, so that an undocumented one stays a warning.
# Usage: check_doxygen_filter.sh DOXYGEN_FILTER
set -euo pipefail

filter=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cat >"$work/header" <<'END'
/// A tank.
class tank {
public:
    using value_type = int;

    /// How much there is.
    /// In m3.
    double level() const;
    double level(int chamber) const { return chamber; }
    double capacity() const;

    tank(tank const&);
    tank(tank&&) noexcept {
        if (empty()) return;
    }
    int chambers;
    int valves; ///< those that are open

    /// All chambers.
    int* begin();
    int* end();
    bool empty() const;
};

namespace tavi::ioapi::v2::detail {

struct hidden {};

} // namespace tavi::ioapi::v2::detail
END
cat >"$work/expected" <<'END'
/// A tank.
class tank {
public:
    /** What the standard library expects of a container or an iterator. */ using value_type = int;

    /// How much there is.
    /// In m3.
    double level() const;
    /** How much there is. In m3. */ double level(int chamber) const { return chamber; }
    double capacity() const;

    /** Copies as the class says above. */ tank(tank const&);
    /** Moves as the class says above. */ tank(tank&&) noexcept {
        if (empty()) return;
    }
    int chambers;
    int valves; ///< those that are open

    /// All chambers.
    int* begin();
    /** All chambers. */ int* end();
    /** Whether the size is 0. */ bool empty() const;
};






END
"$filter" "$work/header" >"$work/seen"
diff -u --label expected --label seen "$work/expected" "$work/seen"

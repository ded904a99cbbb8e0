#!/usr/bin/env bash
# Holds the tool that takes the code out of the guides to its promise that no block escapes.
# Usage: check_guide_code.sh GUIDE_CODE
set -euo pipefail

guide_code=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# refuses WORDS: the document on standard input, with a report that has these words.
refuses() {
  sed 's/^~/```/' >"$work/guide.md"
  if "$guide_code" "$work/guide.md" >"$work/report"; then
    echo "check_guide_code: took what it should refuse: $1"
    failures=$((failures + 1))
  elif ! grep -qF -- "$1" "$work/report"; then
    echo "check_guide_code: no word of '$1' in:"
    cat "$work/report"
    failures=$((failures + 1))
  fi
}

refuses "unknown language ''" <<'END'
~
plain
~
END
refuses "unknown language 'c++'" <<'END'
<!-- file: a.cpp -->
~c++
int main() {}
~
END
refuses "'cpp' needs a comment" <<'END'
~cpp
int main() {}
~
END
refuses "'cpp' needs a comment" <<'END'
<!-- file: a.cpp -->
A comment speaks for the block right below it.
~cpp
int main() {}
~
END
refuses "no output of 'a'" <<'END'
<!-- file: a.cpp -->
~cpp
int main() {}
~
END
refuses "output of 'b', which is nothing that runs" <<'END'
<!-- output: b -->
~text
1
~
END
refuses "the block has no end" <<'END'
<!-- output: b -->
~text
1
END
refuses "must begin at the left" <<'END'
- An item:
  ~~~cpp
  int main() {}
  ~~~
END
refuses "not indented" <<'END'
A line of code:

    int main() {}
END
refuses "no such command" <<'END'
~sh
./dev fly
~
END
refuses "no such command" <<'END'
~sh
rm -rf build
~
END
refuses "takes no such argument" <<'END'
~sh
./dev test mips
~
END
refuses "takes no such argument" <<'END'
~sh
./dev check debug
~
END
refuses "is not what stands in LICENSE" <<'END'
<!-- shown: LICENSE -->
~text
All rights reserved
~
END
refuses "cannot read no/such/file" <<'END'
<!-- shown: no/such/file -->
~text
1
~
END

# What is as it should be goes to its folder.
sed 's/^~/```/' >"$work/good.md" <<'END'
<!-- file: a.cpp -->
~cpp
int main() {
~
Between them stand words.
<!-- file: a.cpp -->
~cpp
}
~
<!-- output: a -->
~text
~
~sh
./dev test asan  # with a preset
~
END
"$guide_code" --out "$work/code" "$work/good.md" >/dev/null
if [[ $(cat "$work/code/good/a.cpp") != $'int main() {\n}' || ! -e $work/code/good/a.expected ]]; then
  echo "check_guide_code: the parts of a file are not joined"
  failures=$((failures + 1))
fi

for arguments in "" "--in x" "--out"; do
  status=0
  # shellcheck disable=SC2086 # several words
  "$guide_code" $arguments 2>"$work/report" || status=$?
  if [[ $status != 2 || $(wc -l <"$work/report") != 1 ]]; then
    echo "check_guide_code: arguments '$arguments' end with $status"
    failures=$((failures + 1))
  fi
done

((failures == 0))

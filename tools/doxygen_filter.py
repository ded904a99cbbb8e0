#!/usr/bin/env python3
"""Hands a public header to Doxygen as its readers understand it.

A comment in our headers speaks for all forms of a name that stand below it, up to the next comment
or blank line, and the comment of `begin` for `end`; Doxygen takes it for the first one alone, so
this filter repeats it for the others. Names whose meaning is the standard's get one fixed line
each where nobody has written any. What a header says in the namespace `detail` for itself, such as
the layouts it asserts, is left out. No line is added or removed: the line numbers of
warnings are those of the header.

Usage: doxygen_filter.py HEADER
"""

import re
import sys

SCOPE = re.compile(r"^(template\s*<.*>\s*)?(class|struct|union|namespace)\b[^;=()]*$")

# What needs no words of ours where nobody has written any.
STANDARD = (
    (re.compile(r"^using (value_type|iterator|const_iterator|iterator_category|difference_type"
                r"|pointer|reference)\b"),
     "What the standard library expects of a container or an iterator."),
    (re.compile(r"^(explicit )?(?P<name>\w+)\((?P=name)(<T>)? const&( other)?\)"),
     "Copies as the class says above."),
    (re.compile(r"^(?P<name>\w+)\((?P=name)(<T>)?&&( other)?\)"), "Moves as the class says above."),
    (re.compile(r"^\w+(<T>)?& operator=\(\w+(<T>)? const&( other)?\)"),
     "Copies as the class says above."),
    (re.compile(r"^\w+(<T>)?& operator=\(\w+(<T>)?&&( other)?\)"), "Moves as the class says above."),
    (re.compile(r"^.*\b(begin|end)\(\)"), "The first element, and the place behind the last."),
    (re.compile(r"^.*\b(front|back)\(\)"), "The first and the last element, not checked."),
    (re.compile(r"^operator std::string_view\("), "The same bytes."),
    (re.compile(r"^const_iterator(& operator\+\+\(\)| operator\+\+\(int\))"),
     "To the next place."),
    (re.compile(r"^explicit const_iterator\(impl"), "For the library alone."),
    (re.compile(r"^bool operator==\("), "Equal as the class says above."),
    (re.compile(r"^bool operator!=\("), "Not `==`."),
    (re.compile(r"^bool empty\(\) const"), "Whether the size is 0."),
)
ATTRIBUTES = re.compile(r"\[\[[^]]*\]\]|\b(TAVI_IOAPI_API|constexpr|static|virtual|friend|inline)\b")


def standard_words(line):
    """The fixed line for a declaration whose meaning is the standard's, or None."""
    plain = " ".join(ATTRIBUTES.sub(" ", line).split())
    for pattern, words in STANDARD:
        if pattern.match(plain):
            return words
    return None


def name_of(line):
    """What a declaration declares, with the ends of a range for one name."""
    plain = " ".join(ATTRIBUTES.sub(" ", line).split())
    found = re.search(r"(operator[^\w\s(]+|\w+)\s*\(", plain)
    name = found.group(1) if found else None
    if name in ("begin", "end", "cbegin", "cend"):
        return "begin"
    if name in ("operator<=", "operator>", "operator>="):
        return "operator<"
    return "operator==" if name == "operator!=" else name


def is_special(line):
    """Whether this copies, moves or destroys: one comment does not serve two of these."""
    return "~" in line or re.search(r"(const|&)&?( other)?\)", line.split(" : ")[0]) and (
        "operator=(" in line or re.match(r"^(explicit )?(\w+)\(\2", line))


class Header:
    """Goes through the lines of a header and repeats its comments."""

    def __init__(self):
        self.comment = None  # what speaks for the next declaration
        self.fresh = False  # whether that stands directly above it
        self.name = None  # what the last comment was for
        self.statement = ""  # what has been read of the declaration at hand
        self.left_out = False  # whether this is the namespace `detail`
        self.bodies = 0  # open braces of a body that holds no declarations for readers

    def line(self, text):
        """The line as Doxygen is to see it."""
        code = text.strip()
        if code == "namespace tavi::ioapi::v2::detail {":
            self.left_out = True
        if self.left_out:
            self.left_out = code != "} // namespace tavi::ioapi::v2::detail"
            return ""
        if self.bodies == 0 and code == "":
            self.comment = None
            self.statement = ""
            return text
        if self.statement == "":
            if code.startswith("///"):
                self.take_comment(code)
                return text
            if code.startswith(("#", "//")) or code in ("public:", "protected:", "private:"):
                self.comment = None
                return text
            if code.startswith("}"):
                return text
            text = self.described(text, code)
        self.follow(code)
        return text

    def take_comment(self, code):
        words = code[3:].strip()
        if re.match(r"\\([{}]|name|file)", words):  # of groups, not of what stands below
            self.comment = None
            self.fresh = False
            return
        self.comment = f"{self.comment}\n{words}" if self.fresh and self.comment else words
        self.fresh = True

    def described(self, text, code):
        words = None
        name = name_of(code)
        if not self.fresh and "///<" not in code:
            repeated = self.comment if name == self.name and not is_special(code) else None
            words = repeated or standard_words(code)
        if self.fresh:
            self.name = name
        self.fresh = False
        if words is None:
            return text
        indent = text[: len(text) - len(text.lstrip())]
        # Commands end with their line, which here must stay one.
        return f"{indent}/** {' '.join(words.splitlines())} */ {text.lstrip()}"

    def follow(self, code):
        """Whether the declaration at hand ends with this line."""
        code = re.sub(r"//.*", "", code)
        code = re.sub(r"\"(\\.|[^\"])*\"|'(\\.|[^'])'", "0", code).strip()
        self.statement += " " + code
        if self.bodies == 0:
            head = self.statement.strip()
            if code.endswith("{") and SCOPE.match(head[:-1].strip()):
                self.statement = ""
                self.comment = None
                return
        self.bodies += code.count("{") - code.count("}")
        if self.bodies == 0 and code.endswith((";", "}", ">")) and self.closed():
            self.statement = ""

    def closed(self):
        head = self.statement
        if head.count("(") != head.count(")"):
            return False
        # A template's first line belongs to what stands below it.
        return not head.rstrip().endswith(">")


def main(arguments):
    if len(arguments) != 1:
        print("usage: doxygen_filter.py HEADER", file=sys.stderr)
        return 2
    try:
        with open(arguments[0], encoding="utf-8") as file:
            lines = file.read().splitlines()
    except OSError as error:
        print(f"doxygen_filter.py: {arguments[0]}: {error.strerror}", file=sys.stderr)
        return 2
    header = Header()
    for text in lines:
        print(header.line(text))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

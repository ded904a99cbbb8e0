"""Finds the places in sources that can be mutated, by the syntax tree that libclang gives.

One mutation for each place, of these kinds:

- a bound moves: `<` and `<=`, `>` and `>=` take each other's place
- a condition, a comparison for equality, a truth value that is returned or a `!` is negated
- `&&` and `||`, `+` and `-`, `&` and `|` and other arithmetic take each other's place
- a number, a character or an enumerator becomes the next one, `true` becomes `false`
- `std::min` becomes `std::max`
- a statement is dropped: a call, an assignment, a `throw` or `return` behind an `if`

Only what runs is of interest: what the compiler alone computes (types, template arguments, case
labels, `if constexpr`, constants) and what stands in macros is left out.
"""

import dataclasses
import os
import re

from clang import cindex
from clang.cindex import CursorKind as Kind

# Stands in pieces for the question whether the mutant was chosen.
ON = "\0"

BOUNDS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
EQUALITIES = {"==": "!=", "!=": "=="}
SWAPPED = {"&&": "||", "||": "&&", "+": "-", "-": "+", "*": "+", "/": "*", "%": "+",
           "&": "|", "|": "&", "^": "&", "<<": ">>", ">>": "<<",
           "+=": "-=", "-=": "+=", "*=": "+=", "/=": "*=", "&=": "|=", "|=": "&="}

FUNCTIONS = {Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR,
             Kind.CONVERSION_FUNCTION, Kind.FUNCTION_TEMPLATE}
# What holds no code that runs.
SILENT = {Kind.STATIC_ASSERT, Kind.TYPE_ALIAS_DECL, Kind.TYPEDEF_DECL, Kind.USING_DECLARATION,
          Kind.TYPE_ALIAS_TEMPLATE_DECL, Kind.CXX_UNARY_EXPR, Kind.ENUM_DECL}
# A macro with what it is given, by its name of capitals; and a line of the preprocessor.
MACRO = re.compile(rb"\b[A-Z][A-Z0-9_]{3,}\b(\([^()]*\))?|^[ \t]*#(?:[^\n]*\\\n)*[^\n]*",
                   re.MULTILINE)
# Whose statement may be dropped, where the statement is no block itself.
OWNERS = {Kind.COMPOUND_STMT, Kind.IF_STMT, Kind.FOR_STMT, Kind.WHILE_STMT,
          Kind.CXX_FOR_RANGE_STMT, Kind.DO_STMT}


class Failure(Exception):
    """What keeps the tool from working, in one line."""


@dataclasses.dataclass(frozen=True)
class Place:
    """Where a source is mutated. `pieces` make its new text: strings, and ranges of the old one."""
    file: str
    line: int
    start: int
    end: int
    pieces: tuple
    was: str
    becomes: str
    context: str  # the line of the source
    nth: int = 1  # which of those with this mutation on that line

    @property
    def mutation(self):
        suffix = f" (no. {self.nth})" if self.nth > 1 else ""
        return f"{self.was} -> {self.becomes}{suffix}"


def plain(text):
    return " ".join(text.split())


class Source:
    """One file, and the places that were found in it."""

    def __init__(self, root, name):
        self.name = name
        self.text = (root / name).read_bytes()
        self.macros = [found.span() for found in MACRO.finditer(self.text)]
        self.places = {}

    def get(self, start, end):
        return self.text[start:end].decode()

    def of(self, cursor):
        return self.get(cursor.extent.start.offset, cursor.extent.end.offset)

    def is_in_macro(self, start, end):
        """Whether a range begins or ends in a macro, or stands in a line of the preprocessor."""
        return any(first <= start < last or first < end <= last for first, last in self.macros)

    def add(self, start, end, pieces, was, becomes):
        if start == end or self.is_in_macro(start, end) or (start, end) in self.places:
            return
        line = self.text.count(b"\n", 0, start)
        self.places[start, end] = Place(
            self.name, line + 1, start, end, tuple(pieces), plain(was), plain(becomes),
            plain(self.text.split(b"\n")[line].decode()))

    def negate(self, cursor, becomes=None):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        was = self.get(start, end)
        self.add(start, end, [f"({ON} != static_cast<bool>(", (start, end), "))"],
                 was, becomes or f"!({was})")

    def swap(self, left, operator, right, other):
        """One operator in the place of another between two operands."""
        start, end = left.extent.start.offset, right.extent.end.offset
        first, second = (start, left.extent.end.offset), (right.extent.start.offset, end)
        self.add(start, end,
                 [f"({ON} ? (", first, f" {other} ", second, ") : (", first, f" {operator} ",
                  second, "))"],
                 self.get(start, end), f"{self.get(*first)} {other} {self.get(*second)}")

    def drop(self, cursor):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        semicolon = re.compile(rb"\s*;").match(self.text, end)
        if semicolon is None:
            return
        end = semicolon.end()
        self.add(start, end, [f"{{ if (!{ON}) {{ ", (start, end), " } }"],
                 self.get(start, end), "(dropped)")


class Walker:
    """Goes through the functions of a source."""

    def __init__(self, source):
        self.source = source

    def declaration(self, cursor):
        if cursor.kind in FUNCTIONS:
            if cursor.is_definition():
                self.function(cursor)
            return
        for child in cursor.get_children():
            self.declaration(child)

    def function(self, cursor):
        children = list(cursor.get_children())
        if not children or children[-1].kind != Kind.COMPOUND_STMT:
            return
        body = children[-1]
        head = self.source.get(cursor.extent.start.offset, body.extent.start.offset)
        if not re.search(r"\bconsteval\b", head):
            self.visit(body, cursor, None)

    # Each handler says whether it has seen to the children itself.
    def visit(self, cursor, parent, following):
        """`following` is the next statement of the same block."""
        kind = cursor.kind
        if kind in SILENT or self.source.of(cursor).startswith(("noexcept", "requires")):
            return
        self.statement(cursor, parent, following)
        handler = {Kind.IF_STMT: self.visit_if, Kind.CASE_STMT: self.visit_last,
                   Kind.VAR_DECL: self.visit_variable, Kind.LAMBDA_EXPR: self.visit_last,
                   Kind.CXX_FOR_RANGE_STMT: self.visit_last, Kind.DECL_REF_EXPR: self.visit_name,
                   Kind.MEMBER_REF_EXPR: self.visit_member}.get(kind)
        if handler is not None:
            handler(cursor, following)
            return
        self.expression(cursor)
        children = list(cursor.get_children())
        is_block = kind == Kind.COMPOUND_STMT
        for child, after in zip(children, children[1:] + [None]):
            self.visit(child, cursor, after if is_block else following)

    def visit_last(self, cursor, following):
        children = list(cursor.get_children())
        if children:
            self.visit(children[-1], cursor, following)

    def visit_if(self, cursor, following):
        children = list(cursor.get_children())
        is_constant = re.match(r"if\s+constexpr\b", self.source.of(cursor)) is not None
        if not is_constant:
            self.condition(children[0], cursor)
        for child in children[1:] if is_constant else children:
            # Behind an `if` whose branches both end the function nothing may follow.
            self.visit(child, cursor, following if not is_constant and len(children) == 2 else None)

    def visit_variable(self, cursor, following):
        head = self.source.get(cursor.extent.start.offset, cursor.location.offset)
        children = [child for child in cursor.get_children()
                    if child.extent.start.offset > cursor.location.offset]
        if not children or re.search(r"\b(constexpr|static)\b", head) or \
                "[" in self.source.get(cursor.location.offset, children[-1].extent.start.offset):
            return
        if cursor.type.is_const_qualified() and self.is_constant(children[-1]):
            return
        self.visit(children[-1], cursor, following)

    def visit_name(self, cursor, _):
        named = cursor.referenced
        if named is not None and named.kind == Kind.ENUM_CONSTANT_DECL:
            text = self.source.of(cursor)
            start, end = cursor.extent.start.offset, cursor.extent.end.offset
            self.source.add(start, end,
                            [f"({ON} ? static_cast<decltype({text})>(static_cast<int>({text}) + 1)"
                             f" : {text})"], text, f"{text} + 1")

    def visit_member(self, cursor, following):
        children = list(cursor.get_children())
        if children and children[0].extent.start.offset == cursor.extent.start.offset:
            self.visit(children[0], cursor, following)

    @staticmethod
    def is_constant(cursor):
        """Whether the compiler knows the value: then it stays, for it may be asked for it."""
        return all(node.kind not in (Kind.CALL_EXPR, Kind.CXX_THIS_EXPR, Kind.DECL_REF_EXPR,
                                     Kind.MEMBER_REF_EXPR, Kind.LAMBDA_EXPR)
                   or (node.referenced is not None
                       and node.referenced.kind == Kind.ENUM_CONSTANT_DECL)
                   for node in cursor.walk_preorder())

    # --- mutations

    def statement(self, cursor, parent, following):
        if parent.kind not in OWNERS or following is None and cursor.kind in (
                Kind.RETURN_STMT, Kind.CXX_THROW_EXPR):
            return
        if cursor.kind == Kind.RETURN_STMT:
            if parent.kind == Kind.IF_STMT:
                self.source.drop(cursor)
        elif cursor.kind.is_expression() and cursor.kind != Kind.CXX_STATIC_CAST_EXPR:
            # Conditions and the heads of loops have no semicolon, or another end.
            before = self.source.text[:cursor.extent.start.offset].rstrip()
            if parent.kind == Kind.COMPOUND_STMT or before.endswith((b")", b"else")):
                self.source.drop(cursor)

    def condition(self, cursor, owner):
        """Negates a condition that is no comparison, which has a mutation of its own."""
        text = self.source.of(cursor)
        before = self.source.get(owner.extent.start.offset, cursor.extent.start.offset)
        behind = self.source.text[cursor.extent.end.offset:].lstrip()
        if re.fullmatch(r"if\s*\(\s*", before) and behind.startswith(b")") and \
                cursor.kind in (Kind.CALL_EXPR, Kind.DECL_REF_EXPR, Kind.MEMBER_REF_EXPR,
                                Kind.UNEXPOSED_EXPR) and not self.binary(cursor) \
                and not text.startswith("!"):
            self.source.negate(cursor)

    def binary(self, cursor):
        """The operands of an operator and the operator, or nothing."""
        children = list(cursor.get_children())
        if len(children) < 2:
            return None
        left, right = children[0], children[-1]
        if left.extent.start.offset != cursor.extent.start.offset or \
                right.extent.end.offset != cursor.extent.end.offset:
            return None
        between = self.source.get(left.extent.end.offset, right.extent.start.offset)
        operator = re.sub(r"//[^\n]*", "", between).strip()
        if operator in BOUNDS or operator in EQUALITIES or operator in SWAPPED:
            return left, operator, right
        return None

    def expression(self, cursor):
        found = self.binary(cursor)
        if found is not None:
            self.operator(cursor, *found)
        elif cursor.kind in (Kind.INTEGER_LITERAL, Kind.FLOATING_LITERAL, Kind.CHARACTER_LITERAL):
            self.literal(cursor)
        elif cursor.kind == Kind.CXX_BOOL_LITERAL_EXPR:
            text = self.source.of(cursor)
            self.source.negate(cursor, "false" if text == "true" else "true")
        elif cursor.kind == Kind.UNARY_OPERATOR and re.match("!(?!=)", self.source.of(cursor)):
            self.source.negate(cursor, self.source.of(cursor)[1:])
        elif cursor.kind == Kind.RETURN_STMT:
            self.returned(cursor)
        elif cursor.kind == Kind.CONDITIONAL_OPERATOR:
            choice = next(cursor.get_children())
            if not self.binary(choice) and not self.source.of(choice).startswith("!"):
                self.source.negate(choice)
        elif cursor.kind == Kind.CALL_EXPR:
            self.extreme(cursor)

    def operator(self, cursor, left, operator, right):
        is_built_in = cursor.kind in (Kind.BINARY_OPERATOR, Kind.COMPOUND_ASSIGNMENT_OPERATOR)
        if operator in EQUALITIES or (operator in BOUNDS and not is_built_in):
            self.source.negate(cursor)
        elif operator in BOUNDS:
            self.source.swap(left, operator, right, BOUNDS[operator])
        elif is_built_in and not self.is_pointer(right): # two pointers have no sum
            self.source.swap(left, operator, right, SWAPPED[operator])

    @staticmethod
    def is_pointer(cursor):
        return cursor.type.get_canonical().kind in (cindex.TypeKind.POINTER,
                                                    cindex.TypeKind.CONSTANTARRAY)

    def literal(self, cursor):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        behind = self.source.text[end:].lstrip()
        if behind.startswith(b">") and not behind.startswith((b">=", b">>")):
            return # a template argument
        text = self.source.get(start, end)
        next_one = f"{text} + {ON}"
        if cursor.kind == Kind.CHARACTER_LITERAL:
            next_one = f"static_cast<char>({next_one})"
        self.source.add(start, end, [f"({next_one})"], text, f"{text} + 1")

    def returned(self, cursor):
        """Negates a truth value that is returned, unless it is made by an operator."""
        for value in cursor.get_children():
            while value.kind == Kind.UNEXPOSED_EXPR:
                inner = list(value.get_children())
                if len(inner) != 1 or inner[0].extent != value.extent:
                    break
                value = inner[0]
            if value.type.get_canonical().kind == cindex.TypeKind.BOOL and not self.binary(value) \
                    and value.kind in (Kind.CALL_EXPR, Kind.DECL_REF_EXPR, Kind.MEMBER_REF_EXPR):
                self.source.negate(value)

    def extreme(self, cursor):
        start, end = cursor.extent.start.offset, cursor.extent.end.offset
        text = self.source.get(start, end)
        called = re.match(r"std::(min|max)\b", text)
        if called is None:
            return
        other = "std::max" if called[1] == "min" else "std::min"
        rest = (start + called.end(), end)
        self.source.add(start, end, [f"({ON} ? {other}", rest, f" : {called[0]}", rest, ")"],
                        text, other + self.get_rest(rest))

    def get_rest(self, rest):
        return self.source.get(*rest)


def find_together(root, files):
    """All places in files that are read as one, by file: what they include is read once. The
    sources of the library, which are checked in batches, have no names that clash."""
    together = str(root / "all_together.cpp")
    unit = cindex.Index.create().parse(
        together,
        args=["-xc++", "-std=c++20", "-fsized-deallocation", f"-I{root}/include", f"-I{root}/src"],
        unsaved_files=[(together, "".join(f'#include "{name}"\n' for name in files))])
    wrong = [message for message in unit.diagnostics if message.severity >= message.Error]
    if wrong:
        raise Failure(f"the sources cannot be read: {wrong[0]}")
    sources = {str(root / name): Source(root, name) for name in files}
    for cursor in unit.cursor.get_children():
        file = cursor.location.file
        source = sources.get(os.path.normpath(file.name)) if file else None
        if source is not None:
            Walker(source).declaration(cursor)
    return {source.name: list(source.places.values()) for source in sources.values()}


def numbered(places):
    """Tells apart what is mutated in the same way on one line."""
    seen = {}
    for place in sorted(places, key=lambda place: (place.start, -place.end)):
        key = (place.context, place.was, place.becomes)
        seen[key] = seen.get(key, 0) + 1
        yield dataclasses.replace(place, nth=seen[key])


def find(root, files):
    """Gives by file all places in `files`, names below `root`, each from start to end."""
    found = find_together(root, files)
    return {file: list(numbered(found[file])) for file in sorted(found)}

"""Reads what stands in a process or a core file, by gdb's types and the names of fields alone.

Nothing here calls the debugged process. Sizes and links may be corrupt: all that follows them has a
limit.
"""

import re
import struct

import gdb

V2 = "tavi::ioapi::v2::"

# Where gdb itself is told to set no limit.
MOST_BYTES = 65536
# A balanced tree of all that 64 bits can count is no higher.
HIGHEST_TREE = 128


class Unreadable(gdb.error):
    """What stands in the process is not what the library leaves there."""


# All that reading may raise: gdb's own errors, and wild numbers that do not convert.
FAILURES = (gdb.error, OverflowError, ValueError)


def word(value, default):
    """The enumerator without its scope, or `default` where the number is none of them."""
    number = int(value)
    for field in value.type.strip_typedefs().unqualified().fields():
        if field.enumval == number:
            return field.name.rsplit("::", 1)[-1]
    return default.replace("%d", str(number))


def quoted(address, size):
    """Bytes as a text between quotes, as long as gdb prints others."""
    limit = min(gdb.parameter("print elements") or MOST_BYTES, MOST_BYTES)
    raw = b""
    if size > 0:
        raw = gdb.selected_inferior().read_memory(int(address), min(size, limit)).tobytes()
    text = raw.replace(b"\\", b"\\\\").replace(b'"', b'\\"').decode("utf-8", "backslashreplace")
    text = text.replace("\n", "\\n").replace("\t", "\\t")
    text = re.sub("[\x00-\x1f\x7f]", lambda found: "\\%03o" % ord(found.group()), text)
    text = text.encode(gdb.host_charset(), "backslashreplace").decode(gdb.host_charset())
    return '"%s"%s' % (text, "..." if size > limit else "")


def text(value):
    """Of a `utility::string` or a `string_view`."""
    return quoted(value["data_"], int(value["size_"]))


def std_text(value):
    """Of a `std::string`."""
    return quoted(value["_M_dataplus"]["_M_p"], int(value["_M_string_length"]))


def as_float(digits):
    """What a text gives as a 32-bit number."""
    return struct.unpack("f", struct.pack("f", float(digits)))[0]


def number(value):
    """A number in the shortest text that reads back as it; no characters."""
    kind = value.type.strip_typedefs().unqualified()
    if kind.code == gdb.TYPE_CODE_FLT:
        exact = float(value)
        if kind.sizeof == 4 and exact - exact == 0:
            texts = ("%.*g" % (digits, exact) for digits in range(6, 10))
            return next(text for text in texts if as_float(text) == exact)
        return "%.17g" % exact if exact - exact != 0 else re.sub(r"\.0$", "", repr(exact))
    if kind.name == "char":
        return str(int(value) % 256)
    if kind.code == gdb.TYPE_CODE_BOOL:
        raw = int(value.cast(gdb.lookup_type("unsigned char")))
        return "true" if raw else "false"
    return str(int(value))


def element(value):
    """A number as its text; all else as gdb shows it."""
    kind = value.type.strip_typedefs().code
    scalars = (gdb.TYPE_CODE_INT, gdb.TYPE_CODE_CHAR, gdb.TYPE_CODE_BOOL, gdb.TYPE_CODE_FLT)
    return number(value) if kind in scalars else value


def symbol_of_table(pointer):
    """The class whose table of virtual functions an object has, by the symbols of its module."""
    address = pointer.cast(gdb.lookup_type("void").pointer().pointer()).dereference()
    found = re.search(r"<vtable for (.*)\+\d+>", address.format_string(symbols=True))
    return found.group(1) if found else None


def complete(pointer, name):
    """What a pointer points to, as the private class of that name."""
    try:
        return pointer.cast(gdb.lookup_type(name).pointer()).dereference()
    except gdb.error:
        raise Unreadable("at 0x%x, and no debug symbols of the library" % int(pointer)) from None


def private_part(handle):
    """What a handle points to, or None where it was moved from."""
    pointer = handle["impl_"]
    if pointer.type.strip_typedefs().code == gdb.TYPE_CODE_STRUCT:
        pointer = pointer["p_"]
    if int(pointer) == 0:
        return None
    return complete(pointer, pointer.type.target().strip_typedefs().unqualified().name)


class Again:
    """What a generator yields, as often as it is asked: gdb may want the same children twice."""

    def __init__(self, generator, arguments):
        self.generator = generator
        self.arguments = arguments

    def __iter__(self):
        return self.generator(*self.arguments)


def again(generator):
    return lambda *arguments: Again(generator, arguments)


# --- lists and maps


@again
def elements(first, count):
    for index in range(count):
        yield "[%d]" % index, element((first + index).dereference())


def vector(value):
    """The first element of a `std::vector` and their count."""
    start, finish = value["_M_impl"]["_M_start"], value["_M_impl"]["_M_finish"]
    count = int(finish - start)
    if count < 0:
        raise Unreadable("corrupt, %d elements" % count)
    return start, count


@again
def vector_entries(value):
    """The pairs of a `std::vector` of them."""
    first, count = vector(value)
    for index in range(count):
        entry = (first + index).dereference()
        yield entry["first"], entry["second"]


def counted(value):
    """The same of an `array` or a view."""
    return value["data_"], int(value["size_"])


def map_size(value):
    return int(value["_M_t"]["_M_impl"]["_M_node_count"])


def pair_in(node, pair):
    """The key and the value of a node of a `std::map`, which is its links, and then the pair."""
    links = node.type.strip_typedefs().target().sizeof
    start = -(-links // pair.alignof) * pair.alignof
    place = gdb.Value(int(node) + start).cast(pair.pointer())
    return place["first"], place["second"]


@again
def map_entries(value):
    """The pairs of a `std::map` in order."""
    tree = value["_M_t"]
    header = tree["_M_impl"]["_M_header"]
    pair = tree.type.strip_typedefs().template_argument(1)

    def leftmost(node):
        for _ in range(HIGHEST_TREE):
            if int(node["_M_left"]) == 0:
                return node
            node = node["_M_left"]
        raise Unreadable("corrupt, a tree without an end")

    def next_of(node):
        if int(node["_M_right"]) != 0:
            return leftmost(node["_M_right"])
        for _ in range(HIGHEST_TREE):
            node, before = node["_M_parent"], node
            if node == header.address:
                raise Unreadable("corrupt, fewer entries than are counted")
            if node["_M_right"] != before:
                return node
        raise Unreadable("corrupt, a tree without an end")

    node = header["_M_left"]
    for index in range(map_size(value)):
        if index > 0:
            node = next_of(node)
        if int(node) == 0:
            raise Unreadable("corrupt, a tree without a root")
        yield pair_in(node, pair)


def map_entry_at(position):
    """The pair at an iterator of a `std::map`, or None at its end. The end is the head of the tree,
    which is red where the root is black, and the parent of its own parent."""
    node = position["_M_node"]
    if int(node) == 0:
        raise Unreadable("corrupt, an iterator without a place")
    is_red, parent = int(node["_M_color"]) == 0, node["_M_parent"]
    if is_red and (int(parent) == 0 or parent["_M_parent"] == node):
        return None
    return pair_in(node, position.type.strip_typedefs().template_argument(0))


@again
def keyed(pairs, key_text):
    """Children under their keys."""
    for key, child in pairs:
        yield "[%s]" % key_text(key), child


@again
def fields(value, names):
    """Children that are fields, without the mark of private ones; numbers and enumerators alone, and
    of references and pointers what they refer to."""
    for name in names:
        child = value[name]
        if child.type.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_PTR):
            child = child.referenced_value()
        is_word = child.type.strip_typedefs().code == gdb.TYPE_CODE_ENUM
        yield name.rstrip("_"), word(child, "%d") if is_word else element(child)

"""What is shown of each class: `CLASSES` names for each a function that gives it."""

import datetime

import gdb

from .reading import (V2, Unreadable, again, complete, counted, elements, fields, keyed,
                      map_entries, map_entry_at, map_size, number, private_part, std_text,
                      symbol_of_table, text, vector, vector_entries, word)
from .shown import Shown

# The payloads of a value by index, each with the data type that the constructors give it. The same
# again from the second one on are arrays, and an array of values is the last.
PAYLOADS = (
    ("nothing", "empty"), ("bool", "boolean"),
    ("signed char", "i8"), ("short", "i16"), ("int", "i32"), ("long", "i32"), ("long long", "i64"),
    ("unsigned char", "u8"), ("unsigned short", "u16"), ("unsigned int", "u32"),
    ("unsigned long", "u32"), ("unsigned long long", "u64"),
    ("float", "flt"), ("double", "dbl"), ("char", "i8"),
    (V2 + "utility::string", "string"), (V2 + "io_object", "object"),
)
ARRAYS = [element for element, _ in PAYLOADS[1:]] + [V2 + "io_value"]


def amount(count, noun):
    return "%d %s%s" % (count, noun, "" if count == 1 else "s")


def show_text(value):
    return Shown(text(value))


def show_elements(value):
    first, count = counted(value)
    return Shown(amount(count, "element"), elements(first, count), "array")


def data_type(value):
    line = word(value["basic_type"], "type(%d)")
    if int(value["structure_id"]) != 0:
        line += "<%d>" % int(value["structure_id"])
    kind, extent = int(value["array_kind"]), int(value["array_extent"])
    if kind != 0:
        line += "[]"
    if kind not in (0, 2):
        line += " of kind %d" % kind
    if extent != 0:
        line += " of extent %d" % extent
    return line


def payload_of(value, name):
    """The storage as the type of that name; from bytes, for the value need not be in memory."""
    kind = gdb.lookup_type(name)
    storage = value["storage_"]["bytes"]
    return gdb.Value(bytes(int(storage[i]) for i in range(kind.sizeof)), kind)


def show_value(value):
    declared, index = data_type(value["type_"]), int(value["index_"])
    if index == -1:
        return Shown("(%s) <no payload>" % declared)
    if not 0 <= index < len(PAYLOADS) + len(ARRAYS):
        return Shown("(%s) <corrupt, index %d>" % (declared, index))
    if index == 0:
        return Shown("empty" if declared == "empty" else "(%s) empty" % declared)

    children, hint = None, None
    if index < len(PAYLOADS):
        stored, usual = PAYLOADS[index]
        payload = payload_of(value, stored)
        if usual == "string":
            line = text(payload)
        elif usual == "object":
            usual, line, children = object_parts(payload)
            stored = usual
        else:
            line = number(payload)
    else:
        name = ARRAYS[index - len(PAYLOADS)]
        usual = dict(PAYLOADS).get(name)
        # The caller says which objects or values an array of them holds.
        usual = usual + "[]" if usual not in (None, "object") else None
        stored = "array<%s>" % name
        first, count = counted(payload_of(value, "%sutility::array<%s>" % (V2, name)))
        line, children, hint = amount(count, "element"), elements(first, count), "array"
    parts = ["(%s)" % declared, line]
    if usual is not None and usual != declared:
        parts.append("stored as " + stored.replace(V2, "").replace("utility::", ""))
    return Shown(" ".join(filter(None, parts)), children, hint)


def object_parts(value):
    """The type, the name of the structure and the members; no type where it was moved from."""
    held = private_part(value)
    if held is None:
        return None, "null", None
    structure = private_part(held["structure_"])
    name = std_text(structure["name_"]) if structure is not None else '""'
    members = keyed(map_entries(held["values_"]), std_text)
    return data_type(held["type_"]), name.replace('""', ""), members


def show_object(value):
    kind, name, members = object_parts(value)
    return Shown(" ".join(filter(None, (kind, name))), members)


def show_structure(held):
    return Shown("structure " + std_text(held["name_"]),
                 keyed(map_entries(held["members_"]), std_text))


def show_dictionary(held):
    entries = held["structures_"]
    return Shown(amount(map_size(entries), "structure"), keyed(map_entries(entries), number))


def part(value):
    kind = word(value["kind_"], "<corrupt, kind %d>")
    if kind == "text":
        return text(value["text_"])
    return number(value["number_"]) if kind == "number" else kind


def identifier(value):
    line, second = part(value["primary_"]), part(value["secondary_"])
    return line if second == "none" else line + "/" + second


def timestamp(value):
    ticks = int(value["ticks_"])
    if ticks == 0:
        return "no timestamp"
    seconds, fraction = divmod(ticks, 10000000)
    try:
        time = datetime.datetime(1970, 1, 1) + datetime.timedelta(seconds=seconds)
    except OverflowError:
        return "%d ticks" % ticks
    return "%s.%07dZ" % (time.isoformat(), fraction)


def category_name(pointer):
    """That of the library's own category, which no call is needed for; of others the class."""
    if int(pointer) == 0:
        return "null"
    name = symbol_of_table(pointer) or "category at 0x%x" % int(pointer)
    return "generic" if name == V2 + "io_error_generic_category" else name


def category(value):
    if value.address is None:
        raise Unreadable("a category that is not in memory")
    return category_name(value.address)


def show_error(value):
    code, name = int(value["code_"]), category_name(value["category_"])
    if name == "generic":
        codes = gdb.lookup_type(V2 + "io_errc")
        message = word(gdb.Value(code).cast(codes), "").replace("_", " ")
    else:
        message = "success" if code == 0 else ""
    line = "%s:%d %s" % (name, code, message)
    return with_diagnostics(value["diagnostics_"], line.rstrip())


def own_list(pointer, name):
    """What is behind an interface of diagnostics, where it is the library's own class. Raises with
    the place of an object that is another module's, or where the library has no symbols."""
    own = V2 + "io_error_diagnostics_generic::impl" + name
    table = symbol_of_table(pointer)
    if table != own:
        raise Unreadable("%sat 0x%x" % (table + " " if table else "", int(pointer)))
    return complete(pointer, own)


def with_diagnostics(pointer, line):
    if int(pointer) == 0:
        return Shown(line)
    try:
        entries = own_list(pointer, "")["entries_"]
    except Unreadable as failure:
        return Shown("%s, diagnostics %s" % (line, failure))
    return Shown(line, keyed(vector_entries(entries), std_text))


def show_diagnostics(value):
    pointer = value["impl_"]
    return with_diagnostics(pointer, "diagnostics" if int(pointer) != 0 else "no diagnostics")


def show_diagnostics_position(value):
    pointer = value["position_"]
    if int(pointer) == 0:
        return Shown("end")
    try:
        position = own_list(pointer, "::iterator_impl")
    except Unreadable as failure:
        return Shown("position %s" % failure)
    entry = position["current_"]["_M_current"]
    if entry == position["end_"]["_M_current"]:
        return Shown("end")
    return Shown("at", keyed([(entry["first"], entry["second"])], std_text))


def show_position(key_text):
    """An iterator over a map."""
    def show(held):
        entry = map_entry_at(held["position_"])
        return Shown("end") if entry is None else Shown("at", keyed([entry], key_text))
    return show


def show_id(value):
    kind, payload = word(value["kind_"], "<corrupt, kind %d>"), value["payload_"]
    if kind == "number":
        kind += " " + number(payload["number"])
    elif kind in ("address", "object"):
        kind += " 0x%x" % int(payload[kind])
    return Shown(kind)


def show_results(value):
    first, count = counted(value["entries_"])
    return Shown(amount(count, "result"), elements(first, count))


def show_subscriptions(held):
    entries = held["variables_"]
    return Shown(amount(map_size(entries), "result"), keyed(map_entries(entries), identifier))


def show_list(noun, field):
    def show(held):
        first, count = vector(held[field])
        return Shown(amount(count, noun), elements(first, count))
    return show


def show_store(held):
    values = held["values_"]
    return Shown(amount(map_size(values), "value"), keyed(map_entries(values), std_text))


def show_option(held):
    @again
    def children():
        yield "display_name", std_text(held["display_name_"])
        yield "description", std_text(held["description_"])
        yield from fields(held, ("value_type_", "default_value_", "optional_"))
        yield from elements(*vector(held["options_"]))
    return Shown("option " + std_text(held["key_"]), children())


def show_category(held):
    @again
    def children():
        yield "description", std_text(held["description_"])
        yield from fields(held, ("wants_connection_", "collapsed_"))
        yield from elements(*vector(held["options_"]))
    return Shown("category " + std_text(held["name_"]), children())


def version(value):
    parts = [int(value[name]) for name in ("major_version", "minor_version", "patch_version")]
    label = text(value["label"])
    return "%d.%d.%d" % tuple(parts) + (" " + label if label != '""' else "")


def host_of_query(value):
    host = value["host_"]
    return "%s at 0x%x" % (symbol_of_table(host) or "host", int(host))


def line_of(function):
    return lambda value: Shown(function(value))


def record_of(*names):
    return lambda value: Shown(None, fields(value, names))


def handle_of(function):
    def show(value):
        held = private_part(value)
        return Shown("null") if held is None else function(held)
    return show


CLASSES = {
    "utility::string": show_text,
    "utility::string_view": show_text,
    "utility::array<.*>": show_elements,
    "utility::data_view<.*>": show_elements,
    "utility::pair<.*>": record_of("first", "second"),
    "io_data_type": line_of(data_type),
    "io_value": show_value,
    "io_data_value": record_of("value_", "timestamp_", "quality_"),
    "io_timestamp": line_of(timestamp),
    "io_object": show_object,
    "io_object::const_iterator": handle_of(show_position(std_text)),
    "io_structure_type": handle_of(show_structure),
    "io_structure_type::const_iterator": handle_of(show_position(std_text)),
    "io_structure_dictionary": handle_of(show_dictionary),
    "io_error": show_error,
    "io_error_category": line_of(category),
    "io_error_generic_category": line_of(category),
    "io_error_diagnostics": show_diagnostics,
    "io_error_diagnostics::const_iterator": show_diagnostics_position,
    "io_error_diagnostics::const_iterator::reference": record_of("key", "value"),
    "interfaces::io_error_diagnostics_impl::iterator_impl::entry": record_of("key", "value"),
    "make_object_implementation<.*>": line_of(
        lambda value: amount(int(value["count_"]["_M_i"]), "reference")),
    "io_error_diagnostics_generic": show_diagnostics,
    "io_exception": lambda value: show_error(value["error_"]),
    "plc_identifier_part": line_of(part),
    "plc_identifier": line_of(identifier),
    "read_result": show_results,
    "read_result::result_type": record_of("identifier_", "value_", "error_"),
    "write_result": show_results,
    "write_result::result_type": record_of("identifier_", "error_"),
    "browse_result": handle_of(show_list("node", "nodes_")),
    "browsing::node": record_of(
        "node_class", "identifier", "browse_name", "description", "data_type"),
    "subscription_id": show_id,
    "subscription_result": handle_of(show_subscriptions),
    "subscription_result::variable_result": record_of(
        "identifier", "data_type", "error", "aux_value", "id"),
    "subscription_result::const_iterator": handle_of(show_position(identifier)),
    "backend_version_info": line_of(version),
    "backend_query": line_of(host_of_query),
    "config::option": handle_of(show_option),
    "config::option::value_option": record_of("display_name", "description", "value"),
    "config::category": handle_of(show_category),
    "config::config_template": handle_of(show_list("category", "categories_")),
    "config::store": handle_of(show_store),
    "config::verification_result": handle_of(show_list("issue", "issues_")),
    "config::verification_result::issue_type": record_of("severity", "message", "options"),
}

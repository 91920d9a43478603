"""Lets gdb show what is in documents: gdb -x scripts/gdb/intake.py PROGRAM

    print buffer           a ByteBuffer: its size, and how its bytes begin
    print document         a JsonDocument: its nodes by their numbers
    json-node document 3   one of them, also of a long document
    print *node            of a page (html::Node) or of XML (xmlNode): what it is, and what is below it
    print value            a value of the workbench's data store
"""

import gdb
import gdb.printing

LONGEST = 60  # bytes of a text
MOST = 200  # nodes of a document

KINDS = ["null", "string", "number", "bool", "array", "object"]
XML_KINDS = {1: "element", 3: "text", 4: "section", 7: "instruction", 8: "comment"}


def bytes_at(address, length):
    """A text in quotes, cut where it is long."""
    if length == 0:
        return '""'
    memory = gdb.selected_inferior().read_memory(address, min(length, LONGEST))
    text = bytes(memory).decode("utf-8", "replace").replace("\n", "\\n").replace("\0", "\\0")
    return f'"{text}"' + ("..." if length > LONGEST else "")


def view_text(view):
    return bytes_at(int(view["_M_str"]), int(view["_M_len"]))


def string_text(string):
    return bytes_at(int(string["_M_dataplus"]["_M_p"]), int(string["_M_string_length"]))


def terminated_text(pointer):
    return bytes_at(int(pointer), len(pointer.string("utf-8", "replace").encode()))


def vector_items(vector):
    start, end = vector["_M_impl"]["_M_start"], vector["_M_impl"]["_M_finish"]
    for position in range(int(end - start)):
        yield (start + position).dereference()


class ByteBuffer:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        size = int(self.value["size_"])
        return f"{size} bytes {bytes_at(int(self.value['data_']), size)}"


class JsonDocument:
    def __init__(self, value):
        self.text = int(value["text_"]["data_"])
        self.entries = list(vector_items(value["entries_"]))

    def to_string(self):
        return f"{len(self.entries)} nodes"

    def children(self):
        for number in range(min(len(self.entries), MOST)):
            yield f"[{number}]", self.describe(number)

    def describe(self, number):
        entry = self.entries[number]
        length = int(entry["nameLength"])
        name = bytes_at(self.text + int(entry["nameOffset"]), length) + ": " if length else ""
        return name + self.describe_value(KINDS[int(entry["type"])], entry)

    def describe_value(self, kind, entry):
        position, length = int(entry["position"]), int(entry["length"])
        if kind in ("array", "object"):
            return f"{kind} of {length}, behind it {position}"
        if kind in ("string", "number"):
            return f"{kind} {bytes_at(self.text + position, length)}"
        return {"null": "null", "bool": "true" if length else "false"}[kind]


class JsonNode(gdb.Command):
    """json-node DOCUMENT NUMBER: a node of a JsonDocument."""

    def __init__(self):
        super().__init__("json-node", gdb.COMMAND_DATA, gdb.COMPLETE_EXPRESSION)

    def invoke(self, words, from_tty):
        document, _, number = words.rpartition(" ")
        nodes = JsonDocument(gdb.parse_and_eval(document))
        print(nodes.describe(int(gdb.parse_and_eval(number))))


class Tree:
    """A node with its children, which are linked."""

    def __init__(self, value):
        self.value = value

    def children(self):
        child = self.value[self.FIRST_CHILD]
        for number in range(MOST):
            if int(child) == 0:
                return
            yield f"[{number}]", child.dereference()
            child = child["next"]


class HtmlNode(Tree):
    FIRST_CHILD = "firstChild"

    def to_string(self):
        kind = str(self.value["type"]).rsplit("::", 1)[-1].lower()
        return f"{kind} {view_text(self.value['text'])}" + "".join(self.attributes())

    def attributes(self):
        attribute = self.value["attributes"]
        while int(attribute) != 0:
            yield f" {view_text(attribute['name'])}={view_text(attribute['value'])}"
            attribute = attribute["next"]


class XmlNode(Tree):
    FIRST_CHILD = "children"

    def to_string(self):
        kind = XML_KINDS.get(int(self.value["type"]), f"type {int(self.value['type'])}")
        named = kind in ("element", "instruction")
        text = self.value["name" if named else "content"]
        return f"{kind} " + (terminated_text(text) if int(text) else '""')

    def children(self):
        return super().children() if int(self.value["type"]) == 1 else iter(())


class CobaltValue:
    def __init__(self, value):
        self.content = value["content_"]
        self.kind = int(self.content["_M_index"])

    def held(self):
        alternative = self.content.type.strip_typedefs().template_argument(self.kind)
        return self.content.address.cast(alternative.pointer()).dereference()

    def to_string(self):
        if self.kind == 0:
            return "text " + string_text(self.held())
        if self.kind == 1:
            return "number " + string_text(self.held()["written"])
        return "structure" if self.kind == 2 else "array"

    def children(self):
        if self.kind < 2:
            return
        entries = self.held()["members" if self.kind == 2 else "elements"]
        for entry in vector_items(entries["entries_"]):
            yield string_text(entry["key"]), entry["value"]


def printers():
    found = gdb.printing.RegexpCollectionPrettyPrinter("intake")
    for name, pattern, printer in [("ByteBuffer", "^intake::ByteBuffer$", ByteBuffer),
                                   ("JsonDocument", "^intake::JsonDocument$", JsonDocument),
                                   ("html::Node", "^intake::html::Node$", HtmlNode),
                                   ("xmlNode", "^_?xmlNode$", XmlNode),
                                   ("cobalt::Value", "^cobalt::Value$", CobaltValue)]:
        found.add_printer(name, pattern, printer)
    return found


gdb.printing.register_pretty_printer(None, printers(), replace=True)
JsonNode()

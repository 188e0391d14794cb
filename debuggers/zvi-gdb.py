"""How gdb shows the types of zvi.

gdb loads this file by itself along with an installed library, if its settings trust the folder (`set auto-load
safe-path`); otherwise type `source zvi-gdb.py`.
"""

import gdb
import gdb.printing


class TextPrinter:
    """CString: its characters."""

    def __init__(self, value):
        text = value["m_text"]
        self.first = text["_M_dataplus"]["_M_p"]
        self.length = int(text["_M_string_length"])

    def to_string(self):
        return self.first.lazy_string(length=self.length)

    def display_hint(self):
        return "string"


class SequencePrinter:
    """Elements one behind the other."""

    def __init__(self, name, first, count):
        self.name = name
        self.first = first
        self.count = count

    def to_string(self):
        return "%s of %d" % (self.name, self.count)

    def children(self):
        for i in range(self.count):
            yield "[%d]" % i, (self.first + i).dereference()

    def display_hint(self):
        return "array"


def array_printer(value):
    first = value["m_first"]
    return SequencePrinter("MArray", first, int(value["m_last"] - first))


def client_array_printer(value):
    printer = array_printer(value["m_elements"])
    printer.name = value.type.strip_typedefs().name.split("<")[0]
    return printer


def view_printer(value):
    return SequencePrinter("MTArray", value["m_data"], max(0, int(value["m_count"])))


class VectorPrinter:
    """MVector: its components, as one reads them."""

    def __init__(self, value):
        self.values = value["m_values"]

    def to_string(self):
        low, high = self.values.type.range()
        return "(%s)" % ", ".join(str(self.values[i]) for i in range(low, high + 1))


class ListPrinter:
    """MList: its elements from head to tail."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "MList of %d" % int(self.value["m_count"])

    def children(self):
        node = self.value["m_head"]
        for i in range(int(self.value["m_count"])):
            if not node:
                return
            yield "[%d]" % i, node["element"]
            node = node["next"]

    def display_hint(self):
        return "array"


class HashMapPrinter:
    """MHashMap: its pairs in the order of a walk."""

    def __init__(self, value):
        self.table = value["m_table"].dereference()

    def to_string(self):
        return "MHashMap of %d in %d bins" % (int(self.table["m_count"]), int(self.table["m_binCount"]))

    def children(self):
        if int(self.table["m_count"]) == 0 or not self.table["m_bins"]:
            return
        place = 0
        for bin_number in range(int(self.table["m_binCount"])):
            node = self.table["m_bins"][bin_number]
            while node:
                yield "[%d]" % place, node["entry"]["key"]
                yield "[%d]" % (place + 1), node["entry"]["value"]
                place += 2
                node = node["next"]

    def display_hint(self):
        return "map"


class ClientMapPrinter:
    """CMap: its pairs in the order in which they came."""

    def __init__(self, value):
        self.entries = value["m_entries"]
        self.entry = self.entries.type.strip_typedefs().template_argument(0)

    def nodes(self):
        end = self.entries["_M_impl"]["_M_node"].address
        node = end["_M_next"]
        while int(node) != int(end):
            yield node
            node = node["_M_next"]

    def to_string(self):
        return "CMap of %d" % sum(1 for _ in self.nodes())

    def children(self):
        for i, node in enumerate(self.nodes()):
            pair = (node + 1).cast(self.entry.pointer())
            yield "[%d]" % (2 * i), pair["first"]
            yield "[%d]" % (2 * i + 1), pair["second"]

    def display_hint(self):
        return "map"


class PoolPrinter:
    """MFixedSizeMemMgr: the size of its items, and its chunks."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "MFixedSizeMemMgr of items of %d bytes in chunks of %d" % (
            int(self.value["m_itemSize"]),
            int(self.value["m_chunkSize"]),
        )


class SimplePoolPrinter:
    """CSimpleMemMgr: the size of its items."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "CSimpleMemMgr of items of %d bytes" % int(self.value["m_itemSize"])


class CurvePrinter:
    """T_LINE_G: the kind of curve and what determines it."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        value = self.value
        if int(value["IsCurv"]) == 0:
            return "line %s to %s" % (value["Pos1"], value["Pos2"])
        circle = "%s radius %s normal %s" % (value["Center"], value["Radius"], value["Normal"])
        if int(value["IsCircle"]) != 0:
            return "circle " + circle
        return "%sarc %s to %s about %s" % (
            "plan " if int(value["Is2D"]) != 0 else "",
            value["Pos1"],
            value["Pos2"],
            circle,
        )


def target(pointer):
    """What a pointer points to, by the full type even where only its name is known beside the pointer."""
    name = str(pointer.type.strip_typedefs().target().unqualified())
    return pointer.cast(gdb.lookup_type(name).pointer()).dereference()


class TreePrinter:
    """MQuadTree and MOcTree: how many objects they own, and the region of the root."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        name = self.value.type.strip_typedefs().name.split("::")[-1]
        try:
            count = int(target(target(self.value["m_objects"])["m_table"])["m_count"])
            text = "%s with %d objects of its own" % (name, count)
            if not self.value["m_root"]:
                return text
            region = target(self.value["m_root"])["m_region"]
            axes = [axis for axis in "XYZ" if "min" + axis in [field.name for field in region.type.fields()]]
            corners = [", ".join(str(region[end + axis]) for axis in axes) for end in ("min", "max")]
            return text + " in (%s) to (%s)" % tuple(corners)
        except gdb.error:
            return name + ", of which only a library with debug information tells more"


def make_printers():
    printers = gdb.printing.RegexpCollectionPrettyPrinter("zvi")
    for name, pattern, printer in [
        ("CString", r"^CString$", TextPrinter),
        ("MArray", r"^zvi::MArray<.*>$", array_printer),
        ("CArray", r"^(CArray<.*>|CStringArray)$", client_array_printer),
        ("MTArray", r"^zvi::MTArray<.*>$", view_printer),
        ("MVector", r"^zvi::MVector<.*>$", VectorPrinter),
        ("MList", r"^zvi::MList<.*>$", ListPrinter),
        ("MHashMap", r"^zvi::MHashMap<.*>$", HashMapPrinter),
        ("CMap", r"^CMap<.*>$", ClientMapPrinter),
        ("MFixedSizeMemMgr", r"^zvi::MFixedSizeMemMgr$", PoolPrinter),
        ("CSimpleMemMgr", r"^zvi::CSimpleMemMgr$", SimplePoolPrinter),
        ("T_LINE_G", r"^zvi::(lib::)?T_LINE_G$", CurvePrinter),
        ("MQuadTree", r"^zvi::lib::M(Quad|Oc)Tree$", TreePrinter),
    ]:
        printers.add_printer(name, pattern, printer)
    return printers


gdb.printing.register_pretty_printer(gdb.current_objfile(), make_printers(), replace=True)

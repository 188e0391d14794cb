# Holds debuggers/zvi.natvis against the sample that gdb has stopped in: the elements are those that natvis knows, each
# type has a value in the sample, and each expression can be evaluated on it.
import re
import xml.etree.ElementTree as xml

import gdb

CONDITIONAL = {"Condition", "Optional", "IncludeView", "ExcludeView"}
# What may stand in each element: other elements, and attributes.
KNOWN = {
    "AutoVisualizer": ({"Type"}, set()),
    "Type": ({"AlternativeType", "DisplayString", "StringView", "Expand"}, {"Name", "Priority", "Inheritable"}),
    "AlternativeType": (set(), {"Name", "Priority", "Inheritable"}),
    "DisplayString": (set(), CONDITIONAL),
    "StringView": (set(), CONDITIONAL),
    "Expand": ({"Item", "ExpandedItem", "ArrayItems", "LinkedListItems", "CustomListItems"}, {"HideRawView"}),
    "Item": (set(), CONDITIONAL | {"Name"}),
    "ExpandedItem": (set(), CONDITIONAL),
    "ArrayItems": ({"Size", "ValuePointer"}, CONDITIONAL),
    "LinkedListItems": ({"Size", "HeadPointer", "NextPointer", "ValueNode"}, CONDITIONAL),
    "CustomListItems": ({"Variable", "Size", "Exec", "Loop", "Item"}, CONDITIONAL),
    "Variable": (set(), {"Name", "InitialValue"}),
    "Loop": ({"Exec", "Loop", "Item"}, {"Condition"}),
    "Exec": (set(), {"Condition"}),
    "Size": (set(), CONDITIONAL),
    "ValuePointer": (set(), CONDITIONAL),
    "HeadPointer": (set(), set()),
    "NextPointer": (set(), set()),
    "ValueNode": (set(), {"Name"}),
}


def fail(text):
    print("debuggers/zvi.natvis: " + text)
    gdb.execute("quit 1")


def tag(element):
    return element.tag.split("}")[1]


def check_form(element):
    elements, attributes = KNOWN[tag(element)]
    for name in set(element.attrib) - attributes:
        fail("%s has no attribute %s" % (tag(element), name))
    for child in element:
        if tag(child) not in elements:
            fail("%s does not belong into %s" % (tag(child), tag(element)))
        check_form(child)


def evaluate(expression, scope, variables):
    """The value of an expression among the members of `scope`, an expression of gdb's own."""

    def named(match):
        word = match.group(0)
        return "$natvis_" + word if word in variables else "0" if word == "nullptr" else "(%s).%s" % (scope, word)

    text = re.sub(r"(?<![\w.$])(?<!->)[A-Za-z_]\w*", named, expression)
    try:
        value = gdb.parse_and_eval(text)
        value.fetch_lazy()
        return value
    except gdb.error as error:
        fail("%s: %s: %s" % (scope, expression, error))


def check_values(element, scope, variables):
    """Evaluates what the element says as the debugger would, loops included."""
    condition = element.attrib.get("Condition")
    while not condition or evaluate(condition, scope, variables):
        check_content(element, scope, variables)
        if tag(element) != "Loop":
            break


def check_content(element, scope, variables):
    if tag(element) == "Variable":
        name = element.attrib["Name"]
        gdb.set_convenience_variable("natvis_" + name, evaluate(element.attrib["InitialValue"], scope, variables))
        variables.add(name)
    text = (element.text or "").strip()
    texts = re.findall(r"{(.*?)}", element.attrib.get("Name", ""))
    texts += re.findall(r"{(.*?)}", text) if tag(element) == "DisplayString" else [text] if text else []
    for expression in texts:
        evaluate(expression, scope, variables)
    for child in element:
        isOfNode = tag(child) in ("NextPointer", "ValueNode")
        node = "*(%s).%s" % (scope, element.find("{*}HeadPointer").text) if isOfNode else scope
        check_values(child, node, variables)


def samples():
    """The names of the values in the frame by the names of their types."""
    found = {}
    for symbol in gdb.selected_frame().block():
        name = str(symbol.type.strip_typedefs().unqualified())
        found.setdefault(re.sub(r"(?<=\d)ul(?=>)", "", name.replace(" ", "")), []).append(symbol.name)
    return found


root = xml.parse("debuggers/zvi.natvis").getroot()
check_form(root)
known = samples()
for element in root:
    for named in [element] + element.findall("{*}AlternativeType"):
        pattern = re.escape(named.attrib["Name"]).replace(r"\*", ".*")
        names = [name for kind, group in known.items() if re.fullmatch(pattern, kind) for name in group]
        if not names:
            fail("the sample has no value of the type " + named.attrib["Name"])
        for name in names:
            for child in element:
                if child is not named and tag(child) != "AlternativeType":
                    check_values(child, name, set())
print("debuggers/zvi.natvis holds")

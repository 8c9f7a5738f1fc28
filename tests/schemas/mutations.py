"""Documents with one to three mistakes each, as people and programs make them."""

import copy
import random
import xml.etree.ElementTree as ET

NUMBERS = ["0", "-1", "7", "+5", " 8\n", "007", "12.5", "-3.25", ".5", "5.", "1e3", "1E-300", "1e400", "12,5",
           "1.234,5", "12 kN", "0x10", "1e", "--1", "+-1", "1 2", "99999999999", "2147483647", "-2147483648",
           "inf", "-inf", "INF", "+Infinity", "nan", "-NaN", "nan(7)", "infin", "NaN()", "-", "e5", "\u0663"]
WORDS = ["tension", "none", "compression", "Tension", "none ", "\tnone", "None", "true", "", " ", "zug", "A",
         "Raft on stiff clay", "\u00fc", "1;2"]
STRANGERS = ["NODE", "FOUND", "FOUNDATIONS", "BEDDING", "Remark", "Bedding", "CurveBedding", "SurfaceBedding",
             "Beddings", "found", "{urn:host}FOUND", "{urn:host}note"]
STRANGE_ATTRIBUTES = ["COLOUR", "name", "Number", "NUMBER", "FXXAREA", "StiffnessXX", "StiffnessYFailure", "KX",
                      "{urn:host}seen", "{http://www.w3.org/XML/1998/namespace}space"]


class Mutations:
    """`names`: those of all attributes of the form, which are then also given to other elements."""

    def __init__(self, seed, names):
        self.random = random.Random(seed)
        self.names = names + STRANGE_ATTRIBUTES

    def make(self, root):
        """A copy of the document with mistakes."""
        root = copy.deepcopy(root)
        for _ in range(self.random.randint(1, 3)):
            self.random.choice([self.change, self.change, self.change, self.share, self.drop, self.add, self.rename,
                                self.add_element, self.remove_element, self.repeat_element, self.move_element,
                                self.rename_element, self.write_text, self.add_comment])(root)
        return root

    def choose(self, root):
        """An element below the root, and mostly one with attributes."""
        elements = [element for element in list(root.iter())[1:] if isinstance(element.tag, str)]
        rich = [element for element in elements if element.attrib]
        return self.random.choice(rich if rich and self.random.random() < 0.9 else elements or [root])

    def choose_attribute(self, element):
        return self.random.choice(sorted(element.attrib) or self.names)

    def make_value(self):
        return self.random.choice(self.random.choice([NUMBERS, NUMBERS, WORDS]))

    def change(self, root):
        element = self.choose(root)
        element.set(self.choose_attribute(element), self.make_value())

    def share(self, root):
        """Two elements get the same value."""
        element, other = self.choose(root), self.choose(root)
        common = sorted(element.attrib.keys() & other.attrib.keys())
        if common:
            name = self.random.choice(common)
            other.set(name, element.get(name))

    def drop(self, root):
        element = self.choose(root)
        element.attrib.pop(self.choose_attribute(element), None)

    def add(self, root):
        self.choose(root).set(self.random.choice(self.names), self.make_value())

    def rename(self, root):
        element = self.choose(root)
        name = self.choose_attribute(element)
        if name not in element.attrib:
            return
        other = self.random.choice([name.lower(), name.upper(), name + "_", name[:-1] or "N",
                                    self.random.choice(self.names)])
        element.set(other, element.attrib.pop(name))

    def find_parent(self, root, element):
        return next((parent for parent in root.iter() if element in list(parent)), None)

    def add_element(self, root):
        parent = self.choose(root)
        if self.random.random() < 0.5:
            parent = self.find_parent(root, parent) or root
        child = ET.Element(self.random.choice(STRANGERS))
        if self.random.random() < 0.5:
            child.set(self.random.choice(self.names), self.make_value())
        parent.insert(self.random.randint(0, len(parent)), child)

    def remove_element(self, root):
        element = self.choose(root)
        parent = self.find_parent(root, element)
        if parent is not None:
            parent.remove(element)

    def repeat_element(self, root):
        element = self.choose(root)
        parent = self.find_parent(root, element)
        if parent is not None:
            parent.append(copy.deepcopy(element))

    def move_element(self, root):
        element = self.choose(root)
        parent = self.find_parent(root, element)
        if parent is None:
            return
        parent.remove(element)
        other = self.choose(root)
        other.insert(self.random.randint(0, len(other)), element)

    def rename_element(self, root):
        self.choose(root).tag = self.random.choice(STRANGERS)

    def write_text(self, root):
        self.choose(root).text = self.random.choice(["text", "\n    \n", " ", "0"])

    def add_comment(self, root):
        self.choose(root).append(self.random.choice([ET.Comment("note"), ET.ProcessingInstruction("host", "x")]))

"""Makes the pages of the reference from what Doxygen read in the public headers (its XML): a page a
class, a page a namespace, one for what is in none, and one for the headers."""

import html
import pathlib
import re
import xml.etree.ElementTree as ElementTree

HIDDEN = {"CodePages", "KvXmlView", "std"}  # namespaces that are not for hosts
NO_NAMESPACE = "Global names"
GROUPS = {"public-type": "Types", "public-attrib": "Values"}
SPECIAL = {"operator=": "operator-assign", "operator==": "operator-equal",
           "operator!=": "operator-not-equal"}


def make_file_name(name):
    return name.replace("::", "-") if name != NO_NAMESPACE else "global"


def make_header_anchor(header):
    return re.sub(r"\W+", "-", header)


def escape(text):
    """Text for a heading: nothing in it means anything to Markdown. Underscores within words never do."""
    return re.sub(r"[\\`*{}\[\]<>#&]", lambda match: f"&#{ord(match[0])};", text or "")


def tidy(code):
    """C++ as the headers write it: Doxygen spreads blanks and leaves them out."""
    code = re.sub(r"\s*([&*]+)\s*(?=[\w>,)&*]|$)", r"\1 ", code)
    code = re.sub(r"([&*]) ([>,)])", r"\1\2", code)
    code = re.sub(r"< ?(.*?) ?>(?=\W|$)", r"<\1>", code)
    code = re.sub(r"\)\s*=\s*(default|delete|0)$", r") = \1", code)
    code = re.sub(r"(const|noexcept|override)=", r"\1 =", code)
    return re.sub(r" +", " ", code).replace(" )", ")").strip()


def make_table(name, meaning, rows):
    if not rows:
        return ""
    body = "".join(f'<tr><th scope="row">{row}</th><td>{text}</td></tr>\n' for row, text in rows)
    return (f'<table>\n<thead><tr><th scope="col">{name}</th><th scope="col">{meaning}</th></tr>'
            f"</thead>\n<tbody>\n{body}</tbody>\n</table>\n\n")


def make_list(items):
    return f'<ul class="members">\n{"".join(items)}</ul>\n\n' if items else ""


class Member:
    """A function, type, value or macro that hosts may use."""

    def __init__(self, element, group):
        self.element = element
        self.id = element.get("id")
        self.name = element.findtext("name")
        self.group = group
        self.line = int(element.find("location").get("line"))
        self.anchor = ""
        self.page = ""

    def make_signature(self):
        """The declaration, as it stands in the header but for line ends."""
        return {"enum": self.declare_enum, "define": self.declare_macro,
                "typedef": self.declare_alias}.get(self.element.get("kind"), self.declare_function)()

    def declare_enum(self):
        base = self.read("type")
        return f"enum {self.name}" + (f" : {base}" if base else "")

    def declare_macro(self):
        """What a macro stands for is told where that is a number or a text, the same for everybody."""
        names = [name.text for name in self.element.iterfind("param/defname")]
        value = self.read("initializer")
        return (f"#define {self.name}" + (f"({', '.join(names)})" if names else "") +
                (f" {value}" if re.fullmatch(r'[\w."]+', value) else ""))

    def declare_alias(self):
        parameters = ", ".join("".join(parameter.itertext()).strip()
                               for parameter in self.element.iterfind("templateparamlist/param"))
        template = f"template <{parameters}>\n" if parameters else ""
        return f"{template}{tidy(f'using {self.name} = ' + self.read('type'))};"

    def declare_function(self):
        words = [word for word in ("explicit", "static") if self.element.get(word) == "yes"]
        if self.element.get("virt") in ("virtual", "pure-virtual"):
            words.append("virtual")
        result = re.sub(r"^((explicit|static|virtual) )+", "", self.read("type"))
        words += [result, self.name + self.read("argsstring"), self.read("initializer")]
        return tidy(" ".join(word for word in words if word)) + ";"

    def read(self, part):
        element = self.element.find(part)
        return "".join(element.itertext()) if element is not None else ""


class Page:
    def __init__(self, name, title):
        self.name = name
        self.file = make_file_name(name)
        self.title = title
        self.element = None
        self.members = []
        self.parts = []  # pages of classes and namespaces within

    def add(self, member):
        member.page = self.file
        self.members.append(member)


class Reference:
    def __init__(self, folder):
        folder = pathlib.Path(folder)
        index = ElementTree.parse(folder / "index.xml").getroot()
        self.pages = {}
        self.headers = []
        self.targets = {}  # from ids of Doxygen to addresses
        for entry in index.iterfind("compound"):
            document = ElementTree.parse(folder / f"{entry.get('refid')}.xml")
            self.add_compound(document.getroot().find("compounddef"))
        self.add_global_names()
        for page in self.pages.values():
            self.name_anchors(page)
        self.arrange()

    # --- What there is

    def add_compound(self, element):
        kind = element.get("kind")
        name = element.findtext("compoundname")
        if name.split("::")[0] in HIDDEN or element.get("prot") in ("private", "protected"):
            return
        if kind in ("class", "struct"):
            page = self.pages[name] = Page(name, name)
        elif kind == "namespace":
            page = self.pages[name] = Page(name, f"Namespace {name}")
        elif kind == "file":
            self.headers.append(element)
            return
        else:
            return
        page.element = element
        self.targets[element.get("id")] = f"{page.file}.html"
        for section in element.iterfind("sectiondef"):
            for member in section.iterfind("memberdef"):
                if member.get("prot") == "public" and member.get("kind") != "friend":
                    page.add(Member(member, self.find_group(page, section, member)))

    def find_group(self, page, section, member):
        kind = section.get("kind")
        if kind == "user-defined":
            return section.findtext("header")
        own = page.name.split("::")[-1]
        if member.findtext("name") in (own, f"~{own}", "operator="):
            return "Making, copying, ending"
        return GROUPS.get(kind, "Functions" if member.get("kind") == "function" else "Types")

    def add_global_names(self):
        page = self.pages[NO_NAMESPACE] = Page(NO_NAMESPACE, NO_NAMESPACE)
        for header in self.headers:
            for section in header.iterfind("sectiondef"):
                for member in section.iterfind("memberdef"):
                    isMacro = member.get("kind") == "define"
                    if isMacro and not self.describe(member):
                        continue
                    if "::" not in (member.findtext("qualifiedname") or "") or isMacro:
                        page.add(Member(member, "Macros" if isMacro else "Functions"))

    def name_anchors(self, page):
        page.members.sort(key=lambda member: member.line)
        used = {}
        for member in page.members:
            anchor = SPECIAL.get(member.name, member.name.replace("~", "destructor-"))
            used[anchor] = used.get(anchor, 0) + 1
            member.anchor = anchor if used[anchor] == 1 else f"{anchor}-{used[anchor]}"
            self.targets[member.id] = f"{page.file}.html#{member.anchor}"
            for value in member.element.iterfind("enumvalue"):
                self.targets[value.get("id")] = f"{page.file}.html#{member.anchor}"

    def arrange(self):
        """Each class goes to the page of its namespace. What a class has within it does, too."""
        for page in list(self.pages.values()):
            if page.name == NO_NAMESPACE:
                continue
            owner = page.name.rpartition("::")[0] or (
                NO_NAMESPACE if not page.title.startswith("Namespace") else "")
            if owner in self.pages:
                self.pages[owner].parts.append(page)
        for header in self.headers:
            path = header.find("location").get("file")
            self.targets[header.get("id")] = f"headers.html#{make_header_anchor(path)}"

    # --- Descriptions, as HTML

    def describe(self, element):
        return "".join(self.convert(child) for name in ("briefdescription", "detaileddescription")
                       for child in element.iterfind(name)).strip()

    def convert_children(self, element):
        parts = [html.escape(element.text or "", quote=False)]
        for child in element:
            parts += [self.convert(child), html.escape(child.tail or "", quote=False)]
        return "".join(parts)

    def convert(self, element):
        tag = element.tag
        if tag == "verbatim":
            return f"<pre><code>{html.escape(''.join(element.itertext()), quote=False)}</code></pre>\n"
        if tag == "ref":
            address = self.targets.get(element.get("refid"))
            inner = self.convert_children(element)
            return f'<a href="{address}">{inner}</a>' if address else inner
        inner = self.convert_children(element)
        if tag == "para":
            return self.convert_paragraph(inner)
        if tag in ("briefdescription", "detaileddescription", "description"):
            return inner.strip()
        if tag == "computeroutput":
            return f"<code>{inner}</code>"
        raise ValueError(f"headers use <{tag}>, which the manual cannot show yet")

    @staticmethod
    def convert_paragraph(inner):
        """What is set apart in a paragraph of Doxygen stands between paragraphs of HTML."""
        pieces = re.split(r"(<pre>.*?</pre>\n)", inner.strip(), flags=re.DOTALL)
        return "".join(piece if piece.startswith("<pre>") else f"<p>{piece.strip()}</p>\n"
                       for piece in pieces if piece.strip())

    # --- Pages, as Markdown

    def write(self, folder):
        for page in self.pages.values():
            (folder / f"{page.file}.md").write_text(self.make_page(page))
        (folder / "headers.md").write_text(self.make_headers())

    def make_page(self, page):
        parts = [f"# {escape(page.title)}\n\n"]
        if page.element is not None:
            parts.append(self.make_include(page))
            parts.append(self.describe(page.element) + "\n\n")
        if page.parts:
            parts.append(self.make_list_of_parts(page))
        if page.element is not None and page.members:
            parts.append(self.make_overview(page))
        for group in dict.fromkeys(member.group for member in page.members):
            parts.append(self.make_group(page, group))
        return "".join(parts)

    def make_include(self, page):
        include = page.element.findtext("includes")
        if not include:
            return ""
        bases = [base.text for base in page.element.iterfind("basecompoundref")]
        base = f"Derived from `{', '.join(bases)}`.\n\n" if bases else ""
        return f"```cpp\n#include \"{include}\"\n```\n\n{base}"

    def make_list_of_parts(self, page):
        rows = []
        for part in sorted(page.parts, key=lambda part: part.name):
            first = re.match(r"<p>(.*?\.)(?= |</p>)", self.describe(part.element), re.DOTALL)
            within = "With " + ", ".join(inner.name.split("::")[-1] for inner in part.parts) + "."
            rows.append((f'<a href="{part.file}.html"><code>{part.name}</code></a>',
                         first[1] if first else within))
        return make_table("name", "what", rows)

    def make_overview(self, page):
        """All members in short. One without a description has its only place here."""
        items = []
        for member in page.members:
            signature = member.make_signature().rstrip(";").replace("\n", " ")
            code = html.escape(signature, quote=False)
            if self.is_described(member):
                items.append(f'<li><a href="#{member.anchor}"><code>{code}</code></a></li>\n')
            else:
                items.append(f'<li id="{member.anchor}"><code>{code}</code></li>\n')
        return make_list(items)

    def is_described(self, member):
        return bool(self.describe(member.element)) or member.element.find("enumvalue") is not None

    def make_group(self, page, group):
        members = [member for member in page.members if member.group == group]
        described = [member for member in members if self.is_described(member)]
        if not described:
            return ""
        parts = [f"## {escape(group)}\n\n", self.describe_group(page, group)]
        last = None
        for member in described:
            if member.name != last:
                parts.append(f"### {escape(member.name)} {{#{member.anchor}}}\n\n")
            else:
                parts.append(f'<span id="{member.anchor}"></span>\n\n')
            last = member.name
            parts.append(f"```cpp\n{member.make_signature()}\n```\n\n")
            parts.append(self.describe(member.element) + "\n\n")
            parts.append(self.make_values(member))
        return "".join(parts)

    def describe_group(self, page, group):
        if page.element is None:
            return ""
        for section in page.element.iterfind("sectiondef"):
            if section.findtext("header") == group and section.find("description") is not None:
                return self.convert(section.find("description")) + "\n\n"
        return ""

    def make_values(self, member):
        rows = [(f'{value.findtext("name")} {html.escape(value.findtext("initializer") or "")}',
                 self.describe(value)) for value in member.element.iterfind("enumvalue")]
        return make_table("value", "meaning", [(f"<code>{name}</code>", text) for name, text in rows])

    def make_headers(self):
        parts = ["# Headers\n\nWhat each public header declares, and what holds for all of it.\n\n"]
        for header in sorted(self.headers, key=lambda header: header.find("location").get("file")):
            path = header.find("location").get("file")
            parts.append(f"## {escape(path)} {{#{make_header_anchor(path)}}}\n\n")
            parts.append(self.describe(header) + "\n\n")
            items = [(inner.text, self.targets.get(inner.get("refid")))
                     for inner in header.iterfind("innerclass")]
            items += [(member.findtext("name"), self.targets.get(member.get("id")))
                      for member in header.iterfind("sectiondef/memberdef")]
            parts.append(make_list([f'<li><a href="{address}"><code>{name}</code></a></li>\n'
                                    for name, address in items if address]))
        return "".join(parts)

    def make_navigation(self):
        """Namespaces with their classes below them."""
        def make_entries(page):
            first = {"Overview": f"reference/{page.file}.md"}
            classes = [{part.name.split("::")[-1]: f"reference/{part.file}.md"}
                       for part in sorted(page.parts, key=lambda part: part.name)
                       if not part.title.startswith("Namespace")]
            return [first, *classes]
        owners = [page for page in self.pages.values()
                  if page.title.startswith("Namespace") or page.name == NO_NAMESPACE]
        owners.sort(key=lambda page: (not page.name.startswith("Found"), page.name))
        return [*({page.name: make_entries(page)} for page in owners),
                {"Headers": "reference/headers.md"}]

    def list_names(self):
        """Where the functions and classes are that one name means, with and without its scope."""
        places = {}
        for page in self.pages.values():
            if page.element is not None and page.element.get("kind") != "namespace":
                self.note_name(places, page.name, f"{page.file}.html")
            functions = {}
            for member in page.members:
                if member.element.get("kind") == "function":
                    functions.setdefault(member.name, f"{page.file}.html#{member.anchor}")
            for name, address in functions.items():
                self.note_name(places, f"{page.name}::{name}()", address)
        return {name: addresses[0] for name, addresses in places.items() if len(addresses) == 1}

    @staticmethod
    def note_name(places, name, address):
        while name:
            places.setdefault(name, []).append(address)
            name = name.partition("::")[2]

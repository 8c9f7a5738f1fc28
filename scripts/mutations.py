"""Finds the points of a C++ source where one small change makes another program of it."""

import re
from typing import NamedTuple

TOKEN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#[^\n]*)
      | (?P<string>"(?:\\.|[^"\\])*")
      | (?P<char>'(?:\\.|[^'\\])')
      | (?P<number>\d(?:[eE][+-]|[\w.])*)
      | (?P<word>\w+)
      | (?P<sign>->\*|->|::|[-+*<>=!]=|&&|\|\||\+\+|--|<<|>>|.)""",
    re.VERBOSE | re.MULTILINE | re.DOTALL,
)

# Only where the operator stands between blanks: others are part of a type or of a template.
BETWEEN_BLANKS = {
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "+": ["-"], "-": ["+"], "*": ["/"], "&&": ["||"], "||": ["&&"], "==": ["!="], "!=": ["=="],
    "+=": ["-="], "-=": ["+="], "*=": ["+="],
}
ANYWHERE = {
    "++": "--", "--": "++", "true": "false", "false": "true", "max": "min", "min": "max",
    "back": "front", "any_of": "all_of",
    "None": "Tension", "Tension": "Compression", "Compression": "None",
}
CONTROL = {"if", "for", "while", "switch"}
NO_EXPRESSION = CONTROL | {"auto", "case", "const", "constexpr", "default", "do", "else", "static",
                           "struct", "template", "using"}
NOTHING = {"", "{}", "0", "0.0", "false", "nullptr", "std::nullopt"}
LIKE_KINDS = [
    re.compile(pattern, re.DOTALL)
    for pattern in (r"\d[\w.]*", r'".*"', r"&?\w+", r"\w+(::\w+)+", r"\w+(\.|->)\w+",
                    r"[\w:.>-]+(<\w+>)?\(.*\)")
]


class Token(NamedTuple):
    kind: str
    text: str
    start: int
    end: int


class Change(NamedTuple):
    start: int
    end: int
    text: str


class Source:
    def __init__(self, text):
        self.text = text
        self.tokens = [
            Token(match.lastgroup, match[0], match.start(), match.end())
            for match in TOKEN.finditer(text)
            if match.lastgroup != "skip"
        ]
        self.partner = {}  # of each bracket
        self.block = {}  # the innermost bracket a token stands in
        open_brackets = []
        for i, token in enumerate(self.tokens):
            if token.text in ")]}":
                self.partner[i] = open_brackets.pop()
                self.partner[self.partner[i]] = i
            self.block[i] = open_brackets[-1] if open_brackets else None
            if token.text in "([{":
                open_brackets.append(i)

    def at(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def span(self, first, last, text):
        """Puts `text` in the place of the tokens from `first` up to, but without, `last`."""
        return Change(self.tokens[first].start, self.tokens[last - 1].end, text)

    def written(self, first, last):
        return self.text[self.tokens[first].start : self.tokens[last - 1].end] if first < last else ""

    def find_end(self, i, ends):
        """The first of `ends`, or the end of the enclosing brackets, from token `i` on."""
        while i < len(self.tokens) and self.at(i) not in ends and self.at(i) not in ")]}":
            i = self.partner.get(i, i) + 1
        return i

    def changes(self):
        finders = (self.operators, self.constants, self.conditions, self.statements, self.arguments)
        found = {change for finder in finders for i in range(len(self.tokens)) for change in finder(i)}
        return sorted(found)

    def operators(self, i):
        token = self.tokens[i]
        around = self.text[token.start - 1 : token.start] + self.text[token.end : token.end + 1]
        if token.text in BETWEEN_BLANKS and around.isspace() and len(around) == 2:
            for other in BETWEEN_BLANKS[token.text]:
                yield self.span(i, i + 1, other)
        elif token.text == "!" or (token.text == "-" and self.at(i - 1) in ("return", "(", ",", "=")):
            yield self.span(i, i + 1, "")

    def constants(self, i):
        kind, text = self.tokens[i].kind, self.at(i)
        if text in ANYWHERE:
            yield self.span(i, i + 1, ANYWHERE[text])
        elif kind == "string":
            yield self.span(i, i + 1, text[:-1] + 'X"')
        elif kind == "char" and len(text) == 3:
            yield self.span(i, i + 1, f"'{chr(ord(text[1]) + 1)}'")
        elif kind == "number":
            for number in other_numbers(text, self.at(i - 1) == "case"):
                yield self.span(i, i + 1, number)

    def conditions(self, i):
        if self.at(i) in ("if", "while"):
            inside = range(i + 2, self.partner[i + 1])
            if not any(self.at(j) in BETWEEN_BLANKS or self.at(j) in ("!", "=") for j in inside):
                condition = self.written(inside.start, inside.stop)
                yield self.span(inside.start, inside.stop, f"!({condition})")
        elif self.at(i) == "?":
            middle = self.find_end(i + 1, ":")
            end = self.find_end(middle + 1, ",;")
            swapped = f"{self.written(middle + 1, end)} : {self.written(i + 1, middle)}"
            yield self.span(i + 1, end, swapped)

    def is_control_header(self, i):
        """True for what ends the head of an if, a loop or a switch."""
        return self.at(i) in ("else", "do") or (
            self.at(i) == ")" and self.at(self.partner[i] - 1) in CONTROL)

    def is_code(self, block):
        """True for the brace of a function's body or of a block in one."""
        if block is None or self.at(block) != "{":
            return False
        i = block - 1
        while i >= 0 and self.at(i) not in ("{", "}", ";"):
            if self.at(i) in ("namespace", "struct") or (
                    self.at(i) == "class" and self.at(i - 1) not in ("<", ",")):
                return False
            i -= 1
        return True

    def statements(self, i):
        isAfterLabel = self.at(i - 1) == ":" and (self.at(i - 3) == "case" or self.at(i - 2) == "default")
        starts = self.at(i - 1) in ("{", "}", ";") or isAfterLabel or self.is_control_header(i - 1)
        if not starts or not self.is_code(self.block[i]):
            return
        end = self.find_end(i, ";")
        if self.at(end) != ";":
            return
        if self.at(i) == "return":
            isGuarded = self.is_control_header(i - 1) or self.is_control_header(self.block[i] - 1)
            if isGuarded:
                yield self.span(i, end, "")
            elif self.written(i + 1, end) not in NOTHING:
                yield self.span(i, end, "return {}")
        elif self.at(i) in ("break", "continue") or self.is_expression(i):
            yield self.span(i, end, "")

    def is_expression(self, i):
        """True for a call or an assignment, not for a declaration."""
        if self.at(i) in ("*", "++", "--", "static_cast"):
            return True
        while self.at(i + 1) in ("::", ".", "->"):
            i += 2
        if self.tokens[i].kind != "word" or self.at(i) in NO_EXPRESSION:
            return False
        if self.at(i + 1) == "<":  # of a template
            i = next(j for j in range(i, len(self.tokens)) if self.at(j) == ">")
        return self.at(i + 1) in ("=", "(", "[", "++", "--", "+=", "-=", "*=")

    def arguments(self, i):
        """Two arguments of like kind that stand side by side change places."""
        if self.at(i) not in "({" or self.at(i - 1) in CONTROL:
            return
        previous = None
        first = i + 1
        while first < self.partner[i]:
            end = self.find_end(first, ",;")
            if self.at(end) == ";":
                return
            kinds = [kind for kind in LIKE_KINDS if kind.fullmatch(self.written(first, end))]
            if previous and kinds and kinds == previous[2]:
                one, other = self.written(*previous[:2]), self.written(first, end)
                if one != other:
                    yield self.span(previous[0], end, f"{other}, {one}")
            previous = (first, end, kinds)
            first = end + 1


def other_numbers(text, is_label):
    hexadecimal = text.lower().startswith("0x")
    if not hexadecimal and re.search(r"[.eE]", text):
        return [str(2 * float(text) or 1.0)]
    digits, suffix = re.fullmatch(r"(0x[0-9A-Fa-f]+|\d+)(\w*)", text).groups()
    number = int(digits, 0)
    others = [number + 100] if is_label else [number + 1] + [number - 1] * (number > 0)
    return [(hex(other) if hexadecimal else str(other)) + suffix for other in others]

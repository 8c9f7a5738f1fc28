"""What the public headers declare, found without the tool that the manual is made with."""

import re

NOT_FOR_HOSTS = {"xml_view.h"}
ACCESS = r"\b(?:public|protected|private)\s*:(?!:)"
TOKEN = re.compile(rf"[{{}};]|{ACCESS}|[^{{}};]+?(?=[{{}};]|{ACCESS}|$)", re.DOTALL)
SCOPE = re.compile(r"\b(namespace|class|struct|enum)\b(?:\s+[A-Z]+_API)?\s+([\w:]+)")
NAME = re.compile(r"(operator\s*[^\s\w(]+|~?\w+)\s*\(")


def strip(text):
    """The text without comments, texts and what the preprocessor reads."""
    text = re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.DOTALL)
    text = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", "", text, flags=re.MULTILINE)
    return re.sub(r'"(?:[^"\\]|\\.)*"', '""', text)


class Scope:
    def __init__(self, kind, name, isPublic):
        self.kind = kind
        self.name = name
        self.isPublic = isPublic


def find_name(statement):
    """The name of the function that a statement declares, or None."""
    statement = re.sub(r"\b__\w+\s*\([^)]*\)", "", statement)
    if re.match(r"\s*(friend|using|typedef|return|if|for)\b", statement):
        return None
    match = NAME.search(statement)
    return match[1].replace(" ", "") if match else None


def find_functions(path):
    """Scope and name of each public function of a header, as often as it is declared."""
    scopes = [Scope("namespace", "", True)]
    statement = ""
    for token in TOKEN.findall(strip(path.read_text())):
        if token == "{":
            scopes.append(open_scope(statement, scopes))
            yield from declare(statement, scopes[:-1])
            statement = ""
        elif token == "}":
            scopes.pop()
            statement = ""
        elif token == ";":
            yield from declare(statement, scopes)
            statement = ""
        elif re.fullmatch(ACCESS, token):
            scopes[-1].isPublic = token.startswith("public")
            statement = ""
        else:
            statement += token


def open_scope(statement, scopes):
    match = SCOPE.search(statement)
    if 'extern ""' in statement and "(" not in statement:
        return Scope("namespace", "", True)
    if not match or find_name(statement):
        return Scope("body", "", False)
    kind, name = match.groups()
    return Scope(kind, name, kind in ("namespace", "struct"))


def declare(statement, scopes):
    if not all(scope.isPublic and scope.kind in ("namespace", "class", "struct") for scope in scopes):
        return
    name = find_name(statement)
    if name:
        yield "::".join(scope.name for scope in scopes if scope.name), name


def find_all_functions(project):
    for folder in ("include/found", "platform/include/kv"):
        for path in sorted((project / folder).glob("*.h")):
            if path.name not in NOT_FOR_HOSTS:
                yield from find_functions(path)

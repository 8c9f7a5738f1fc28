"""Builds and checks what stands in fenced blocks of the documents; CONTRIBUTING.md has the rules.

samples.py write FOLDER PROJECT DOCUMENT...
    writes the sources of all C++ samples, and samples.cmake, which builds them
samples.py check DOCUMENT PROGRAMS PROJECT BUILD [KVFOUND]
    runs the samples of a document, built in PROGRAMS, and checks the other blocks against the project,
    its build folder and what the program KVFOUND prints
"""

import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
from typing import NamedTuple

SECONDS = 60  # for a sample to end in

# What stands around a block of CMake that is no project of its own, and what such a project may add.
HOST = """cmake_minimum_required(VERSION 3.25)
project(my_host LANGUAGES CXX)
add_executable(my_host main.cpp)
"""
COMPANIONS = "add_library(companions INTERFACE)\n"

# A command that is typed, and all lines up to the next one.
PROMPT = re.compile(r"^\$ (.*)\n((?:(?!\$ ).*\n)*)", re.MULTILINE)

OMISSION = re.compile(r"^ *\.\.\.\n", re.MULTILINE)  # a line that stands for any others


class Block(NamedTuple):
    language: str
    line: int  # of the first line of the text
    text: str


def find_blocks(document):
    blocks = []
    opened = None
    for number, line in enumerate(document.read_text().splitlines(), 1):
        if not line.startswith("```"):
            if opened:
                opened[2].append(line)
        elif opened:
            blocks.append(Block(opened[0], opened[1], "".join(f"{text}\n" for text in opened[2])))
            opened = None
        else:
            opened = (line[3:], number + 1, [])
    if opened:
        sys.exit(f"{document}:{opened[1] - 1}: this block does not end")
    return blocks


def blank_blocks(text):
    """The text without what stands in its blocks; the lines stay."""
    def blank(match):
        return "\n" * match[0].count("\n")
    return re.sub(r"^```.*?^```$", blank, text, flags=re.DOTALL | re.MULTILINE)


def is_program(block):
    return block.language == "cpp" and "int main(" in block.text


def is_type(block):
    """True when the block stands outside of functions: it starts with a type of the host."""
    return block.language == "cpp" and re.match(r"(//.*\n)*(class|struct) ", block.text) is not None


def is_headers(block):
    return block.language == "cpp" and re.fullmatch(r"(#include .*\n|\n)+", block.text) is not None


def is_fragment(block):
    return block.language == "cpp" and not is_program(block) and not is_type(block)


def make_program(document, block):
    return f'#line {block.line} "{document}"\n{block.text}'


def join_growing(blocks):
    """Where a block has nothing but headers, it goes to the top of the first program, and the blocks behind it
    go to the end of that program's main. The blocks, with the whole program in place of all these."""
    at = next((at for at, block in enumerate(blocks) if is_headers(block)), None)
    if at is None:
        return blocks
    first = next(block for block in blocks if is_program(block))
    parts = [block.text for block in blocks[at + 1:] if block.language == "cpp"]
    text = "#undef NDEBUG\n" + blocks[at].text + re.sub(r"\}\n$", "", first.text) + "".join(parts) + "}\n"
    return [block for block in blocks if block.language != "cpp" or block is first] + \
        [first._replace(line=blocks[at].line, text=text)]


def make_fragments(document, blocks):
    """One program of all blocks that are none themselves, which runs the one at a given line."""
    parts = ['#include "prelude.h"\n\nnamespace {\n\n']
    lines = []
    for block in blocks:
        if is_type(block):
            parts.append(make_program(document, block))
        if is_fragment(block):
            lines.append(block.line)
            parts.append(f"struct Line{block.line} : Host {{\n  void run() {{\n"
                         f"{make_program(document, block)}  }}\n}};\n")
    parts.append('}  // namespace\n\nint main(int argc, char** argv) {\n'
                 '  const std::string line = argc > 1 ? argv[1] : "";\n')
    parts += [f'  if (line == "{line}") return Line{line}().run(), 0;\n' for line in lines]
    parts.append("  return 2;\n}\n")
    return "".join(parts)


def name_programs(document, project):
    """What the names of a document's programs begin with; pages of different folders may be named alike."""
    return "_".join(document.resolve().relative_to(project.resolve()).with_suffix("").parts)


def write(folder, project, documents):
    sources = {}
    calls = []
    for document in documents:
        blocks = join_growing(find_blocks(document))
        if not blocks:
            continue
        stem = name_programs(document, project)
        names = []
        if any(is_fragment(block) for block in blocks):
            names.append(f"{stem}_fragments")
            sources[names[-1] + ".cpp"] = make_fragments(document, blocks)
        for number, block in enumerate(filter(is_program, blocks), 1):
            names.append(f"{stem}_program{number}")
            sources[names[-1] + ".cpp"] = make_program(document, block)
        path = document.resolve().relative_to(project.resolve()).as_posix()
        calls.append(f"kvfound_add_samples({path} {' '.join(names)})\n")
    sources["samples.cmake"] = "".join(calls)
    for name, text in sources.items():
        path = folder / name
        if not path.exists() or path.read_text() != text:  # what stays need not be built again
            path.write_text(text)


class Check:
    def __init__(self, document, programs, project, build, kvfound=None):
        self.document = document
        self.programs = programs
        self.project = project
        self.build = build
        self.kvfound = kvfound  # None where it is not built
        self.failures = 0

    def fail(self, block, reason):
        print(f"{self.document.name}:{block.line}: {reason}")
        self.failures += 1

    def run(self, block, *command):
        """What the sample prints. Each runs in a folder of its own that has the examples."""
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "examples").symlink_to(self.project / "examples")
            result = subprocess.run(command, cwd=folder, stdout=subprocess.PIPE,
                                    stderr=subprocess.PIPE, text=True, timeout=SECONDS)
        if result.returncode != 0 or result.stderr:
            self.fail(block, f"ends with {result.returncode}: {result.stderr}")
        return result.stdout

    def run_programs(self, document):
        """What the programs of a document print."""
        stem = name_programs(document, self.project)
        return [self.run(block, self.programs / f"{stem}_program{number}")
                for number, block in enumerate(filter(is_program, join_growing(find_blocks(document))), 1)]

    def check_shell(self, block):
        syntax = subprocess.run(["bash", "-n"], input=block.text, stderr=subprocess.PIPE, text=True)
        if syntax.returncode != 0:
            self.fail(block, syntax.stderr)
        for path in re.findall(r"\b(?:scripts|examples|docs|fuzz|schemas)/[\w./-]+", block.text):
            if not (self.project / path).exists():
                self.fail(block, f"there is no {path}")
        if shutil.which("xmllint"):
            for command in re.findall(r"^xmllint .*", block.text, re.MULTILINE):
                self.check_xmllint(block, command)

    def check_xmllint(self, block, command):
        """Runs it in the project; it tells on standard error what is valid, too."""
        result = subprocess.run(shlex.split(command), cwd=self.project, stderr=subprocess.PIPE,
                                text=True, timeout=SECONDS)
        if result.returncode != 0:
            self.fail(block, result.stderr)

    def check_console(self, block):
        """Types the lines that begin with a prompt, in a folder with the examples, and compares."""
        if self.kvfound is None:
            return
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name) / "examples"
            shutil.copytree(self.project / "examples", folder)
            for command, expected in PROMPT.findall(block.text):
                script = f"kvfound() {{ '{self.kvfound}' \"$@\"; }}\n{command}\n"
                result = subprocess.run(["bash", "-c", script], cwd=folder, stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT, text=True, timeout=SECONDS)
                pieces = [re.escape(piece) for piece in OMISSION.split(expected)]
                if result.returncode > 1 or not re.fullmatch("(.*\n)*".join(pieces), result.stdout):
                    self.fail(block, f"{command} ends with {result.returncode}:\n{result.stdout}")

    def check_cmake(self, block):
        """Configures a host with this block, against an installation or with the project below it."""
        isProject = "project(" in block.text
        isInstalled = not isProject or "find_package(" in block.text
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "companions").mkdir()
            (folder / "companions/CMakeLists.txt").write_text(COMPANIONS)
            (folder / "main.cpp").touch()
            (folder / "KvFound").symlink_to(self.project)
            (folder / "CMakeLists.txt").write_text(("" if isProject else HOST) + block.text)
            commands = [["cmake", "-G", "Ninja", "-S", folder, "-B", folder / "build",
                         f"-DCMAKE_PREFIX_PATH={folder}/prefix"]]
            if isInstalled:
                commands.insert(0, ["cmake", "--install", self.build, "--prefix", folder / "prefix"])
            for command in commands:
                result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                        text=True)
                if result.returncode != 0:
                    return self.fail(block, result.stdout)

    def check_text(self, block, texts):
        def squeeze(text):  # attributes may be wrapped in the document
            return " ".join(text.split()) if block.language == "xml" else f"\n{text}"

        if not block.text.strip() or not any(squeeze(block.text) in squeeze(text) for text in texts):
            self.fail(block, "this text is in no example and printed by no sample")

    def check_table(self, block):
        """Compares an excerpt with what the program shows of the model."""
        if self.kvfound is None:
            return
        pieces = [re.escape(piece) for piece in OMISSION.split(block.text)]
        shown = self.run(block, self.kvfound, "show", "examples/model.xml")
        if not re.fullmatch("(.*\n)*".join(pieces), shown):
            self.fail(block, f"kvfound shows something else:\n{shown}")

    def check(self):
        blocks = join_growing(find_blocks(self.document))
        texts = [path.read_text() for path in (self.project / "examples").iterdir()
                 if path.suffix in (".xml", ".kvml", ".csv")]
        above = self.document.parent.with_suffix(".md")  # its programs print for the folder's pages, too
        texts += self.run_programs(above) if above.exists() else []
        texts += self.run_programs(self.document)
        for block in blocks:
            if is_fragment(block):
                program = self.programs / f"{name_programs(self.document, self.project)}_fragments"
                texts.append(self.run(block, program, str(block.line)))
            elif block.language == "sh":
                self.check_shell(block)
            elif block.language == "cmake":
                self.check_cmake(block)
            elif block.language == "console":
                self.check_console(block)
        for before, block in zip([None, *blocks], blocks):
            if block.language == "text" and before and before.language == "python":
                continue  # tests/python/test_docs.py runs it
            if block.language == "text" and OMISSION.search(block.text):
                self.check_table(block)
            elif block.language in ("text", "xml"):
                self.check_text(block, texts)
        print(f"{len(blocks)} blocks, {self.failures} failures")
        return 1 if self.failures else 0


def main():
    command, *arguments = sys.argv[1:]
    paths = [pathlib.Path(argument) for argument in arguments]
    if command == "write":
        return write(paths[0], paths[1], paths[2:])
    return Check(*paths).check()


if __name__ == "__main__":
    sys.exit(main())

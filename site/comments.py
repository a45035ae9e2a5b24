#!/usr/bin/env python3
"""Prints a header with its plain comments as doxygen's: its input filter.

A comment before a declaration describes it and the declarations that follow without a blank line,
except fields and enumerators with a comment of their own. One behind a declaration describes that
too. The first comment describes the file.
"""

import os
import re
import sys

COMMENT = re.compile(r"/\*.*?\*/|//[^\n]*(?:\n[ \t]*//[^\n]*)*", re.S)
TRAILING = re.compile(r"[ \t]*(/\*.*?\*/|//[^\n]*)", re.S)
CONTAINER = re.compile(r"(template <[^>]*>\s*)?(typedef\s+)?"
                       r"(struct|class|enum|(inline )?namespace|extern \"C\")[^;(=]*$")
DECLARATORS = re.compile(r"^(\s*(?:const\s+)?[\w:]+(?:\s*\*)?)\s+(\w+(?:\[\w+\])?"
                         r"(?:,\s*\w+(?:\[\w+\])?)+);$")


def text_of(comment):
    """The lines of a comment, without its delimiters and common indentation."""
    if comment.startswith("//"):
        return [re.sub(r"^\s*// ?", "", line) for line in comment.split("\n")]
    lines = comment[2:-2].split("\n")
    if any(re.match(r"\s*\*", line) for line in lines[1:-1]):
        lines = [re.sub(r"^\s*\* ?", "", line) for line in lines]
        return [line.rstrip() for line in lines]
    return [lines[0].strip(), *(line.strip() for line in lines[1:])]


def escaped(line):
    """Marks numbered paragraphs, and hides from doxygen what it would take for a command or for the
    name of a file, outside of backquotes."""
    pieces = re.sub(r"^(\d+)\. +", r"\n**\1** ", line.strip()).split("`")
    pieces[::2] = [re.sub(r"(\w+\.h)", r"%\1", re.sub(r"([\\@<>&#])", r"\\\1", piece))
                   for piece in pieces[::2]]
    return "`".join(pieces)


def indentation(line):
    return len(line) - len(line.lstrip())


def paragraph(lines, base):
    """A paragraph as doxygen reads it, and how far text below it is indented."""
    if indentation(lines[0]) >= base + 2:
        return "\n".join(["@verbatim", *lines, "@endverbatim"]), base
    for line in lines:
        if not indentation(line):
            base = 3 if re.match(r"\d+\. ", line) else 0
    return "\n".join(map(escaped, lines)), base


def markup(lines):
    """Comment text as doxygen reads it: what is indented further than text stays as it is."""
    result, base = [], 0
    for piece in re.split(r"\n(?:[ \t]*\n)+", "\n".join(lines).strip("\n")):
        text, base = paragraph(piece.split("\n"), base)
        result.append(text)
    return "\n\n".join(result).replace("@endverbatim\n\n@verbatim\n", "\n").strip()


def block(*texts):
    body = "\n\n".join(text for text in texts if text)
    return f"/**\n{body}\n*/\n" if body else ""


def end_of(text, start, ends):
    """The index behind the statement that begins at `start`, and that of its first brace."""
    depth, at, brace, last = 0, start, None, start
    token = re.compile(r"/\*.*?\*/|//[^\n]*|\"(?:\\.|[^\"\\])*\"|'(?:\\.|[^'\\])*'|.", re.S)
    while at < len(text):
        piece = token.match(text, at).group()
        if depth == 0 and piece in ends:
            return last if piece == "}" else at + 1, brace
        if piece in "({[":
            if piece == "{" and depth == 0 and brace is None:
                brace = at
            depth += 1
        elif piece in ")}]":
            depth -= 1
            if piece == "}" and depth == 0 and re.match(r"[ \t]*(\n|//)", text[at + 1:] + "\n"):
                return at + 1, brace
        at += len(piece)
        if not piece.isspace() and not piece.startswith(("//", "/*")):
            last = at
    return at, brace


class Header:
    def __init__(self, text):
        self.text = text
        self.out = []

    def convert(self, at, ends):
        """Converts declarations from `at` to the brace that closes their container."""
        group, first = "", True
        while at < len(self.text):
            space = re.compile(r"\s*").match(self.text, at).group()
            if space.count("\n") > 1:
                group = ""
            self.out.append(space)
            at += len(space)
            if at == len(self.text) or self.text[at] == "}":
                break
            comment = COMMENT.match(self.text, at)
            if comment:
                group, first = markup(text_of(comment.group())), True
                at = comment.end()
            elif self.text[at] == "#":
                at = self.directive(at, group)
            elif label := re.compile(r"(public|private):").match(self.text, at):
                self.out.append(label.group())
                at = label.end()
            else:
                at = self.declaration(at, ends, group, first)
                first = False
        return at

    def directive(self, at, group):
        end = re.compile(r"(?:[^\n\\]|\\.)*", re.S).match(self.text, at).end()
        line = self.text[at:end]
        self.out.append((block(group) if line.startswith("#define") else "") + line)
        return end

    def declaration(self, at, ends, group, first):
        end, brace = end_of(self.text, at, ends)
        if brace is not None and CONTAINER.match(self.text[at:brace]):
            return self.container(at, brace, group)
        statement = self.text[at:end]
        trailing = TRAILING.match(self.text, end)
        note = markup(text_of(trailing.group(1))) if trailing else ""
        if note and not first and "(" not in statement:
            group = ""
        if not statement.rstrip().endswith("= delete;"):
            for part in self.parts(statement):
                self.out.append(block(group, note) + part + "\n")
        return trailing.end() if trailing else end

    @staticmethod
    def parts(statement):
        several = DECLARATORS.match(statement)
        if not several:
            return [statement]
        return [f"{several[1]} {name.strip()};" for name in several[2].split(",")]

    def container(self, at, brace, group):
        head = self.text[at:brace]
        hidden = head.strip() == "namespace detail"
        if re.search(r"namespace|extern", head):
            group = ""
        head = head.replace("inline namespace v1", 'extern "C++"').removeprefix("typedef ")
        self.out.append(("/// @cond\n" if hidden else block(group)) + head + "{")
        at = self.convert(brace + 1, ",}" if head.lstrip().startswith("enum") else ";")
        end = re.compile(r"\}[^;\n]*;?").match(self.text, at).end()
        tail = "};" if self.text[end - 1] == ";" else "}"
        self.out.append(tail + ("\n/// @endcond\n" if hidden else "\n"))
        return end


def converted(path):
    text = open(path, encoding="utf-8").read()
    first = COMMENT.match(text)
    header = Header(text)
    header.out.append(block(f"@file {os.path.basename(path)}", markup(text_of(first.group()))))
    header.convert(first.end(), ";")
    return "".join(header.out)


if __name__ == "__main__":
    sys.stdout.write(converted(sys.argv[1]))

"""The exports of the JavaScript module with the comments that stand before them."""

import re

# What is exported, and the class of what loadVistrel returns.
PUBLIC = re.compile(r"^(?:export (?:async )?|(?=class Vistrel ))(function|class) (\w+)(\(.*?\))?",
                    re.M)
MEMBER = re.compile(r"^  (?:(get) )?([a-z]\w*)\((.*?)\) \{", re.M)


def comment_before(text, at):
    lines = text[:at].removesuffix("\n").split("\n")
    found = []
    while lines and lines[-1].strip().startswith("//"):
        found.insert(0, lines.pop().strip().removeprefix("//").removeprefix(" "))
    return "\n".join(found)


def directive(kind, signature, comment, body=""):
    if not comment:
        raise SystemExit(f"wasm/vistrel.mjs: {signature} has no comment")
    inner = "\n".join("   " + line if line else "" for line in f"{comment}\n\n{body}".split("\n"))
    return f".. js:{kind}:: {signature}\n\n{inner.rstrip()}\n\n"


def members(text, start):
    """The public members of the class that begins there."""
    body = text[start:text.index("\n}\n", start)]
    result = ""
    for member in MEMBER.finditer(body):
        if member[2] != "constructor":
            kind = "attribute" if member[1] else "method"
            signature = member[2] if member[1] else f"{member[2]}({member[3]})"
            result += directive(kind, signature, comment_before(body, member.start()))
    return result


def introduction(text):
    lines = [line.removeprefix("//").removeprefix(" ") for line in
             text[:text.index("\n\n")].split("\n")]
    return "\n".join(lines).replace(".\n\n  const", ".\n\n.. code-block:: js\n\n  const", 1)


def pages(root, _):
    text = (root / "wasm" / "vistrel.mjs").read_text(encoding="utf-8")
    title = "JavaScript: vistrel.mjs"
    parts = [f"{title}\n{'=' * len(title)}\n\n{introduction(text)}\n\n"]
    for found in PUBLIC.finditer(text):
        signature = found[2] + (found[3] or "")
        body = members(text, found.start()) if found[1] == "class" else ""
        parts.append(directive(found[1], signature, comment_before(text, found.start()), body))
    return {"javascript.rst": "".join(parts)}

"""The man pages as HTML, by mandoc."""

import gzip
import re
import subprocess

INTRODUCTION = """# Command line

The man pages of `vistrel` and of its commands. `man vistrel-develop` shows the same text, and
`vistrel develop --help` a shorter one. [The program](/docs/program.md) explains by examples.

"""


def linked(html, names):
    """Makes references to pages such as vistrel-info(1) links, and headings fit below a title."""
    html = re.sub(r"<(/?)h([12])", lambda tag: f"<{tag[1]}h{int(tag[2]) + 1}", html)
    html = re.sub(r"<table class=\"(head|foot)\">.*?</table>", "", html, flags=re.S)
    return re.sub(r"(?:<b>)?\b([\w-]+)(?:</b>)?\(1\)",
                  lambda name: f'<a href="{name[1]}.html">{name[1]}</a>(1)' if name[1] in names
                  else name[0], html)


def page(name, source, names):
    html = subprocess.run(["mandoc", "-T", "html", "-O", "fragment"], input=source, check=True,
                          capture_output=True).stdout.decode()
    body = linked(html, names)
    return f"# {name.replace('-', ' ', 1)}\n\n```{{raw}} html\n{body}\n```\n"


def pages(_, build):
    sources = {file.name.removesuffix(".1.gz"): gzip.decompress(file.read_bytes())
               for file in sorted((build / "manual" / "man1").glob("*.1.gz"))}
    toc = "```{toctree}\n" + "".join(f"manual/{name}\n" for name in sources) + "```\n"
    written = {f"manual/{name}.md": page(name, source, sources) for name, source in sources.items()}
    return {"manual.md": INTRODUCTION + toc, **written}

"""A page for each public header, from doxygen's descriptions."""

import re

from tables import table

HOST = ("vistrel_host.h", "vistrel_types.h", "vistrel_finish.h", "vistrel_finish_types.h",
        "vistrel_status.h", "vistrel_version.h")
SECTIONS = ("briefdescription detaileddescription define enum typedef var func innerclass "
            "public-func public-attrib public-type public-static-func")


def title_of(path):
    """The first sentence of the file's comment."""
    comment = re.match(r"(?:/\*|//)\s*(.*?)\s*(?:\*/|\n#|\n\*/)", path.read_text(), re.S)[1]
    text = " ".join(re.sub(r"^\s*(?:\*|//)\s?", "", line) for line in comment.split("\n"))
    return re.match(r".*?(?=\.\s|\.?$)", text)[0]


def page(path):
    title = f"``{path.name}``"
    return (f"{title}\n{'=' * len(title)}\n\n``#include <vistrel/{path.name}>``\n\n"
            f".. doxygenfile:: {path.name}\n   :sections: {SECTIONS}\n")


def contents(title, introduction, paths):
    entries = "".join(f"headers/{path.name}\n" for path in paths)
    rows = ([f"[`{path.name}`](headers/{path.name})", title_of(path)] for path in paths)
    return (f"# {title}\n\n{introduction}\n\n{table(['Header', 'Contents'], rows)}\n"
            f"```{{toctree}}\n:hidden:\n\n{entries}```\n")


def pages(root, _):
    paths = sorted((root / "include" / "vistrel").glob("*.h*"))
    host = [path for name in HOST for path in paths if path.name == name]
    library = [path for path in paths if path.suffix == ".h" and path not in host]
    library.sort(key=lambda path: path.name != "vistrel.h")
    return {
        "host.md": contents("C: libvistrelhost", "For applications: checks every argument. "
                            "[The host layer](/docs/host-api.md) explains it by tasks.", host),
        "library.md": contents("libVistrel", "The entries of libVistrel itself, which checks "
                               "nothing and needs only the C++ standard library.", library),
        **{f"headers/{path.name}.rst": page(path) for path in host + library}}

"""The example programs on a page."""

INTRODUCTION = """# Examples

Complete programs for an installed copy. The tests build and run all of them.

"""
LANGUAGES = {".c": "c", ".cpp": "cpp", ".sh": "sh"}


def pages(root, _):
    parts = [INTRODUCTION]
    for path in sorted((root / "examples").iterdir()):
        if path.suffix in LANGUAGES:
            text = f"```{LANGUAGES[path.suffix]}\n{path.read_text()}```"
            parts.append(f"## {path.name}\n\n{text}\n\n")
    return {"examples.md": "".join(parts)}

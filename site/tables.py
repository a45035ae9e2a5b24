"""Tables in Markdown."""


def cell(value):
    return "" if value is None else str(value).replace("|", r"\|").replace("\n", " ")


def table(heads, rows):
    heads = list(heads)
    lines = [heads, ["---"] * len(heads), *rows]
    return "".join("| " + " | ".join(cell(value) for value in line) + " |\n" for line in lines)


def code(value):
    return f"`{value}`" if value not in (None, "") else ""

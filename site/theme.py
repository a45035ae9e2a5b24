"""Mends Debian's build of the theme, whose sources were not joined: it takes a style sheet from the
server's root, has no dark colours for those who prefer them, and a script that imports another."""

import re


def mend_styles(path):
    text = path.read_text().replace("/javascript/normalize.css/", "../")
    dark = re.search(r'body\[data-theme="dark"\] (\{[^}]*\})', text)[1]
    path.write_text(text + "\n@media screen and (prefers-color-scheme: dark) {\n"
                    f'  body:not([data-theme="light"]) {dark}\n}}\n')


def mend_script(folder):
    script = folder / "furo.js"
    text = script.read_text().replace('import Gumshoe from "./gumshoe-patched.js";', "")
    script.write_text((folder / "gumshoe-patched.js").read_text() + text)


def mend(static):
    mend_styles(static / "styles" / "furo.css")
    mend_script(static / "scripts")

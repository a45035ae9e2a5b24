"""Reads built pages: what they define and what they refer to."""

import functools
import html.parser
import pathlib
import re
import urllib.parse


class Page(html.parser.HTMLParser):
    """ids: targets of links; links: of anchors; loaded: what a browser fetches to show the page;
    defined: the names that reference pages describe; menu: links of the navigation."""

    def __init__(self, text):
        super().__init__()
        self.ids, self.links, self.loaded, self.menu = set(), [], [], []
        self.defined, self.signature, self.text = set(), False, []
        self.feed(text)
        self.text = "".join(self.text)

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        self.ids.add(attrs.get("id"))
        classes = (attrs.get("class") or "").split()
        self.signature = self.signature or "descname" in classes
        if tag == "a" and "href" in attrs:
            self.links.append(attrs["href"])
            if "reference" in classes:
                self.menu.append(attrs["href"])
        elif tag == "link" and attrs.get("rel") != "canonical":
            self.loaded.append(attrs["href"])
        self.loaded += [attrs[name] for name in ("src", "data", "poster") if attrs.get(name)]

    def handle_endtag(self, tag):
        if tag == "dt":
            self.signature = False

    def handle_data(self, data):
        self.text.append(data)
        if self.signature and data.strip():
            self.defined.add(data.strip())
            self.signature = False


@functools.lru_cache(maxsize=None)
def page(path):
    return Page(path.read_text(encoding="utf-8"))


def pages(site):
    return {path.relative_to(site).as_posix(): page(path) for path in sorted(site.rglob("*.html"))}


def is_elsewhere(url):
    parts = urllib.parse.urlsplit(url)
    return parts.scheme not in ("", "data") or bool(parts.netloc)


def target_of(path, url):
    """The file that a relative URL on a page means, and the anchor in it."""
    parts = urllib.parse.urlsplit(url)
    name = urllib.parse.unquote(parts.path)
    return (path.parent / name).resolve() if name else path, urllib.parse.unquote(parts.fragment)


def styles(site):
    """What style sheets fetch: the sheet and the URL."""
    for path in sorted(pathlib.Path(site).rglob("*.css")):
        for url in re.findall(r"url\(\s*['\"]?([^'\")]+)", path.read_text(encoding="utf-8")):
            yield path, url

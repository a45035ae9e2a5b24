"""Sphinx's configuration. site/build.py passes VISTREL_SITE, its folder of generated files."""

import enum
import os
import re
import sys

build = os.environ["VISTREL_SITE"]
sys.path.insert(0, os.path.join(os.path.dirname(build), "python"))

import vistrel

# The page that converts frames in the browser, if there is one.
html_context = {"has_try": os.path.exists(os.path.join(os.path.dirname(__file__), "../try/build"))}
if html_context["has_try"]:
    tags.add("try")

project = "libVistrel"
copyright = "its authors"
version = release = vistrel.__version__

extensions = ["myst_parser", "breathe", "sphinx.ext.autodoc", "sphinx.ext.napoleon",
              "sphinx_copybutton"]
exclude_patterns = ["docs/images"]
myst_heading_anchors = 4
suppress_warnings = ["myst.header"]

html_theme = "furo"
html_title = project
html_static_path = ["_static", "/usr/share/javascript/normalize.css/normalize.css"]
templates_path = ["_templates"]
html_sidebars = {"**": [f"sidebar/{name}.html" for name in
                        ("brand", "search", "scroll-start", "try", "navigation", "scroll-end")]}
html_css_files = ["site.css"]
html_show_sphinx = False
html_copy_source = False
html_theme_options = {"navigation_with_keys": True}
highlight_language = "none"

breathe_projects = {"vistrel": os.path.join(build, "doxygen", "xml")}
breathe_default_project = "vistrel"
breathe_domain_by_extension = {"h": "c", "hpp": "cpp"}
CXX_HEADERS = ("image_functions", "platform", "solvers", "tone_curves")
breathe_domain_by_file_pattern = {f"*/{name}.h": "cpp" for name in CXX_HEADERS}
breathe_show_include = False
breathe_show_enumvalue_initializer = True

# NumPy's way to write docstrings: names in backquotes are Python's.
default_role = "py:obj"
napoleon_google_docstring = False
napoleon_use_ivar = True
napoleon_use_rtype = False
napoleon_preprocess_types = True
autodoc_typehints = "none"
autodoc_preserve_defaults = True

# Types of C and of the standard libraries, and parameters that docstrings name.
C_TYPES = r"u?int\d+_t|size_t|ptrdiff_t|pthread_mutex_t"
nitpick_ignore_regex = [
    ("c:identifier", C_TYPES),
    ("cpp:identifier", rf"{C_TYPES}|FILE|std(::.*)?|detail.*|(vistrel|VISTREL)_\w+|[A-Z]"),
    ("py:(obj|class)", r"(?!vistrel)[a-z_0-9(.].*|\w+Error"),
]


def link_sources(app, name, text):
    """Pages link to example programs as files of the repository; the site has a page of them."""
    link = r"\]\(((?:\.\./)?)examples(?:/(\w+)\.(\w+))?\)"
    text[0] = re.sub(link, r"](\1reference/examples.md#\2\3)", text[0])
    text[0] = text[0].replace("examples.md#)", "examples.md)")


def hide_enum_signature(app, what, name, thing, options, signature, returned):
    """Enums are looked up, not called with all the arguments of their constructor."""
    if isinstance(thing, enum.EnumMeta):
        return "(value)", None


def setup(app):
    app.connect("autodoc-process-signature", hide_enum_signature)
    app.connect("source-read", link_sources)

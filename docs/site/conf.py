# SPDX-License-Identifier: MIT
"""The settings of the documentation's site."""
import pathlib
import re
import sys

here = pathlib.Path(__file__).parent
sys.path.insert(0, str(here))
from script_lexer import ScriptLexer  # noqa: E402

project = "Quillbar PDF Writer"
version = release = re.search(
    r"^project\(Quillbar VERSION ([0-9.]+)", (here.parent.parent / "CMakeLists.txt").read_text(), re.M).group(1)
extensions = ["myst_parser", "sphinx_copybutton"]
myst_heading_anchors = 4  # the anchors that code hosts give headings

html_theme = "furo"
html_title = "Quillbar PDF Writer"
html_static_path = ["static"]
html_css_files = ["narrow.css"]
html_copy_source = False
html_show_copyright = False
# A page that was opened from the disk may not read another file to show an excerpt of it.
html_show_search_summary = False
html_theme_options = {"top_of_page_button": None}
highlight_language = "none"


def setup(app):
    app.add_lexer("vb", ScriptLexer)
    app.add_lexer("declaration", ScriptLexer)

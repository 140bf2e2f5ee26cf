"""The documentation site: the Markdown pages of the repository where they stand, its example programs, and what Doxygen
reads from the public headers. The pages are plain Markdown; what only the site has is added here.
"""

import itertools
import re
from pathlib import Path
from xml.etree import ElementTree

from docutils import nodes
from sphinx import addnodes
from sphinx.parsers import Parser
from sphinx.util import logging

root = Path(__file__).resolve().parents[2]
headers = root / "build/docs/headers"
logger = logging.getLogger(__name__)

project = "Moxelcore"
author = "the developers of Moxelcore"
extensions = ["myst_parser", "breathe"]
root_doc = "README"
include_patterns = ["*.md", "docs/**.md", "examples/*", "apps/demo/*"]
exclude_patterns = ["build"]
source_suffix = {".md": "markdown", ".cpp": "program"}
primary_domain = "cpp"
highlight_language = "none"
smartquotes = False
nitpick_ignore_regex = [("cpp:identifier", ".*")]  # parts of declarations, of other libraries too

myst_heading_anchors = 4
myst_enable_extensions = ["html_image"]

breathe_projects = {project: str(headers)}
breathe_default_project = project
breathe_default_members = ("members", "undoc-members")

html_theme = "furo"
html_title = project
html_static_path = ["static"]
html_css_files = ["site.css"]
html_additional_pages = {"index": "index.html"}
templates_path = ["templates"]
html_copy_source = False
html_show_copyright = False
html_show_sphinx = False
html_use_index = False

modules = sorted((path.parent.name for path in root.glob("*/include")), key=lambda name: (name != "Core", name))
contents = {
    "README": {
        "Algorithms": ["docs/overview", "docs/morphology"],
        "Guides": ["docs/developers", "examples/README", "docs/host", "docs/performance"],
        "Reference": [f"docs/reference/{module}" for module in modules],
        "Project": ["CONTRIBUTING", "docs/rowPrograms", "CHANGELOG"],
    },
    "docs/overview": {"": ["algorithms/*"]},
    "examples/README": {"": ["*", "/apps/demo/*"]},
}


def tables_of_contents(page):
    for caption, entries in contents.get(page, {}).items():
        options = ":hidden:\n:glob:\n" + (f":caption: {caption}\n" if caption else "")
        yield "```{toctree}\n" + options + "\n" + "\n".join(entries) + "\n```"


def declarations():
    """What the headers declare, as pairs of a header and the directive that shows it."""
    entries = ElementTree.parse(headers / "index.xml").getroot()
    compounds = [ElementTree.parse(headers / f"{entry.get('refid')}.xml").find("compounddef") for entry in entries]
    classes = {compound.findtext("compoundname") for compound in compounds if compound.get("kind") in ("class", "struct")}
    for compound in compounds:
        kind, name = compound.get("kind"), compound.findtext("compoundname")
        if name in classes and name.rpartition("::")[0] not in classes:
            yield header_of(compound), f"{{doxygen{kind}}} {name}"
        if kind == "namespace":
            for member in compound.iter("memberdef"):
                arguments = member.findtext("argsstring") if member.get("kind") == "function" else ""
                yield header_of(member), f"{{doxygen{member.get('kind')}}} {name}::{member.findtext('name')}{arguments}"


def header_of(definition):
    return Path(definition.find("location").get("file"))


def reference(module):
    """A section for each header."""
    shown = sorted((header.stem, directive) for header, directive in declarations() if header.parts[0] == module)
    for header, group in itertools.groupby(shown, lambda pair: pair[0]):
        yield f"## {header}"
        yield from (f"```{directive}\n```" for _, directive in group)


quotation = re.compile(r"<!-- from (\S+) -->\n```\w+\n(.*?)```\n", re.DOTALL)


def check_quotations(app, page, source):
    """Code that is said to be from an example shall stand there."""
    for path, code in quotation.findall(source[0]):
        if code not in (root / path).read_text():
            logger.warning("this does not stand in %s:\n%s", path, code, location=page)


def add_what_only_the_site_has(app, page, source):
    folder, _, name = page.rpartition("/")
    added = [*tables_of_contents(page), *(reference(name) if folder == "docs/reference" else [])]
    source[0] += "".join(f"\n{block}\n" for block in added)


def check_links(app, document):
    """Links shall lead to files, so that they work where the repository is read, too."""
    folder = Path(document["source"]).parent
    for link in document.findall(addnodes.pending_xref):
        if link["reftype"] == "myst" and not (folder / link["reftarget"].partition("#")[0]).exists():
            logger.warning("there is no file %s", link["reftarget"], location=link)


class Program(Parser):
    """A page that shows a source file."""

    supported = ("program",)

    def parse(self, text, document):
        section = nodes.section(ids=["program"])
        section += nodes.title("", Path(document["source"]).name)
        section += nodes.literal_block(text, text, language="cpp")
        document += section


def setup(app):
    app.add_source_parser(Program)
    app.connect("source-read", check_quotations)
    app.connect("source-read", add_what_only_the_site_has)
    app.connect("doctree-read", check_links)

#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
# Copyright (c) 2026 The libCPRData authors
"""Checks the pages of this repository: relative links lead somewhere, to a heading too when they name
one, each paragraph of C++ or QML that a page shows stands in a source that is compiled or linted, and
SECURITY.md names every limit that the library keeps.
With a folder, the links of the pages in it are checked, .md and .html. What is wrong goes to stderr,
a line each; the exit status is 1 then."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LIMITS = ROOT / "libs/libCPRData/private/Limits.h"
SOURCES = {"cpp": ("examples/**/*.cpp", "docs/snippets/*.cpp"), "qml": ("examples/**/*.qml",)}


def pages(root):
    built = root / "build"
    return [page for page in sorted(root.rglob("*")) if page.suffix in (".md", ".html")
            and built not in page.parents]


def without_code(text):
    return re.sub(r"^```.*?^```$|`[^`\n]*`", "", text, flags=re.DOTALL | re.MULTILINE)


def headings(page):
    """The names by which links lead to the headings of a page."""
    text = re.sub(r"^```.*?^```$", "", page.read_text(encoding="utf-8"),
                  flags=re.DOTALL | re.MULTILINE)
    titles = re.findall(r"^#+ (.*)$", text, flags=re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-") for title in titles}


def dead_links(page, text):
    is_html = page.suffix == ".html"
    if is_html:
        targets = re.findall(r'\b(?:href|src|data)="([^"]+)"', text)
    else:
        targets = re.findall(r"\]\(([^)\s]+)\)", without_code(text))
    for target in targets:
        if re.match(r"[a-z]+:", target):
            continue
        name, _, heading = target.partition("#")
        file = page.parent / name if name else page
        if not file.exists():
            yield f"the link to {target} leads nowhere"
        elif heading and not is_html and heading not in headings(file):
            yield f"{name or 'this page'} has no heading #{heading}"


def normalised(text):
    """The lines without their indentation and with single blanks."""
    return "\n".join(" ".join(line.split()) for line in text.strip().splitlines())


def unknown_code(text, sources):
    for language, block in re.findall(r"^```(\w+)\n(.*?)^```$", text, re.DOTALL | re.MULTILINE):
        for paragraph in block.split("\n\n") if language in sources else ():
            if normalised(paragraph) not in sources[language]:
                yield f"this {language} stands in no source: {paragraph.strip().splitlines()[0]}"


def unnamed_limits(text):
    """The limits of the library that the text does not name: with separators, bytes in MiB."""
    rows = re.findall(r"^constexpr \w+ +(max\w+) += (.*);", LIMITS.read_text(encoding="utf-8"),
                      re.MULTILINE)
    for name, formula in rows:
        number = eval(re.sub(r"qint64\((\d+)\)", r"\1", formula).replace("'", ""))
        mebibytes, rest = divmod(number, 1024 * 1024)
        limit = f"{number:,}" if rest or not name.endswith(("Bytes", "Memory")) else f"{mebibytes} MiB"
        if not re.search(rf"(?<![\d.,]){limit}(?!,?\d)", text):
            yield f"{name}, which is {limit}, is not named"
    if not rows:
        yield f"no limits are found in {LIMITS.name}"


def main(root=ROOT):
    sources = {language: "\n".join(normalised(file.read_text(encoding="utf-8"))
                                   for pattern in patterns for file in sorted(ROOT.glob(pattern)))
               for language, patterns in SOURCES.items()}
    wrong = 0
    for page in pages(root):
        text = page.read_text(encoding="utf-8")
        found = list(dead_links(page, text))
        if page.parent in (ROOT, ROOT / "docs"):
            found += unknown_code(text, sources)
        if page == ROOT / "SECURITY.md":
            found += unnamed_limits(text)
        for what in found:
            print(f"{page.relative_to(root)}: {what}", file=sys.stderr)
        wrong += len(found)
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main(*map(pathlib.Path, sys.argv[1:]))

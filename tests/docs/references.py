#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Holds what documents for developers name against the sources.

Usage: references.py ROOT
Links must lead to files and headings that exist. Of what stands between backticks, paths, file
names, classes ("cMy..."), functions ("...()") and names with "::" must exist. A word in capitals
in a path stands for any name. Prints each fault with its place and ends with 1 if there are any.
"""

import os
import pathlib
import re
import sys

DOCUMENTS = ["*.md", "*/README.md", "docs/*.md", "docs/manual/README.md"]
SOURCES = ["*/*.h", "*/*.cpp", "cli/*/*.h", "cli/*/*.cpp", "docs/*/*.h", "docs/*/*.cpp",
           "tests/*/*.h", "tests/*/*.cpp"]
SUFFIXES = "h cpp md in ui ts py cmake csv txt json html css lua yaml qrc supp dict".split()
FOREIGN = re.compile(r"^(Q[A-Z]\w*|Qt|std)$")  # classes and namespaces that are not ours
PLACEHOLDER = re.compile(r"[A-Z]{2,}(_[a-z]+)?\.\w+$(?<!README\.md)")
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
SPAN = re.compile(r"`([^`]+)`")
DECLARED = re.compile(r"\b(?:class|struct|enum class|enum|namespace)\s+(\w+)\b(?!\s*;)")


class Sources:
    """The names of all files, and what the sources declare."""

    def __init__(self, root):
        self.root = root
        self.names = set()
        for _, folders, files in os.walk(root):
            folders[:] = [each for each in folders if each not in ("build", ".git")]
            self.names.update(files)
        texts = [each.read_text(encoding="utf-8") for pattern in SOURCES
                 for each in sorted(root.glob(pattern)) if each.is_file()]
        self.words = set()
        self.words_beside = {}  # of a declared name: the words of the files that declare it
        for text in texts:
            words = set(re.findall(r"\w+", text))
            self.words |= words
            for name in DECLARED.findall(text):
                self.words_beside.setdefault(name, set()).update(words)

    def has_path(self, path, folder):
        """Whether there is such a path, from the root or from the folder of the document."""
        wanted = re.sub(r"\b(?!README\b|CONTRIBUTING\b|CHANGELOG\b|LICENSE\b)[A-Z]{2,}\b|<[^>]+>", "*", path.rstrip("/"))
        return any(any(base.glob(wanted)) for base in (self.root, folder))

    def has_file(self, name):
        return PLACEHOLDER.match(name) is not None or name in self.names

    def has_scoped(self, name):
        """Whether "scope::member" is declared, its member in a file that declares the scope."""
        scope, member = re.sub(r"\(.*", "", name).split("::")[-2:]
        return bool(FOREIGN.match(scope)) or member in self.words_beside.get(scope, ())


def slug(heading):
    """The anchor that a heading gets where the documents are shown."""
    text = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading.strip().lower())
    return re.sub(r"[^\w\- ]", "", text).replace(" ", "-")


def prose(text):
    """The numbered lines outside of code blocks."""
    is_code = False
    for number, line in enumerate(text.splitlines(), 1):
        if line.startswith("```"):
            is_code = not is_code
        elif not is_code and not line.startswith("    "):
            yield number, line


def anchors(document):
    return {slug(line.lstrip("#")) for _, line in prose(document.read_text(encoding="utf-8"))
            if line.startswith("#")}


def link_fault(link, document):
    if re.match(r"[a-z]+:", link):
        return None
    path, _, anchor = link.partition("#")
    target = document.parent / path if path else document
    if not target.exists():
        return f"the link leads nowhere: {link}"
    if anchor and anchor not in anchors(target):
        return f"there is no such heading: {link}"
    return None


def span_faults(span, folder, sources):
    for word in span.split():
        word = word.rstrip(",;")
        if re.search(r"\w::\w", word):
            if not sources.has_scoped(word):
                yield f"nothing declares {word}"
        elif re.fullmatch(r"\w[\w.*/<>-]*/[\w.*/<>-]*", word):
            first = word.split("/")[0]
            is_ours = (sources.root / first).is_dir() or (folder / first).is_dir()
            if first != "build" and is_ours and not sources.has_path(word, folder):
                yield f"there is no {word}"
        elif re.fullmatch(rf"[\w.-]+\.({'|'.join(SUFFIXES)})", word):
            if not sources.has_file(word):
                yield f"there is no file {word}"
        elif re.fullmatch(r"cMy\w+", word):
            if word not in sources.words_beside:
                yield f"there is no class {word}"
        elif re.fullmatch(r"\w+\(\)", word):
            if word[:-2] not in sources.words:
                yield f"there is no function {word}"


def faults_of(document, sources):
    for number, line in prose(document.read_text(encoding="utf-8")):
        shown = re.sub(r"`[^`]*\]\([^`]*`", "", line)  # a link that is only told of
        found = [link_fault(link, document) for link in LINK.findall(shown)]
        for span in SPAN.findall(line):
            found += span_faults(span, document.parent, sources)
        for fault in filter(None, found):
            yield f"{document.relative_to(sources.root)}:{number}: {fault}"


def all_faults(root):
    sources = Sources(root)
    documents = sorted({each for pattern in DOCUMENTS for each in root.glob(pattern)
                        if each.relative_to(root).parts[0] != "build"})
    return [fault for document in documents for fault in faults_of(document, sources)]


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    faults = all_faults(pathlib.Path(sys.argv[1]).resolve())
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What references.py takes, and what it finds."""

import pathlib
import tempfile
import unittest

import references

HEADER = "class cMyThing\n{\n    void act();\n};\nnamespace things { int count(); }\n"


class References(unittest.TestCase):
    def setUp(self):
        self.directory = tempfile.TemporaryDirectory()
        self.addCleanup(self.directory.cleanup)
        self.root = pathlib.Path(self.directory.name)
        (self.root / "image").mkdir()
        (self.root / "image" / "thing.h").write_text(HEADER, encoding="utf-8")
        (self.root / "other.md").write_text("# A heading, `so`\n", encoding="utf-8")

    def faults(self, text):
        (self.root / "page.md").write_text(text + "\n", encoding="utf-8")
        return references.all_faults(self.root)

    def test_what_exists_is_taken(self):
        for text in ["`image/thing.h`", "`thing.h`", "`image/`", "`image/NAME.h`", "`cMyThing`",
                     "`cMyThing::act()`", "`things::count()`", "`count()`", "`QTimer::timeout`",
                     "[a](other.md)", "[a](other.md#a-heading-so)", "[a](https://example.org/x)",
                     "`build/release/bin/x`", "```\n`gone.h`\n```", "    `gone.h`"]:
            with self.subTest(text=text):
                self.assertEqual(self.faults(text), [])

    def test_what_does_not_exist_is_found(self):
        for text, fault in [("`image/gone.h`", "there is no image/gone.h"),
                            ("`gone.h`", "there is no file gone.h"),
                            ("`image/NAME.ui`", "there is no image/NAME.ui"),
                            ("`cMyGone`", "there is no class cMyGone"),
                            ("`cMyThing::gone()`", "nothing declares cMyThing::gone()"),
                            ("`gone::act()`", "nothing declares gone::act()"),
                            ("`gone()`", "there is no function gone()"),
                            ("[a](gone.md)", "the link leads nowhere: gone.md"),
                            ("[a](other.md#gone)", "there is no such heading: other.md#gone")]:
            with self.subTest(text=text):
                self.assertEqual(self.faults(text), [f"page.md:1: {fault}"])


if __name__ == "__main__":
    unittest.main()

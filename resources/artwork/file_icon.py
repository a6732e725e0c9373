#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Draws the icon of a file type: a page with the device's mark, and below it a field whose colour and
# sign tell the types apart. The small drawing is on the grid of 16 pixels, for 16 to 24.
# Usage: file_icon.py settings|sounds|messages [small]
import sys

HEAD = """<!-- SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
     SPDX-License-Identifier: GPL-3.0-or-later -->
<svg xmlns="http://www.w3.org/2000/svg" width="{0}" height="{0}" viewBox="0 0 {0} {0}">
"""

COLOURS = {"settings": "#0B7A8F", "sounds": "#B85C00", "messages": "#6A3FA0"}

LARGE = {
    "settings": """  <g stroke="#FFFFFF" stroke-width="5" stroke-linecap="round">
    <path d="M34 82h60M34 95h60M34 108h60"/>
  </g>
  <g fill="#FFFFFF" stroke="{colour}" stroke-width="3">
    <circle cx="50" cy="82" r="7"/>
    <circle cx="78" cy="95" r="7"/>
    <circle cx="60" cy="108" r="7"/>
  </g>
""",
    "sounds": """  <path d="M34 92v6M46 85v20M58 78v34M70 84v22M82 80v30M94 91v8" stroke="#FFFFFF"
        stroke-width="6" stroke-linecap="round"/>
""",
    "messages": """  <path d="M40 77h48a6 6 0 0 1 6 6v18a6 6 0 0 1-6 6H60l-10 9v-9H40a6 6 0 0 1-6-6V83a6 6 0 0 1 6-6z"
        fill="#FFFFFF"/>
  <path d="M44 88h40M44 97h28" stroke="{colour}" stroke-width="4" stroke-linecap="round"/>
""",
}

SMALL = {
    "settings": """  <path d="M4 10.5h8M4 13.5h8" stroke="#FFFFFF"/>
  <path d="M5 9h2v3H5zM9 12h2v3H9z" fill="#FFFFFF"/>
""",
    "sounds": """  <path d="M4.5 11v2M6.5 9v6M8.5 10v4M10.5 11v2" stroke="#FFFFFF"/>
""",
    "messages": """  <path d="M4 9h8v4H7.5L5.5 15v-2H4z" fill="#FFFFFF"/>
  <path d="M5 10.5h6" stroke="{colour}"/>
""",
}


def large(kind):
    colour = COLOURS[kind]
    return (
        HEAD.format(128)
        + f"""  <path d="M28 6h54l28 28v80a8 8 0 0 1-8 8H28a8 8 0 0 1-8-8V14a8 8 0 0 1 8-8z" fill="#FFFFFF"/>
  <path d="M20 70h90v44a8 8 0 0 1-8 8H28a8 8 0 0 1-8-8z" fill="{colour}"/>
  <path d="M82 6l28 28H88a6 6 0 0 1-6-6z" fill="#BFE3EA"/>
  <path d="M28 6h54l28 28v80a8 8 0 0 1-8 8H28a8 8 0 0 1-8-8V14a8 8 0 0 1 8-8z" fill="none"
        stroke="#053B4A" stroke-width="3"/>
  <g fill="none" stroke="#0B7A8F" stroke-width="6" stroke-linecap="round">
    <rect x="34" y="22" width="24" height="36" rx="12"/>
    <path d="M70 34c4 5 4 11 0 16"/>
    <path d="M81 28c8 8 8 20 0 28"/>
  </g>
  <circle cx="46" cy="33" r="4" fill="#0B7A8F"/>
"""
        + LARGE[kind].format(colour=colour)
        + "</svg>\n"
    )


def small(kind):
    colour = COLOURS[kind]
    return (
        HEAD.format(16)
        + f"""  <path d="M2 0h9l3 3v13H2z" fill="#053B4A"/>
  <path d="M3 1h7.5L13 3.5V8H3z" fill="#FFFFFF"/>
  <path d="M3 8h10v7H3z" fill="{colour}"/>
  <rect x="5" y="2" width="3" height="5" rx="1.5" fill="#0B7A8F"/>
  <path d="M9.5 2.8Q11 4.5 9.5 6.2" fill="none" stroke="#0B7A8F"/>
"""
        + SMALL[kind].format(colour=colour)
        + "</svg>\n"
    )


def main():
    if len(sys.argv) < 2 or sys.argv[1] not in COLOURS:
        sys.exit("usage: file_icon.py settings|sounds|messages [small]")
    draw = small if sys.argv[2:] == ["small"] else large
    sys.stdout.write(draw(sys.argv[1]))


main()

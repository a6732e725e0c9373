#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints the start page's underwater scene as SVG.

The page shows the top left of the picture at its natural size, so what there is to see stands in
the first 1100 x 650 pixels; the rest continues it, so that a large window has no seam.
"""
import random

WIDTH, HEIGHT = 2560, 1440
SUN = 620

random.seed(1004)


def shaft(top, width, reach, lean, opacity):
    """A beam of light that widens with depth."""
    return (f'<path d="M{top} -40 L{top + width} -40 L{top + width * 4 + lean} {reach} '
            f'L{top - width * 2 + lean} {reach} Z" fill="url(#beam)" opacity="{opacity:.2f}"/>')


def bubble(x, y, radius):
    return (f'<circle cx="{x:.0f}" cy="{y:.0f}" r="{radius:.1f}" fill="#bff3ff" fill-opacity="0.05" '
            f'stroke="#c9f5ff" stroke-opacity="0.32" stroke-width="1.3"/>'
            f'<circle cx="{x - radius * .35:.1f}" cy="{y - radius * .35:.1f}" r="{radius * .2:.1f}" '
            f'fill="#ffffff" fill-opacity="0.4"/>')


def fish(x, y, size, opacity):
    return (f'<path transform="translate({x:.0f} {y:.0f}) scale({size:.2f})" opacity="{opacity:.2f}" '
            'fill="#02202c" d="M0 0C6 -6 17 -7 25 0 17 7 6 6 0 0L-9 -5 -7 0 -9 5Z"/>')


def ridge(base, height, colour):
    """A line of rocks along the bottom."""
    points, x = [f'M-20 {HEIGHT + 20}'], -20
    while x < WIDTH + 60:
        points.append(f'L{x} {base - random.random() * height:.0f}')
        x += random.randint(60, 150)
    return f'<path d="{" ".join(points)} L{WIDTH + 60} {HEIGHT + 20}Z" fill="{colour}"/>'


parts = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
         f'viewBox="0 0 {WIDTH} {HEIGHT}">', f'''<defs>
<linearGradient id="deep" x1="0" y1="0" x2="0" y2="1">
<stop offset="0" stop-color="#0b4a5c"/><stop offset="0.16" stop-color="#073747"/>
<stop offset="0.36" stop-color="#052836"/><stop offset="1" stop-color="#020d14"/></linearGradient>
<radialGradient id="sun" gradientUnits="userSpaceOnUse" cx="{SUN}" cy="-120" r="900">
<stop offset="0" stop-color="#3aa2b0" stop-opacity="0.5"/>
<stop offset="0.45" stop-color="#17788b" stop-opacity="0.22"/>
<stop offset="1" stop-color="#083f52" stop-opacity="0"/></radialGradient>
<linearGradient id="beam" x1="0" y1="0" x2="0" y2="1">
<stop offset="0" stop-color="#8fdfe8" stop-opacity="0.3"/>
<stop offset="1" stop-color="#a8eef4" stop-opacity="0"/></linearGradient>
<filter id="soft" x="-20%" y="-20%" width="140%" height="140%"><feGaussianBlur stdDeviation="16"/></filter>
<filter id="haze" x="-20%" y="-20%" width="140%" height="140%"><feGaussianBlur stdDeviation="1"/></filter>
<filter id="grain" x="0" y="0" width="100%" height="100%">
<feTurbulence type="fractalNoise" baseFrequency="0.9" numOctaves="2" seed="7"/>
<feColorMatrix values="0 0 0 0 0.5  0 0 0 0 0.6  0 0 0 0 0.65  0 0 0 0.10 0"/></filter></defs>
<rect width="{WIDTH}" height="{HEIGHT}" fill="url(#deep)"/>
<rect width="{WIDTH}" height="{HEIGHT}" fill="url(#sun)"/>''', '<g filter="url(#soft)">']
parts += [shaft(SUN + spread, width, reach, spread * 1.5, opacity)
          for spread, width, reach, opacity in (
              (-330, 26, 760, .34), (-215, 40, 900, .42), (-120, 18, 700, .36), (-40, 46, 1000, .5),
              (70, 22, 820, .4), (165, 38, 900, .4), (290, 24, 760, .3), (430, 34, 820, .2))]
parts.append('</g><g filter="url(#haze)">')
for _ in range(34):
    distance = random.random()
    parts.append(fish(random.gauss(760, 120), random.gauss(300, 46), .45 + distance * .45,
                      .35 + distance * .4))
parts.append('</g>')
for column, low, high in ((318, 130, 640), (346, 60, 420), (1010, 200, 700), (1900, 200, 1000)):
    parts += [bubble(column + random.gauss(0, 13), random.uniform(low, high),
                     random.choice((2.5, 3, 4, 5, 7, 10))) for _ in range(17)]
parts += [ridge(1180, 90, '#031c27'), ridge(1290, 120, '#02141d'), ridge(1390, 90, '#010b11'),
          f'<rect width="{WIDTH}" height="{HEIGHT}" filter="url(#grain)"/>', '</svg>']
print('\n'.join(parts))

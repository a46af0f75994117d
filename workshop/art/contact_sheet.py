"""Contact sheets: every texture as the game shows it, at the game's scale, on the game's own backgrounds.

The groups and their order are those of data/images_compressed.json5. A sheet is laid out as an SVG file that
places pictures made by `dunkman-texture show`, and rsvg-convert turns it into a PNG.
"""

import hashlib
import os
import re
import subprocess
import tempfile
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

import built_list
from drawings import ROOT, Drawing, all_drawings

LIST = ROOT / "data" / "images_compressed.json5"
FOLDER = ROOT / "docs" / "images"

# Raise this when the layout changes: the sheets are then made again.
LAYOUT_VERSION = 3

# Pixels for one unit on 1920 by 1080; drawings have 100 of their own units for it.
WORLD_SCALE = 130
INTERFACE_SCALE = 107

SHEET_WIDTH = 1920
MARGIN = 24
LABEL_HEIGHT = 26
HEADING_HEIGHT = 56
LARGEST_WIDTH = 936
LARGEST_HEIGHT = 640

INK = "#2b1b3d"
PAPER = "#fff0cf"
BACKGROUNDS = {"sand": ["#ffe3b3", "#f2bd8c"], "sea": ["#1f9fa3", "#14708a"], "sky": ["#7b3b7a", "#f0696b"],
               "paper": ["#fff0cf", "#ffb27a"]}


@dataclass
class Page:
    name: str
    groups: dict  # heading in images_compressed.json5 -> background


PAGES = [
    Page("figures", {"People": "sand", "Weapons": "sand"}),
    Page("beach", {"Beach": "sand", "Lying on the sand": "sand", "Plants and rocks": "sand",
                   "Hints": "sand"}),
    Page("resort", {"Buildings": "sand", "Pier and boats": "sea"}),
    Page("background", {"Sky and sea": "sky", "Ground": "sand"}),
    Page("interface", {"Interface": "sky", "Letters": "sea"}),
]
# Drawn in interface units; everything else is in world units.
INTERFACE_GROUPS = {"Interface", "Letters"}
# Heights in the game, in units, where they are not those of the drawing.
HEIGHTS = {"flamingo": 1.2, "pineapple": 0.8, "zombieBanana": 2.2}
# What must be told apart at a glance is also shown at half its size, as in a small window.
HALF_SIZE_GROUPS = {"People", "Weapons"}


@dataclass
class Item:
    drawing: Drawing
    label: str
    width: int
    height: int
    copies: int = 1
    left: int = 0
    top: int = 0


def read_groups():
    """Heading -> keys. A heading is a comment that stands on a line of its own."""
    groups = {}
    heading = None
    for line in LIST.read_text(encoding="utf-8").splitlines():
        comment = re.fullmatch(r"// ([^:]*).*", line)
        entry = re.match(r'"([^"]+)":', line)
        if comment:
            heading = comment.group(1)
            groups[heading] = []
        elif entry and heading:
            groups[heading].append(entry.group(1))
    groups["Letters"] = ["Font/" + chr(letter) for letter in range(ord("A"), ord("Z") + 1)]
    return groups


def make_item(drawing, heading, largest=1.0):
    scale = (INTERFACE_SCALE if heading in INTERFACE_GROUPS else WORLD_SCALE) / 100
    scale *= 100 * HEIGHTS[drawing.key] / drawing.view_size()[1] if drawing.key in HEIGHTS else 1
    width, height = (side * scale for side in drawing.view_size())
    copies = 2 if drawing.tiling() else 1
    shrink = min(largest, LARGEST_WIDTH / (width * copies), LARGEST_HEIGHT / height)
    label = drawing.key.removeprefix("Font/")
    if shrink < 1:
        label += f" (at {100 * shrink:.0f} %)"
    return Item(drawing, label, max(1, round(width * shrink)), max(1, round(height * shrink)), copies)


def make_items(drawings, heading):
    items = [make_item(drawing, heading) for drawing in drawings]
    if heading in HALF_SIZE_GROUPS:
        items += [make_item(drawing, heading, largest=0.5) for drawing in drawings]
    return items


def place(items, top):
    """Rows from left to right, feet of a row on one line. Returns where the next thing may start."""
    rows, row, used = [], [], MARGIN
    for item in items:
        width = max(item.width * item.copies, 9 * len(item.label))
        if row and used + width + MARGIN > SHEET_WIDTH:
            rows.append(row)
            row, used = [], MARGIN
        item.left = used
        row.append(item)
        used += width + MARGIN
    for row in [*rows, row] if row else rows:
        height = max(item.height for item in row)
        for item in row:
            item.top = top + height - item.height
        top += height + LABEL_HEIGHT + MARGIN
    return top


def page_svg(page, groups, drawings, show):
    body, top = [], 0
    for heading, background in page.groups.items():
        items = make_items([drawings[key] for key in groups.get(heading, []) if key in drawings], heading)
        if not items:
            continue
        bottom = place(items, top + HEADING_HEIGHT)
        body.append(f'<rect y="{top}" width="{SHEET_WIDTH}" height="{bottom - top}" '
                    f'fill="url(#{background})"/>')
        body.append(f'<text x="{MARGIN}" y="{top + 40}" font-size="30" font-weight="bold">{heading}</text>')
        for item, picture in zip(items, show(items)):
            for copy in range(item.copies):
                body.append(f'<image href="{picture}" x="{item.left + copy * item.width}" y="{item.top}" '
                            f'width="{item.width}" height="{item.height}"/>')
            body.append(f'<text x="{item.left}" y="{item.top + item.height + 20}">{item.label}</text>')
        top = bottom
    gradients = [f'<linearGradient id="{name}" x2="0" y2="1"><stop stop-color="{upper}"/>'
                 f'<stop offset="1" stop-color="{lower}"/></linearGradient>'
                 for name, (upper, lower) in BACKGROUNDS.items()]
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{SHEET_WIDTH}" height="{top}">'
            f'<defs>{"".join(gradients)}</defs><g font-family="DejaVu Sans" font-size="15" fill="{INK}" '
            f'stroke="{PAPER}" stroke-width="3" paint-order="stroke">{"".join(body)}</g></svg>'), top


def sheet_key(page):
    return f"contact-sheet-{page.name}"


def sheet_keys():
    return {sheet_key(page) for page in PAGES}


def make_page(tool, page, groups, drawings):
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)

        def show_one(item):
            picture = f"{item.drawing.key.replace('/', '-')}-{item.width}.png"
            subprocess.run([str(tool), "show", str(item.drawing.texture), str(item.width), str(item.height),
                            str(folder / picture)], check=True)
            return picture

        def show(items):
            with ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
                return list(pool.map(show_one, items))

        svg, height = page_svg(page, groups, drawings, show)
        if height == 0:
            return
        (folder / "page.svg").write_text(svg, encoding="utf-8")
        FOLDER.mkdir(parents=True, exist_ok=True)
        subprocess.run(["rsvg-convert", str(folder / "page.svg"), "--output",
                        str(FOLDER / (sheet_key(page) + ".png"))], check=True)


def page_hash(page, groups, drawings, entries):
    lines = [f"layout {LAYOUT_VERSION}"]
    for heading in page.groups:
        lines += [f"{key} {entries.get(key)}" for key in groups.get(heading, []) if key in drawings]
    return hashlib.sha256("\n".join(lines).encode()).hexdigest()[:16]


def make(tool):
    """Makes the sheets whose textures changed."""
    groups = read_groups()
    drawings = {drawing.key: drawing for drawing in all_drawings() if drawing.texture.exists()}
    entries = built_list.read()
    for page in PAGES:
        key = sheet_key(page)
        current = page_hash(page, groups, drawings, entries)
        if entries.get(key) == current and (FOLDER / f"{key}.png").exists():
            continue
        print(f"Contact sheet: {page.name}", flush=True)
        make_page(tool, page, groups, drawings)
        entries[key] = current
    built_list.write(entries)

#!/usr/bin/env python3
"""Draws each menu screen as the game would lay it out, for looking at.

usage: menu_preview.py MENU_XML TEXTURE_DIR OUT_DIR

For 640x480, 800x600 and 1024x768 it loads the menu file the way the game
does (fields carried over between items), applies the game's resolution
conversion, composes the images with ImageMagick (images stretched to their
boxes, widgets at their fixed sizes, the texts the game prints as outlines)
and writes OUT_DIR/<screen>_<W>x<H>.png. It also prints every item's box.
"""
import os
import subprocess
import sys
import xml.etree.ElementTree as ET

KINDS = {"button": 0, "label": 1, "checkbox": 2, "slider": 3, "textbox": 5}


def load(path):
    items, rec = [], {"type": 0, "menu": "", "name": "", "x": 0, "y": 0, "w": 0, "h": 0, "func": ""}
    root = ET.parse(path).getroot()
    for menu in root.findall("menu"):
        if "name" in menu.attrib:
            rec["menu"] = menu.attrib["name"]
        for el in menu:
            for k in ("x", "y", "w", "h"):
                if k in el.attrib:
                    rec[k] = int(el.attrib[k])
            tag = el.tag
            if tag in ("button", "label"):
                rec["type"] = KINDS[tag]
                if "name" in el.attrib:
                    rec["name"] = el.attrib["name"]
                if tag == "button" and "func" in el.attrib:
                    rec["func"] = el.attrib["func"]
            elif tag in ("checkbox", "slider", "textbox"):
                rec["type"] = KINDS[tag]
                rec["name"] = ""
                if "func" in el.attrib:
                    rec["func"] = el.attrib["func"]
                rec["w"], rec["h"] = (128, 32) if tag == "slider" else (32, 32)
            elif tag == "Listbox":
                for ch in el:
                    if ch.tag == "pos":
                        rec.update(type=4, x=int(ch.attrib["x"]), y=int(ch.attrib["y"]), name="", w=32, h=32)
            items.append(dict(rec))
    return items


def convert(items, W, H):
    out = []
    for it in items:
        it = dict(it)
        if W > 640 or H > 480:
            it["y"] = max(0, it["y"] - 20)
            resize = it["type"] == 0 or (it["type"] == 1 and W not in (640, 800))
            if resize and it["name"] != "title.tga":
                it["w"] += W - 640
                if it["type"] == 0:
                    it["w"] = int(it["w"] / 1.2) if W == 800 else it["w"] // 2
                else:
                    it["w"] = it["w"] // 3 if W == 1024 else it["w"] // 4
                it["h"] += H - 480
                if it["type"] == 0:
                    it["h"] = int(it["h"] / 1.5) if H == 600 else it["h"] // 3
                else:
                    it["h"] = it["h"] // 4 if W == 1024 else int(it["h"] / 6.5)
        it["y"] *= int(H * 0.01)
        it["x"] *= int(W * 0.01)
        out.append(it)
    return out


def drawn_boxes(it):
    """Boxes the item occupies on screen: (x0, y0, x1, y1, what)."""
    x, y = it["x"], it["y"]
    t = it["type"]
    if t in (0, 1):
        return [(x, y, x + it["w"], y + it["h"], it["name"])]
    if t == 2:
        return [(x, y, x + 32, y + 32, "checkbox " + it["func"])]
    if t == 3:
        return [(x, y, x + 128, y + 32, "slider " + it["func"])]
    if t == 4:
        return [(x, y, x + 192, y + 32, "listbox")]
    if t == 5:
        return [(x, y, x + 160, y + 32, "textbox " + it["func"])]
    return []


def game_texts(screen, W, H):
    boxes = [(W - 80, 25, W - 80 + 16 + 5 * 10, 41, "version")]
    if screen == "main":
        boxes.append((20, H - 25, 20 + 16 + 24 * 10, H - 9, "web address"))
    if screen == "options":
        boxes.append((20, H - 25, 20 + 16 + 56 * 10, H - 9, "restart notice"))
    if screen == "scores":
        boxes.append((W // 3, 100, W // 3 + 16 + 19 * 10, 100 + 19 * 17 + 16, "score table"))
    if screen == "gameover":
        boxes.append((W // 4, H // 3, W // 4 + 16 + 17 * 10, H // 3 + 16, "final score"))
    return boxes


def main():
    menu, tex, out = sys.argv[1:4]
    os.makedirs(out, exist_ok=True)
    items = load(menu)
    for W, H in ((640, 480), (800, 600), (1024, 768)):
        conv = convert(items, W, H)
        for screen in sorted({i["menu"] for i in conv}):
            args = ["convert", "-size", f"{W}x{H}", "xc:#05070f"]
            print(f"== {screen} {W}x{H}")
            for it in conv:
                if it["menu"] != screen:
                    continue
                for (x0, y0, x1, y1, what) in drawn_boxes(it):
                    print(f"   {what:28s} {x0:5d} {y0:5d} {x1:5d} {y1:5d}")
                t = it["type"]
                if t in (0, 1):
                    src = os.path.join(tex, it["name"])
                    args += ["(", src, "-auto-orient", "-resize", f"{it['w']}x{it['h']}!", ")",
                             "-geometry", f"+{it['x']}+{it['y']}", "-compose", "over", "-composite"]
                elif t in (2, 3, 4):
                    parts = {2: [("box.tga", 0, 32)], 3: [("volume.tga", 0, 128), ("dot.tga", 48, 32)],
                             4: [("arrowlt.tga", 0, 32), ("arrowrt.tga", 160, 32)]}[t]
                    for (img, dx, w) in parts:
                        args += ["(", os.path.join(tex, img), "-auto-orient", ")", "-geometry",
                                 f"+{it['x'] + dx}+{it['y']}", "-compose", "over", "-composite"]
                    if t == 4:
                        args += ["-fill", "white", "-pointsize", "14", "-annotate",
                                 f"+{it['x'] + 36}+{it['y'] + 14}", "800 x 600"]
                elif t == 5:
                    args += ["-fill", "#33336680", "-draw",
                             f"rectangle {it['x']},{it['y']} {it['x'] + 160},{it['y'] + 32}"]
            for (x0, y0, x1, y1, what) in game_texts(screen, W, H):
                print(f"   [{what}]{'':16s} {x0:5d} {y0:5d} {x1:5d} {y1:5d}")
                args += ["-fill", "none", "-stroke", "#ff8040", "-draw", f"rectangle {x0},{y0} {x1},{y1}",
                         "-stroke", "none"]
            args.append(os.path.join(out, f"{screen}_{W}x{H}.png"))
            subprocess.run(args, check=True)


if __name__ == "__main__":
    main()

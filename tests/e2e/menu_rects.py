#!/usr/bin/env python3
"""Prints where the game puts each menu item at a screen size, so the
end-to-end scripts click what a player sees: one line per item,
"screen kind name-or-func x y w h", after the game's resolution rule.

usage: menu_rects.py MENU_XML WIDTH HEIGHT
"""
import sys
import xml.etree.ElementTree as ET

KINDS = {"button": 0, "label": 1, "checkbox": 2, "slider": 3, "Listbox": 4, "textbox": 5}
FIXED = {"checkbox": (32, 32), "slider": (128, 32), "textbox": (32, 32)}


def convert(kind, name, x, y, w, h, W, H):
    if W > 640 or H > 480:
        y = max(y - 20, 0)
        resize = kind in ("button", "label") and not (kind == "label" and W in (640, 800))
        if resize and name != "title.tga":
            w += W - 640
            if kind == "button":
                w = int(w / 1.2) if W == 800 else w // 2
            else:
                w = w // 3 if W == 1024 else w // 4
            h += H - 480
            if kind == "button":
                h = int(h / 1.5) if H == 600 else h // 3
            else:
                h = h // 4 if W == 1024 else int(h / 6.5)
    return x * int(W * 0.01), y * int(H * 0.01), w, h


def main():
    path, W, H = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
    for menu in ET.parse(path).getroot().iter("menu"):
        for item in menu:
            if not isinstance(item.tag, str):
                continue
            x, y, w, h = (int(item.get(k, 0)) for k in "xywh")
            if item.tag in FIXED:
                w, h = FIXED[item.tag]
            if item.tag == "Listbox":
                pos = item.find("pos")
                x, y, w, h = int(pos.get("x")), int(pos.get("y")), 32, 32
            label = item.get("name") or item.get("func") or "-"
            cx, cy, cw, ch = convert(item.tag, item.get("name", ""), x, y, w, h, W, H)
            print(menu.get("name"), item.tag, label.replace(" ", "_"), cx, cy, cw, ch)


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Writes the game's .solid models into data/models/ (run by hand when a
shape changes; the results are kept in the repository as text).

Every model is drawn with a scale, so sizes are chosen in world units, where
the rules live, and divided by that scale:

  frame   scale (1.5, 1.0, 2.7)    ball turns at x = +-8 and z = -16
  ball    scale 0.3                radius 0.4
  brick   scale (0.07, 0.02, 0.02) ball turns within x +-3, z +-4 of the centre
  paddle  scale (0.5, 0.8, 0.5)    ball caught within x +-3; it rests at z - 1

The ball turns when its centre crosses a wall line, so walls, bricks and the
paddle are drawn one ball radius outside those lines where that fits.
Triangles wind counter-clockwise seen from outside (the game culls back
faces). Pictures are sampled with v = 1 at their top row.

usage: make_models.py [OUTPUT_DIR]   (default: data/models beside this repo's tools)
"""
import math
import os
import sys

BALL_R = 0.4


def fmt(v):
    s = f"{v:.4f}".rstrip("0").rstrip(".")
    return "0" if s in ("-0", "") else s


class Model:
    def __init__(self, texture, scale):
        self.texture = texture
        self.scale = scale
        self.tris = []

    def tri(self, a, b, c, outward):
        """a, b, c: (x, y, z, u, v) in world units; flipped if not facing `outward`."""
        ux, uy, uz = (b[i] - a[i] for i in range(3))
        vx, vy, vz = (c[i] - a[i] for i in range(3))
        n = (uy * vz - uz * vy, uz * vx - ux * vz, ux * vy - uy * vx)
        if sum(n[i] * outward[i] for i in range(3)) < 0:
            b, c = c, b
        self.tris.append((a, b, c))

    def quad(self, p, outward):
        self.tri(p[0], p[1], p[2], outward)
        self.tri(p[0], p[2], p[3], outward)

    def text(self):
        sx, sy, sz = self.scale
        lines = [f"NUMPOLLIES {len(self.tris)}"]
        for i, t in enumerate(self.tris):
            lines.append(f"TEXTURE {self.texture}" if i == 0 else "")
            for (x, y, z, u, v) in t:
                lines.append(";".join(fmt(w) for w in (x / sx, y / sy, z / sz, u, v)))
        return "\n".join(lines) + "\n"


def box_faces(m, x0, x1, y0, y1, z0, z1, top_uv, side_uv, bottom=True):
    """Axis box. top_uv/side_uv: (u0, u1, v0, v1) regions of the skin."""
    tu0, tu1, tv0, tv1 = top_uv
    su0, su1, sv0, sv1 = side_uv
    # Top: far edge (z0) at the top of the picture.
    m.quad([(x0, y1, z1, tu0, tv0), (x1, y1, z1, tu1, tv0), (x1, y1, z0, tu1, tv1), (x0, y1, z0, tu0, tv1)], (0, 1, 0))
    if bottom:
        m.quad([(x0, y0, z1, tu0, tv0), (x1, y0, z1, tu1, tv0), (x1, y0, z0, tu1, tv1), (x0, y0, z0, tu0, tv1)], (0, -1, 0))
    # Sides: the side band, its top row at the top edge.
    m.quad([(x0, y0, z1, su0, sv0), (x1, y0, z1, su1, sv0), (x1, y1, z1, su1, sv1), (x0, y1, z1, su0, sv1)], (0, 0, 1))
    m.quad([(x0, y0, z0, su0, sv0), (x1, y0, z0, su1, sv0), (x1, y1, z0, su1, sv1), (x0, y1, z0, su0, sv1)], (0, 0, -1))
    m.quad([(x0, y0, z0, su0, sv0), (x0, y0, z1, su1, sv0), (x0, y1, z1, su1, sv1), (x0, y1, z0, su0, sv1)], (-1, 0, 0))
    m.quad([(x1, y0, z0, su0, sv0), (x1, y0, z1, su1, sv0), (x1, y1, z1, su1, sv1), (x1, y1, z0, su0, sv1)], (1, 0, 0))


def frame():
    m = Model("frame.tga", (1.5, 1.0, 2.7))
    inner_x, inner_z = 8.0 + BALL_R, -16.0 - BALL_R
    width, floor_y, top_y, near_z = 0.8, -0.5, 0.7, 9.0
    rail = (0.502, 0.998)  # upper half of the skin
    # Side rails run the length of the field; the skin repeats every 4 units along them.
    for side in (-1, 1):
        xa, xb = side * inner_x, side * (inner_x + width)
        x0, x1 = min(xa, xb), max(xa, xb)
        z0, z1 = inner_z - width, near_z
        reps = (z1 - z0) / 4.0
        m.quad([(x0, top_y, z1, 0, rail[0]), (x1, top_y, z1, 0, rail[1]),
                (x1, top_y, z0, reps, rail[1]), (x0, top_y, z0, reps, rail[0])], (0, 1, 0))
        for x, out in ((xa, -side), (xb, side)):  # face toward the field, face away
            m.quad([(x, floor_y, z1, 0, rail[0]), (x, top_y, z1, 0, rail[1]),
                    (x, top_y, z0, reps, rail[1]), (x, floor_y, z0, reps, rail[0])], (out, 0, 0))
        m.quad([(x0, floor_y, z1, 0, rail[0]), (x1, floor_y, z1, 0.2, rail[0]),
                (x1, top_y, z1, 0.2, rail[1]), (x0, top_y, z1, 0, rail[1])], (0, 0, 1))
    # Far rail between the side rails.
    x0, x1, z0, z1 = -inner_x, inner_x, inner_z - width, inner_z
    reps = (x1 - x0) / 4.0
    m.quad([(x0, top_y, z1, 0, rail[0]), (x1, top_y, z1, reps, rail[0]),
            (x1, top_y, z0, reps, rail[1]), (x0, top_y, z0, 0, rail[1])], (0, 1, 0))
    for z, out in ((z1, 1), (z0, -1)):
        m.quad([(x0, floor_y, z, 0, rail[0]), (x1, floor_y, z, reps, rail[0]),
                (x1, top_y, z, reps, rail[1]), (x0, top_y, z, 0, rail[1])], (0, 0, out))
    # Floor, in tiles that each show the lower half of the skin once.
    cols, rows = 4, 6
    tw, td = 2 * inner_x / cols, (near_z - inner_z) / rows
    for r in range(rows):
        for c in range(cols):
            xa, xb = -inner_x + c * tw, -inner_x + (c + 1) * tw
            za, zb = inner_z + r * td, inner_z + (r + 1) * td
            m.quad([(xa, floor_y, zb, 0, 0.002), (xb, floor_y, zb, 1, 0.002),
                    (xb, floor_y, za, 1, 0.498), (xa, floor_y, za, 0, 0.498)], (0, 1, 0))
    return m


def ball():
    m = Model("ball.tga", (0.3, 0.3, 0.3))
    lons, lats = 16, 10

    def point(i, j):
        lon = (i / lons - 0.5) * 2 * math.pi  # u = 0.5 faces the player (+z)
        lat = (j / lats - 0.5) * math.pi
        x = BALL_R * math.cos(lat) * math.sin(lon)
        y = BALL_R * math.sin(lat)
        z = BALL_R * math.cos(lat) * math.cos(lon)
        return (x, y, z, i / lons, j / lats)

    for j in range(lats):
        for i in range(lons):
            a, b, c, d = point(i, j), point(i + 1, j), point(i + 1, j + 1), point(i, j + 1)
            mid = [(a[k] + c[k]) / 2 for k in range(3)]
            if j > 0:
                m.tri(a, b, c, mid)
            if j < lats - 1:
                m.tri(a, c, d, mid)
    return m


# Brick: 3.8 x 1 x 2.8 world units. Columns four units apart and rows three
# apart leave a thin gap; the ball turns a little before it touches, since
# the touch box (x +-3, z +-4) is larger than any brick that packs a level.
BRICK_HALF = (1.9, 0.5, 1.4)


def brick(texture):
    m = Model(texture, (0.07, 0.02, 0.02))
    hx, hy, hz = BRICK_HALF
    box_faces(m, -hx, hx, -hy, hy, -hz, hz, (0, 1, 0.127, 1), (0, 1, 0.002, 0.123))
    return m


def paddle():
    m = Model("paddle.tga", (0.5, 0.8, 0.5))
    # Ball caught within +-3 of the centre, so 2.6 + the ball's radius; its
    # resting place is one unit in front (z - 1): the front face is at z - 0.6.
    # Low enough that the camera, behind and above, sees the resting ball over it.
    hx, hz, cut, y0, y1 = 3.0 - BALL_R, 1.0 - BALL_R, 0.3, -0.45, 0.15
    outline = [(-hx, -hz + cut), (-hx + cut, -hz), (hx - cut, -hz), (hx, -hz + cut),
               (hx, hz - cut), (hx - cut, hz), (-hx + cut, hz), (-hx, hz - cut)]
    face_v0, face_v1 = 0.252, 1.0

    def top_uv(x, z):
        return ((x + hx) / (2 * hx), face_v1 - (z + hz) / (2 * hz) * (face_v1 - face_v0))

    centre = (0.0, 0.0)
    for y, up in ((y1, 1), (y0, -1)):
        for k in range(len(outline)):
            a, b = outline[k], outline[(k + 1) % len(outline)]
            pts = [(centre[0], y, centre[1]) + top_uv(*centre),
                   (a[0], y, a[1]) + top_uv(*a), (b[0], y, b[1]) + top_uv(*b)]
            m.tri(*pts, (0, up, 0))
    for k in range(len(outline)):
        a, b = outline[k], outline[(k + 1) % len(outline)]
        nx, nz = (a[0] + b[0]) / 2, (a[1] + b[1]) / 2
        ua, ub = (a[0] + hx) / (2 * hx), (b[0] + hx) / (2 * hx)
        if abs(ua - ub) < 0.05:  # short end faces get a slice of their own
            ub = ua + (0.05 if ua < 0.5 else -0.05)
        m.quad([(a[0], y0, a[1], ua, 0.002), (b[0], y0, b[1], ub, 0.002),
                (b[0], y1, b[1], ub, 0.248), (a[0], y1, a[1], ua, 0.248)], (nx, 0, nz))
    return m


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "..", "data", "models")
    os.makedirs(out, exist_ok=True)
    models = {
        "barr.solid": frame(),
        "ball.solid": ball(),
        "box.solid": brick("brick0.tga"),
        "box2.solid": brick("brick1.tga"),
        "box3.solid": brick("brick2.tga"),
        "box4.solid": brick("brick3.tga"),
        "bumper.solid": paddle(),
    }
    for name, model in models.items():
        with open(os.path.join(out, name), "w", newline="\n") as f:
            f.write(model.text())


if __name__ == "__main__":
    main()

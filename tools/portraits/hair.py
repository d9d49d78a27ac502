"""Hair by style: a part behind the head and a part over the forehead, each with strands."""

import math
import random

from drawing import circle, clip, darker, group, lighter, line, path

# Style: (behind the head, over the forehead, strands on the front) as path data.
SHAPES = {
    "waves": (
        "M200 58 C116 56 90 120 96 186 C99 226 74 252 82 298 C86 328 106 346 92 384 L308 384 C294 346 314 328 318 298 "
        "C326 252 301 226 304 186 C310 120 284 56 200 58 Z",
        "M232 72 C190 58 128 76 110 140 C100 172 104 210 100 246 C112 236 118 226 124 206 C128 192 130 182 136 170 "
        "C174 160 210 134 228 104 C244 134 262 150 268 172 C274 192 278 226 298 248 C296 210 300 170 290 138 "
        "C280 100 260 80 232 72 Z",
        "M222 84 C190 92 144 116 126 166 M230 92 C204 128 166 146 138 158 M240 92 C262 116 280 146 284 184 "
        "M206 76 C164 82 128 110 116 156"),
    "swept": (
        "M120 196 C104 140 120 80 200 74 C280 80 296 140 280 196 Z",
        "M121 192 C104 146 110 104 142 80 C174 52 244 52 270 84 C294 108 294 152 279 192 C277 174 272 158 264 146 "
        "C238 150 190 144 162 124 C150 136 130 156 121 192 Z",
        "M150 112 C176 84 226 76 262 100 M162 120 C190 100 232 98 270 126 M138 130 C150 96 178 74 216 70 "
        "M186 132 C214 126 244 130 266 140"),
    "crop": (
        "M120 196 C104 140 122 82 200 74 C278 82 296 140 280 196 Z",
        "M120 190 C104 140 116 80 178 66 C236 54 288 84 286 142 C287 160 284 176 280 190 C277 170 272 154 264 140 "
        "L250 154 L240 130 L222 148 L208 124 L190 146 L172 126 L156 150 L146 138 C132 150 125 168 120 190 Z",
        "M150 132 C156 104 176 84 204 78 M176 124 C184 102 204 90 230 88 M212 122 C222 104 242 98 262 108 "
        "M242 128 C252 116 264 116 274 128"),
    "sides": (
        "M128 134 C102 146 90 212 126 240 Z M272 134 C298 146 310 212 274 240 Z",
        "M128 128 C104 146 100 186 112 214 C118 220 124 216 125 206 C124 180 126 156 136 138 Z "
        "M272 128 C296 146 300 186 288 214 C282 220 276 216 275 206 C276 180 274 156 264 138 Z",
        "M116 158 C108 176 108 192 114 206 M284 158 C292 176 292 192 286 206"),
    "braid": (
        "M200 66 C124 64 94 122 104 200 C106 224 116 240 134 250 L240 300 C266 306 292 296 302 270 "
        "C306 246 300 222 297 196 C304 122 276 64 200 66 Z",
        "M200 74 C136 66 100 118 112 200 C120 184 126 168 132 156 C160 144 186 120 200 96 C214 120 240 144 268 156 "
        "C274 168 280 184 288 200 C300 118 264 66 200 74 Z",
        "M194 86 C164 96 134 122 122 164 M196 94 C180 118 154 138 130 150 M206 86 C236 96 266 122 278 164 "
        "M204 94 C220 118 246 138 270 150"),
    "cap": (
        "M114 150 C98 178 100 216 116 236 C130 232 128 170 128 150 Z M286 150 C302 178 300 216 284 236 "
        "C270 232 272 170 272 150 Z",
        "M122 152 C108 164 104 190 112 212 C118 206 126 196 126 178 Z M278 152 C292 164 296 190 288 212 "
        "C282 206 274 196 274 178 Z",
        "M118 168 C112 180 112 192 114 202 M282 168 C288 180 288 192 286 202"),
    "bob": (
        "M200 60 C112 58 86 122 92 196 C92 240 90 268 98 296 C122 310 148 306 160 292 L240 292 "
        "C252 306 278 310 302 296 C310 268 308 240 308 196 C314 122 288 58 200 60 Z",
        "M200 62 C120 60 92 124 98 204 C98 244 98 266 106 288 C122 274 130 246 130 218 C128 196 130 182 134 168 "
        "C176 178 226 178 266 168 C270 182 272 196 270 218 C270 246 278 274 294 288 C302 266 302 244 302 204 "
        "C308 124 280 60 200 62 Z",
        "M122 128 C150 112 178 106 206 108 M116 138 C148 120 182 114 214 117 M124 120 C146 106 170 100 194 100 "
        "M110 176 C106 206 107 236 110 262 M117 190 C116 216 116 240 118 258 M291 190 C294 216 293 240 290 262"),
    "beanie": (
        "M118 150 C92 190 104 232 88 270 C84 300 100 312 112 322 L154 300 L246 300 L288 322 C300 312 316 300 312 270 "
        "C296 232 308 190 282 150 Z",
        "M122 150 C104 180 110 214 100 248 C98 268 104 282 114 290 C122 270 120 246 126 224 "
        "C124 200 126 174 138 152 Z M278 150 C296 180 290 214 300 248 C302 268 296 282 286 290 "
        "C278 270 280 246 274 224 C276 200 274 174 262 152 Z",
        "M118 176 C110 204 114 228 108 258 M128 164 C118 190 122 214 116 240 M282 176 C290 204 286 228 292 258"),
}

BRAID_TURNS = 7


def curls(recipe, places, seed):
    """Round curls at (x, y, radius) places, each with a bright crescent on its lit side."""
    chance, parts = random.Random(seed), []
    for x, y, radius in places:
        colour = darker(recipe["hair"], max(0.0, (x - 150) / 420)) if x > 150 else lighter(recipe["hair"], 0.05)
        parts.append(circle(x, y, radius, fill=colour))
        reach = radius * 0.62
        turn = chance.uniform(-25, 25)
        parts.append(f'<g transform="rotate({turn:.0f} {x:.4g} {y:.4g})">' + line(
            f"M{x - reach:.4g} {y + reach * 0.2:.4g} A{reach:.4g} {reach:.4g} 0 0 1 {x + reach * 0.3:.4g} "
            f"{y - reach:.4g}",
            lighter(recipe["hair"], 0.42), 3.2, opacity=0.34) + "</g>")
    return group(parts)


def ring_of_curls(count, radius_x, radius_y, size, start, end, middle=(200, 168)):
    """Places for curls along an arc (degrees, 0 to the right, clockwise from there)."""
    places = []
    for number in range(count):
        angle = math.radians(start + (end - start) * number / (count - 1))
        bump = 4 * math.sin(number * 2.3)
        places.append((middle[0] + (radius_x + bump) * math.cos(angle), middle[1] + (radius_y + bump) * math.sin(angle),
                       size + 3 * math.cos(number * 1.7)))
    return places


def behind(recipe):
    """The hair behind head and shoulders."""
    style = recipe["style"]
    if style == "curls":
        places = (ring_of_curls(15, 112, 104, 35, 138, 402) + ring_of_curls(11, 88, 80, 38, 146, 394)
                  + [(104, 236, 34), (296, 236, 34), (116, 268, 28), (284, 268, 28)])
        return curls(recipe, places, 1)
    if style not in SHAPES:
        return ""
    back = SHAPES[style][0]
    return path(back, fill=darker(recipe["hair"], 0.22)) + path(back, fill="url(#hair)", opacity=0.55)


def over(recipe):
    """The hair over forehead and temples."""
    style = recipe["style"]
    if style == "curls":
        return curls(recipe, ring_of_curls(9, 74, 66, 25, 196, 344), 2)
    if style not in SHAPES:
        return ""
    _, front, strands = SHAPES[style]
    hair = recipe["hair"]
    return (clip("front", front) + path(front, fill="url(#hair)")
            + group([line(strands, lighter(hair, 0.45), 4, opacity=0.30),
                     f'<g transform="translate(5 5)">{line(strands, darker(hair, 0.4), 3, opacity=0.30)}</g>'],
                    clip_path="url(#front)"))


def shadow(recipe):
    """The front hair's soft shadow on the skin."""
    style = recipe["style"]
    front = SHAPES[style][1] if style in SHAPES else "M122 150 C150 104 250 104 278 150 L278 90 L122 90 Z"
    return (f'<g clip-path="url(#face)"><path d="{front}" transform="translate(5 11)" '
            f'fill="{darker(recipe["skin"], 0.55)}" '
            f'opacity="0.34" filter="url(#fine)"/></g>')


def braid(recipe):
    """A thick braid over one shoulder, drawn over the clothes."""
    if recipe["style"] != "braid":
        return ""
    hair, parts = recipe["hair"], []
    for turn in range(BRAID_TURNS):
        x, y, size = 283 - 3.5 * turn, 268 + 23 * turn, 22 - 0.8 * turn
        for side, colour in ((-1, lighter(hair, 0.10)), (1, darker(hair, 0.12))):
            parts.append(f'<g transform="rotate({side * 32} {x} {y})">'
                         f'<ellipse cx="{x + side * 8}" cy="{y}" rx="{size * 0.66:.4g}" ry="{size:.4g}" '
                         f'fill="{colour}"/>'
                         + line(f"M{x + side * 6} {y - size * 0.6:.4g} q{side * 4} {size * 0.6:.4g} 0 {size * 1.1:.4g}",
                                lighter(hair, 0.5), 2.2, opacity=0.28) + "</g>")
    return group(parts)

"""Puts a portrait together: ground, shoulders, head, hair, as one SVG of 400 by 400 units."""

import math

import face
import hair
import wear
from drawing import blur, circle, clip, darker, glow, gradient, group, lighter, line


def definitions(recipe):
    """Gradients, filters and clips that the parts refer to."""
    skin, ground, cloth = recipe["skin"], recipe["ground"], recipe["cloth"]
    cap, scarf = recipe.get("cap", cloth), recipe.get("scarf", cloth)
    opening = "M169 249 C188 255 212 255 231 249 C229 268 216 278 200 278 C184 278 171 268 169 249 Z"
    return "<defs>" + "".join((
        gradient("ground", ((0, lighter(ground, 0.42)), (0.55, ground), (1, darker(ground, 0.24))), (0, 0, 0.6, 1)),
        gradient("skin", ((0, lighter(skin, 0.28)), (0.5, skin), (1, darker(skin, 0.13)))),
        gradient("hair", ((0, lighter(recipe["hair"], 0.24)), (0.45, recipe["hair"]), (1, darker(recipe["hair"], 0.3))),
                 (0, 0, 1, 0.8)),
        gradient("cloth", ((0, lighter(cloth, 0.18)), (0.5, cloth), (1, darker(cloth, 0.26))), (0, 0, 1, 0.6)),
        gradient("cap", ((0, lighter(cap, 0.2)), (0.5, cap), (1, darker(cap, 0.2)))),
        gradient("scarf", ((0, lighter(scarf, 0.22)), (0.5, scarf), (1, darker(scarf, 0.3)))),
        glow("blush", "#ef5f55", recipe.get("blush", 0.34)),
        glow("halo", "#ffffff", 0.42),
        blur("soft", 9), blur("fine", 2.6),
        clip("face", face.face_outline(recipe)), clip("mouth", opening),
        clip("eye-left", face.eye_shape(face.EYE_LEFT)), clip("eye-right", face.eye_shape(face.EYE_RIGHT)),
    )) + "</defs>"


def motif(recipe):
    """A quiet pattern behind the head that speaks of sound."""
    kind, parts = recipe["motif"], []
    if kind == "rings":
        parts = [circle(200, 190, radius, fill="none", stroke="#ffffff", stroke_width=9, opacity=strength)
                 for radius, strength in ((150, 0.20), (186, 0.14), (222, 0.09), (258, 0.06))]
    if kind == "bars":
        for step in range(17):
            height = 60 + 150 * abs(math.sin(step * 0.83 + 0.5)) * (0.5 + 0.5 * abs(math.cos(step * 0.37)))
            parts.append(f'<rect x="{6 + 24 * step}" y="{200 - height / 2:.4g}" width="11" height="{height:.4g}" '
                         f'rx="5.5" '
                         f'fill="#ffffff" opacity="0.15"/>')
    if kind == "waves":
        for row in range(9):
            y = 20 + 46 * row
            data = f"M-20 {y}" + "".join(f" q25 {-18 if turn % 2 else 18} 50 0" for turn in range(9))
            parts.append(line(data, "#ffffff", 7, opacity=0.15))
    if kind == "dots":
        for row in range(12):
            for column in range(12):
                x, y = 12 + 36 * column - (18 if row % 2 else 0), 10 + 34 * row
                distance = math.hypot(x - 200, y - 190)
                parts.append(circle(x, y, max(1.5, 7.5 - distance / 48), fill="#ffffff", opacity=0.20))
    return group(parts)


def head(recipe):
    """The head with everything on it, tilted a little."""
    parts = [
        wear.headscarf_behind(recipe) if recipe["style"] == "scarf" else "",
        face.ears(recipe) if recipe["style"] not in ("scarf", "bob") else "",
        face.face(recipe), face.beard(recipe), face.mouth(recipe), face.eyes(recipe), hair.shadow(recipe),
        face.brows(recipe), face.nose(recipe), hair.over(recipe), face.glasses(recipe), wear.headwear(recipe),
    ]
    return "".join(parts)


def portrait(recipe):
    """The whole portrait as SVG text."""
    closer = f"translate(200 232) scale({recipe.get('zoom', 1.14)}) translate(-200 -232)"
    turn = f"rotate({recipe['tilt']} 200 290)"
    return "".join((
        '<svg xmlns="http://www.w3.org/2000/svg" width="400" height="400" viewBox="0 0 400 400">', definitions(recipe),
        '<rect width="400" height="400" fill="url(#ground)"/>', motif(recipe), circle(170, 150, 190, fill="url(#halo)"),
        group([
            group([hair.behind(recipe)], transform=turn),
            wear.shoulders(recipe), wear.neck(recipe), wear.collar(recipe),
            group([head(recipe)], transform=turn),
            hair.braid(recipe),
        ], transform=closer), "</svg>\n"))

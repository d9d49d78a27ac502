"""Head, features, beard and glasses. The light comes from the upper left."""

from drawing import circle, darker, ellipse, group, lighter, line, mixed, path

EYE_LEFT, EYE_RIGHT, EYE_HEIGHT = 166, 234, 196
WHITE = "#fffdf8"
INK = "#2b1a1c"


def face_outline(recipe):
    """The face's outline as path data, from the recipe's cheek and jaw half-widths and chin height."""
    cheek, jaw, chin = recipe["cheek"], recipe["jaw"], recipe["chin"]
    right, left = 200 + cheek, 200 - cheek
    return (f"M200 92 C{200 + cheek * 0.72:.4g} 92 {right} 128 {right} 184 "
            f"C{right} 214 {200 + jaw + 10} 236 {200 + jaw} 254 "
            f"C{200 + jaw * 0.72:.4g} {chin - 12} {200 + jaw * 0.42:.4g} {chin} 200 {chin} "
            f"C{200 - jaw * 0.42:.4g} {chin} {200 - jaw * 0.72:.4g} {chin - 12} {200 - jaw} 254 "
            f"C{200 - jaw - 10} 236 {left} 214 {left} 184 C{left} 128 {200 - cheek * 0.72:.4g} 92 200 92 Z")


def ears(recipe):
    """Both ears, and rings in them where the recipe has some."""
    skin, parts = recipe["skin"], []
    for side in (-1, 1):
        x = 200 + side * (recipe["cheek"] + 1)
        colour = darker(skin, 0.14) if side > 0 else lighter(skin, 0.05)
        parts.append(ellipse(x, 200, 13, 21, fill=colour))
        parts.append(line(f"M{x + side * 4} 189 c{-side * 8} 2 {-side * 9} 12 {-side * 3} 20", darker(skin, 0.32), 3,
                          opacity=0.55))
        if recipe.get("earrings"):
            gold = recipe["earrings"]
            parts.append(circle(x + side * 2, 229, 6.5, fill=gold if side < 0 else darker(gold, 0.16)))
            parts.append(circle(x + side * 2 - 2, 227, 2, fill=WHITE, opacity=0.8))
    return group(parts)


def face(recipe):
    """The face without features: skin, the shaded side, cheeks, a lit brow, freckles, an age's lines."""
    skin, outline = recipe["skin"], face_outline(recipe)
    inside = [
        path(f"M{196 + recipe['cheek']} 110 C{166 + recipe['cheek']} 180 {184 + recipe['cheek']} 250 214 306 L330 306 "
             f"L330 100 Z", fill=darker(skin, 0.45), opacity=0.26, filter="url(#soft)"),
        ellipse(164, 132, 46, 30, fill=lighter(skin, 0.6), opacity=0.38, filter="url(#soft)"),
        circle(152, 232, 32, fill="url(#blush)"), circle(248, 232, 32, fill="url(#blush)"),
        ellipse(200, 281, 16, 6, fill=lighter(skin, 0.5), opacity=0.35, filter="url(#fine)"),
    ]
    if recipe.get("freckles"):
        spots = ((146, 222), (156, 217), (152, 231), (164, 226), (174, 219), (226, 219),
                 (236, 226), (244, 217), (254, 222), (248, 231), (193, 214), (207, 215))
        inside += [circle(x, y, 1.9, fill=darker(skin, 0.35), opacity=0.45) for x, y in spots]
    if recipe.get("lines"):
        crease = darker(skin, 0.3)
        inside += [line("M163 236 C157 246 156 254 159 262", crease, 2.6, opacity=0.45),
                   line("M237 236 C243 246 244 254 241 262", crease, 2.6, opacity=0.45),
                   line("M150 213 C156 219 168 221 178 217 M250 213 C244 219 232 221 222 217", crease, 2.2,
                        opacity=0.4)]
    return path(outline, fill="url(#skin)") + group(inside, clip_path="url(#face)")


def eye_shape(x):
    """An eye's almond as path data."""
    y = EYE_HEIGHT
    return (f"M{x - 18} {y + 1} C{x - 11} {y - 12} {x + 11} {y - 12} {x + 18} {y + 1} "
            f"C{x + 10} {y + 10} {x - 10} {y + 10} {x - 18} {y + 1} Z")


def eyes(recipe):
    """Both eyes: white, iris cut by the lids, catch light on the left, lid, lashes."""
    parts, y = [], EYE_HEIGHT
    for name, x, side in (("left", EYE_LEFT, -1), ("right", EYE_RIGHT, 1)):
        iris = recipe["eye"]
        parts.append(path(eye_shape(x), fill=WHITE))
        parts.append(group([
            circle(x, y - 1, 10.2, fill=darker(iris, 0.45)), circle(x, y - 1, 8.8, fill=iris),
            ellipse(x + 1, y + 3, 6, 4, fill=lighter(iris, 0.45), opacity=0.5),
            circle(x, y - 1, 4.6, fill="#140d12"),
            path(f"M{x - 20} {y - 12} h40 v8 c-12 -5 -28 -5 -40 0 Z", fill=INK, opacity=0.22),
            circle(x - 3.4, y - 4.4, 3.1, fill="#ffffff"), circle(x + 3.6, y + 2.4, 1.3, fill="#ffffff", opacity=0.8),
        ], clip_path=f"url(#eye-{name})"))
        lid = 4.6 if recipe.get("lashes") else 3.6
        parts.append(line(f"M{x - 18.5} {y + 1} C{x - 11} {y - 12.5} {x + 11} {y - 12.5} {x + 18.5} {y + 1}", INK, lid))
        parts.append(line(f"M{x - 15} {y - 12} C{x - 7} {y - 18} {x + 7} {y - 18} {x + 15} {y - 12}",
                          darker(recipe["skin"], 0.35), 2, opacity=0.5))
        if recipe.get("lashes"):
            parts.append(path(f"M{x + side * 10} {y - 8} C{x + side * 16} {y - 6} {x + side * 21} {y - 7} "
                              f"{x + side * 26} {y - 10} "
                              f"C{x + side * 23} {y - 4} {x + side * 20} {y - 1} {x + side * 17} {y + 2} Z", fill=INK))
    return group(parts)


def brows(recipe):
    """Both eyebrows, a little thicker towards the nose; a straight fringe covers them."""
    if recipe["style"] == "bob":
        return ""
    grey = recipe["style"] in ("sides", "beanie")
    colour = darker(recipe["hair"], 0.28 if grey else 0.22)
    width, parts = recipe.get("brow", 6), []
    for x, side in ((EYE_LEFT, -1), (EYE_RIGHT, 1)):
        inner, outer = x - side * 19, x + side * 23
        parts.append(path(f"M{inner} {171 - width / 3:.4g} C{x - side * 4} {163 - width / 3:.4g} {x + side * 12} "
                          f"{163 - width / 3:.4g} "
                          f"{outer} {176 - width / 5:.4g} C{x + side * 10} {167 + width / 2:.4g} {x - side * 4} "
                          f"{168 + width / 2:.4g} "
                          f"{inner} {173 + width / 2:.4g} C{inner - side * 2} 174 {inner - side * 2} 171 {inner} "
                          f"{171 - width / 3:.4g} Z", fill=colour))
    return group(parts)


def nose(recipe):
    """The nose: a shaded side, a lit ridge, a rounded tip."""
    skin = recipe["skin"]
    parts = [
        path("M206 190 C208 208 218 220 217 229 C214 237 206 237 200 236 C206 224 202 206 206 190 Z",
             fill=darker(skin, 0.4),
             opacity=0.30, filter="url(#fine)"),
        line("M197 196 C196 208 194 216 192 222", lighter(skin, 0.7), 5, opacity=0.45, filter="url(#fine)"),
        ellipse(196, 226, 7, 5.5, fill=lighter(skin, 0.6), opacity=0.5, filter="url(#fine)"),
        line("M186 231 C190 237 196 235 200 238 C204 235 211 237 215 231", darker(skin, 0.42), 3.2, opacity=0.72),
    ]
    if recipe.get("stud"):
        parts.append(circle(216.5, 229, 2.6, fill="#ffe08a"))
    return group(parts)


def mouth(recipe):
    """A laughing mouth with teeth, or a closed smile."""
    skin = recipe["skin"]
    lip = recipe.get("lip", mixed(darker(skin, 0.18), "#c4504f", 0.55))
    smaller = "translate(200 252) scale(0.88) translate(-200 -252)"
    if recipe["mouth"] == "laugh":
        opening = "M169 249 C188 255 212 255 231 249 C229 268 216 278 200 278 C184 278 171 268 169 249 Z"
        return group([
            path("M165 248 C180 243 192 243 200 246 C208 243 220 243 235 248 C233 272 218 283 200 283 "
                 "C182 283 167 272 165 248 Z",
                 fill=lip),
            path(opening, fill="#6a1f2b"),
            group([path("M165 246 H235 V259 C222 264 178 264 165 259 Z", fill=WHITE),
                   ellipse(202, 279, 17, 9, fill="#e0737a")], clip_path="url(#mouth)"),
            line("M186 281 C194 283.500 200 283.500 206 282", lighter(lip, 0.5), 2, opacity=0.6),
        ], transform=smaller)
    return group([
        path("M168 251 C181 249 193 249 200 253 C207 249 219 249 232 251 C222 270 211 275 200 275 "
             "C189 275 178 270 168 251 Z",
             fill=lip, opacity=0.9 if recipe.get("lip") else 0.75),
        line("M165 249 C182 265 218 265 235 249", darker(lip, 0.5), 3.6),
        line("M188 270 C194 272 201 272 206 271", lighter(lip, 0.6), 2.4, opacity=0.55),
        line("M162 245 c-2 3 -1 6 2 8 M238 245 c2 3 1 6 -2 8", darker(skin, 0.4), 2.6, opacity=0.5),
    ], transform=smaller)


def beard(recipe):
    """Beard, stubble or moustache, to be drawn before the mouth."""
    kind = recipe.get("beard")
    cheek, jaw, chin = recipe["cheek"], recipe["jaw"], recipe["chin"]
    moustache = ("M200 241 C190 234 172 238 160 254 C172 256 188 255 200 250 C212 255 228 256 240 254 "
                 "C228 238 210 234 200 241 Z")
    if kind == "moustache":
        bushy = ("M200 240 C188 230 168 236 150 258 C166 268 188 264 200 255 C212 264 234 268 250 258 "
                 "C232 236 212 230 200 240 Z")
        strands = ("M192 242 C180 242 168 248 158 257 M208 242 C220 242 232 248 242 257 "
                   "M194 248 C184 252 176 256 170 259 M206 248 C216 252 224 256 230 259")
        return path(bushy, fill="url(#hair)") + line(strands, darker(recipe["hair"], 0.22), 2, opacity=0.5)
    jawline = (f"M{200 - cheek - 1} 190 C{200 - cheek - 2} 222 {200 - jaw - 15} 244 {200 - jaw - 3} 262 "
               f"C{200 - jaw * 0.7:.4g} {chin + 2} {200 - jaw * 0.4:.4g} {chin + 13} 200 {chin + 13} "
               f"C{200 + jaw * 0.4:.4g} {chin + 13} {200 + jaw * 0.7:.4g} {chin + 2} {200 + jaw + 3} 262 "
               f"C{200 + jaw + 15} 244 {200 + cheek + 2} 222 {200 + cheek + 1} 190 "
               f"C{200 + cheek - 8} 214 {200 + cheek - 16} 232 246 240 C232 236 214 234 200 242 "
               f"C186 234 168 236 154 240 C{200 - cheek + 16} 232 {200 - cheek + 8} 214 {200 - cheek - 1} 190 Z")
    if kind == "full":
        strands = ("M150 256 C158 276 170 290 184 298 M250 256 C242 276 230 290 216 298 "
                   "M176 284 C184 294 192 299 198 300 M138 236 C142 252 148 264 156 274 "
                   "M262 236 C258 252 252 264 244 274")
        return (path(jawline, fill="url(#hair)") + line(strands, lighter(recipe["hair"], 0.25), 2.4, opacity=0.35)
                + path(moustache, fill=lighter(recipe["hair"], 0.06)))
    if kind == "stubble":
        return group([path(jawline, fill=recipe["hair"], opacity=0.36, filter="url(#fine)"),
                      path(moustache, fill=recipe["hair"], opacity=0.30, filter="url(#fine)")], clip_path="url(#face)")
    return ""


def glasses(recipe):
    """Round or square spectacles with a reflection on the lit side."""
    kind = recipe.get("glasses")
    if not kind:
        return ""
    frame, corner, parts = "#2a2732" if kind == "round" else "#5b3a2a", 26 if kind == "round" else 12, []
    for x in (EYE_LEFT - 2, EYE_RIGHT + 2):
        parts.append(f'<rect x="{x - 29}" y="172" width="58" height="52" rx="{corner}" fill="#ffffff" '
                     f'fill-opacity="0.13" '
                     f'stroke="{frame}" stroke-width="5"/>')
        parts.append(line(f"M{x - 18} 194 C{x - 16} 186 {x - 11} 181 {x - 4} 179", "#ffffff", 4, opacity=0.6))
    parts.append(line("M193 194 C196 189 204 189 207 194", frame, 5))
    for side in (-1, 1):
        parts.append(line(f"M{200 + side * 66} 190 L{200 + side * (recipe['cheek'] - 3)} 187", frame, 5))
    return group(parts)

"""Shoulders, collars and what is worn on the head."""

from drawing import circle, clip, darker, ellipse, group, lighter, line, mixed, path

SHOULDERS = ("M36 412 C40 346 74 318 130 304 C152 298 164 290 170 280 H230 "
             "C236 290 248 298 270 304 C326 318 360 346 364 412 Z")
WHITE = "#fffdf8"


def neck(recipe):
    """The neck with the chin's shadow on it."""
    skin = recipe["skin"]
    return (path("M166 252 H234 V292 C234 318 220 334 200 334 C180 334 166 318 166 292 Z", fill="url(#skin)")
            + path("M162 262 C172 292 186 304 202 304 C220 304 232 290 238 262 V290 C230 312 216 322 202 322 "
                   "C186 322 170 310 162 288 Z", fill=darker(skin, 0.5), opacity=0.5, filter="url(#fine)"))


def crew(recipe):
    """A round collar."""
    cloth = recipe["cloth"]
    return (path("M156 290 C160 324 178 344 200 344 C222 344 240 324 244 290 L258 297 C254 338 230 360 200 360 "
                 "C170 360 146 338 142 297 Z", fill=darker(cloth, 0.16))
            + line("M146 304 C152 336 172 356 200 356", lighter(cloth, 0.4), 2.5, opacity=0.5))


def shirt(recipe):
    """An open shirt collar with buttons."""
    cloth = recipe["cloth"]
    return (path("M160 284 L200 342 L240 284 L262 298 L232 366 L200 342 L168 366 L138 298 Z", fill=lighter(cloth, 0.55))
            + path("M200 342 L232 366 L262 298 L240 284 Z", fill=darker(cloth, 0.12), opacity=0.5)
            + line("M200 346 V412", darker(cloth, 0.25), 3)
            + circle(208, 372, 3.4, fill=darker(cloth, 0.45)) + circle(208, 396, 3.4, fill=darker(cloth, 0.45)))


def hood(recipe):
    """A hood with cords, and a small microphone on either side."""
    cloth = recipe["cloth"]
    cords = line("M180 350 V392 M220 350 V386", WHITE, 4.5, opacity=0.9)
    microphones = "".join(
        ellipse(x, 316, 8, 11, fill="#22222c") + ellipse(x - 2, 312, 3, 4, fill="#ffffff", opacity=0.35)
        for x in (128, 272))
    return (path("M126 312 C112 288 130 262 162 262 C164 300 180 328 200 336 C220 328 236 300 238 262 "
                 "C270 262 288 288 274 312 C264 348 234 366 200 366 "
                 "C166 366 136 348 126 312 Z", fill=darker(cloth, 0.16))
            + line("M136 318 C148 346 172 358 200 358", lighter(cloth, 0.35), 3, opacity=0.5) + cords + microphones)


def vest(recipe):
    """A railway worker's safety vest over a jacket."""
    cloth = recipe["cloth"]
    return (path("M160 286 L200 350 L240 286 L256 296 L206 412 H194 L144 296 Z", fill="#2f3a4d")
            + path("M170 290 L200 340 L230 290 L200 412 Z", fill="#3d4b63")
            + path("M104 312 L128 304 L160 412 H128 Z M296 312 L272 304 L240 412 H272 Z", fill="#f3f1c9")
            + path("M272 304 L296 312 L272 412 H256 Z", fill=darker(cloth, 0.2), opacity=0.25)
            + line("M144 297 L192 412 M256 297 L208 412", darker(cloth, 0.25), 4))


def bowtie(recipe):
    """A white shirt with a bow tie under a cardigan."""
    cloth = recipe["cloth"]
    return (path("M160 284 L200 340 L240 284 L258 296 L226 412 H174 L142 296 Z", fill="#f6f2e8")
            + path("M200 340 L240 284 L258 296 L226 412 H204 Z", fill="#d9d3cc")
            + path("M140 296 L176 412 H150 L118 306 Z M260 296 L224 412 H250 L282 306 Z", fill=darker(cloth, 0.2))
            + path("M196 338 C178 322 166 324 160 328 V356 C166 360 178 362 196 346 Z", fill="#c9404e")
            + path("M204 338 C222 322 234 324 240 328 V356 C234 360 222 362 204 346 Z", fill="#a93244")
            + '<rect x="193" y="334" width="14" height="16" rx="5" fill="#8d2739"/>'
            + circle(196, 374, 3, fill="#b8b0a8") + circle(196, 396, 3, fill="#b8b0a8"))


def embroidered(recipe):
    """A wide neckline with gold embroidery."""
    cloth, gold = recipe["cloth"], "#f3c75b"
    dots = "".join(circle(200 + side * x, y, 3, fill=gold)
                   for x, y in ((51, 312), (46, 328), (38, 343), (27, 355), (13, 362)) for side in (-1, 1))
    return (path("M160 286 C162 320 178 342 200 344 C222 342 238 320 240 286 L262 298 C258 344 232 374 200 376 "
                 "C168 374 142 344 138 298 Z", fill=darker(cloth, 0.3))
            + dots + line("M138 300 C142 344 168 374 200 376 C232 374 258 344 262 300", gold, 3)
            + line("M200 378 V412", gold, 4))


def strap(recipe):
    """A jersey crossed by a messenger bag's strap."""
    cloth = recipe["cloth"]
    return (crew(recipe)
            + path("M92 318 L124 305 L300 412 H232 Z", fill="#2b2f3a")
            + line("M110 312 L262 410", "#f3c34b", 4, stroke_dasharray="10 9", stroke_linecap="butt")
            + '<rect x="156" y="340" width="36" height="26" rx="5" transform="rotate(33 174 353)" fill="#aeb4c0"/>'
            + path("M270 304 C326 318 360 346 364 412 H326 C322 360 300 330 258 310 Z", fill=WHITE, opacity=0.20))


def knit(recipe):
    """A thick knitted scarf with one end hanging down."""
    wool, parts = recipe["scarf"], []
    shape = ("M136 292 C132 268 150 262 170 270 C188 284 212 284 230 270 C250 262 268 268 264 292 "
             "C276 316 262 344 236 352 C212 360 188 360 164 352 C138 344 124 316 136 292 Z")
    parts.append(path("M220 340 L262 336 C270 364 270 390 268 412 H222 Z", fill=darker(wool, 0.16)))
    parts.append(path(shape, fill=wool))
    for step in range(7):
        x = 148 + 17 * step
        parts.append(line(f"M{x} 296 C{x - 3} 314 {x - 2} 330 {x + 4} 346", darker(wool, 0.30), 3, opacity=0.4))
    parts.append(path("M136 292 C160 318 240 318 264 292 C262 284 258 278 252 274 C226 300 174 300 148 274 C140 278 "
                      "136 284 136 292 Z",
                      fill=lighter(wool, 0.5), opacity=0.7))
    parts.append(line("M228 372 H266 M226 388 H268", "#d8433f", 6, stroke_linecap="butt"))
    return group(parts)


COLLARS = {"crew": crew, "shirt": shirt, "hood": hood, "vest": vest, "bowtie": bowtie, "embroidered": embroidered,
           "strap": strap, "knit": knit}


def shoulders(recipe):
    """Shoulders in the recipe's cloth, lit on the left."""
    cloth = recipe["cloth"]
    return (path(SHOULDERS, fill="url(#cloth)")
            + line("M70 372 C82 344 106 328 140 318", lighter(cloth, 0.5), 7, opacity=0.30, filter="url(#fine)")
            + line("M330 352 C340 370 344 390 346 412", darker(cloth, 0.4), 9, opacity=0.25, filter="url(#fine)"))


def collar(recipe):
    """What lies round the neck, drawn over it."""
    return COLLARS[recipe["collar"]](recipe) if recipe["collar"] in COLLARS else ""


def headscarf_behind(recipe):
    """The part of a headscarf behind the face."""
    return path("M200 52 C116 52 90 118 96 196 C98 254 118 300 150 326 L250 326 C282 300 302 254 304 196 "
                "C310 118 284 52 200 52 Z",
                fill=darker(recipe["scarf"], 0.28))


def headscarf(recipe):
    """A headscarf with an under-cap, falling over the shoulders."""
    colour = recipe["scarf"]
    frame = ("M200 50 C118 50 90 118 96 196 C98 250 116 296 150 326 C176 338 224 338 250 326 C284 296 302 250 304 196 "
             "C310 118 282 50 200 50 Z M202 110 C244 110 268 146 268 196 C268 244 246 290 204 293 "
             "C158 290 132 244 130 196 C130 146 158 110 202 110 Z")
    drape = ("M144 300 C168 336 232 340 262 296 C292 312 326 330 340 412 H56 C66 344 108 312 144 300 Z")
    folds = ("M110 170 C108 220 118 262 146 300 M118 130 C104 190 114 250 132 284 M286 150 C296 200 288 256 256 302 "
             "M140 84 C162 66 214 58 252 82")
    creases = ("M150 316 C176 346 240 346 268 312 M132 330 C170 372 250 366 292 330 "
               "M112 352 C150 396 240 400 300 356 M262 300 C280 318 286 344 282 380")
    return group([
        path(drape, fill="url(#scarf)"),
        line(creases, darker(colour, 0.35), 4, opacity=0.45),
        line("M96 372 C120 344 140 332 160 326", lighter(colour, 0.45), 5, opacity=0.35),
        path("M134 158 C146 122 168 106 202 106 C236 106 256 124 266 158 C248 134 228 126 201 126 "
             "C172 126 150 136 134 158 Z",
             fill=darker(colour, 0.55)),
        path(frame, fill="url(#scarf)", fill_rule="evenodd"),
        line(folds, darker(colour, 0.35), 3.5, opacity=0.40),
        line("M124 104 C140 76 172 62 206 62", lighter(colour, 0.5), 6, opacity=0.4),
        line("M202 110 C158 110 130 146 130 196 C132 244 158 290 204 293", darker(colour, 0.4), 3, opacity=0.35),
    ])


def cycling_cap(recipe):
    """A cycling cap: dome, stripe, short turned-up peak."""
    colour, trim = recipe["cap"], recipe["trim"]
    dome = "M110 150 C106 84 146 52 202 52 C258 52 296 86 290 150 C250 134 156 134 110 150 Z"
    return group([
        path(dome, fill="url(#cap)"),
        path("M184 53 C176 80 174 108 175 139 H229 C230 108 226 80 216 53 C206 51 194 51 184 53 Z", fill=trim),
        path("M192 52 C188 80 187 108 188 138 H196 V52 Z M208 52 C212 80 215 108 215 138 H206 V52 Z", fill="#35507f",
             opacity=0.9),
        line("M126 116 C132 92 148 76 166 68", "#ffffff", 6, opacity=0.6),
        path("M112 150 C140 116 260 116 288 150 C262 162 232 158 200 158 C168 158 138 162 112 150 Z",
             fill=darker(colour, 0.08)),
        path("M118 147 C146 122 254 122 282 147 C254 138 146 138 118 147 Z", fill=trim),
        line("M118 151 C150 160 250 160 282 151", darker(colour, 0.35), 2.5, opacity=0.5),
    ])


def beanie(recipe):
    """A knitted hat with a ribbed edge and a bobble."""
    colour, parts = recipe["cap"], []
    for angle in range(0, 360, 30):
        wool = lighter("#f3e6cf", 0.2 if angle > 150 else 0.0)
        parts.append(group([ellipse(200, 28, 9, 12, fill=wool)], transform=f"rotate({angle} 200 42)"))
    parts.append(circle(200, 42, 16, fill="#f7ecd9"))
    dome = "M110 146 C104 86 146 52 200 52 C254 52 296 86 290 146 Z"
    parts.append(path(dome, fill="url(#cap)"))
    stitches = []
    for row, y in enumerate((84, 108)):
        for step in range(12):
            x = 98 + 18 * step + (9 if row else 0)
            stitches.append(path(f"M{x} {y} l8 9 l8 -9 l0 7 l-8 9 l-8 -9 Z", fill="#f7ecd9", opacity=0.85))
    parts.append(clip("hat", dome) + group(stitches, clip_path="url(#hat)"))
    parts.append(path("M102 136 C138 120 262 120 298 136 C303 146 303 158 298 168 C262 152 138 152 102 168 "
                      "C97 158 97 146 102 136 Z",
                      fill=darker(colour, 0.12)))
    for step in range(13):
        x = 112 + 14.7 * step
        lift = 12 * (1 - ((x - 200) / 98) ** 2)
        parts.append(line(f"M{x:.4g} {137 - lift:.4g} V{164 - lift:.4g}", darker(colour, 0.4), 3, opacity=0.4))
    parts.append(line("M122 112 C128 92 140 78 156 70", "#ffffff", 6, opacity=0.35))
    return group([path(dome, fill=colour)] + parts)


def headphones(recipe):
    """Large headphones."""
    colour = recipe["phones"]
    shade = mixed(colour, "#5a4c68", 0.35)
    return group([
        line("M108 190 C96 96 138 50 200 50 C262 50 304 96 292 190", colour, 15),
        line("M116 120 C130 78 158 59 196 57", "#ffffff", 4, opacity=0.9),
        line("M284 130 C276 90 256 68 226 58", shade, 5, opacity=0.7),
        '<rect x="88" y="166" width="38" height="72" rx="18" fill="%s"/>' % colour,
        '<rect x="116" y="172" width="13" height="60" rx="6" fill="#3a3440"/>',
        '<rect x="274" y="166" width="38" height="72" rx="18" fill="%s"/>' % shade,
        '<rect x="271" y="172" width="13" height="60" rx="6" fill="#2b2630"/>',
        circle(103, 202, 9, fill="#ff375d"), circle(299, 202, 9, fill="#c92a4c"),
    ])


def headwear(recipe):
    """What covers the head, drawn last."""
    parts = []
    if recipe["style"] == "scarf":
        parts.append(headscarf(recipe))
    if recipe["style"] == "cap":
        parts.append(cycling_cap(recipe))
    if recipe["style"] == "beanie":
        parts.append(beanie(recipe))
    if recipe.get("phones"):
        parts.append(headphones(recipe))
    return group(parts)

"""Small helpers for writing SVG: colours, shapes, and the definitions every portrait shares."""


def channels(colour):
    """Red, green and blue (0 to 255) of a #rrggbb colour."""
    return [int(colour[place:place + 2], 16) for place in (1, 3, 5)]


def mixed(colour, other, amount):
    """The colour moved towards another by an amount of 0 to 1."""
    pairs = zip(channels(colour), channels(other))
    return "#" + "".join(f"{round(first + (second - first) * amount):02x}" for first, second in pairs)


def lighter(colour, amount):
    """The colour moved towards a warm white."""
    return mixed(colour, "#fffaf0", amount)


def darker(colour, amount):
    """The colour moved towards a deep violet, so that shadows stay lively."""
    return mixed(colour, "#1d0f2b", amount)


def path(data, **style):
    """A path element; underscores in style names become hyphens."""
    return f'<path d="{data}"{attributes(style)}/>'


def circle(x, y, radius, **style):
    """A circle element."""
    return f'<circle cx="{x:.4g}" cy="{y:.4g}" r="{radius:.4g}"{attributes(style)}/>'


def ellipse(x, y, radius_x, radius_y, **style):
    """An ellipse element."""
    return f'<ellipse cx="{x:.4g}" cy="{y:.4g}" rx="{radius_x:.4g}" ry="{radius_y:.4g}"{attributes(style)}/>'


def line(data, colour, width, **style):
    """An open, round-ended stroke."""
    style.setdefault("stroke_linecap", "round")
    style.setdefault("stroke_linejoin", "round")
    return path(data, fill="none", stroke=colour, stroke_width=width, **style)


def group(parts, **style):
    """A group of elements."""
    return f"<g{attributes(style)}>" + "".join(parts) + "</g>"


def attributes(style):
    """Style names and values as SVG attributes."""
    return "".join(f' {name.replace("_", "-")}="{value}"' for name, value in style.items())


def gradient(name, stops, direction=(0, 0, 1, 0.45)):
    """A linear gradient; stops are (offset, colour), direction runs in shares of the shape's box."""
    x1, y1, x2, y2 = direction
    inner = "".join(f'<stop offset="{offset}" stop-color="{colour}"/>' for offset, colour in stops)
    return f'<linearGradient id="{name}" x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}">{inner}</linearGradient>'


def glow(name, colour, strength):
    """A radial gradient that fades from a colour to nothing."""
    return (f'<radialGradient id="{name}"><stop offset="0" stop-color="{colour}" stop-opacity="{strength}"/>'
            f'<stop offset="1" stop-color="{colour}" stop-opacity="0"/></radialGradient>')


def clip(name, data):
    """A clip path."""
    return f'<clipPath id="{name}"><path d="{data}"/></clipPath>'


def blur(name, amount):
    """A blur filter with a wide margin."""
    return (f'<filter id="{name}" x="-40%" y="-40%" width="180%" height="180%">'
            f'<feGaussianBlur stdDeviation="{amount}"/></filter>')

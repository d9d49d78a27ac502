"""The program's window as its user knows it: rows, what they show, and tapping their buttons."""

import math

from processes import wait_until

WIDTH, HEIGHT = 390, 844
LIST_TOP = 91  # under the status bar's room and the navigation bar
ROW_HEIGHT = 64
SLIDER_HEIGHT = 44  # what the selected row is higher
FULL_ROWS = (HEIGHT - LIST_TOP) // ROW_HEIGHT
THUMB_WIDTH = 8
BUTTON = (356, 32)  # the middle of a row's button, from the row's corner
RING_RADIUS = 19
RING_STEPS = 120


def is_tint(pixel):
    red, green, blue = pixel
    return red > 200 and green < 130 and blue < 160


def run_count(flags):
    """How many unbroken runs of true there are."""
    return sum(now and not before for before, now in zip([False, *flags], flags))


class ListScreen:
    """Reads the first screenful; the list is never scrolled. The row whose button was tapped last is selected."""

    def __init__(self, display):
        self._display = display
        self._selected = None

    def tap(self, row):
        """Taps the row's button, which selects the row."""
        self._display.tap(BUTTON[0], self._top(row) + BUTTON[1])
        self._selected = row

    def tap_waveform(self, fraction):
        """Taps the slider of the selected row."""
        self._display.tap(*self._place_on_slider(fraction))

    def hold_slider(self, fraction):
        """Puts the finger on the slider of the selected row, until let_go()."""
        self._display.touch(*self._place_on_slider(fraction))

    def move_on_slider(self, begin, end):
        """Moves the finger from one fraction of the slider to another."""
        self._display.move_along(
            [self._place_on_slider(begin + (end - begin) * step / 20) for step in range(21)])

    def let_go(self):
        self._display.let_go()

    def icon(self, row):
        """"play", "pause", or None while there is neither."""
        line, = self._pixels(row, left=BUTTON[0] - 11, top=BUTTON[1], width=22, height=1)
        # A triangle is crossed in one run, a pair of bars in two.
        return {0: None, 1: "play", 2: "pause"}[run_count([is_tint(pixel) for pixel in line])]

    def icons(self):
        return [self.icon(row) for row in range(FULL_ROWS - 1)] # all that fit with one of them grown

    def progress(self, row):
        """The fraction of the button's ring that is filled, from the top on."""
        size = 2 * RING_RADIUS + 3
        lines = self._pixels(row, BUTTON[0] - size // 2, BUTTON[1] - size // 2, size, size)

        def is_filled(step):
            angle = 2 * math.pi * (step + 0.5) / RING_STEPS
            x = size // 2 + RING_RADIUS * math.sin(angle)
            y = size // 2 - RING_RADIUS * math.cos(angle)
            return is_tint(lines[math.floor(y)][math.floor(x)])

        return sum(is_filled(step) for step in range(RING_STEPS)) / RING_STEPS

    def thumb(self):
        """Where the thumb of the selected row is, as a fraction of the slider; None without one."""
        line, = self._display.pixels(0, self._slider_middle(), WIDTH, 1)
        reddish = [x for x, (red, green, blue) in enumerate(line) if red - green > 40 and red - blue > 30]
        # What has been played is tinted too, and lies left of the thumb.
        return (reddish[-1] - THUMB_WIDTH / 2) / (WIDTH - 1) if reddish else None

    def thumb_is_in(self, begin, end):
        thumb = self.thumb()
        return thumb is not None and begin <= thumb <= end

    def has_portrait(self, row):
        lines = self._pixels(row, left=16, top=10, width=44, height=44)
        return len(set(sum(lines, []))) > 1

    def colors_of_list(self):
        lines = self._display.pixels(0, LIST_TOP, WIDTH, HEIGHT - LIST_TOP)
        return set(sum(lines, []))

    def title_is_shown(self):
        lines = self._display.pixels(0, LIST_TOP - 44, WIDTH, 44)
        return len(set(sum(lines, []))) > 2 and is_tint(lines[0][0])

    def wait_until_shown(self):
        wait_until(lambda: self.icons() == ["play"] * (FULL_ROWS - 1), "the list is shown")

    def wait_for_icon(self, row, icon, patience=25):
        wait_until(lambda: self.icon(row) == icon, f"row {row} shows {icon}", patience)

    def _top(self, row):
        grown = self._selected is not None and self._selected < row
        return LIST_TOP + row * ROW_HEIGHT + (SLIDER_HEIGHT if grown else 0)

    def _slider_middle(self):
        return self._top(self._selected) + ROW_HEIGHT + SLIDER_HEIGHT // 2

    def _place_on_slider(self, fraction):
        return round(fraction * (WIDTH - 1)), self._slider_middle()

    def _pixels(self, row, left, top, width, height):
        return self._display.pixels(left, self._top(row) + top, width, height)

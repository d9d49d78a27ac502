"""The program's window as its user knows it: rows, what they show, and tapping them."""

from processes import wait_until

WIDTH, HEIGHT = 390, 844
LIST_TOP = 91  # under the status bar's room and the navigation bar
ROW_HEIGHT = 64
FULL_ROWS = (HEIGHT - LIST_TOP) // ROW_HEIGHT


def is_tint(pixel):
    red, green, blue = pixel
    return red > 200 and green < 130 and blue < 160


def run_count(flags):
    """How many unbroken runs of true there are."""
    return sum(now and not before for before, now in zip([False, *flags], flags))


class ListScreen:
    """Reads the first screenful; the list is never scrolled."""

    def __init__(self, display):
        self._display = display

    def tap(self, row):
        self._display.tap(WIDTH // 2, self._top(row) + ROW_HEIGHT // 2)

    def icon(self, row):
        """"play", "pause", or None while there is neither."""
        line, = self._pixels(row, left=350, top=ROW_HEIGHT // 2, width=24, height=1)
        # A triangle is crossed in one run, a pair of bars in two.
        return {0: None, 1: "play", 2: "pause"}[run_count([is_tint(pixel) for pixel in line])]

    def icons(self):
        return [self.icon(row) for row in range(FULL_ROWS)]

    def position(self, row):
        """The shape of the text that tells how far it has got; None without one."""
        lines = self._pixels(row, left=230, top=34, width=108, height=17)
        shape = tuple(tuple(is_tint(pixel) for pixel in line) for line in lines)
        return shape if any(map(any, shape)) else None

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
        wait_until(lambda: self.icons() == ["play"] * FULL_ROWS, "the list is shown")

    def wait_for_icon(self, row, icon, patience=25):
        wait_until(lambda: self.icon(row) == icon, f"row {row} shows {icon}", patience)

    @staticmethod
    def _top(row):
        return LIST_TOP + row * ROW_HEIGHT

    def _pixels(self, row, left, top, width, height):
        return self._display.pixels(left, self._top(row) + top, width, height)

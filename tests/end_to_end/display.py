"""A display that nobody sees, with a finger on it and an eye for its pixels."""

import ctypes
import ctypes.util
import mmap
import os
import struct
import time

from processes import ChildProcess, wait_until

LEFT_BUTTON = 1
CLIENT_MESSAGE = 33
NO_EVENTS = 0
FOCUS_TO_PARENT = 2


class ClientMessage(ctypes.Structure):
    """The X library's XClientMessageEvent, as long as its XEvent."""

    _fields_ = [
        ("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
        ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
        ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("rest", ctypes.c_long * 16),
    ]


def load_library(name):
    try:
        return ctypes.CDLL(name)
    except OSError as problem:
        raise AssertionError(f"{name} is not installed: nothing can be tapped without it") from problem


class Display:
    """An X server of a test's own."""

    def __init__(self, folder, environment):
        self._x11 = load_library("libX11.so.6")
        self._tests = load_library("libXtst.so.6")
        self._x11.XOpenDisplay.restype = ctypes.c_void_p
        self._x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self._x11.XInternAtom.restype = ctypes.c_ulong
        self._x11.XStringToKeysym.restype = ctypes.c_ulong
        self._connection = None
        reader, writer = os.pipe()
        try:
            self._server = ChildProcess(
                ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1280x1024x24", "-fbdir", folder,
                 "-nolisten", "tcp", "-noreset"],
                environment, folder, pass_fds=[writer])
        finally:
            os.close(writer)
        with os.fdopen(reader) as numbers:
            self.name = ":" + numbers.readline().strip() # ends empty with a server that fails
        if self.name == ":":
            raise AssertionError(f"the display did not start: {self._server.errors}")
        self._connection = ctypes.c_void_p(
            wait_until(lambda: self._x11.XOpenDisplay(self.name.encode()), "the display answers"))
        self._map_pixels(folder / "Xvfb_screen0")

    def stop(self):
        if self._connection:
            self._x11.XCloseDisplay(self._connection)
        self._server.kill()

    def _map_pixels(self, path):
        with path.open("rb") as file:
            self._pixels = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self._pixels[:100]) # a window dump, always of this order
        header_size, colors = header[0], header[19]
        self._first_pixel = header_size + 12 * colors
        self._line_length = header[12]

    def pixels(self, left, top, width, height):
        """Lines of (red, green, blue)."""
        lines = []
        for y in range(top, top + height):
            begin = self._first_pixel + y * self._line_length + 4 * left
            line = self._pixels[begin:begin + 4 * width]
            lines.append([(line[i + 2], line[i + 1], line[i]) for i in range(0, 4 * width, 4)])
        return lines

    def tap(self, x, y):
        self._point_at(x, y)
        self._send_button(1)
        self.let_go()

    def touch(self, x, y):
        """Puts the finger down, until let_go()."""
        self._point_at(x, y)
        self._send_button(1)
        self._x11.XSync(self._connection, 0)

    def move_along(self, places):
        for x, y in places:
            self._point_at(x, y)
            self._x11.XSync(self._connection, 0)
            time.sleep(0.02)

    def let_go(self):
        self._send_button(0)
        self._x11.XSync(self._connection, 0)

    def _point_at(self, x, y):
        self._tests.XTestFakeMotionEvent(self._connection, -1, x, y, 0)

    def _send_button(self, is_down):
        self._tests.XTestFakeButtonEvent(self._connection, LEFT_BUTTON, is_down, 0)

    def press(self, title, modifier, key):
        """Presses a key of the window of that name together with a modifier; both by the X library's names."""
        self._x11.XSetInputFocus(self._connection, ctypes.c_ulong(self._window(title)), FOCUS_TO_PARENT, 0)
        codes = [self._key_code(modifier), self._key_code(key)]
        for code, is_down in [*((code, 1) for code in codes), *((code, 0) for code in reversed(codes))]:
            self._tests.XTestFakeKeyEvent(self._connection, code, is_down, 0)
        self._x11.XSync(self._connection, 0)

    def close_window(self, title):
        """Asks the program to close its window, as a title bar's button does."""
        message = ClientMessage(
            type=CLIENT_MESSAGE, window=self._window(title), format=32,
            message_type=self._atom("WM_PROTOCOLS"))
        message.data[0] = self._atom("WM_DELETE_WINDOW")
        self._x11.XSendEvent(
            self._connection, ctypes.c_ulong(message.window), 0, NO_EVENTS, ctypes.byref(message))
        self._x11.XSync(self._connection, 0)

    def _key_code(self, name):
        symbol = ctypes.c_ulong(self._x11.XStringToKeysym(name.encode()))
        return self._x11.XKeysymToKeycode(self._connection, symbol)

    def _atom(self, name):
        return self._x11.XInternAtom(self._connection, name.encode(), 0)

    def _window(self, title):
        """The largest window of that name: a program has hidden ones too."""
        root, parent = ctypes.c_ulong(), ctypes.c_ulong()
        children, count = ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
        self._x11.XQueryTree(
            self._connection, ctypes.c_ulong(self._x11.XDefaultRootWindow(self._connection)),
            ctypes.byref(root), ctypes.byref(parent), ctypes.byref(children), ctypes.byref(count))
        windows = [children[i] for i in range(count.value) if self._title(children[i]) == title]
        if not windows:
            raise AssertionError(f"there is no window called {title}")
        return max(windows, key=self._width)

    def _title(self, window):
        name = ctypes.c_char_p()
        self._x11.XFetchName(self._connection, ctypes.c_ulong(window), ctypes.byref(name))
        return (name.value or b"").decode()

    def _width(self, window):
        root, numbers = ctypes.c_ulong(), [ctypes.c_uint() for _ in range(6)]
        self._x11.XGetGeometry(
            self._connection, ctypes.c_ulong(window), ctypes.byref(root), *map(ctypes.byref, numbers))
        return numbers[2].value

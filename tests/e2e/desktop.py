"""A desktop of its own for the end-to-end tests.

A virtual X display (Xvfb) with a small window manager (openbox), a session
bus and the accessibility bus, so that the program's windows can be found by
what they show: every button, label, tick box and text the program puts on
the screen is read through the accessibility tree (the program's own toolkit
publishes it), with its place on the screen. The pointer and the keyboard are
driven with xdotool, as a person would; pictures of the screen are taken with
ImageMagick's import.

Nothing here sleeps blindly: every wait polls for what it waits for, and a
wait that runs out leaves a picture and the tree of the windows behind.
"""

import os
import pathlib
import shutil
import signal
import subprocess
import time

POLL = 0.03  # seconds between two looks


class Timeout(AssertionError):
    pass


class Desktop:
    """Xvfb, openbox, a session bus and the accessibility bus, in `root`."""

    def __init__(self, root: pathlib.Path, width=1280, height=1024):
        self.root = pathlib.Path(root)
        self.size = (width, height)
        self.procs = []
        self.env = None
        self.display = None

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *exc):
        self.stop()

    def start(self):
        for sub in ("home", "tmp", "runtime"):
            (self.root / sub).mkdir(parents=True, exist_ok=True)
        os.chmod(self.root / "runtime", 0o700)
        read_end, write_end = os.pipe()
        xvfb = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "%dx%dx24" % self.size, "-nolisten", "tcp"],
            pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(write_end)
        self.procs.append(xvfb)
        number = b""
        with os.fdopen(read_end, "rb") as pipe:
            while not number.endswith(b"\n"):
                chunk = pipe.read(1)
                if not chunk:
                    raise RuntimeError("Xvfb did not start")
                number += chunk
        self.display = ":" + number.decode().strip()
        env = {key: value for key, value in os.environ.items()
               if not key.startswith(("QT_", "DBUS_", "AT_SPI", "WAYLAND", "XDG_"))}
        env.update({
            "DISPLAY": self.display,
            "HOME": str(self.root / "home"),
            "TMPDIR": str(self.root / "tmp"),
            "XDG_RUNTIME_DIR": str(self.root / "runtime"),
            "LANG": "C.UTF-8",
        })
        self.env = env
        wm = subprocess.Popen(["openbox", "--sm-disable"], env=env,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.procs.append(wm)
        self._wait_for_window_manager()
        bus = subprocess.run(["dbus-daemon", "--session", "--fork", "--print-address=1", "--print-pid=1"],
                             env=env, capture_output=True, text=True, check=True).stdout.split()
        env["DBUS_SESSION_BUS_ADDRESS"] = bus[0]
        self.bus_pid = int(bus[1])
        atspi = subprocess.Popen(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"], env=env,
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.procs.append(atspi)
        # The reading side lives in this process: it must see the same buses.
        for key in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR"):
            os.environ[key] = env[key]
        self._wait_for_accessibility_bus()

    def _wait_for_window_manager(self):
        wait(lambda: "_NET_SUPPORTING_WM_CHECK(WINDOW)" in subprocess.run(
            ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=self.env, capture_output=True,
            text=True).stdout, "the window manager", 20)

    def _wait_for_accessibility_bus(self):
        wait(lambda: subprocess.run(["xprop", "-root", "AT_SPI_BUS"], env=self.env, capture_output=True,
                                    text=True).stdout.startswith("AT_SPI_BUS(STRING)"),
             "the accessibility bus", 20)

    def stop(self):
        for proc in reversed(self.procs):
            if proc.poll() is None:
                proc.terminate()
                try:
                    proc.wait(5)
                except subprocess.TimeoutExpired:
                    proc.kill()
        if getattr(self, "bus_pid", None):
            try:
                os.kill(self.bus_pid, signal.SIGTERM)
            except ProcessLookupError:
                pass

    # ------------------------------------------------------------- the screen
    def xdotool(self, *args):
        subprocess.run(["xdotool", *map(str, args)], env=self.env, check=True)

    def shot(self, path: pathlib.Path):
        path.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-window", "root", str(path)], env=self.env, check=True)

    def click(self, x, y):
        self.xdotool("mousemove", x, y, "click", 1)

    def double_click(self, x, y):
        self.xdotool("mousemove", x, y, "click", "--repeat", 2, "--delay", 80, 1)

    def drag(self, start, end, steps=6):
        """Presses at `start`, moves in a few steps, releases at `end`."""
        self.xdotool("mousemove", *start, "mousedown", 1)
        for k in range(1, steps + 1):
            x = start[0] + (end[0] - start[0]) * k // steps
            y = start[1] + (end[1] - start[1]) * k // steps
            self.xdotool("mousemove", x, y)
        self.xdotool("mouseup", 1)

    def key(self, *keys):
        self.xdotool("key", "--clearmodifiers", *keys)

    def type(self, text):
        self.xdotool("type", "--delay", 20, text)


def wait(condition, what, timeout=20.0, on_timeout=None):
    """Polls `condition` until it returns something true, and returns that."""
    deadline = time.monotonic() + timeout
    while True:
        try:
            value = condition()
        except Exception:  # a window that went while it was read
            value = None
        if value:
            return value
        if time.monotonic() > deadline:
            if on_timeout:
                on_timeout()
            raise Timeout("waited %.0f s for %s" % (timeout, what))
        time.sleep(POLL)


class Widget:
    """One thing on the screen as the accessibility tree shows it. Each
    property is one call to the program, so the rarer ones are asked only
    when they are read."""

    def __init__(self, node, depth, states=None):
        import pyatspi
        self.node = node
        self.depth = depth
        self.role = node.getRoleName()
        self.name = node.name or ""
        states = states if states is not None else node.getState()
        self.showing = states.contains(pyatspi.STATE_SHOWING)
        self.enabled = states.contains(pyatspi.STATE_ENABLED) or states.contains(pyatspi.STATE_SENSITIVE)
        self.checked = states.contains(pyatspi.STATE_CHECKED)
        self.selected = states.contains(pyatspi.STATE_SELECTED)
        self._box = None
        self._description = None

    @property
    def description(self):
        if self._description is None:
            self._description = self.node.description or ""
        return self._description

    @property
    def box(self):
        if self._box is None:
            import pyatspi
            try:
                e = self.node.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
                self._box = (e.x, e.y, e.width, e.height)
            except NotImplementedError:
                self._box = (0, 0, 0, 0)
        return self._box

    @property
    def centre(self):
        x, y, w, h = self.box
        return (x + w // 2, y + h // 2)

    def text(self):
        """The whole text of a text box; a label's name otherwise."""
        try:
            t = self.node.queryText()
            return t.getText(0, t.characterCount)
        except NotImplementedError:
            return self.name

    def __repr__(self):
        return "%s %r %s" % (self.role, self.name, self.box)


class Program:
    """The program under test, started in a folder, read through its windows."""

    def __init__(self, desktop: Desktop, executable, folder: pathlib.Path, log: pathlib.Path, home=None):
        self.desktop = desktop
        self.executable = str(executable)
        self.folder = pathlib.Path(folder)
        self.log = log
        # The player's folders of its own: the compiled word lists and the
        # data go there, not into the tester's. Beside the start folder
        # unless told.
        self.home = pathlib.Path(home) if home else self.folder.parent / "home"
        self.proc = None

    def start(self, *args):
        env = dict(self.desktop.env)
        env["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        env.pop("QT_QPA_PLATFORM", None)
        home = self.home
        env["XDG_CACHE_HOME"] = str(home / "cache")
        env["XDG_DATA_HOME"] = str(home / "data")
        env["XDG_CONFIG_HOME"] = str(home / "config")
        self.logfile = open(self.log, "ab")
        self.proc = subprocess.Popen([self.executable, *args], cwd=self.folder, env=env,
                                     stdout=self.logfile, stderr=subprocess.STDOUT)
        self._app = None
        return self

    def kill(self):
        self.proc.send_signal(signal.SIGKILL)
        code = self.proc.wait(10)
        self.logfile.close()
        return code

    def wait_exit(self, timeout=20):
        try:
            return self.proc.wait(timeout)
        finally:
            self.logfile.close()

    def running(self):
        return self.proc is not None and self.proc.poll() is None

    # ------------------------------------------------------------ the windows
    def application(self):
        import pyatspi
        if self._app is not None:
            return self._app
        desktop = pyatspi.Registry.getDesktop(0)
        for i in range(desktop.childCount):
            app = desktop.getChildAtIndex(i)
            try:
                if app is not None and app.get_process_id() == self.proc.pid:
                    self._app = app
                    return app
            except Exception:
                continue
        return None

    def toplevels(self):
        """The program's windows on the screen, without their content."""
        app = self.application()
        if app is None:
            return []
        out = []
        for i in range(app.childCount):
            node = app.getChildAtIndex(i)
            if node is None:
                continue
            w = Widget(node, 1)
            if w.showing:
                out.append(w)
        return out

    @staticmethod
    def content(window):
        """Every widget on the screen inside a window, depth first."""
        out = []

        def walk(node, depth):
            for i in range(node.childCount):
                child = node.getChildAtIndex(i)
                if child is None:
                    continue
                w = Widget(child, depth)
                if not w.showing:
                    continue
                out.append(w)
                walk(child, depth + 1)

        walk(window.node, 2)
        return out

    def windows(self):
        """The program's windows on the screen, each with its content."""
        return [(w, self.content(w)) for w in self.toplevels()]

    def window(self, name=None, having=None, role=None):
        """The first window on the screen of that title (and role) holding a
        widget of that name, with its content; or None."""
        for window in self.toplevels():
            if name is not None and window.name != name:
                continue
            if role is not None and window.role != role:
                continue
            content = self.content(window)
            if having is not None and not any(w.name == having for w in content):
                continue
            return window, content
        return None

    def dump(self):
        lines = []
        for window, content in self.windows():
            for w in [window] + content:
                lines.append("  " * w.depth + repr(w) + (" [%s]" % w.description if w.description else ""))
        return "\n".join(lines)


def find(content, role=None, name=None, description=None, enabled=None):
    for w in content:
        if role is not None and w.role != role:
            continue
        if name is not None and w.name != name:
            continue
        if description is not None and w.description != description:
            continue
        if enabled is not None and w.enabled != enabled:
            continue
        return w
    return None


def require_tools():
    missing = [tool for tool in ("Xvfb", "openbox", "xdotool", "import", "xprop", "dbus-daemon")
               if shutil.which(tool) is None]
    if not os.path.exists("/usr/libexec/at-spi-bus-launcher"):
        missing.append("at-spi-bus-launcher")
    return missing

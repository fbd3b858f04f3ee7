"""Where the Windows program plays: a virtual display, a Wine prefix of its own, strips behind COM ports.

All waiting is for conditions with a bound. Stage.end() ends everything that was started here."""

import json
import os
import re
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

PATIENCE = 60  # seconds, for a machine under load
FONTS = {"Arial": "Liberation Sans", "SimSun": "Noto Sans CJK SC", "Microsoft YaHei": "Noto Sans CJK SC"}
PORT_KEY = r"HKLM\System\CurrentControlSet\Enum\USB\VID_1A86&PID_7523"


class Failed(Exception):
    """What went wrong, for the summary."""


def until(condition, what, seconds=PATIENCE, beat=0.05):
    """Gives what the condition gives as soon as that is something."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise Failed(f"{what} (waited {seconds} s)")
        time.sleep(beat)


def check(condition, what):
    if not condition:
        raise Failed(what)


def read_json(path):
    """None where there is none, or half of one."""
    try:
        return json.loads(Path(path).read_text(encoding="utf-8"))
    except (OSError, ValueError):
        return None


class Strip:
    """A simulated strip, what it shows and the port it hangs on."""

    def __init__(self, tool, folder, serial="01020304", leds=120, options=()):
        folder.mkdir(parents=True, exist_ok=True)
        self.id = "LV0127:" + serial
        self.leds = leds
        self.ports = folder / "ports.json"
        self.reports = folder / "frames.json"
        self._frames, self._events, self._read, self._rest = [], [], 0, b""
        self.process = subprocess.Popen(
            [tool, "--plain", "--ports", self.ports, "--json", self.reports, "--serial", serial, "--leds", str(leds),
             *options],
            stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, text=True)
        until(self.location, "the simulator makes no port", 20)

    def location(self):
        """The device file of its line, nothing while it is unplugged."""
        ports = read_json(self.ports)
        return ports[0]["location"] if ports else None

    def say(self, command):
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()

    def unplug(self):
        self.say("unplug")
        until(lambda: not self.location(), "the simulator does not unplug")

    def plug(self):
        self.say("plug")
        until(self.location, "the simulator does not plug in")

    def _catch_up(self):
        with open(self.reports, "rb") as file:
            file.seek(self._read)
            news = file.read()
        self._read += len(news)
        *lines, self._rest = (self._rest + news).split(b"\n")
        for line in map(json.loads, lines):
            (self._events if "event" in line else self._frames).append(line)

    def frames(self, since=0):
        """Those that came from the number on; each with "firstByteMs", "lastByteMs", "count" and "colors"."""
        self._catch_up()
        return self._frames[since:]

    def events(self, since=0):
        self._catch_up()
        return [each["event"] for each in self._events[since:]]

    def colors(self):
        """Of the last frame, a list of triples."""
        frames = self.frames()
        if not frames:
            return []
        data = bytes.fromhex(frames[-1]["colors"])
        return [tuple(data[i:i + 3]) for i in range(0, len(data), 3)]

    def is_black(self):
        colors = self.colors()
        return bool(colors) and not any(map(any, colors))

    def is_lit(self):
        return any(map(any, self.colors()))

    def end(self):
        self.process.terminate()
        self.process.wait()


class Stage:
    def __init__(self, root):
        self.root = Path(root)
        self.out = self.root / "build/windows"
        self.linux = self.root / "build/release/bin"
        self.prefix = self.out / "wine"
        self.pictures = self.out / "pictures"
        self.logs = self.out / "test-logs"
        self.dependencies = Path(os.environ["LUMIVAR_WINDOWS_CACHE"]) / "prefix"
        self.messenger = self.out / "tree/bin/windows-messenger.exe"
        self._own = []  # processes, the first started first
        self._has_wine = False
        self.env = {key: value for key, value in os.environ.items()
                    if key in ("PATH", "LANG", "LC_ALL", "USER", "LOGNAME", "TERM", "TZ")}

    def set_up(self):
        for folder in (self.prefix, self.pictures, self.logs):
            shutil.rmtree(folder, ignore_errors=True)
            folder.mkdir(parents=True)
        home = self.out / "home"  # the prefix links folders of the home folder
        shutil.rmtree(home, ignore_errors=True)
        (home / "run").mkdir(parents=True, mode=0o700)
        self.env.update({
            "HOME": str(home), "XDG_RUNTIME_DIR": str(home / "run"),
            "WINEPREFIX": str(self.prefix), "WINEDEBUG": "-all", "WINEARCH": "win64",
            "WINEDLLOVERRIDES": "mscoree=;mshtml=;winemenubuilder.exe=d",
            "DBUS_SESSION_BUS_ADDRESS": "disabled:", "DBUS_SYSTEM_BUS_ADDRESS": "disabled:",
            "PULSE_SERVER": "unix:" + str(home / "run/no-sound"),
        })
        self._start_display()
        self._has_wine = True
        self.wine("wineboot", "-u", seconds=300)
        self.wine("winecfg", "-v", "win10")
        for name, stand_in in FONTS.items():
            self.wine("reg", "add", r"HKCU\Software\Wine\Fonts\Replacements", "/v", name, "/d", stand_in, "/f")
        self.user = next((self.prefix / "drive_c/users").glob("*/AppData")).parent
        self.local = self.user / "AppData/Local"
        self.data = self.local / "Lumivar"

    def _start_display(self):
        read, write = os.pipe()
        self.start(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x800x24", "-noreset", "-nolisten", "tcp"],
                   pass_fds=(write,))
        os.close(write)
        with os.fdopen(read) as pipe:
            number = pipe.readline().strip()
        check(number, "no virtual display")
        self.env["DISPLAY"] = ":" + number
        self.start(["openbox"])
        until(self._has_manager, "no window manager")

    def _has_manager(self):
        done = subprocess.run(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"], env=self.env, capture_output=True)
        return b"window id" in done.stdout

    # --- processes

    def start(self, command, log=None, env=None, **options):
        output = open(self.logs / log, "ab") if log else subprocess.DEVNULL
        process = subprocess.Popen([str(each) for each in command], env=env or self.env, stdin=subprocess.DEVNULL,
                                   stdout=output, stderr=output, start_new_session=True, **options)
        self._own.append(process)
        return process

    def strip(self, name, **options):
        strip = Strip(self.linux / "strip-simulator", self.out / "strips" / name, **options)
        self._own.append(strip.process)
        return strip

    def end(self):
        signal.signal(signal.SIGINT, signal.SIG_IGN)
        signal.signal(signal.SIGTERM, signal.SIG_IGN)
        if self._has_wine:
            for what in ("-k", "-w"):
                try:
                    subprocess.run(["wineserver", what], env=self.env, capture_output=True, timeout=60)
                except subprocess.TimeoutExpired:
                    print("the wineserver does not end")  # all else has to
        for process in reversed(self._own):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(20)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()

    # --- Wine

    def wine(self, *command, seconds=120, may_fail=False):
        """Runs a program to its end and gives what it printed."""
        with tempfile.TemporaryFile() as output:  # a pipe would be held by what it starts
            try:
                done = subprocess.run(["wine", *map(str, command)], env=self.env, stdin=subprocess.DEVNULL,
                                      stdout=output, stderr=subprocess.DEVNULL, timeout=seconds)
            except subprocess.TimeoutExpired:
                raise Failed(f"{Path(str(command[0])).name} does not end within {seconds} s") from None
            output.seek(0)
            text = output.read().decode("utf-8", "replace").replace("\r", "")
        self.code = done.returncode
        check(may_fail or self.code == 0, f"{' '.join(map(str, command))} ends with {self.code}: {text.strip()}")
        return text

    def registry(self, key, value):
        """The text of a value, None where there is none."""
        text = self.wine("reg", "query", key, "/v", value, may_fail=True)
        found = re.search(r"REG_\w+ +(.*)", text)
        return found.group(1).strip() if self.code == 0 and found else None

    def tell(self, *message, program="lumivar.exe"):
        """Sends what the system would send; False where a window refuses."""
        self.wine(self.messenger, program, *message, may_fail=True)
        check(self.code in (0, 1), f"no window of {program} to send {message[0]} to")
        return self.code == 0

    def windows(self, program="lumivar.exe"):
        """The titles of the program's windows that are seen."""
        lines = self.wine(self.messenger, program, "list", may_fail=True).splitlines()
        return [line.split(" ", 6)[6] for line in lines if line.startswith("visible open ")]

    def library_folders(self):
        """Of what stands in the build tree, not in the program's folder."""
        compiler = subprocess.run(["x86_64-w64-mingw32-g++-posix", "-print-file-name=libstdc++-6.dll"],
                                  capture_output=True, text=True).stdout.strip()
        return [self.out / "tree/bin", self.dependencies / "bin", Path(compiler).parent, "/usr/x86_64-w64-mingw32/lib"]

    def to_windows(self, path):
        return "Z:" + str(path).replace("/", "\\")

    def plug(self, strip, port, announce=True):
        """Makes the strip's line a COM port behind an adapter on USB."""
        link = self.prefix / "dosdevices" / port.lower()
        link.unlink(missing_ok=True)
        link.symlink_to(strip.location())
        file = self.out / "port.reg"
        place = PORT_KEY.replace("HKLM", "HKEY_LOCAL_MACHINE") + rf"\5&1&0&{port[3:]}"
        file.write_text(f"""Windows Registry Editor Version 5.00

[{place}]
"Class"="Ports"
"ClassGUID"="{{4d36e978-e325-11ce-bfc1-08002be10318}}"
"DeviceDesc"="USB-SERIAL CH340"
"FriendlyName"="USB-SERIAL CH340 ({port})"

[{place}\\Device Parameters]
"PortName"="{port}"
""", encoding="ascii", newline="\r\n")
        self.wine("reg", "import", self.to_windows(file))
        if announce:
            self.tell("arrival", port)

    def unplug(self, strip, port):
        self.wine("reg", "delete", rf"{PORT_KEY}\5&1&0&{port[3:]}", "/f")
        strip.unplug()
        (self.prefix / "dosdevices" / port.lower()).unlink()

    # --- what a user does and sees

    def x(self, *command, may_fail=False):
        done = subprocess.run(["xdotool", *map(str, command)], env=self.env, capture_output=True, text=True)
        check(may_fail or done.returncode == 0, f"xdotool {' '.join(map(str, command))}: {done.stderr.strip()}")
        return done.stdout if done.returncode == 0 else None

    def seen(self, title="^Lumivar$"):
        """The window that is seen under the title, None where there is none."""
        found = (self.x("search", "--onlyvisible", "--name", title, may_fail=True) or "").split()
        return found[-1] if found else None

    def window(self, title="^Lumivar$"):
        return until(lambda: self.seen(title), f"no window {title} is seen")

    def click(self, window, x, y):
        """From the window's upper left corner; a negative x from the right one."""
        if x < 0:
            x += int(re.search(r"WIDTH=(\d+)", self.x("getwindowgeometry", "--shell", window)).group(1))
        self.x("mousemove", "--sync", "--window", window, x, y, "click", 1)

    def picture(self, name):
        """Of the whole display, when it has come to rest; gives the file."""
        last = None

        def still():
            nonlocal last
            before, last = last, subprocess.run(["import", "-window", "root", "-depth", "8", "rgb:-"], env=self.env,
                                                capture_output=True).stdout
            return last and before == last
        try:
            until(still, "the display does not come to rest", 5, 0.2)
        except Failed:
            pass  # light moves in it
        file = self.pictures / (name + ".png")
        subprocess.run(["import", "-window", "root", file], env=self.env, check=True)
        return file

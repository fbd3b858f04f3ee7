"""The Windows program under Wine, from its installation to its removal, as a user has it. Called by test.sh."""

import os
import signal
import struct
import subprocess
import sys
import time

import numbers_table
import unit_tests
from stage import PATIENCE, Failed, Stage, check, read_json, until

PORT = "COM5"
RUN_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Run"
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Lumivar"

# Where things are in a window that fits a display of 1280 x 800, in pixels from its upper left corner.
DEVICE = 87, 175
SINGLE_COLOUR = 240, 132
COLOURFUL = 377, 132
MARQUEE = 377, 183
COLOUR_MAP_4 = 537, 412
SETTINGS = 1048, 27
CLOSE = -25, 25  # from the right
# In the settings
LANGUAGE, AUTOSTART, CRASH_TEST = (408, 147), (40, 177), (164, 374)

# What cannot be shown here, and why.
NOT_HERE = {
    "screen effects by desktop duplication": "Wine does not implement it",
    "music effects by loopback": "there is no sound endpoint",
    "a strip on a real adapter": "the port is a pseudo terminal, its adapter an entry of the registry",
    "hotkey while another program has the focus": "Wine hears keys of its own windows only",
    "snapping, shadow and scaling by monitor": "the window manager is not Windows'",
    "tray icon and its menu": "the display has no tray",
    "lock, sleep and log-off by the system": "only their messages are sent",
    "window of a second user's session": "there is one session",
}


class NotRun(Exception):
    """Why a step could not be tried."""


class Play:
    def __init__(self, stage):
        self.stage = stage
        self.program = None
        self.installed = stage.out / "wine/drive_c"  # until it is known better
        self.before = set()

    # --- helpers

    def needs_program(self):
        if self.program is None or self.program.poll() is not None:
            raise NotRun("the program does not run")

    def launch(self, *options):
        self.program = self.stage.start(["wine", self.installed / "lumivar.exe", *options], log="lumivar.log")

    def show(self):
        """The window; in front of the others."""
        return self.stage.window()

    def store(self, name="app"):
        return read_json(self.stage.data / (name + ".json")) or {}

    def device(self):
        return self.store("controllers").get(self.strip.id, {})

    def press(self, place, window=None):
        self.stage.click(window or self.show(), *place)

    def wait_lit(self, since, what):
        until(lambda: len(self.strip.frames()) > since + 2 and self.strip.is_lit(), f"{what}: the strip is not lit")

    def ends(self, seconds=30):
        try:
            return self.program.wait(seconds)
        except subprocess.TimeoutExpired:
            raise Failed(f"the program does not end within {seconds} s") from None

    def files(self):
        top = self.stage.prefix / "drive_c"
        found = (path.relative_to(top) for path in top.rglob("*") if path.is_file() or path.is_symlink())
        return {str(path) for path in found if "Temp" not in path.parts}

    def settings(self):
        self.press(SETTINGS)
        return self.stage.window(self.settings_title)

    def close_settings(self, window):
        self.press(CLOSE, window)
        until(lambda: not self.stage.seen(self.settings_title), "the settings do not close")

    settings_title = "^(Settings|设置|Einstellungen)$"

    # --- steps, in their order; the text is their name

    def install(self):
        """silent install"""
        setups = sorted(self.stage.out.glob("lumivar-*-setup.exe"))
        if not setups:
            raise NotRun("no installer has been made")
        self.setup = setups[-1]
        self.before = self.files()
        self.stage.wine(self.setup, "/S", seconds=300)
        folder = self.stage.registry(UNINSTALL_KEY, "InstallLocation")
        check(folder, "no entry in the list of programs")
        self.installed = self.stage.local / "Programs/Lumivar"
        check(folder.endswith(r"AppData\Local\Programs\Lumivar"), f"it went to {folder}")
        for name in ("lumivar.exe", "CrashReporter.exe", "Uninstall.exe", "plugins/platforms/qwindows.dll"):
            check((self.installed / name).is_file(), f"{name} is missing")
        menu = self.stage.user / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Lumivar.lnk"
        check(menu.is_file(), "no entry in the start menu")

    def first_start(self):
        """first start shows the window"""
        if not (self.installed / "lumivar.exe").is_file():
            raise NotRun("the program is not installed")
        self.strip = self.stage.strip("play")
        self.stage.plug(self.strip, PORT, announce=False)
        self.launch()
        self.show()
        self.stage.picture("1-first-start")

    def device_found(self):
        """device found and lit"""
        self.needs_program()
        until(lambda: "probed" in self.strip.events(), "nobody asks on the port")
        self.wait_lit(0, "first effect")
        until(self.device, "the device is not stored")
        check(self.strip.frames()[-1]["count"] == self.strip.leds, "the frame has another number of LEDs")
        report = self.stage.wine(self.installed / "lumivar.exe", "--doctor")
        check(f"{PORT}: driven by the running Lumivar" in report, f"the doctor says {report}")
        self.stage.picture("2-device")

    def single_colour(self):
        """single colour"""
        self.needs_program()
        self.press(DEVICE)
        self.press(SINGLE_COLOUR)
        until(lambda: self.device().get("workMode") == "id.effect.singleColor", "the choice is not stored")
        until(lambda: self.strip.is_lit() and len(set(self.strip.colors())) == 1, "the strip has several colours")
        self.stage.picture("3-single-colour")

    def colour_map(self):
        """colour map"""
        self.needs_program()
        self.press(COLOURFUL)
        self.press(COLOUR_MAP_4)
        until(lambda: self.device().get("subMode") == "id.effect.colorful.ColorMap_4", "the choice is not stored")
        until(lambda: len(set(self.strip.colors())) > 10, "the strip has few colours")
        self.moves()
        self.stage.picture("4-colour-map")

    def moves(self):
        since = len(self.strip.frames())
        until(lambda: len({each["colors"] for each in self.strip.frames(since)}) > 20, "the light stands still")

    def paced(self):
        """frames paced"""
        self.needs_program()
        since = len(self.strip.frames())
        until(lambda: len(self.strip.frames(since)) > 150, "few frames come")
        frames = self.strip.frames(since)
        seconds = (frames[-1]["lastByteMs"] - frames[0]["lastByteMs"]) / 1000
        rate = (len(frames) - 1) / seconds
        line = 11520 / (6 + 3 * self.strip.leds)
        check(rate < line * 1.02, f"{rate:.1f} frames a second on a line for {line:.1f}")
        check(rate > line / 2, f"only {rate:.1f} frames a second on a line for {line:.1f}")
        check(all(each["count"] == self.strip.leds for each in frames), "some frames are not whole")
        return f"{rate:.1f} frames a second, the line carries {line:.1f}"

    def marquee(self):
        """marquee"""
        self.needs_program()
        self.press(MARQUEE)
        until(lambda: self.device().get("workMode") == "id.effect.marquee", "the choice is not stored")
        self.moves()
        self.stage.picture("5-marquee")

    def unplugged(self):
        """unplug and return"""
        self.needs_program()
        since = len(self.strip.frames())
        self.stage.unplug(self.strip, PORT)
        until(lambda: f"{self.strip.id} has been removed" in self.log(), "the device is not given up")
        self.stage.picture("6-unplugged")
        self.strip.plug()
        self.stage.plug(self.strip, PORT)
        self.wait_lit(since, "after the return")
        self.moves()
        check(self.device().get("workMode") == "id.effect.marquee", "it came back with another effect")

    def log(self):
        files = (path for path in (self.stage.data / "logs").rglob("*") if path.is_file())
        return "".join(path.read_text(encoding="utf-8", errors="replace") for path in files)

    def hotkey(self):
        """hotkey switches the light"""
        self.needs_program()
        self.stage.x("windowactivate", "--sync", self.show())
        self.stage.x("key", "ctrl+alt+shift+F10")
        until(self.strip.is_black, "the strip stays lit")
        self.stage.x("key", "ctrl+alt+shift+F10")
        until(self.strip.is_lit, "the strip stays dark")

    def second_start(self):
        """second start wakes the first"""
        self.needs_program()
        self.press(CLOSE)
        until(lambda: self.stage.windows() == ["Lumivar"] * 2, "no question what closing means")
        self.stage.picture("7-close")
        self.stage.x("key", "Return")  # into the tray
        until(lambda: not self.stage.windows(), "the window does not go")
        self.stage.wine(self.installed / "lumivar.exe", may_fail=True)
        check(self.stage.code == 0, f"the second ended with {self.stage.code}")
        until(self.stage.windows, "the window does not come back")

    def autostart(self):
        """settings start it with the system"""
        self.needs_program()
        dialog = self.settings()
        self.press(AUTOSTART, dialog)
        self.stage.picture("8-settings")
        value = until(lambda: self.stage.registry(RUN_KEY, "Lumivar"), "no value in the Run key")
        check(value.lower().endswith(r'\programs\lumivar\lumivar.exe" --auto_startup') and value[0] == '"',
              f"the value is {value}")
        self.press(AUTOSTART, dialog)
        until(lambda: self.stage.registry(RUN_KEY, "Lumivar") is None, "the value stays")
        self.press(AUTOSTART, dialog)  # for the uninstaller
        until(lambda: self.stage.registry(RUN_KEY, "Lumivar"), "no value in the Run key")
        self.close_settings(dialog)

    def language(self):
        """language switched"""
        self.needs_program()
        for keys, code in (("End", "zh"), ("Home Down", "de"), ("Home Down Down", "en")):
            dialog = self.settings()
            self.press(LANGUAGE, dialog)
            self.stage.x("key", "--delay", 100, *keys.split(), "Return")
            until(lambda: self.store().get("language") == code, f"{code} is not stored")
            self.stage.picture(f"9-settings-{code}")
            self.close_settings(self.stage.window(self.settings_title))
            self.stage.picture(f"9-window-{code}")

    def sleep(self):
        """sleep and lock darken the strip"""
        self.needs_program()
        for away, back in (("suspend", "resume"), ("lock", "unlock")):
            self.stage.tell(away)
            until(self.strip.is_black, f"lit after {away}")
            self.stage.tell(back)
            until(self.strip.is_lit, f"dark after {back}")

    def upgrade(self):
        """upgrade while it runs"""
        self.needs_program()
        if not hasattr(self, "setup"):
            raise NotRun("no installer has been made")
        before = (self.installed / "lumivar.exe").stat().st_ino
        since = len(self.strip.frames())
        self.stage.wine(self.setup, "/S", seconds=300)
        check(self.program.poll() is not None, "the old program runs on")
        check((self.installed / "lumivar.exe").stat().st_ino != before, "the file is the old one")
        frames = self.strip.frames(since)
        check(any(not int(each["colors"], 16) for each in frames), "the strip was not dark meanwhile")
        self.wait_lit(len(frames), "the new program")
        check(self.store().get("language") == "en", "the language is forgotten")
        self.stage.wine(self.installed / "lumivar.exe", "--quit")
        until(self.strip.is_black, "the strip stays lit")

    def session_end(self):
        """end of session: black strip, whole stores"""
        self.start_again()
        self.press(DEVICE)
        self.press(COLOURFUL)
        self.press(COLOUR_MAP_4)
        until(lambda: len(set(self.strip.colors())) > 10, "the strip has few colours")
        self.press(SINGLE_COLOUR)
        until(lambda: len(set(self.strip.colors())) == 1, "the strip has several colours")
        check(self.stage.tell("end-session"), "a window refuses the end of the session")
        if self.program.poll() is None:
            os.kill(self.program.pid, signal.SIGKILL)  # as the system does now
        self.program.wait()
        until(self.strip.is_black, "the strip stays lit", 5)
        for path in self.stage.data.glob("**/*.json"):
            check(read_json(path) is not None, f"{path.name} is no whole store")
        check(self.device().get("workMode") == "id.effect.singleColor", "the last choice is lost")

    def start_again(self, *options):
        if not (self.installed / "lumivar.exe").is_file():
            raise NotRun("the program is not installed")
        if self.program is not None and self.program.poll() is None:
            self.stage.wine(self.installed / "lumivar.exe", "--quit", may_fail=True)
            self.ends()
        since = len(self.strip.frames())
        self.launch(*options)
        self.show()
        self.wait_lit(since, "started again")

    def crash(self):
        """crash leaves a minidump and starts the reporter"""
        self.start_again("--enable_crash_test")
        self.press(CRASH_TEST, self.settings())
        # The dump alone takes ten seconds on a machine with nothing else to do.
        window = until(lambda: self.stage.windows("CrashReporter.exe"), "no window of the reporter", 2 * PATIENCE)
        self.ends()
        self.stage.picture("10-crash-reporter")
        until(self.strip.is_black, "the strip stays lit")
        dumps = list((self.stage.data / "dumps").glob("*.dmp"))
        check(len(dumps) == 1, f"{len(dumps)} dumps")
        place = self.stage.registry(UNINSTALL_KEY, "InstallLocation")
        self.stage.wine(self.installed / "Uninstall.exe", "/S", "_?=" + place, may_fail=True)
        check(self.stage.code == 2 and (self.installed / "lumivar.exe").is_file(), "removed under the reporter's feet")
        self.stage.wine("taskkill", "/f", "/im", "CrashReporter.exe")
        return f"{check_minidump(dumps[0].read_bytes())}, window {window[0]}"

    def uninstall(self):
        """uninstall leaves only the user's data"""
        uninstaller = self.installed / "Uninstall.exe"
        if not uninstaller.is_file():
            raise NotRun("the program is not installed")
        self.start_again()
        self.stage.wine(uninstaller, "/S")
        until(lambda: not self.installed.exists(), "the program's folder stays")
        until(lambda: self.program.poll() is not None, "the program runs on")
        until(self.strip.is_black, "the strip stays lit")
        until(lambda: self.stage.registry(UNINSTALL_KEY, "DisplayName") is None, "it stays in the list of programs")
        check(self.stage.registry(RUN_KEY, "Lumivar") is None, "the Run key still starts it")
        data = str(self.stage.data.relative_to(self.stage.prefix / "drive_c"))
        left = sorted(each for each in self.files() - self.before if not each.startswith(data + "/"))
        check(not left, "left behind: " + ", ".join(left))
        check(self.store() and self.device(), "the user's data are gone")

    steps = (install, first_start, device_found, single_colour, colour_map, paced, marquee, unplugged, hotkey,
             second_start, autostart, language, sleep, upgrade, session_end, crash, uninstall)


def check_minidump(dump):
    """Its streams and the exception; gives a word on them."""
    magic, _, count, directory = struct.unpack_from("<4sIII", dump)
    check(magic == b"MDMP" and count > 0, "the dump does not begin as one")
    streams = {}
    for i in range(count):
        kind, size, place = struct.unpack_from("<III", dump, directory + 12 * i)
        check(place + size <= len(dump), "the dump is cut off")
        streams[kind] = place
    check({3, 4, 6, 7} <= streams.keys(), f"the dump has the streams {sorted(streams)}")
    code = struct.unpack_from("<I", dump, streams[6] + 8)[0]
    check(code == 0xC0000005, f"the exception is {code:#x}")
    return f"{len(dump) // 1024} kB with {count} streams, exception {code:#x}"


class Report:
    def __init__(self):
        self.counts = {"passed": 0, "failed": 0, "not run": 0}

    def tell(self, result, name, why=None):
        self.counts[result] += 1
        print(f"{result} {name}" + (f": {why}" if why else ""), flush=True)

    def run(self, name, function):
        started = time.monotonic()
        try:
            why = function()
            self.tell("passed", name, why)
        except NotRun as reason:
            self.tell("not run", name, reason)
        except (Failed, OSError, subprocess.SubprocessError, KeyError, IndexError) as reason:
            self.tell("failed", name, reason)
        return time.monotonic() - started

    def summary(self):
        print(", ".join(f"{count} {result}" for result, count in self.counts.items()))
        return 1 if self.counts["failed"] else 0


def main():
    wanted = set(sys.argv[2:]) or {"program", "units", "numbers"}
    stage = Stage(sys.argv[1])
    report = Report()

    def leave(*_):
        raise KeyboardInterrupt
    signal.signal(signal.SIGTERM, leave)
    signal.signal(signal.SIGHUP, leave)
    try:
        stage.set_up()
        if "program" in wanted:
            play = Play(stage)
            for step in Play.steps:
                report.run(step.__doc__, lambda step=step: step(play))
            for name, why in NOT_HERE.items():
                report.tell("not run", name, why)
        if "units" in wanted:
            unit_tests.run(stage, report)
        if "numbers" in wanted:
            report.run("numbers", lambda: numbers_table.measure(stage))
    except KeyboardInterrupt:
        print("stopped")
        return 130
    finally:
        stage.end()
    return report.summary()


sys.exit(main())

"""What the program costs under Wine, beside the Linux build on the same display in the same minutes."""

import json
import os
import statistics
import time
from pathlib import Path

from stage import Failed, check, until

STARTS = 5
FRAMES = 180  # to measure over; 15 seconds
LEDS = 318    # the line carries twelve such frames a second
PORT = "COM6"
REPORTER = ("--file", "lumivar", "--path", ".", "--language", "en")
TICKS = os.sysconf("SC_CLK_TCK")


def cpu_seconds(pid):
    fields = Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def memory_mb(pid, name):
    for line in Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith(name + ":"):
            return int(line.split()[1]) / 1024
    raise Failed(f"no {name} of the process")


class Side:
    """One of the two builds with a strip of its own; its device is known and plays a colour map."""

    def __init__(self, stage, name, serial):
        self.stage = stage
        self.strip = stage.strip(name, serial=serial, leds=LEDS)
        self.starts = []

    def store_device(self, folder):
        folder.mkdir(parents=True, exist_ok=True)
        device = {"kindName": "strip", "brightness": 0.8, "enable": True, "installDirection": 0, "nbLeds": LEDS,
                  "ledPerUnit": 1, "adjustableLength": False, "unavailable_modes": [],
                  "workMode": "id.effect.colorful", "subMode": "id.effect.colorful.ColorMap_4"}
        (folder / "controllers.json").write_text(json.dumps({self.strip.id: device}))

    def start(self):
        since = len(self.strip.frames())
        begin = time.monotonic()
        self.process = self.launch()
        until(self.stage.seen, "no window is seen", beat=0.01)
        self.starts.append(time.monotonic() - begin)
        until(lambda: len(self.strip.frames()) > since + 24 and self.strip.is_lit(), "the strip is not lit")

    def measure_toolkit(self):
        """What a program of one small window costs."""
        times = []
        for _ in range(STARTS):
            begin = time.monotonic()
            process = self.launch_reporter()
            until(lambda: self.stage.seen("^Crash report$"), "no window of the reporter", beat=0.01)
            times.append(time.monotonic() - begin)
            self.toolkit_resident = memory_mb(process.pid, "Rss")
            process.terminate()
            process.wait(60)
            until(lambda: not self.stage.seen("^Crash report$"), "the reporter's window stays")
        self.toolkit_start = statistics.median(times[1:])

    def measure(self):
        self.resident = memory_mb(self.process.pid, "Rss")
        pids = [self.process.pid, *self.servers()]
        before, begin = list(map(cpu_seconds, pids)), time.monotonic()
        since = len(self.strip.frames())
        until(lambda: len(self.strip.frames(since)) >= FRAMES, "the frames do not come")
        seconds = time.monotonic() - begin
        self.rate = len(self.strip.frames(since)) / seconds
        used = [100 * (after - each) / seconds for after, each in zip(map(cpu_seconds, pids), before)]
        self.cpu, self.server_cpu = used[0], sum(used[1:])

    def servers(self):
        return []


class Windows(Side):
    def __init__(self, stage):
        super().__init__(stage, "numbers-windows", "05060708")
        self.program = stage.out / "lumivar/lumivar.exe"
        self.store_device(stage.data)
        stage.plug(self.strip, PORT, announce=False)

    def launch(self):
        return self.stage.start(["wine", self.program], log="numbers-windows.log")

    def launch_reporter(self):
        return self.stage.start(["wine", self.program.with_name("CrashReporter.exe"), *REPORTER], log="reporter.log")

    def stop(self):
        self.stage.wine(self.program, "--quit", may_fail=True)
        self.process.wait(60)

    def servers(self):
        wanted = f"WINEPREFIX={self.stage.prefix}".encode()
        found = []
        for folder in Path("/proc").glob("[0-9]*"):
            try:
                if folder.joinpath("comm").read_text().startswith("wineserver") and \
                        wanted in folder.joinpath("environ").read_bytes().split(b"\0"):
                    found.append(int(folder.name))
            except OSError:
                pass
        return found


class Linux(Side):
    def __init__(self, stage):
        super().__init__(stage, "numbers-linux", "090A0B0C")
        home = stage.out / "home/linux"
        folders = {"HOME": home, "XDG_CONFIG_HOME": home / "config", "XDG_DATA_HOME": home / "data",
                   "XDG_CACHE_HOME": home / "cache", "XDG_RUNTIME_DIR": home / "run", "TMPDIR": home / "tmp"}
        for folder in folders.values():
            folder.mkdir(parents=True, exist_ok=True, mode=0o700)
        self.env = {**stage.env, **{name: str(folder) for name, folder in folders.items()},
                    "LUMIVAR_SERIAL_PORTS": str(self.strip.ports)}
        self.store_device(home / "config/Lumivar")

    def launch(self):
        return self.stage.start([self.stage.linux / "lumivar"], log="numbers-linux.log", env=self.env)

    def launch_reporter(self):
        return self.stage.start([self.stage.linux / "CrashReporter", *REPORTER], log="reporter.log", env=self.env)

    def stop(self):
        self.process.terminate()
        self.process.wait(60)


def measure(stage):
    stage.start(["wine", "ping", "-n", "3600", "127.0.0.1"])  # or each start would be one of Wine as well
    sides = [Windows(stage), Linux(stage)]
    for number in range(STARTS):
        for side in sides:
            side.start()
            if number == STARTS - 1:
                side.measure()
            side.stop()
    for side in sides:
        side.measure_toolkit()
    windows, linux = sides
    rows = (("start to window, ms", *(1000 * statistics.median(side.starts[1:]) for side in sides)),
            ("the same of CrashReporter, ms", *(1000 * side.toolkit_start for side in sides)),
            ("resident memory, MB", windows.resident, linux.resident),
            ("the same of CrashReporter, MB", windows.toolkit_resident, linux.toolkit_resident),
            ("CPU on a colour map, % of a core", windows.cpu, linux.cpu),
            ("the same with Wine's server", windows.cpu + windows.server_cpu, linux.cpu))
    print(f"| {'':34} | Windows under Wine | Linux | ratio |\n|{'-' * 36}|---:|---:|---:|")
    for name, first, second in rows:
        print(f"| {name:34} | {first:18.1f} | {second:5.1f} | {first / second:5.2f} |")
    for side in sides:
        check(11 < side.rate < 13, f"{side.rate:.1f} frames a second instead of twelve")
    return f"{windows.rate:.1f} and {linux.rate:.1f} frames a second"

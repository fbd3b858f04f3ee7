"""The QtTest programs that are built for Windows, each run under Wine. What of them is left out stands in
tests/CMakeLists.txt."""

import json
import re
import shutil
import subprocess
import threading

from stage import Failed, check

LIMIT = 300  # seconds a program
STRIPS = {  # behind the ports of com_port
    "COM11": ["--reply", "bytes", "--chunk-gap", "20"],
    "COM12": ["--hang-up-after", "1000"],
    "COM13": ["--rate", "50"],  # as good as stuck
}


def run(stage, report):
    tree = stage.out / "tree"
    known = subprocess.run(["ctest", "--show-only=json-v1", "--test-dir", tree], capture_output=True, text=True)
    tests = [test for test in json.loads(known.stdout or "{}").get("tests", []) if "command" in test]
    if not tests:
        report.tell("failed", "unit tests", "none are built")
        return
    # Paths that the build has written into tests begin at the drive that a process is on.
    temporary = stage.out / "home/tmp"
    temporary.mkdir()
    for name in ("TEMP", "TMP"):
        stage.wine("reg", "add", r"HKCU\Environment", "/v", name, "/d", stage.to_windows(temporary), "/f")
    env = {**stage.env, "WINEPATH": ";".join(map(stage.to_windows, stage.library_folders())),
           "QT_PLUGIN_PATH": stage.to_windows(stage.dependencies / "plugins")}
    cases = 0
    for test in tests:
        properties = {each["name"]: each["value"] for each in test["properties"]}
        left_out = properties.get("LABELS", [])
        passed = []

        def run_test():
            return run_one(stage, test["name"], test["command"][0], properties, env, left_out, passed)
        report.run("unit tests of " + test["name"],
                   (lambda: with_strips(stage, run_test)) if test["name"] == "com_port" else run_test)
        cases += sum(passed)
        for name in left_out:
            report.tell("not run", f"unit test {name} of {test['name']}", "it says how it is on Linux")
    print(f"{len(tests)} unit test programs, {cases} cases passed")


def with_strips(stage, run_test):
    """The first has its button pressed while it is lit, and has to end black."""
    strips = {port: stage.strip(port, options=options) for port, options in STRIPS.items()}
    first = strips["COM11"]
    is_over = threading.Event()

    def press():
        while not is_over.wait(0.1):
            if first.is_lit():
                first.say("button")
    presser = threading.Thread(target=press)
    try:
        for port, strip in strips.items():
            stage.plug(strip, port, announce=False)
        presser.start()
        word = run_test()
        is_over.set()
        presser.join()
        check(first.is_black() and all(each["count"] == 60 for each in first.frames()), "the strip is not left black")
        return word
    finally:
        is_over.set()
        for port, strip in strips.items():
            stage.unplug(strip, port)


def run_one(stage, name, program, properties, env, left_out, passed):
    wine = {"env": {**env, **environment(properties)}, "cwd": properties["WORKING_DIRECTORY"],
            "stdin": subprocess.DEVNULL}
    wanted = []
    if left_out:
        listed = subprocess.run(["wine", program, "-functions"], **wine, capture_output=True, text=True, timeout=LIMIT)
        functions = re.findall(r"^(\w+)\(\)", listed.stdout, re.MULTILINE)
        check(set(left_out) <= set(functions), f"it has not all of {left_out}")
        wanted = [each for each in functions if each not in left_out]
    shutil.rmtree(stage.data, ignore_errors=True)  # a home of its own for each
    log = stage.logs / (name + ".txt")
    # Without a console it tells a debugger alone, unless it is told where.
    command = ["wine", program, *wanted, "-o", stage.to_windows(log) + ",txt"]
    with open(stage.logs / (name + ".out"), "wb") as output:
        try:
            code = subprocess.run(command, **wine, stdout=output, stderr=output, timeout=LIMIT).returncode
        except subprocess.TimeoutExpired:
            raise Failed(f"it does not end within {LIMIT} s, see {log}") from None
    check(log.is_file(), f"it does not begin, it ends with {code}")
    text = log.read_text(encoding="utf-8", errors="replace")
    totals = re.search(r"Totals: (\d+) passed, (\d+) failed, (\d+) skipped", text)
    first = re.search(r"^FAIL!\s*: (.*)", text, re.MULTILINE)
    check(code == 0 and totals and totals.group(2) == "0", f"it ends with {code}" +
          (f", first {first.group(1).strip()}" if first else "") + f", see {log}")
    passed.append(int(totals.group(1)) - 2)  # without what QtTest counts of its own, the start and the end
    return f"{passed[0]} cases" + (f", {totals.group(3)} skipped there" if totals.group(3) != "0" else "")


def environment(properties):
    pairs = (each.partition("=") for each in properties.get("ENVIRONMENT", []))
    return {name: value for name, _, value in pairs if name.startswith("LUMIVAR_")}

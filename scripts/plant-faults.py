#!/usr/bin/env python3
"""Plants small faults in src/ and tells which of them no test notices.

Usage: scripts/plant-faults.py [STEP ...] [options]; the steps, all of them by default, in this order:
    plan    picks the faults: --count of each of the --seeds, in --files
    build   one build holds all faults, and an environment variable switches one on; what the compiler does not let be
            switched (an enumerator, a row of a constant table) needs a build of its own
    reach   runs every test once without a fault, and notes which faults it comes across
    try     runs, for each fault, the tests that reach it, those of its room first, until one fails twice in a row;
            with --singles then also the faults that need a build of their own: some minutes each, by all tests
    report  a table by room, what nothing noticed and the tests that ran; also report.md in the work folder
    clean   removes all of it; never done unasked
It works on the last commit, in a worktree of its own in build/planted (--work). Started again it goes on where it was;
other seeds or another commit begin with `clean`. Run it with `nice`. A survivor is a place to look, not a verdict:
some change nothing that shows. Where one would hurt a user, strengthen a test that exists rather than add one.
"""
import argparse, contextlib, json, os, pathlib, random, re, resource, shutil, signal, subprocess, sys
import tempfile, threading, time
from concurrent.futures import ThreadPoolExecutor
ROOT = pathlib.Path(__file__).resolve().parent.parent
NOT_BUILT_HERE = re.compile(r"_win\.|/Wasapi|/Dxgi")
OPERATORS = [(r" <= ", " < "), (r" < ", " <= "), (r" >= ", " > "), (r" > ", " >= "), (r" == ", " != "),
             (r" != ", " == "), (r" && ", " || "), (r" \|\| ", " && "), (r" \+ ", " - "), (r" - ", " + "),
             (r" \* ", " / "), (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"if \(!", "if ("), (r"return;", ""),
             (r"\b\d+\b(?![\w.])", lambda match: str(int(match.group(0)) + 1))]
IGNORED = re.compile(r"^\s*(//|#|\*|/\*|template|case .*:$)|q(Debug|Info|Warning|Critical)|<<|Q_|tr\(|static_assert"
                     r"|LOG4CPLUS|QString?Literal")
SIGNS = " <= ", " < ", " >= ", " > ", " == ", " != ", " + ", " - ", " * ", " / "
NAMES = dict(zip(SIGNS, "LE LT GE GT EQ NE ADD SUB MUL DIV".split()))
ALIKE = {" == ": "==", " != ": "==", " + ": "+", " - ": "+", " * ": "*"}  # an operator that binds as tightly; else <
# Lines whose last group may be chosen at run time, and how; "lead" and "rest" are what stands around the group.
CHOICE, VALUE = "{lead}({on} ? bool({now}) : bool({was})){rest}", "{lead}({on} ? ({now}) : ({was})){rest}"
CONSTANT = r"^\s*(?:inline |static )*constexpr (?P<type>[\w:]+) (?P<name>\w+)"
NESTED = r"(?:[^()]|\((?:[^()]|\([^()]*\))*\))*"
FORMS = [(rf"^\s*(?:(?:\}} )?else )?(?:if|while) \((?!.*(?:;.*\)| = ))({NESTED})\)", CHOICE),
         (rf"^(?:\s*(?:(?:\}} )?else )?if \({NESTED}\) |\s*)(return .+;)$", "{lead}{{ if ({on}) {now} {was} }}"),
         (r"^\s*((?:[\w.>\-\[\]():*]+ [+\-*/|&]?= .*|[\w.:\->]+\(.*\)|(?:\+\+|--).*);)$",
          "{lead}{{ if ({on}) {{ {now} }} else {{ {was} }} }}"),
         (CONSTANT + r" = (.*);$", "#define {name} ({on} ? {type}({now}) : {type}({was}))"),
         (CONSTANT + r"([({].*[)}]);$", "#define {name} ({on} ? {type}{now} : {type}{was})"),
         (r"^\s*(?:const )?(?:auto|[\w:]+(?:<[^=]*>)?)[*&]? [*&]?\w+ = (.*);$", VALUE),
         (r'^[^"]*("(?:[^"\\]|\\.)*")', VALUE)]
PARTS = [(rf"^\s*(?:return |[\w ]+ = |\|\| |&& |: |\? )?(.*[^&|]){tail}$", CHOICE)  # of a condition over several lines
         for tail in ("", ";", ",", r" \|\|", " &&", r"\)", r"\);", r"\) \{", r"\),")]

TEST_ROOMS = {"controllers": "devices", "widgets": "ui", "system": "core", "main": "app", "capture": "screen",
              "net": "online", "config": "support", "other support": "support"}
HOMES = tempfile.TemporaryDirectory(prefix="planted-", ignore_cleanup_errors=True)
saving, stop = threading.Lock(), threading.Event()
def command(*args, **options):
    return subprocess.run(args, capture_output=True, text=True, errors="replace", **options)

def keep(path, data):
    """Writes whole or not at all: whoever interrupts finds the last state."""
    with saving:
        path.with_suffix(".new").write_text(json.dumps(dict(data), indent=0))
        os.replace(path.with_suffix(".new"), path)

def kept(path):
    return json.loads(path.read_text()) if path.exists() else {}

def candidates(tree, files):
    for path in filter(lambda path: not NOT_BUILT_HERE.search(path), files):
        for number, line in enumerate((tree / path).read_text().split("\n"), 1):
            code = re.sub(r"\s+//.*$", "", line)
            if not code.strip() or IGNORED.search(line): continue
            for pattern, new in OPERATORS:
                if re.search(pattern, code): yield path, number, code, pattern, new
            if re.match(r"\s+[\w.>:-]+\(.*\);$", code) and "return" not in code: yield path, number, code, None, None

def plan(work, tree, options):
    wish = dict(seeds=options.seeds, count=options.count, files=options.files,
                commit=command("git", "rev-parse", "HEAD", cwd=ROOT).stdout.strip())
    had = kept(work / "plan.json").get("wish", wish)
    if had != wish: sys.exit(f"{work} holds other seeds or another commit; `{sys.argv[0]} clean` removes it")
    if (work / "plan.json").exists(): return
    if not tree.exists(): command("git", "worktree", "add", "--force", "--detach", tree, wish["commit"], cwd=ROOT, check=True)
    files = command("git", "ls-files", *options.files, cwd=tree).stdout.split()
    faults, seen, todo = [], set(), list(candidates(tree, files))
    for seed in options.seeds:
        dice = random.Random(seed)
        for path, line, old, pattern, new in dice.sample(todo, min(options.count, len(todo))):
            span, text = None, re.match(r"\s*", old)[0] + ";"  # a call left out
            if pattern:
                match = dice.choice(list(re.finditer(pattern, old)))
                span = [match.start(), match.end(), new(match) if callable(new) else new]
                text = old[:span[0]] + span[2] + old[span[1]:]
            if (path, line, text) in seen: continue
            seen.add((path, line, text))
            faults.append(dict(id=len(faults), seed=seed, path=path, line=line, old=old, new=text, span=span, way=0,
                               single=False))
    keep(work / "plan.json", dict(wish=wish, faults=faults))
    print(len(faults), "faults planned in", len({fault["path"] for fault in faults}), "files", flush=True)

def balanced(text):
    for _ in range(9): text = re.sub(r"\([^()]*\)|\[[^][]*\]|\{[^{}]*\}|[^][(){}]+", "", text)
    return not text

def ways(fault):
    """The line in every form that does as before unless the fault is on; the compiler takes the first it can."""
    number, old, new, span = fault["id"], fault["old"], fault["new"], fault["span"]
    on, indent = f"planted::on({number})", re.match(r"\s*", old)[0]
    if not span: return [] if old.strip()[0] in ".:>" else [f"{indent}{{ if (!{on}) {{ {old.strip()} }} }}"]
    got, put = old[span[0]:span[1]], span[2]
    if got == "return;": return [f"{old[:span[0]]}{{ if (!{on}) return; }}{old[span[1]:]}"]
    found = []
    for pattern, form in FORMS + (PARTS if got in (" && ", " || ") else []):
        a, b = re.match(pattern, old), re.match(pattern, new)
        if not a or not b or not balanced(a[a.lastindex]): continue
        (start, end), (first, last) = a.span(a.lastindex), b.span(b.lastindex)
        if (old[:start], old[end:]) != (new[:first], new[last:]): continue
        found.append(form.format(on=on, lead=old[:start], was=old[start:end], now=new[first:last], rest=old[end:],
                                 **a.groupdict()))
    if old[:span[0]].count('"') % 2: return found  # no switch within a text: there it would be text
    if re.fullmatch(r"\d+|true|false", got):
        whole = re.search(r"[\d.']*$", old[:span[0]])[0]
        found.append(f"{old[:span[0] - len(whole)]}({on} ? {whole}{put} : {whole}{got}){old[span[1]:]}")
    if got in NAMES:
        like, operator = ALIKE.get(got, "<"), f"planted::Op<{number}, planted::{NAMES[got]}, planted::{NAMES[put]}>()"
        found.append(f"{old[:span[0]]} {like} {operator} {like} {old[span[1]:]}")
    return found

def write(tree, path, lines, switched):
    """The plain file, or one whose faults are switched; an unchanged file is not built again."""
    header = os.path.relpath(tree / "planted_fault.h", (tree / path).parent)
    text = (f'#include "{header}"\n#line 1\n' if switched else "") + "\n".join(lines)
    if (tree / path).read_text() != text: (tree / path).write_text(text)

def compiled(tree):
    return command("cmake", "--build", tree / "build/dev", "--", "-k", "0", env={**os.environ, "LC_ALL": "C"})

def build(work, tree, options):
    held = kept(work / "plan.json")
    shutil.copy2(ROOT / "tools/planted-fault/planted_fault.h", tree)
    if not (tree / "build/dev/build.ninja").exists(): command("cmake", "--preset", "dev", cwd=tree)
    while True:
        for path in {fault["path"] for fault in held["faults"]}:
            lines, used = command("git", "show", f"HEAD:{path}", cwd=tree).stdout.split("\n"), set()
            for fault in (f for f in held["faults"] if f["path"] == path and not f["single"]):
                forms, at = ways(fault)[fault["way"]:], fault["line"] - 1
                fault["single"] = not forms or at in used
                if fault["single"]: continue
                used.add(at)
                lines[at] = forms[0] + lines[at][len(fault["old"]):]
            write(tree, path, lines, used)
        keep(work / "plan.json", held)
        done = compiled(tree)
        if done.returncode == 0: break
        errors, notes = set(), set()
        for place, line, kind in re.findall(r"^(\S+?):(\d+):\d+: (error|note|warning)", done.stdout, re.M):
            path = os.path.relpath(os.path.normpath(tree / "build/dev" / place), tree)
            (errors if kind == "error" else notes).add((path, int(line)))
        there = lambda places: [f for f in held["faults"] if not f["single"] and (f["path"], f["line"]) in places]
        unclear = {path for path, _ in errors} - {f["path"] for f in there(errors)}
        vague = [f for f in held["faults"] if f["path"] in unclear and not f["single"]]
        failed = there(errors) + ([f for f in vague if f in there(notes)] or vague) or there(notes)
        if not failed: sys.exit("the build fails, and not by the faults:\n" + (done.stdout + done.stderr)[-3000:])
        for fault in failed: fault["way"] += 1
        print(len(failed), "faults go on to another form", flush=True)
    singles = sum(fault["single"] for fault in held["faults"])
    print(len(held["faults"]) - singles, "faults switched,", singles, "need a build of their own", flush=True)

def tests(tree, options):
    """Command, environment and folder of every test that counts."""
    found, out = {}, {"windows_types", "rooms", "format", *options.leave_out}
    for test in json.loads(command("ctest", "--test-dir", str(tree / "build/dev"), "--show-only=json-v1").stdout)["tests"]:
        has = {each["name"]: each["value"] for each in test.get("properties", [])}
        environment = dict(each.split("=", 1) for each in has.get("ENVIRONMENT", []))
        if test["name"] not in out: found[test["name"]] = (test["command"], environment, has["WORKING_DIRECTORY"])
    return found

def end_all_of(home):
    """What a test left running bears its home folder in its environment."""
    for process in pathlib.Path("/proc").glob("[0-9]*/environ"):
        with contextlib.suppress(OSError):
            if home.encode() in process.read_bytes(): os.kill(int(process.parent.name), signal.SIGKILL)

def run(tree, name, test, extra, limit):
    """Exit code and output. A home at a short path, for sockets; no session of its own: its first pty would hang it up."""
    args, environment, folder = test
    code, home, usual = "too long", tempfile.mkdtemp(dir=HOMES.name), f"{tree}/build/dev/tests/home/{name}"
    for path in (HOMES.name, home): os.chmod(path, 0o755)  # some tests act as another user
    for sub, mode in ("run", 0o700), ("tmp", 0o755): os.mkdir(f"{home}/{sub}", mode)
    own = {key: value.replace(usual, home) for key, value in environment.items()}
    with tempfile.TemporaryFile() as output:
        with contextlib.suppress(subprocess.TimeoutExpired):
            code = subprocess.run(args, cwd=folder, env={**os.environ, "HOME": home, **own, **extra}, timeout=limit,
                                  stdout=output, stderr=output, stdin=subprocess.DEVNULL, preexec_fn=os.setpgrp).returncode
        end_all_of(home)
        shutil.rmtree(home, ignore_errors=True)
        output.seek(0)
        return code, output.read().decode(errors="replace")

def side_by_side(work, todo, jobs):
    with ThreadPoolExecutor(jobs) as pool, contextlib.ExitStack() as at_end:
        at_end.callback(end_all_of, HOMES.name)
        at_end.callback(pool.shutdown, wait=False, cancel_futures=True)
        at_end.callback(stop.set)
        for result in [pool.submit(work, each) for each in todo]: result.result()
        at_end.pop_all()

def reach(work, tree, options):
    found, known = tests(tree, options), kept(work / "reach.json")
    def look(name):
        with tempfile.NamedTemporaryFile() as record:
            for _ in range(2):
                begin = time.time()
                code, output = run(tree, name, found[name], {"PLANTED_REACHED": record.name}, 400)
                if stop.is_set(): return
                if code == 0: break
            reached = [number for number, byte in enumerate(pathlib.Path(record.name).read_bytes()) if byte]
            known[name] = dict(seconds=time.time() - begin, code=code, faults=reached)
            keep(work / "reach.json", known)
            if code: print(f"{name} fails without a fault, left out:", *re.findall(r"^FAIL!.*", output, re.M)[:2], flush=True)
    side_by_side(look, [name for name in found if name not in known], options.jobs)
    print(len(known), "tests reach", len({i for test in known.values() for i in test["faults"]}), "faults", flush=True)

def attempt(work, tree, options):
    build(work, tree, options)  # an interrupted try may have left a fault there
    found, held = tests(tree, options), kept(work / "plan.json")
    known, results = kept(work / "reach.json"), kept(work / "results.json")
    sound = [name for name in known if known[name]["code"] == 0 and name in found]
    left = [fault for fault in held["faults"] if str(fault["id"]) not in results]
    rooms = {path.stem[4:]: path.parent.name for path in (tree / "tests").glob("*/tst_*.cpp")}
    def order(fault, names):
        room = room_of(fault["path"])
        return sorted(names, key=lambda name: (rooms.get(name) != TEST_ROOMS.get(room, room), known[name]["seconds"]))
    def failure(name, extra):
        """What of this test failed, twice in a row."""
        for _ in range(2):
            if stop.is_set(): return None
            code, output = run(tree, name, found[name], extra, min(400, known[name]["seconds"] * 4 + 30))
            if code == 0: return None
        case = re.search(r"^FAIL!  : (\S+)", output, re.M)
        return f"{name} {case[1] if case else code}"
    def judged(fault, names, by):
        if stop.is_set(): return
        results[str(fault["id"])] = dict(names=names, by=by)
        keep(work / "results.json", results)
        print("noticed " if by else "SURVIVED", told(fault), f"[{by or ' '.join(names) or 'no test comes here'}]", flush=True)
    def switched(fault):
        names = order(fault, [name for name in sound if fault["id"] in known[name]["faults"]])
        judged(fault, names, next(filter(None, (failure(name, {"PLANTED_FAULT": str(fault["id"])}) for name in names)), None))
    def alone(fault):
        usual = (tree / fault["path"]).read_text()
        lines = command("git", "show", f"HEAD:{fault['path']}", cwd=tree).stdout.split("\n")
        lines[fault["line"] - 1] = fault["new"]
        write(tree, fault["path"], lines, True)
        names, by = order(fault, sound), ["the compiler"] if compiled(tree).returncode else []
        side_by_side(lambda name: by or by.extend(filter(None, [failure(name, {})])), names, options.jobs)
        judged(fault, names, by[0] if by else None)
        (tree / fault["path"]).write_text(usual)
    side_by_side(switched, [fault for fault in left if not fault["single"]], options.jobs)
    for fault in left:
        if fault["single"] and options.singles: alone(fault)

def room_of(path):
    room, *below = path.removesuffix(".cpp").split("/")[1:]
    return room if room != "support" else below[0] if below[0] in ("audio", "capture", "config", "net") else "other support"

def told(fault):
    return f"seed {fault['seed']} {fault['path']}:{fault['line']}  `{fault['old'].strip()}`  ->  `{fault['new'].strip()}`"

def report(work, tree, options):
    held, results = kept(work / "plan.json"), kept(work / "results.json")
    answers = [(fault, results.get(str(fault["id"]))) for fault in held["faults"]]
    tried = [(fault, result) for fault, result in answers if result and result["by"] != "the compiler"]
    lines = ["| Room | tried | noticed |", "|---|---|---|"]
    for room in [*sorted({room_of(fault["path"]) for fault, _ in tried}), "all"]:
        of = [bool(result["by"]) for fault, result in tried if room in (room_of(fault["path"]), "all")]
        lines.append(f"| {room} | {len(of)} | {sum(of)}{f' ({100 * sum(of) // len(of)} %)' if of else ''} |")
    lines += ["", "Noticed by no test:"]
    lines += [f"- {told(fault)}; ran: {', '.join(r['names']) or 'none comes here'}" for fault, r in tried if not r["by"]]
    for single, text in (True, "In need of a build of their own (--singles), not tried:"), (False, "Not yet tried:"):
        lines += ["", text, *("- " + told(fault) for fault, result in answers if not result and fault["single"] == single)]
    (work / "report.md").write_text("\n".join(lines) + "\n")
    print("\n".join(lines))

def clean(work, tree, options):
    command("git", "worktree", "remove", "--force", str(tree), cwd=ROOT)
    for name in ("plan.json", "reach.json", "results.json", "report.md"): (work / name).unlink(missing_ok=True)

def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    add = parser.add_argument
    add("steps", nargs="*", metavar="STEP", default=["plan", "build", "reach", "try", "report"])
    add("--seeds", type=lambda text: [int(seed) for seed in text.split(",")], default=[1], help="say, 1,2,3")
    add("--count", type=int, default=20, help="faults of each seed")
    add("--files", nargs="+", default=["src/*.cpp"], help="git path patterns")
    add("--jobs", type=int, default=os.cpu_count(), help="runs side by side")
    add("--leave-out", nargs="+", default=[], metavar="TEST", help="besides windows_types, rooms and format")
    add("--singles", action="store_true", help="try also what needs a build of its own")
    add("--work", type=lambda text: pathlib.Path(text).resolve(), default=ROOT / "build/planted", metavar="FOLDER")
    options = parser.parse_args()
    resource.setrlimit(resource.RLIMIT_DATA, (6 << 30, 6 << 30))  # a fault may make a loop endless
    for each in (signal.SIGINT, signal.SIGTERM): signal.signal(each, lambda *_: sys.exit("stopped; start again to go on"))
    steps = {"plan": plan, "build": build, "reach": reach, "try": attempt, "report": report, "clean": clean}
    for step in options.steps: steps[step](options.work, options.work / "tree", options)

main()

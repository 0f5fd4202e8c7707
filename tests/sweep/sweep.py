#!/usr/bin/env python3
"""The fault sweep: every kind of system call a script makes fails in turn.

For each target script it counts the calls of each kind (upkeep-faults.exe
--count-calls), then reruns it in a fresh directory with that kind failing from
its nth call on (n sampled evenly up to the count, --per-kind at most), with
each code of --codes (or one code a run, taking turns, with --alternate). Every
run must end by itself within 60 s without a crash, with an exit code the
script documents (0, 1 its error target, -3/-4 when the script itself cannot be
read, the code itself for /encrypt); report no success that did not happen (a
run ending with 0 leaves what a clean run leaves; a failing one names the code
in an error line, or ends a true/false function with False); and leave every
file and registry value as before or as a clean run leaves it (no partial or
temporary file), no child program running and no service behind.
UPKEEP_SWEEP_FULL=1 makes it 12 calls a kind with every code. Adding a script
is one line in TARGETS and a file in scripts/.
"""
import argparse
import concurrent.futures
import os
import re
import shutil
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "harness"))
from script_cases import run_bounded, windows_path  # noqa: E402

RUN_TIMEOUT = 60
SCRIPT_EXITS = {0, 1}
LOAD_EXITS = {253, 252}  # -3, -4: the script itself could not be read or prepared
# Kinds whose failure keeps the script's roll-back from removing its service
# (a running service is removed once it stops, and a stop waits on its status).
SERVICE_KEEPERS = {"scm", "svcopen", "svcquery", "svccontrol", "svcdelete"}
# Kinds whose failure keeps the script from finding or ending the child it started.
CHILD_KEEPERS = {"snapshot", "terminate"}
# An expansion that cannot reach the environment leaves the name as written,
# as for an unknown name: what fails then is the function that used the text.
UNNAMED = {"environment", "memory"}
# Runs with every allocation above these sizes failing, as when memory runs out:
# the run ends by itself, with 14 when it is the interpreter that ran out.
MEMORY_LIMITS = (64, 512, 1024, 4096)
OUT_OF_MEMORY = 14
HUNG = "hung past %d s" % RUN_TIMEOUT


class Target:
    """One script: `files` are written into its directory before every run (name
    -> bytes, or a helper program's name for a copy); `ignore` matches files a
    run may leave that are not the script's edits; `unreported` names kinds whose
    failure the script cannot see: said on a line, the files as before."""

    def __init__(self, name, files, args="/file script.xml", registry=False, service=False, ignore=None,
                 serial=False, unreported=(), memory=False):
        self.name, self.files, self.args, self.registry, self.service = name, files, args, registry, service
        self.serial, self.unreported, self.ignore = serial, set(unreported), re.compile(ignore) if ignore else None
        self.memory = memory  # also run with allocations failing above each of MEMORY_LIMITS


def text(s):
    return s.encode("utf-8")


SETTINGS_JSON = text('{\n  "name": "app",\n  "version": "1.0",\n  "old": true,\n  "list": [1, 2, 3]\n}\n')
CONFIG_XML = text('<?xml version="1.0"?>\n<config>\n  <version>1.0</version>\n  <old/>\n</config>\n')
BIG_SCRIPT = text('<script version="1.1">' + '<trace value="enciphered"/>' * 12000 + "</script>")

TARGETS = [
    Target("json", {"settings.json": SETTINGS_JSON}, memory=True),
    Target("xml", {"config.xml": CONFIG_XML}, memory=True),
    Target("ini", {"app.ini": b"[app]\r\nversion=1.0\r\n"}),
    # fileClose has no result: a new content that cannot take its place is said on a
    # line of its own and the old file stays.
    Target("text_file", {"out.txt": b"old content\r\n"}, unreported={"flush", "close", "replace"}),
    Target("registry", {}, registry=True),
    Target("files", {"src/a.txt": b"a", "src/b.txt": b"b" * 70000, "src/sub/c.txt": b"c",
                     "src/sub/deeper/d.txt": b"d", "dest/a.txt": b"old a", "move_me.txt": b"m",
                     "trash/x.tmp": b"x", "trash/y.tmp": b"y", "old_tree/f1": b"1", "old_tree/sub/f2": b"2",
                     "old_tree/sub/deeper/f3": b"3", "pattern/keep.txt": b"k"}),
    # One run at a time: processKill ends every program of its name, whichever run started
    # it; the name is the sweep's own, so other tests' children are left alone.
    Target("processes", {"sweepchild.exe": "child.exe", "entry_points.dll": "entry_points.dll"},
           ignore=r"sweepchild\.\d+\.(start|end)$", serial=True),
    Target("service", {"test_service.exe": "test_service.exe"}, service=True, ignore=r"marker\.txt$"),
    Target("download", {"payload.bin": bytes(range(256)) * 400, "setup.exe": b"the old program",
                        "signed.exe": "signed.exe"}),
    Target("encrypt", {"enc.xml": BIG_SCRIPT}, args="/encrypt enc.xml"),
]


class Sweep:
    def __init__(self, opts):
        self.opts = opts
        self.reruns = 0
        self.env = dict(os.environ, LC_ALL="C.UTF-8")
        self.assets = os.path.join(opts.work, "assets")
        make_assets(opts.helpers, self.assets)

    def wine(self, exe, args, cwd, timeout=RUN_TIMEOUT):
        return run_bounded([self.opts.wine_run, self.opts.prefix, exe] + args, cwd, self.env, timeout)

    def prepare(self, target, rundir):
        shutil.rmtree(rundir, ignore_errors=True)
        os.makedirs(rundir)
        script = os.path.join(HERE, "scripts", target.name + ".xml")
        if os.path.exists(script):
            shutil.copy(script, os.path.join(rundir, "script.xml"))
        for name, content in target.files.items():
            path = os.path.join(rundir, name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            if isinstance(content, str):
                shutil.copy(os.path.join(self.assets, content), path)
            else:
                with open(path, "wb") as f:
                    f.write(content)
        if target.registry:
            # The interpreter runs scripts from its own directory or below a relative path only.
            seed = os.path.join(rundir, "seed.xml")
            shutil.copy(os.path.join(HERE, "scripts", "registry_seed.xml"), seed)
            self.wine(self.opts.upkeep, ["/file", "seed.xml", "/var", "key", self.key(rundir)], rundir)
            os.remove(seed)

    def key(self, rundir):
        return "Software\\UpkeepSweep-" + os.path.basename(rundir)

    def service_name(self, rundir):
        return "upkeepSweep" + os.path.basename(rundir).replace("-", "")

    def arguments(self, target, rundir):
        args = target.args.split() + ["/var", "dir", windows_path(rundir)]
        args += ["/var", "served", os.path.relpath(rundir, self.opts.work).replace(os.sep, "/")]
        args += ["/var", "key", self.key(rundir), "/var", "service", self.service_name(rundir)]
        return args

    def state(self, target, rundir):
        """What the run left: every file's bytes, and the registry's values."""
        files = {}
        for parent, _, names in os.walk(rundir):
            for name in names:
                path = os.path.join(parent, name)
                rel = os.path.relpath(path, rundir)
                if rel in ("script.xml", "out.log") or (target.ignore and target.ignore.search(rel)):
                    continue
                with open(path, "rb") as f:
                    files[rel] = f.read()
        registry = {}
        if target.registry:
            export = os.path.join(rundir, "export.reg")
            self.wine("reg", ["export", "HKCU\\" + self.key(rundir), windows_path(export), "/y"], rundir)
            if os.path.exists(export):
                key = None
                for line in open(export, encoding="utf-16").read().splitlines():
                    if line.startswith("["):
                        key = line.replace(self.key(rundir), "KEY")  # the same key in every run
                        registry[(key, None)] = "key"
                    elif "=" in line and key:
                        name, _, data = line.partition("=")
                        registry[(key, name)] = data
                os.remove(export)
        return {"files": files, "registry": registry}

    def clean_up(self, target, rundir):
        if target.registry:
            self.wine("reg", ["delete", "HKCU\\" + self.key(rundir), "/f"], rundir)
        if target.service:
            name = self.service_name(rundir)
            self.wine("sc", ["stop", name], rundir)
            self.wine("sc", ["delete", name], rundir)

    def children_running(self, rundir):
        """Ends the run's own children that are still running; True when there were any."""
        pattern = re.escape(os.path.basename(rundir)) + r"\\sweepchild\.exe"
        found = subprocess.run(["pgrep", "-f", pattern], capture_output=True, text=True).stdout.split()
        subprocess.run(["pkill", "-f", pattern])
        return bool(found)

    def run(self, target, rundir, extra):
        """(exit code or a problem text, output lines, state before, state after).
        A run that hangs, or ends having printed nothing (the program's first line
        is always printed), runs once more: on a heavily loaded machine a Wine
        process can stall or fail to start by itself. Runs are deterministic, so
        a second such run is the program's own."""
        outcome = self.run_once(target, rundir, extra)
        silent = not "".join(outcome[1]).strip()
        if outcome[0] == HUNG or silent:
            what = "hung" if outcome[0] == HUNG else "ended with %s, having printed nothing" % outcome[0]
            print("%s %s %s; its output:\n  %s\nrunning it once more" %
                  (target.name, " ".join(extra), what, "\n  ".join(outcome[1])), flush=True)
            self.reruns += 1
            outcome = self.run_once(target, rundir, extra)
        return outcome

    def run_once(self, target, rundir, extra):
        self.prepare(target, rundir)
        before = self.state(target, rundir)
        result = self.wine(self.opts.faults, extra + self.arguments(target, rundir), rundir)
        state = self.state(target, rundir)
        if target.service:
            state["service"] = self.wine("sc", ["query", self.service_name(rundir)], rundir)[0] == 0
        self.clean_up(target, rundir)
        code, stdout, stderr = result
        output = stdout.decode("utf-8", "replace").replace("\r\n", "\n").split("\n")
        if code is None:
            return HUNG, output, before, state
        if code < 0:
            return "killed by signal %d" % -code, output, before, state
        if b"Unhandled" in stderr:
            return "crashed: " + stderr.decode("utf-8", "replace")[-300:], output, before, state
        return code, output, before, state

    def counts(self, target):
        rundir = os.path.join(self.opts.work, target.name, "count")
        code, output, before, after = self.run(target, rundir, ["--count-calls"])
        if code != 0:
            sys.exit("%s: the clean run ended with %s:\n%s" % (target.name, code, "\n".join(output)))
        counts = {}
        for line in output:
            match = re.fullmatch(r"calls: (\w+) (\d+)", line)
            if match and int(match.group(2)) > 0:
                counts[match.group(1)] = int(match.group(2))
        if not counts:
            sys.exit("%s: the clean run counted no calls:\n%s" % (target.name, "\n".join(output)))
        return counts, before, after

    def check(self, target, kind, nth, error, clean_before, clean_after, outcome, rundir):
        code, output, before, state = outcome
        if isinstance(code, str):
            return [code]
        problems = []
        allowed = SCRIPT_EXITS | LOAD_EXITS | ({error & 0xFF} if target.args.startswith("/encrypt") else set())
        if kind == "memory":
            allowed = allowed | {OUT_OF_MEMORY}
        if code not in allowed:
            problems.append("exit code %d" % code)
        said = any(names_failure(line, error) for line in output)
        if code == 0 and state["files"] != clean_after["files"] and not (kind in target.unreported and said):
            problems.append("reported success, but the files are not as a clean run leaves them: %s"
                            % differing(state["files"], clean_after["files"]))
        if code == 0 and state["registry"] != clean_after["registry"]:
            problems.append("reported success, but the registry is not as a clean run leaves it")
        if code not in (0, 253) and kind not in UNNAMED and not said:
            problems.append("no line names the injected code %d or a False result" % error)
        for what in ("files", "registry"):
            for item in set(before[what]) | set(clean_after[what]) | set(state[what]):
                if state[what].get(item) not in (before[what].get(item), clean_after[what].get(item)):
                    problems.append("%s %s is neither as before nor as after" % (what[:-1] if what == "files" else "value", item))
        if state.get("service") and kind not in SERVICE_KEEPERS:
            problems.append("the service is still there")
        if target.name == "processes" and self.children_running(rundir) and kind not in CHILD_KEEPERS:
            problems.append("a child program is still running")
        return problems


def make_assets(helpers, assets):
    """The helper programs the targets copy, and a signed one."""
    os.makedirs(assets, exist_ok=True)
    for name in ("child.exe", "entry_points.dll", "test_service.exe", "hold_file.exe"):
        shutil.copy(os.path.join(helpers, name), assets)
    if os.path.exists(os.path.join(assets, "signed.exe")):
        return
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", "key.pem", "-out",
                    "cert.pem", "-days", "3650", "-subj", "/CN=Sweep Signer", "-addext",
                    "extendedKeyUsage=codeSigning"], cwd=assets, check=True, capture_output=True)
    subprocess.run(["osslsigncode", "sign", "-certs", "cert.pem", "-key", "key.pem", "-h", "sha256", "-in",
                    "hold_file.exe", "-out", "signed.exe"], cwd=assets, check=True, capture_output=True)


def names_failure(line, error):
    """A line that says which code a function failed with; a true/false
    function whose log has no code says False."""
    return ("'%d'" % error) in line or (": %d" % error) in line or line.endswith("with False") \
        or line.endswith("with False.")


def differing(a, b):
    return ", ".join(sorted(name for name in set(a) | set(b) if a.get(name) != b.get(name))) or "none"


def sample(count, most):
    if count <= most:
        return list(range(1, count + 1))
    if most == 1:
        return [1]
    return sorted({1 + round(i * (count - 1) / (most - 1)) for i in range(most)})


def main():
    parser = argparse.ArgumentParser()
    for name in ("faults", "upkeep", "helpers", "prefix", "wine-run", "work"):
        parser.add_argument("--" + name, required=True)
    parser.add_argument("--per-kind", type=int, default=12)
    parser.add_argument("--codes", default="5,112")
    parser.add_argument("--alternate", action="store_true", help="one code per call, taking turns")
    parser.add_argument("--only")
    parser.add_argument("--jobs", type=int, default=3)
    opts = parser.parse_args()
    if os.environ.get("UPKEEP_SWEEP_FULL"):
        opts.per_kind, opts.alternate = 12, False
    for name in ("faults", "upkeep", "helpers", "prefix", "wine_run", "work"):
        setattr(opts, name, os.path.abspath(getattr(opts, name)))
    codes = [int(c) for c in opts.codes.split(",")]
    sweep = Sweep(opts)
    targets = [t for t in TARGETS if not opts.only or t.name in opts.only.split(",")]
    runs, failures, kinds = 0, [], set()
    with concurrent.futures.ThreadPoolExecutor(opts.jobs) as parallel, \
            concurrent.futures.ThreadPoolExecutor(1) as serial:
        for target in targets:
            pool = serial if target.serial else parallel
            counts, clean_before, clean_after = sweep.counts(target)
            jobs = {}
            for kind, count in sorted(counts.items()):
                kinds.add(kind)
                for index, nth in enumerate(sample(count, opts.per_kind)):
                    for error in ([codes[index % len(codes)]] if opts.alternate else codes):
                        rundir = os.path.join(opts.work, target.name, "%s-%d-%d" % (kind, nth, error))
                        extra = ["--fail", "%s:%d:%d" % (kind, nth, error)]
                        jobs[pool.submit(sweep.run, target, rundir, extra)] = (kind, nth, error, rundir)
            for limit in MEMORY_LIMITS if target.memory else ():
                rundir = os.path.join(opts.work, target.name, "memory-%d" % limit)
                extra = ["--max-allocation", str(limit)]
                jobs[pool.submit(sweep.run, target, rundir, extra)] = ("memory", limit, 0, rundir)
            for future in concurrent.futures.as_completed(jobs):
                kind, nth, error, rundir = jobs[future]
                runs += 1
                problems = sweep.check(target, kind, nth, error, clean_before, clean_after, future.result(), rundir)
                if problems:
                    with open(os.path.join(rundir, "out.log"), "w") as log:  # kept for a look
                        log.write("\n".join(future.result()[1]))
                    failures.append("FAIL %s %s:%d:%d: %s" % (target.name, kind, nth, error, "; ".join(problems)))
                    print(failures[-1], flush=True)
                else:
                    shutil.rmtree(rundir, ignore_errors=True)
    reruns = ", %d run again after a hang or a silent end" % sweep.reruns if sweep.reruns else ""
    print("sweep: %d scripts, %d kinds, %d runs, %d failures%s" % (len(targets), len(kinds), runs, len(failures), reruns))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())

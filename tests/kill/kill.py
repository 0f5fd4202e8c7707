#!/usr/bin/env python3
"""Kills upkeep.exe from outside while it replaces a file, and checks what is left.

Per scenario: one clean run (timed; it gives the target's new content), then
--kills times: the old content back, the run started under killer.exe, which
ends it with TerminateProcess after a random delay within the clean run's time;
the target must be byte for byte old or new, and the next run over the same
directory, leftovers and all, must end with 0 and leave the new content.
Leftover temporary files are counted and removed. UPKEEP_KILL_FULL=1 makes it
100 kills a scenario. Prints a line per scenario and failure, and a summary.
"""
import argparse
import collections
import hashlib
import os
import random
import shutil
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "harness"))
from script_cases import run_bounded, windows_path  # noqa: E402

RUN_TIMEOUT = 120
MB = 1024 * 1024


def xml_document():
    items = "".join('  <item id="%d">value %d of the maintenance list</item>\n' % (i, i) for i in range(340000))
    return ('<?xml version="1.0" ?>\n<config>\n  <version>1.0</version>\n' + items + "</config>\n").encode()


def json_document():
    items = ",\n".join('    {"id": %d, "name": "value %d of the list"}' % (i, i) for i in range(430000))
    return ('{\n  "version": "1.0",\n  "items": [\n' + items + "\n  ]\n}\n").encode()


def ini_document():
    return "".join("[section%d]\nkey=value %d of the settings\nother=%d\n\n" % (i, i, i)
                   for i in range(100000)).encode()


def encrypt_document():
    lines = "".join('  <trace value="line %d of a long maintenance script"/>\n' % i for i in range(100000))
    return ('<script version="1.1">\n' + lines + "</script>\n").encode()


def script(body):
    return ('<script version="1.1">\n  <onErrorGoTo target="failed"/>\n%s\n  <exit code="0"/>\n'
            '  <exit id="failed" code="1"/>\n</script>\n' % body).encode()


# `files` are written before the first run (name -> bytes, or a function giving
# them); the run changes `target` from its old to its new content.
Scenario = collections.namedtuple("Scenario", "name target files args", defaults=["/file script.xml"])


SCENARIOS = [
    Scenario("xml", "doc.xml", {"doc.xml": xml_document, "script.xml": script(
        '  <xmlOpen path="doc.xml" handle="doc"/>\n  <xmlSetValue handle="doc" xpath="/config/version" value="2.0"/>\n'
        '  <xmlSave handle="doc" path="doc.xml"/>\n  <xmlClose handle="doc"/>')}),
    Scenario("json", "doc.json", {"doc.json": json_document, "script.xml": script(
        '  <jsonOpen path="doc.json" handle="doc"/>\n'
        '  <jsonInsertScalarIntoObject handle="doc" xpath="" name="version" stringValue="2.0"/>\n'
        '  <jsonSave handle="doc" path="doc.json"/>\n  <jsonClose handle="doc"/>')}),
    Scenario("ini", "settings.ini", {"settings.ini": ini_document, "script.xml": script(
        '  <iniSetValue path=".\\settings.ini" section="section50000" key="key" value="changed"/>')}),
    Scenario("copy", "dest.bin", {"source.bin": lambda: random.Random(1).randbytes(200 * MB),
                                  "dest.bin": lambda: random.Random(2).randbytes(200 * MB), "script.xml": script(
        '  <fileCopySingle src="source.bin" dest="dest.bin" failIfExists="false"/>')}),
    Scenario("encrypt", "script.xml", {"script.xml": encrypt_document}, args="/encrypt script.xml"),
]


def digest(path):
    hasher = hashlib.sha1()
    with open(path, "rb") as file:
        for block in iter(lambda: file.read(4 * MB), b""):
            hasher.update(block)
    return hasher.hexdigest()


class Killing:
    def __init__(self, opts):
        self.opts = opts
        self.env = dict(os.environ, LC_ALL="C.UTF-8")

    def wine(self, args, cwd):
        return run_bounded([self.opts.wine_run, self.opts.prefix] + args, cwd, self.env, RUN_TIMEOUT)

    def upkeep(self, scenario):
        return [windows_path(self.opts.upkeep)] + scenario.args.split()

    def run(self, scenario):
        """Returns (failures, kills that hit a running program, leftovers, seconds of one clean run)."""
        directory = os.path.join(self.opts.work, scenario.name)
        shutil.rmtree(directory, ignore_errors=True)
        os.makedirs(directory)
        seeds = os.path.join(directory, "seeds")
        os.makedirs(seeds)
        for name, content in scenario.files.items():
            with open(os.path.join(seeds, name), "wb") as file:
                file.write(content() if callable(content) else content)
        rundir = os.path.join(directory, "run")
        shutil.copytree(seeds, rundir)
        target, old_target = os.path.join(rundir, scenario.target), os.path.join(seeds, scenario.target)
        old = digest(target)

        started = time.monotonic()
        result = self.wine(self.upkeep(scenario), rundir)
        clean = time.monotonic() - started
        if result[0] != 0:
            return ["%s: the clean run failed: %r" % (scenario.name, result[:2])], 0, 0, clean
        new = digest(target)
        if new == old:
            return ["%s: the clean run left the target unchanged" % scenario.name], 0, 0, clean

        failures, hits, leftovers = [], 0, 0
        names = set(os.listdir(rundir))
        for attempt in range(self.opts.kills):
            shutil.copyfile(old_target, target)
            delay = random.randint(0, int(clean * 1000))
            result = self.wine([windows_path(self.opts.killer), str(delay)] + self.upkeep(scenario), rundir)
            where = "%s kill %d at %d ms" % (scenario.name, attempt + 1, delay)
            if result[0] != 0:
                failures.append("%s: killer.exe failed: %r" % (where, result))
                continue
            said = result[1].decode(errors="replace").strip().splitlines()[-1]  # after the program's own lines
            hits += said == "killed"
            left = digest(target)
            if left not in (old, new):
                failures.append("%s: the target is neither the old nor the new content (%s, %d bytes)" %
                                (where, said, os.path.getsize(target)))
            if scenario.args.startswith("/encrypt") and left == new:
                shutil.copyfile(old_target, target)  # enciphering is not repeatable: start from the plain script
            stray = set(os.listdir(rundir)) - names
            result = self.wine(self.upkeep(scenario), rundir)
            if result[0] != 0 or digest(target) != new:
                failures.append("%s: the next run, beside %s, failed: %s" %
                                (where, sorted(stray) or "nothing", result[0]))
            leftovers += len(stray)
            for name in set(os.listdir(rundir)) - names:
                os.remove(os.path.join(rundir, name))
        shutil.rmtree(directory, ignore_errors=True)
        return failures, hits, leftovers, clean


def main():
    parser = argparse.ArgumentParser()
    for name in ("upkeep", "killer", "prefix", "wine_run", "work"):
        parser.add_argument("--" + name.replace("_", "-"), required=True)
    parser.add_argument("--kills", type=int, default=4)
    parser.add_argument("--only")
    opts = parser.parse_args()
    if os.environ.get("UPKEEP_KILL_FULL"):
        opts.kills = 100
    for name in ("upkeep", "killer", "prefix", "wine_run", "work"):
        setattr(opts, name, os.path.abspath(getattr(opts, name)))
    killing = Killing(opts)
    all_failures, runs, all_hits, began = [], 0, 0, time.monotonic()
    for scenario in SCENARIOS:
        if opts.only and scenario.name not in opts.only.split(","):
            continue
        failures, hits, leftovers, clean = killing.run(scenario)
        print("%s: clean run %.2f s, %d kills, %d while running, %d temporary files left, %d failures" %
              (scenario.name, clean, opts.kills, hits, leftovers, len(failures)), flush=True)
        for failure in failures:
            print("  " + failure, flush=True)
        all_failures += failures
        runs += opts.kills
        all_hits += hits
    print("kill: %d kills, %d while running, %d failures, %.0f s" %
          (runs, all_hits, len(all_failures), time.monotonic() - began))
    return 1 if all_failures else 0


if __name__ == "__main__":
    sys.exit(main())

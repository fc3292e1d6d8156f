#!/usr/bin/env python3
"""Makes one change at a time in the sources and sees whether a test notices.

A change is a comparison turned, a constant moved, a line left out or a condition forced. Which ones
are made depends on the seed and on the lines themselves, so that a run can be repeated after other
lines have changed. The work is done in a copy of the tree, in build/mutants.
"""

import argparse
import collections
import contextlib
import hashlib
import itertools
import json
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

TREE = pathlib.Path(__file__).resolve().parents[2]
COPY = TREE / "build/mutants/tree"
BUILD = COPY / "build/mutants"
# For each room the test programs that look at it, the quickest to notice first.
ROOMS = {
    "editor": ["tests_editor"],
    "workbench": ["tests_host", "tests_app"],
    "plexa": ["tests_host", "tests_editor", "tests_app"],
}
TURNED = {"==": "!=", "!=": "==", "<": ">=", ">": "<=", "<=": ">", ">=": "<"}
SECONDS = 300
SHARDS = 4

Mutant = collections.namedtuple("Mutant", "room path line kind old new")


def changes(lines, i):
    """Yields (kind, line) for all changes of one line."""
    line = lines[i]
    code = line.strip()
    if not code or code.startswith(("//", "#", "}", "namespace", "using", "Q_", "extern", "case ")):
        return
    quoted = [m.span() for m in re.finditer(r'"(\\.|[^"\\])*"|\'(\\.|[^\'\\])+\'|//.*', line)]

    def is_code(match):
        return not any(a <= match.start() < b for a, b in quoted)

    for m in filter(is_code, re.finditer(r" (==|!=|<=|>=|<|>) ", line)):
        yield "comparison", line[: m.start(1)] + TURNED[m[1]] + line[m.end(1) :]
    for m in filter(is_code, re.finditer(r"(?<![\w.\"])(\d+)(\.\d+)?(?![\w.])", line)):
        yield "constant", line[: m.start()] + str(int(m[1]) + 1) + (m[2] or "") + line[m.end() :]
    m = re.fullmatch(r"(\s*(?:\} else )?if \()(.*)(\) \{)", line)
    if m:
        yield "condition", m[1] + "true || (" + m[2] + ")" + m[3]
        yield "condition", m[1] + "false && (" + m[2] + ")" + m[3]
    # A whole statement, and no declaration.
    is_first = i > 0 and lines[i - 1].rstrip().endswith((";", "{", "}", ":"))
    if is_first and re.match(r"\s+[\w.:>\[\]()*-]+(\(.*\)| [-+*/|&]?= .*|\+\+|--);$", line):
        if not re.match(r"\s*(return|break|continue|const|auto|using|virtual|static|delete)\b", line):
            yield "line", re.match(r"\s*", line)[0] + ";"


def candidates(room, seed):
    """All mutants of a room, in the order of the seed, the kinds in turn."""
    kinds = collections.defaultdict(list)
    for path in sorted((TREE / room).rglob("*.cpp")):
        name = str(path.relative_to(TREE))
        lines = path.read_text().split("\n")
        seen = collections.Counter()
        for i in range(len(lines)):
            for kind, new in changes(lines, i):
                seen[new] += 1
                key = hashlib.sha256(f"{seed}|{name}|{lines[i]}|{new}|{seen[new]}".encode()).digest()
                kinds[kind].append((key, Mutant(room, name, i + 1, kind, lines[i], new)))
    rows = [[m for _, m in sorted(kinds[k], key=lambda pair: pair[0])] for k in sorted(kinds)]
    return [m for row in itertools.zip_longest(*rows) for m in row if m]


def again(results):
    """The mutants of an earlier run, where their lines are now."""
    for text in results.read_text().splitlines():
        mutant = Mutant(**json.loads(text)["mutant"])
        lines = (TREE / mutant.path).read_text().split("\n")
        places = [i + 1 for i, line in enumerate(lines) if line == mutant.old]
        if places:
            yield mutant._replace(line=min(places, key=lambda place: abs(place - mutant.line)))


def refresh():
    """Makes the copy what the tree is; only what differs gets a new time."""
    listed = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    output = subprocess.run(listed, cwd=TREE, check=True, capture_output=True).stdout
    names = {name for name in output.decode().split("\0") if name and (TREE / name).is_file()}
    for old in [p for p in COPY.rglob("*") if p.is_file() and BUILD not in p.parents]:
        if str(old.relative_to(COPY)) not in names:
            old.unlink()
    for name in names:
        to = COPY / name
        if not to.exists() or to.read_bytes() != (TREE / name).read_bytes():
            to.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(TREE / name, to)


def build(targets):
    done = subprocess.run(["ninja", "-C", BUILD, *targets], capture_output=True, text=True)
    return done.returncode == 0, done.stdout


def noticed(programs):
    """The name of a test that fails, or "" if none does."""
    for program in programs:
        # Tests wait as much as they work: several at a time take hardly longer than one.
        command = [BUILD / "bin" / program, "--gtest_fail_fast", "--gtest_brief=1"]
        environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen",
                       "GTEST_TOTAL_SHARDS": str(SHARDS)}
        logs = [tempfile.TemporaryFile("w+", errors="replace") for _ in range(SHARDS)]
        shards = [subprocess.Popen(command, env={**environment, "GTEST_SHARD_INDEX": str(i)},
                                   stdout=log, stderr=log, start_new_session=True)
                  for i, log in enumerate(logs)]
        end = time.monotonic() + SECONDS
        while time.monotonic() < end:
            statuses = [shard.poll() for shard in shards]
            if any(statuses) or None not in statuses:
                break
            time.sleep(0.2)
        for shard in shards:
            # With what it has started: a random user's child would go on for good.
            with contextlib.suppress(ProcessLookupError):
                os.killpg(shard.pid, signal.SIGKILL)
            shard.wait()
        if None in statuses and not any(statuses):
            return f"{program} doesn't end"
        for status, log in zip(statuses, logs):
            if status:
                log.seek(0)
                failed = re.search(r"\[  FAILED  \] (\S+)", log.read())
                return failed[1].rstrip(",") if failed else f"{program} ends with {status}"
    return ""


def run(mutant):
    """None if it can't be built, else what noticed it."""
    path = COPY / mutant.path
    whole = path.read_text()
    lines = whole.split("\n")
    assert lines[mutant.line - 1] == mutant.old
    lines[mutant.line - 1] = mutant.new
    path.write_text("\n".join(lines))
    try:
        programs = ROOMS[mutant.room]
        return noticed(programs) if build([*programs, "vortel-workbench"])[0] else None
    finally:
        path.write_text(whole)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=16, help="mutants of each room")
    parser.add_argument("--rooms", nargs="+", default=list(ROOMS), choices=ROOMS)
    parser.add_argument("--results", type=pathlib.Path, default=TREE / "build/mutants/results.jsonl")
    parser.add_argument("--again", type=pathlib.Path, help="repeat the mutants of these results")
    parser.add_argument("--cmake", nargs="*", default=[], help="further options, without the -D")
    options = parser.parse_args()
    os.nice(10)
    refresh()
    flags = ["CMAKE_BUILD_TYPE=None", "CMAKE_CXX_FLAGS=-O0 -w", "VORTEL_PCH=ON", *options.cmake]
    subprocess.run(["cmake", "-G", "Ninja", "-B", BUILD, "-S", COPY, *("-D" + f for f in flags)],
                   check=True, stdout=subprocess.DEVNULL)
    everything = sorted({program for room in options.rooms for program in ROOMS[room]})
    is_built, log = build([*everything, "all"])
    if not is_built:
        sys.exit(log)
    if test := noticed(everything):
        sys.exit(f"the tests fail as they are: {test}")
    queues = [again(options.again)] if options.again else []
    queues = queues or [candidates(room, options.seed) for room in options.rooms]
    caught, made = collections.Counter(), collections.Counter()
    options.results.parent.mkdir(parents=True, exist_ok=True)
    with options.results.open("w") as results:
        for mutant in itertools.chain(*queues):
            if not options.again and made[mutant.room] >= options.count:
                continue
            test = run(mutant)
            if test is None:
                continue
            made[mutant.room] += 1
            caught[mutant.room] += bool(test)
            print(f"{'caught  ' if test else 'SURVIVED'} {mutant.path}:{mutant.line}: "
                  f"{mutant.new.strip()}  {test}", flush=True)
            results.write(json.dumps({"mutant": mutant._asdict(), "test": test}) + "\n")
            results.flush()
    for room in made:
        share = 100 * caught[room] // made[room]
        print(f"{room}: {caught[room]} of {made[room]} caught, {share} %")


main()

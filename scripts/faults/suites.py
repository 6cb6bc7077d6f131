"""The test programs of a build: which of them reach a fault, and what they say of it."""

import json
import os
import resource
import signal
import subprocess
import tempfile
import time
from dataclasses import dataclass, field
from pathlib import Path
from threading import Lock

# A fault can grow without end; it must not take the machine with it.
MEMORY = 6 << 30
FILE_SIZE = 1 << 30
# How much longer than without a fault a program may take before it is taken to hang.
PATIENCE = 10
LEAST_PATIENCE = 60  # seconds


@dataclass
class Suite:
    """All cases of one test program in one environment, run in one process."""
    name: str
    program: Path
    cases: list
    environment: dict
    folder: str  # where its sources stand, as "order" for tests/order
    objects: set  # the sources in it, and in what it starts
    on_server: bool
    own_process: bool = False  # each case needs a process of its own
    seconds: float = 0.0  # without a fault
    lock: Lock = field(default_factory=Lock)


def read_suites(build):
    """What ctest knows, gathered by program and environment."""
    shown = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"],
                           check=True, capture_output=True, text=True).stdout
    folders = {path.stem: path.parent.parent.relative_to(build / "tests")
               for path in (build / "tests").glob("**/CMakeFiles/*.dir")}
    suites = {}
    for test in json.loads(shown)["tests"]:
        program = Path(test["command"][0])
        properties = {p["name"]: p["value"] for p in test["properties"]}
        key = (program, *properties["ENVIRONMENT"])
        if key not in suites:
            suites[key] = Suite(
                name=test["name"].split(".")[0],
                program=program,
                cases=[],
                environment=dict(pair.split("=", 1) for pair in properties["ENVIRONMENT"]),
                folder=str(folders[program.name]),
                objects=sources_of(build, program),
                on_server="postgres" in properties["LABELS"])
        suites[key].cases += [argument.removeprefix("--gtest_filter=")
                              for argument in test["command"] if "filter" in argument]
    # Programs that run in several environments get names that tell them apart.
    for number, suite in enumerate(suites.values()):
        suite.name += f"#{number}"
    return list(suites.values())


def sources_of(build, program):
    inputs = subprocess.run(["ninja", "-C", str(build), "-t", "inputs",
                             str(program.relative_to(build))],
                            check=True, capture_output=True, text=True).stdout.split()
    return {source_of(name) for name in inputs
            if name.startswith(("src/", "host/")) and name.endswith(".o")}


def source_of(name):
    """The object src/order/CMakeFiles/order.dir/a.cpp.o is made of src/order/a.cpp."""
    folder, _, rest = name.partition("/CMakeFiles/")
    return f"{folder}/{rest.partition('/')[2].removesuffix('.o')}"


def is_mirrored(suite, path):
    return path.startswith((f"src/{suite.folder}/", f"{suite.folder}/"))


def reaching(suites, path):
    """Those that can notice a fault in a source: the ones of the mirrored folder first, then the
    small before the large. What needs a database server is only asked about the record interface
    and by its own folder, and last."""
    def asked(suite):
        mirrored = is_mirrored(suite, path)
        if suite.on_server and not path.startswith("src/platform/ado/"):
            return mirrored
        return mirrored or path in suite.objects or path.endswith(".h")

    def order(suite):
        return (not is_mirrored(suite, path), suite.on_server, len(suite.objects))

    return sorted(filter(asked, suites), key=order)


def first_red(suites, build, home, number):
    """The first of `suites` that a fault turns red, with what it says; empty when none does."""
    for suite in suites:
        with suite.lock:
            if not suite.seconds:
                measure(suite, build, home)
        red = run(suite, build, home, number, max(LEAST_PATIENCE, PATIENCE * suite.seconds))
        if red:
            return f"{suite.name} {red}"
    return ""


def measure(suite, build, home):
    """Runs a suite without a fault. If its cases disturb each other in one process, ctest runs it
    from then on."""
    for suite.own_process in (False, True):
        began = time.monotonic()
        red = run(suite, build, home, 0, 1800)
        suite.seconds = time.monotonic() - began
        if not red:
            print(f"{suite.name}: {suite.seconds:.1f} s without a fault", flush=True)
            return
        print(f"{suite.name} without a fault: {red}", flush=True)
    raise SystemExit(f"{suite.name} is red without a fault.")


def run(suite, build, home, number, patience):
    """Empty when all is green."""
    if suite.own_process:
        command = ["ctest", "--test-dir", str(build), "-j2", "--stop-on-failure",
                   "-R", f"^{suite.name.split('#')[0]}(\\.|$)"]
    else:
        command = [str(suite.program), "--gtest_fail_fast"]
        if suite.cases:
            command.append("--gtest_filter=" + ":".join(suite.cases))
    environment = dict(os.environ, HOME=str(home), **suite.environment,
                       FAKTURA_PLANTED=str(number))
    # Into a file, since a process that is left over would hold a pipe open.
    with tempfile.TemporaryFile() as output:
        process = subprocess.Popen(command, cwd=suite.program.parent, env=environment,
                                   stdin=subprocess.DEVNULL, stdout=output,
                                   stderr=subprocess.STDOUT, start_new_session=True,
                                   preexec_fn=limit)
        try:
            status = process.wait(patience)
        except subprocess.TimeoutExpired:
            status = None
        kill_session(process.pid)
        process.wait()
        output.seek(0)
        text = output.read().decode(errors="replace")
    return "does not end" if status is None else verdict(status, text)


def kill_session(leader):
    """The test program, if it is still there, and what it has left behind."""
    try:
        os.killpg(leader, signal.SIGKILL)
    except ProcessLookupError:
        pass


def limit():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_SIZE, FILE_SIZE))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def verdict(status, output):
    if status == 0:
        return ""
    failed = [line for line in output.splitlines() if "[  FAILED  ]" in line or "***" in line]
    began = [line for line in output.splitlines() if "[ RUN      ]" in line]
    return f"{status}: {(failed or began or output.splitlines() or ['nothing'])[-1].strip()}"

"""Compares what `kshop describe --json` shows with the second reading of the interface rules.

    compare.py --kshop bin/kshop FILE...                          given catalogue files, together
    compare.py --kshop bin/kshop --nodes 150 --rounds 3 --seed 1  random catalogues, of seeds 1, 2 and 3

Each difference is one line: place, expected, got. The exit status is 1 if there is any. Operators and messages that
stand there without a catalogue are left aside; only how they leave the sticky callback slots is taken from them.
"""

import argparse
import json
import os
import subprocess
import sys
import tempfile

from catalogue_view import read_entries
from interface_model import DEFAULT_HELP, predict
from random_catalogue import write_catalogue
from template_model import CallbackSlots

CATALOGUE_VARIABLE = "KORVAN_CATALOGUE"
DEFAULT_HELP_HOST, DEFAULT_HELP_PAGE = "korvan.example", "Shaders"
SHOWN_LENGTH = 300
SHOWN_DIFFERENCES = 60

# A shader without scripts that shows, by its callbacks, how the callback slots stand when the catalogue's turn comes.
PROBE = {"name": "zelk__korvan_probe", "kind": "shader", "output": "float", "builtin": False,
         "parameters": [{"name": "a", "type": "float", "default": 0.0}],
         "metadata": [{"key": "houdini.parm.separator.b", "value": ""}]}
PROBE_OPERATOR = "korvan::korvan_probe"


def describe(kshop, catalogues):
    """The object that kshop prints, with the given catalogue files declared."""
    environment = dict(os.environ)
    environment[CATALOGUE_VARIABLE] = ":".join(os.path.abspath(path) for path in catalogues)
    try:
        run = subprocess.run([kshop, "describe", "--json"], env=environment, capture_output=True, check=False)
    except OSError as error:
        raise SystemExit(f"{kshop} cannot be run: {error.strerror}") from error
    if run.returncode != 0:
        tail = run.stderr.decode("utf-8", "replace")[-2000:]
        raise SystemExit(f"{kshop} describe --json ended with status {run.returncode}:\n{tail}")
    return json.loads(run.stdout.decode("utf-8"))


def vop_operators(description):
    return description["tables"]["Vop"]


class Baseline:
    """What stands in the tables when the catalogue holds nothing but the probe.

    names     operators that are not the catalogue's
    before    those of them that were registered before the catalogue's
    messages  all messages
    slots     (regular, extra) callback slots before the catalogue's first entry
    """

    def __init__(self, description):
        names = [operator["name"] for operator in vop_operators(description)]
        if PROBE_OPERATOR not in names:
            raise SystemExit(f"The operator {PROBE_OPERATOR} is missing: is {CATALOGUE_VARIABLE} read at all?")
        place = names.index(PROBE_OPERATOR)
        operators = vop_operators(description)
        self.before = names[:place]
        self.names = set(names) - {PROBE_OPERATOR}
        self.messages = description["messages"]
        self.slots = [bool(template["callback"]) for template in operators[place]["templates"]]
        if any(self.slots) and not any(map(has_script, operators[:place])):
            raise SystemExit("A callback slot is set, though no script stands before the catalogue's entries.")


def has_script(operator):
    templates = [one for t in operator["templates"] for one in [t] + (t["children"] or [])]
    return any("script_callback" in (one["spare"] or {}) for one in templates)


def read_baseline(kshop):
    with tempfile.TemporaryDirectory(prefix="korvan-catalogue-") as directory:
        path = os.path.join(directory, "probe.json")
        with open(path, "w", encoding="utf-8") as file:
            json.dump({"nodes": [PROBE]}, file)
        return Baseline(describe(kshop, [path]))


def messages_beside(messages, baseline):
    """The messages that the baseline does not hold, in order."""
    rest, expected = [], list(baseline)
    for message in messages:
        if expected and message == expected[0]:
            expected.pop(0)
        else:
            rest.append(message)
    return rest


class Differences:
    """Collects differences, each as one line."""

    def __init__(self):
        self.lines = []

    def add(self, place, expected, got):
        self.lines.append(f"{place}: expected {short(expected)}, got {short(got)}")

    def compare(self, place, expected, got):
        """Goes down into objects and lists of equal shape, so that a difference names its field."""
        if isinstance(expected, dict) and isinstance(got, dict):
            for key in list(expected) + [k for k in got if k not in expected]:
                self.compare_key(f"{place}/{key}", key, expected, got)
        elif isinstance(expected, list) and isinstance(got, list):
            if len(expected) != len(got):
                self.add(f"{place} (length)", len(expected), len(got))
            for i, (one, other) in enumerate(zip(expected, got)):
                self.compare(f"{place}/{i}{named(one)}", one, other)
        elif expected == DEFAULT_HELP and place.endswith("/help_url"):
            self.compare_default_help(place, got)
        elif expected != got or isinstance(expected, bool) != isinstance(got, bool):
            self.add(place, expected, got)

    def compare_key(self, place, key, expected, got):
        if key not in got:
            self.add(place, expected[key], "no such field")
        elif key not in expected:
            self.add(place, "no such field", got[key])
        else:
            self.compare(place, expected[key], got[key])

    def compare_default_help(self, place, got):
        if not isinstance(got, str) or DEFAULT_HELP_HOST not in got or DEFAULT_HELP_PAGE not in got:
            self.add(place, f"the page {DEFAULT_HELP_PAGE} under {DEFAULT_HELP_HOST}", got)


def short(value):
    text = json.dumps(value, ensure_ascii=False)
    return text if len(text) <= SHOWN_LENGTH else f"{text[:SHOWN_LENGTH]}... ({len(text)} characters)"


def named(value):
    name = value.get("token", value.get("name")) if isinstance(value, dict) else None
    return f" ({name[:60]})" if name else ""


def compare_descriptions(baseline, description, entries):
    """The differences between `description` and what `entries` should have added to `baseline`, and the latter."""
    observed = [operator for operator in vop_operators(description) if operator["name"] not in baseline.names]
    prediction = predict(entries, CallbackSlots(*baseline.slots), baseline.before)
    differences = Differences()
    expected = prediction["operators"]
    differences.compare("operator names", [o["name"] for o in expected], [o["name"] for o in observed])
    by_name = {operator["name"]: operator for operator in observed}
    for operator in expected:
        if operator["name"] in by_name:
            differences.compare(operator["name"], operator, by_name[operator["name"]])
    differences.compare("messages", prediction["messages"],
                        messages_beside(description["messages"], baseline.messages))
    return differences.lines, prediction


def run_case(title, kshop, baseline, paths):
    """Compares one set of catalogue files; prints what was found; returns whether all agreed."""
    entries = read_entries(paths)
    lines, prediction = compare_descriptions(baseline, describe(kshop, paths), entries)
    for line in lines[:SHOWN_DIFFERENCES]:
        print(line)
    if len(lines) > SHOWN_DIFFERENCES:
        print(f"... and {len(lines) - SHOWN_DIFFERENCES} more")
    templates = sum(len(operator["templates"]) for operator in prediction["operators"])
    print(f"{title}: {len(entries)} entries, {len(prediction['operators'])} operators, {templates} templates, "
          f"{len(prediction['messages'])} messages: {len(lines) or 'no'} differences")
    return not lines


def run_random(arguments, baseline):
    good = True
    for seed in range(arguments.seed, arguments.seed + arguments.rounds):
        directory = tempfile.mkdtemp(prefix="korvan-catalogue-")
        path = os.path.join(directory, f"seed-{seed}.json")
        write_catalogue(path, seed, arguments.nodes)
        agreed = False
        try:
            agreed = run_case(f"seed {seed}", arguments.kshop, baseline, [path])
        finally:
            if arguments.keep and not agreed:
                print(f"kept {path}")
            else:
                os.remove(path)
                os.rmdir(directory)
        good = good and agreed
    return good


def parse_arguments():
    parser = argparse.ArgumentParser(description="Compares kshop's description of catalogues with a second reading.")
    parser.add_argument("--kshop", required=True, help="the program to ask")
    parser.add_argument("--nodes", type=int, default=150, help="nodes in each random catalogue")
    parser.add_argument("--rounds", type=int, default=1, help="number of random catalogues")
    parser.add_argument("--seed", type=int, default=1, help="seed of the first one; the next has the next seed")
    parser.add_argument("--keep", action="store_true", help="keep random catalogues that show a difference")
    parser.add_argument("files", nargs="*", metavar="FILE", help="catalogue files, instead of random ones")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    baseline = read_baseline(arguments.kshop)
    if arguments.files:
        good = run_case(", ".join(arguments.files), arguments.kshop, baseline, arguments.files)
    else:
        good = run_random(arguments, baseline)
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main())

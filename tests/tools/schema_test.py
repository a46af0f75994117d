#!/usr/bin/env python3
"""Holds data files against the schemas of docs/schema, as an editor does: the shipped ones fit, spoiled ones do not.

Usage: schema_test.py INSPECTOR. Exit status 77, which counts as skipped, when python3-jsonschema is not installed.
"""

import json
import subprocess
import sys
from pathlib import Path

try:
    import jsonschema
except ImportError:
    print("python3-jsonschema is not installed")
    sys.exit(77)

FOLDER = Path("docs/schema").resolve()


def schema(name):
    return json.loads((FOLDER / f"{name}.schema.json").read_text(encoding="utf-8").replace("objects.schema.json#", "#"))


def validator(name):
    """With what it refers to in one piece: how references to files are resolved differs between versions."""
    whole = schema(name)
    whole["definitions"] = schema("objects")["definitions"]
    jsonschema.Draft7Validator.check_schema(whole)
    return jsonschema.Draft7Validator(whole)


def data(name):
    """A data file as plain JSON, by way of the game's own reader and writer."""
    return json.loads(subprocess.check_output([sys.argv[1], "write", f"data/{name}.json5"]))


SPOILED = [
    ("recipes", "a misspelt key", {"a": {"_type": "Zombie", "heatlh": 3}}),
    ("recipes", "a key of another class", {"a": {"_type": "Drawable", "health": 3}}),
    ("recipes", "an unknown class", {"a": {"_type": "zombie"}}),
    ("recipes", "no class", {"a": {"health": 3}}),
    ("recipes", "a fraction for a whole number", {"a": {"_type": "Zombie", "health": 2.5}}),
    ("recipes", "a text for a flag", {"a": {"_type": "Zombie", "mirrorX": "true"}}),
    ("recipes", "three numbers for a pair", {"a": {"_type": "Zombie", "position": [1, 2, 3]}}),
    ("recipes", "a text for a timer", {"a": {"_type": "Zombie", "attackRateTimer": "2"}}),
    ("recipes", "a timer of 0", {"a": {"_type": "Zombie", "attackRateTimer": 0}}),
    ("recipes", "a negative size", {"a": {"_type": "Zombie", "size": [1, -1]}}),
    ("recipes", "a kind of enemy that is none", {"a": {"_type": "Arena", "enemyVariant": 9}}),
    ("scene", "neither recipe nor prefab", [{"tag": "a"}]),
    ("scene", "a property beside a prefab", [{"prefab": "a", "health": 3}]),
    ("scene", "an override that nothing has", [{"prefab": "a", "overrides": {"t": {"heatlh": 3}}}]),
    ("scene", "a recipe that is no text", [{"recipe": 3}]),
    ("prefabs", "a prefab that is no list", {"a": {"recipe": "zombie"}}),
]

SOUND = [
    ("recipes", {"a": {"_type": "Arena", "enemyVariant": 4, "size": [8, 1]}}),
    ("recipes", {"a": {"_type": "Weapon", "attackTimeout": 1}}),
    ("scene", [{"recipe": "a", "tag": "t", "position": 3}]),
    ("scene", [{"prefab": "p", "offset": 1.5, "overrides": {"t": {"tilt": 3}}}]),
]


def main():
    faults = []
    for name in ("recipes", "prefabs", "scene"):
        faults += [f"data/{name}.json5: {error.message}" for error in validator(name).iter_errors(data(name))]
    for name, value in SOUND:
        faults += [f"{name} {value}: {error.message}" for error in validator(name).iter_errors(value)]
    for name, what, value in SPOILED:
        if validator(name).is_valid(value):
            faults.append(f"{name}: {what} is not noticed")
    validator("objects")
    print("\n".join(faults) if faults else f"the data files fit, {len(SPOILED)} spoiled ones do not")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())

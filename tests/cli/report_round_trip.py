#!/usr/bin/env python3
"""Every calculator's worked example saved as a report and run again from it.

For each calculator `tallyvane-cli list --json` names: `calc NAME <example>
--save T --json`, then `calc NAME --from-report 0 --json`; the two must give
the same values, and the report's stored inputs must name the calculator.
Exits 1 naming each calculator whose values differ.

    report_round_trip.py CLI
"""
import json
import os
import subprocess
import sys
import tempfile


def run(cli, args, home):
    done = subprocess.run([cli] + args, capture_output=True, text=True,
                          env=dict(os.environ, TALLYVANE_HOME=home), timeout=120)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(args)}: exit {done.returncode}: {done.stderr.strip()}")
    return done


def main():
    cli = sys.argv[1]
    failures = []
    with tempfile.TemporaryDirectory() as home:
        calculators = json.loads(run(cli, ["list", "--json"], home).stdout)
        for calculator in calculators:
            name = calculator["name"]
            try:
                saved = json.loads(run(cli, ["calc", name] + calculator["example"] +
                                       ["--save", f"Round trip {name}", "--json"], home).stdout)
                again = run(cli, ["calc", name, "--from-report", "0", "--json"], home)
                if again.stderr.strip():
                    failures.append(f"{name}: notes on restoring: {again.stderr.strip()}")
                restored = json.loads(again.stdout)
                stored = json.loads(run(cli, ["reports", "show", "0", "--json"], home).stdout)
            except (RuntimeError, json.JSONDecodeError) as error:
                failures.append(f"{name}: {error}")
                continue
            if stored.get("calculator") != name or not stored.get("inputs"):
                failures.append(f"{name}: the report keeps no inputs: {stored.get('calculator')}")
            if restored["values"] != saved["values"]:
                differing = {k: (saved["values"].get(k), restored["values"].get(k))
                             for k in set(saved["values"]) | set(restored["values"])
                             if saved["values"].get(k) != restored["values"].get(k)}
                failures.append(f"{name}: values differ (saved, from report): {differing}")
        print(f"{len(calculators)} calculators")
    for failure in failures:
        print(failure)
    if failures:
        return 1
    print("ok")
    return 0


if __name__ == "__main__":
    sys.exit(main())

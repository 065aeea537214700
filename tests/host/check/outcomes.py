#!/usr/bin/env python3
"""Checks all VST 2 plug-ins of some Debian packages, and writes what came of it into a page.

Results stay in FOLDER, one file for each plug-in, and what is there is not run again; so a run may
be broken off and gone on with. Packages that are not installed are left out.
"""

import argparse
import json
import pathlib
import subprocess
import sys

PACKAGES = [
    "amsynth",
    "dragonfly-reverb-vst",
    "zynaddsubfx-vst",
    "dpf-plugins-vst",
    "zam-plugins",
    "iem-plugin-suite-vst",
    "lsp-plugins-vst",
]
BEGIN = "<!-- outcomes: written by tests/host/check/outcomes.py -->"
END = "<!-- outcomes end -->"


def plugins_of(package):
    """The package's shared objects that lie where hosts look for VST 2 plug-ins."""
    listed = subprocess.run(["dpkg", "-L", package], capture_output=True, text=True)
    if listed.returncode != 0:
        return []
    files = []
    for line in listed.stdout.splitlines():
        path = pathlib.Path(line)
        if path.suffix == ".so" and path.is_file() and {"vst", "lxvst"} & set(path.parts):
            files.append(path)
    return sorted(files)


def version_of(package):
    return subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package],
                          capture_output=True, text=True).stdout


def run(options, package, plugin):
    """What tvhost says of one plug-in, from an earlier run when there is one."""
    kept = options.folder / f"{package}-{plugin.stem}.json"
    if kept.exists():
        return json.loads(kept.read_text())
    command = [options.tvhost, "check", str(plugin), "--level", str(options.level), "--seed", "1", "--json",
               "--time-limit", str(options.time_limit)]
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode == 2:
        result = {"plugin": plugin.stem, "refused": done.stderr.strip(), "checks": []}
    else:
        result = json.loads(done.stdout)
    kept.write_text(json.dumps(result, indent=1))
    print(f"{package}: {plugin.stem}: {len(failed(result))} checks failed", flush=True)
    return result


def failed(result):
    return [check for check in result["checks"] if check["outcome"] == "failed"]


def ends_badly(check):
    return any(f["topic"] in ("crash", "hang", "exit") for f in check["findings"])


def table(head, rows):
    align = ["---"] + ["--:"] * (len(head) - 1)
    return "\n".join("| " + " | ".join(str(cell) for cell in row) + " |"
                     for row in [head, align, *rows])


def level_of(outcomes):
    """The level that all of them were checked to."""
    return min((max(check["level"] for check in r["checks"]) for r in outcomes if r["checks"]),
               default=10)


def by_package(results):
    rows = []
    for package, outcomes in results.items():
        ran = [r for r in outcomes if "refused" not in r]
        clean = [max([level for level in range(11)
                      if all(c["level"] > level for c in failed(r))]) for r in ran]
        rows.append([f"{package} {version_of(package)}", len(outcomes), len(outcomes) - len(ran),
                     *(sum(1 for c in clean if c >= level) if level <= level_of(ran) else "not run"
                       for level in (1, 3, 5, 7, 10)),
                     sum(1 for r in ran if any(ends_badly(c) for c in r["checks"]))])
    return table(["Package", "Plug-ins", "Not run", "Pass level 1", "3", "5", "7", "10",
                  "Crash or hang in a check"], rows)


def by_check(results):
    checks = {}
    for outcomes in results.values():
        for result in outcomes:
            for check in result["checks"]:
                checks.setdefault(check["name"], check["level"])
    rows = []
    for name, level in checks.items():
        counts = []
        for outcomes in results.values():
            count = sum(1 for r in outcomes for c in failed(r) if c["name"] == name)
            bad = sum(1 for r in outcomes for c in failed(r) if c["name"] == name and ends_badly(c))
            counts.append("" if count == 0 else f"{count} ({bad})" if bad else count)
        rows.append([f"{name} ({level})", *counts])
    return table(["Check (level)", *(p.removesuffix("-vst") for p in results)], rows)


def by_plugin(results):
    rows = []
    for package, outcomes in results.items():
        for result in outcomes:
            if "refused" in result:
                words = "not run: " + result["refused"].removeprefix("tvhost: ")
            else:
                words = ", ".join(("**" + c["name"] + "**") if ends_badly(c) else c["name"]
                                  for c in failed(result)) or "passes all"
            rows.append([result["plugin"].replace("|", "/"), package, words.replace("|", "/")])
    return "\n".join("| " + " | ".join(row) + " |"
                     for row in [["Plug-in", "Package", "Failed"], ["---"] * 3, *rows])


def page(results):
    return "\n\n".join([
        BEGIN,
        "How many plug-ins pass all checks up to a level:",
        by_package(results),
        "How many fail each check; in brackets, by a crash, a hang or the end of the process:",
        by_check(results),
        "What each fails; bold where it crashes, hangs or ends the process:",
        by_plugin(results),
        END])


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("tvhost")
    parser.add_argument("folder", type=pathlib.Path, help="where results are kept")
    parser.add_argument("--page", type=pathlib.Path,
                        help="rewrite the part of this page that the outcomes fill")
    parser.add_argument("--packages", nargs="+", default=PACKAGES, help="all of them without it")
    parser.add_argument("--level", type=int, default=10, help="what to run anew is checked to")
    parser.add_argument("--time-limit", type=int, default=60, help="for each check, in seconds")
    parser.add_argument("--kept-only", action="store_true", help="run nothing anew")
    options = parser.parse_args()
    options.folder.mkdir(parents=True, exist_ok=True)

    results = {}
    for package in options.packages:
        for plugin in plugins_of(package):
            if options.kept_only and not (options.folder / f"{package}-{plugin.stem}.json").exists():
                continue
            results.setdefault(package, []).append(run(options, package, plugin))
    if not results:
        sys.exit("outcomes.py: none of the packages is installed: " + " ".join(PACKAGES))
    if options.page:
        text = options.page.read_text()
        if BEGIN not in text or END not in text:
            sys.exit(f"outcomes.py: {options.page} has no place for outcomes; give it the lines "
                     f"{BEGIN} and {END}")
        before, rest = text.split(BEGIN, 1)
        options.page.write_text(before + page(results) + rest.split(END, 1)[1])
    else:
        print(page(results))


if __name__ == "__main__":
    main()

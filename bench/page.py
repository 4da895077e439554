#!/usr/bin/env python3
"""Writes performance.md and performance.svg, the performance page and its chart, from the outputs of the benchmarks.

    page.py RESULTS PAGES                        of the outputs in the folder RESULTS, into the folder PAGES
    page.py --run PROGRAMS RESULTS PAGES         after a run of the programs in PROGRAMS, a quarter of an hour
    page.py --run PROGRAMS --quick RESULTS PAGES after a short run, to try the page: the numbers are worth little

The families and the goals are those of goals.txt.
"""

import argparse
import collections
import fnmatch
import html
import json
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys
import textwrap

SETS = {"avx512": "AVX-512", "avx2": "AVX2", "ssse3": "SSSE3", "neon": "NEON"}  # the best first
SIZE, SMALL_SIZE = "1920x1080", "320x240"
CLEARLY_FASTER, MUCH_UNUSED = 1.5, 0.5  # times as fast as a peer that is below this share of the copy limit
NOISE = 0.97                            # of the goal against a peer: two runs differ by that much
SHOWN = 24                              # rows of a list that may be long; the others are folded

# ---- The runs -------------------------------------------------------------------------------------------------------


def run(programs, results, quick):
    """Leaves the output of every program in a file in results."""
    results.mkdir(parents=True, exist_ok=True)
    for old in results.glob("zum_bench*"):
        old.unlink()
    (results / "machine.json").write_text(json.dumps({**machine(), "quick": quick}, indent=2) + "\n")

    def save(name, program, *flags):
        print(f"{program} {' '.join(flags)}", file=sys.stderr, flush=True)
        with open(results / name, "w") as output:
            subprocess.run([programs / program, *flags], stdout=output, check=True)

    def save_speeds(name, chosen, rows, seconds):
        save(name, "zum_bench", f"--isa={chosen}", f"--benchmark_filter={rows}", "--benchmark_format=json",
             f"--benchmark_min_time={0.005 if quick else seconds}")

    if os.getloadavg()[0] > 0.5:
        print("This machine has other work to do: the numbers will suffer.", file=sys.stderr)
    sets = [isa for isa in SETS if has(programs, isa)]
    for isa in sets:
        save_speeds(f"zum_bench-{isa}.json", isa, rf"/{SIZE}/|^zums|Version", 0.1)
    save_speeds("zum_bench_small.json", sets[0], f"/{SMALL_SIZE}/", 0.01)
    save("zum_bench_diffusion.txt", "zum_bench_diffusion", f"--runs={1 if quick else 10}")
    save("zum_bench_peers.md", "zum_bench_peers", f"--sizes={SIZE}", "--markdown",
         f"--seconds={0.02 if quick else 0.5}")


def has(programs, isa):
    listing = [programs / "zum_bench", f"--isa={isa}", "--benchmark_list_tests"]
    return subprocess.run(listing, capture_output=True).returncode == 0


def machine():
    processor, virtual, memory = "unknown", False, 0
    for line in open("/proc/cpuinfo"):
        key, _, value = line.partition(":")
        if key.strip() == "model name":
            processor = value.strip()
        virtual |= key.strip() == "flags" and "hypervisor" in value.split()
    for line in open("/proc/meminfo"):
        if line.startswith("MemTotal:"):
            memory = int(line.split()[1]) * 1024
    return {"processor": processor, "virtual": virtual, "memory": memory, "architecture": platform.machine(),
            "system": platform.freedesktop_os_release()["PRETTY_NAME"]}


# ---- What they gave -------------------------------------------------------------------------------------------------

# What was measured of a function, or of a variant of it, with an instruction set.
Speed = collections.namedtuple("Speed", "share mpixels copy")


class Speeds:
    """An output of zum_bench: context, the speeds by function or function/variant, the services' nanoseconds a call."""

    def __init__(self, path):
        output = json.loads(path.read_text())
        self.context, self.rows, self.services = output["context"], {}, {}
        for entry in output["benchmarks"]:
            if entry.get("error_occurred"):
                sys.exit(f"{path}: {entry['name']}: {entry['error_message']}")
            if "share" in entry:
                row = entry["name"].rsplit("/", 2)[0]
                self.rows[row] = Speed(entry["share"], entry["Mpix/s"], entry["copy GB/s"])
            else:
                self.services[entry["name"]] = entry["real_time"]


class Family:
    def __init__(self, line):
        self.name, patterns, *goals, peer = [cell.strip() for cell in line.split("|")]
        self.patterns, self.peer = patterns.split(), float(peer)
        self.goals = {isa: float(goal) for isa, goal in zip(("avx512", "avx2"), goals) if goal != "-"}

    def fits(self, row):
        return any(fnmatch.fnmatchcase(row, pattern) for pattern in self.patterns)


class Families:
    def __init__(self, path):
        lines = [line for line in path.read_text().splitlines() if line.strip() and not line.startswith("#")]
        self.all = [Family(line) for line in lines]

    def of(self, row):
        for family in self.all:
            if family.fits(row):
                return family
        sys.exit(f"goals.txt: {row} is in no family")

    def divide(self, items, family_of):
        """The families that have any of the items, in their order, with their items."""
        divided = {family: [] for family in self.all}
        for item in items:
            divided[family_of(item)].append(item)
        return {family: members for family, members in divided.items() if members}


Peer = collections.namedtuple("Peer", "name similar mpixels share ratio")


class Comparison:
    """A function or a variant of it, and the peers, the fastest first."""

    def __init__(self, title, families):
        function, *variant = title.split()
        self.label = code("/".join([function, " ".join(variant)]))
        self.family = families.of("/".join([function, *variant[:1]]))
        self.mpixels, self.peers = 0, []

    def goal(self):
        return max(self.family.peer, CLEARLY_FASTER if self.peers[0].share < MUCH_UNUSED else 1)

    def part_of_goal(self):
        return self.peers[0].ratio / self.goal()


def comparisons(path, families):
    """The comparisons of an output of zum_bench_peers, and the versions of the peers."""
    found, versions = {}, ""
    for line in path.read_text().splitlines():
        cells = [cell.strip() for cell in line.split("|")[1:-1]]
        if line.startswith("zumcc "):
            versions = line.split(", ", 1)[1].split(";")[0]
        if len(cells) == 9 and cells[2].isdigit():
            comparison = found.setdefault(cells[0], Comparison(cells[0], families))
            comparison.mpixels = float(cells[2])
            comparison.peers.append(
                Peer(cells[4].lstrip("~"), cells[4].startswith("~"), *(float(cell) for cell in cells[5:8])))
    for comparison in found.values():
        comparison.peers.sort(key=lambda peer: -peer.mpixels)
    return list(found.values()), versions


Diffusion = collections.namedtuple("Diffusion", "name method plain here")


def diffusions(path):
    lines = re.findall(r"^(\S+) +(\S+) +plain +([\d.]+) ns, here +([\d.]+) ns", path.read_text(), re.MULTILINE)
    return [Diffusion(name, method, float(plain), float(here)) for name, method, plain, here in lines]


# ---- Markdown, which forges and doxygen read alike ------------------------------------------------------------------


def paragraph(text):
    return textwrap.fill(" ".join(text.split()), 120, break_on_hyphens=False) + "\n"


def section(title, *parts):
    return "\n".join([f"## {title}\n", *parts])


def table(titles, rows):
    """A table. A title that begins with a space belongs to a column of numbers."""
    lines = ["| " + " | ".join(title.strip() for title in titles) + " |",
             "|" + "|".join("--:" if title.startswith(" ") else "---" for title in titles) + "|"]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


def folded(summary, titles, rows):
    """The same behind its summary. Doxygen wants HTML here, without empty lines."""
    def cells(tag, row):
        texts = [re.sub(r"`([^`]*)`", r"<code>\1</code>", html.escape(text)) for text in row]
        texts = [re.sub(r"\*\*(.*?)\*\*", r"<b>\1</b>", text.replace("&amp;", "&")) for text in texts]
        aligned = [' align="right"' if title.startswith(" ") else "" for title in titles]
        return "<tr>" + "".join(f"<{tag}{a}>{text}</{tag}>" for a, text in zip(aligned, texts)) + "</tr>"
    lines = ["<details>", f"<summary>{summary}</summary>", "<table>", cells("th", [t.strip() for t in titles])]
    return "\n".join(lines + [cells("td", row) for row in rows] + ["</table>", "</details>"]) + "\n"


def long_table(titles, rows):
    """The first rows, and the others folded."""
    text = table(titles, rows[:SHOWN])
    if len(rows) > SHOWN:
        text += "\n" + folded(f"and {len(rows) - SHOWN} more", titles, rows[SHOWN:])
    return text


def code(row):
    """A function, or a function/variant."""
    function, _, variant = row.partition("/")
    return f"`{function}` {variant}".strip()


# ---- The page -------------------------------------------------------------------------------------------------------


class Page:
    def __init__(self, results, families):
        self.sets = {isa: Speeds(path) for isa in SETS if (path := results / f"zum_bench-{isa}.json").exists()}
        if not self.sets:
            sys.exit(f"no outputs in {results}")
        self.isa, self.best = next(iter(self.sets.items()))
        self.small = Speeds(results / "zum_bench_small.json")
        self.families = families
        self.divided = families.divide(self.best.rows, families.of)
        self.comparisons, self.versions = comparisons(results / "zum_bench_peers.md", families)
        self.diffusions = diffusions(results / "zum_bench_diffusion.txt")
        self.machine = json.loads((results / "machine.json").read_text())

    def write(self, folder):
        sections = [self.top(), self.family_table(), self.diffusion(), self.short(), self.peers(), self.complete()]
        (folder / "performance.md").write_text("\n".join(sections))
        (folder / "performance.svg").write_text(chart(self))

    def values(self, isa, family, what="share"):
        return [getattr(self.sets[isa].rows[row], what) for row in self.divided[family]]

    def top(self):
        low, *_, high = statistics.quantiles((speed.copy for speed in self.best.rows.values()), n=10)
        caches = {f"L{cache['level']}" + {"Data": "d", "Unified": ""}[cache["type"]]: cache["size"]
                  for cache in self.best.context["caches"] if cache["type"] != "Instruction"}
        sizes = ", ".join(f"{name} {size >> 10} KiB" if size < 1 << 20 else f"{name} {size >> 20} MiB"
                          for name, size in caches.items())
        facts = {
            "Processor": self.machine["processor"] + (", in a virtual machine" if self.machine["virtual"] else ""),
            "Caches": sizes,
            "Memory": f"{self.machine['memory'] / 2**30:.0f} GiB; `memcpy` reads and writes {low:.0f} to {high:.0f} "
                      "GB/s, as the caches keep little or much of the images",
            "System": f"{self.machine['system']}, {self.machine['architecture']}",
            "Compiler": self.best.context["compiler"],
            "Library": f"zumcc {self.best.context['library']}, with {', '.join(SETS[isa] for isa in self.sets)}",
            "Other libraries": self.versions,
            "Date": self.best.context["date"][:10],
        }
        width, height = SIZE.split("x")
        return "\n".join([
            "# Performance\n",
            paragraph(f"""
                The speed of every function on one thread, with images of {width} by {height} pixels. The **copy limit**
                is the time that `memcpy` takes to read and write as many bytes as the call does, on the same memory;
                the **share** is that time over the time of the call. A function with a share of 0.50 takes twice as
                long as the copy. One near 1 waits for the memory, or for the cache that holds the image, and no code
                would make it faster. Call and copy take turns, and the medians of both count. Mpixel/s are millions of
                pixels a second."""),
            paragraph("""
                `make performance` runs the benchmarks again and writes this page anew. A quiet machine needs a quarter
                of an hour."""),
            *(["**This page is of a short run: its numbers are worth little.**\n"] if self.machine["quick"] else []),
            "\n".join(f"- {name}: {fact}" for name, fact in facts.items()) + "\n"])

    def family_table(self):
        full = list(self.sets)[:2]
        titles = ["family", " functions"]
        for isa in self.sets:
            first, *others = [" min", " median", " max", " Mpixel/s"] if isa in full else [" median"]
            titles += [f" {SETS[isa]}:{first}", *others]
        rows = []
        for family, members in self.divided.items():
            row = [family.name, str(len({member.split("/")[0] for member in members}))]
            for isa in self.sets:
                shares, speeds = self.values(isa, family), self.values(isa, family, "mpixels")
                shown = (min, statistics.median, max) if isa in full else (statistics.median,)
                row += [f"{of(shares):.2f}" for of in shown]
                row += [f"{statistics.median(speeds):.0f}"] if isa in full else []
            rows.append(row)
        return section("Families", paragraph("""
                The shares of the copy limit of the slowest function of each family, of the one in the middle and of the
                fastest, and the speed in the middle."""),
            table(titles, rows),
            paragraph("""
                A dot is the median of a family, a line reaches from its slowest to its fastest function, a red mark is
                the goal, if there is one."""),
            "![Shares of the copy limit by family and instruction set](performance.svg)\n")

    def diffusion(self):
        methods = list(dict.fromkeys(d.method for d in self.diffusions))
        by_name = {(d.name, d.method): d for d in self.diffusions}
        rows = []
        for name in dict.fromkeys(d.name for d in self.diffusions):
            row = [f"`{name}`"]
            for d in (by_name[name, method] for method in methods):
                row += [f"{d.plain:.1f}", f"{d.here:.2f}", f"{d.plain / d.here:.1f}"]
            rows.append(row)
        titles = ["depths, layout"]
        for method in methods:
            titles += [f" {method}: plain", " here", " times"]
        times = [d.plain / d.here for d in self.diffusions]
        return section("Error diffusion", paragraph(f"""
                A copy is no measure for error diffusion, where every pixel waits for its left neighbour. Here it is
                compared with its plain form, which walks pixel by pixel: nanoseconds a sample, with {SETS[self.isa]},
                and how many times faster the library is. That is {min(times):.1f} to {max(times):.1f} times, with a
                median of {statistics.median(times):.1f}."""),
            table(titles, rows))

    def short(self):
        misses, asked = [], 0
        for family, members in self.divided.items():
            for isa in self.sets.keys() & family.goals.keys():
                goal = family.goals[isa]
                for row in members:
                    asked += 1
                    speed = self.sets[isa].rows[row]
                    if round(speed.share, 2) < goal:
                        misses.append((speed.share / goal, row, SETS[isa], speed, goal))
        misses.sort()
        rows = [[code(row), isa, f"{speed.share:.2f}", f"{goal:.2f}", f"{part:.0%}", f"{speed.mpixels:.0f}"]
                for part, row, isa, speed, goal in misses]
        slower = sorted((c for c in self.comparisons if c.part_of_goal() < NOISE), key=Comparison.part_of_goal)
        peer_rows = [[c.label, peer_name(c.peers[0]), f"{c.peers[0].ratio:.2f}", f"{c.goal():.1f}",
                      f"{1 / max(c.peers[0].share, 0.01):.1f}"] for c in slower]
        return section("Where it falls short", paragraph(f"""
                {asked - len(misses)} of {asked} goals for shares are reached. Those that are not, the worst first:"""),
            long_table(["function", "instructions", " share", " goal", " part of it", " Mpixel/s"], rows),
            paragraph(f"""
                Against the fastest other library, {len(self.comparisons) - len(slower)} of {len(self.comparisons)}
                goals are reached: to be no slower, {CLEARLY_FASTER} times as fast where it leaves more than half of the
                copy limit unused, and 2 times in some families (`bench/goals.txt`). {100 * (1 - NOISE):.0f} % less
                counts as reached, for two runs differ by that much. Those that are not, the worst first, with the ratio
                that the copy limit would allow:"""),
            long_table(["function", "fastest peer", " ratio", " goal", " copy limit"], peer_rows))

    def peers(self):
        libraries = collections.defaultdict(list)
        for comparison in self.comparisons:
            for peer in comparison.peers:
                libraries[peer.name.split()[0]].append(peer.ratio)
        summary = [[name, str(len(ratios)), f"{min(ratios):.1f}", f"{statistics.median(ratios):.1f}",
                    f"{max(ratios):.1f}", str(sum(ratio < NOISE for ratio in ratios))]
                   for name, ratios in sorted(libraries.items(), key=lambda item: item[0].lower())]
        rows = []
        for family, members in self.families.divide(self.comparisons, lambda c: c.family).items():
            rows.append([f"**{family.name}**", "", "", "", "", ""])
            for c in members:
                fastest, *others = c.peers
                listed = ", ".join(f"{peer_name(peer)} {peer.ratio:.1f}" for peer in others)
                rows.append([c.label, f"{c.mpixels:.0f}", peer_name(fastest), f"{fastest.mpixels:.0f}",
                             f"{fastest.ratio:.2f}", listed])
        return section("Other libraries", paragraph(f"""
                The same conversions in other libraries on the same images, in turns, one thread each, {SETS[self.isa]}
                for ours. The shortest of many samples counts. A ratio is our speed over theirs. A peer with &dagger;
                does similar work on other bytes: another matrix, channel order or layout."""),
            table(["library", " comparisons", " ratio from", " median", " to", " faster than ours"], summary),
            folded(f"{len(self.comparisons)} conversions, each against the fastest peer and the others",
                   ["function", " Mpixel/s", "fastest peer", " Mpixel/s", " ratio", "others, ratio"], rows))

    def complete(self):
        titles = ["function"]
        for isa in self.sets:
            titles += [f" {SETS[isa]}: share", " Mpixel/s"]
        titles += [f" {SMALL_SIZE}: share", " Mpixel/s"]
        parts = []
        for family, members in self.divided.items():
            rows = []
            for row in members:
                speeds = [results.rows[row] for results in (*self.sets.values(), self.small)]
                rows.append([code(row), *(cell for s in speeds for cell in (f"{s.share:.2f}", f"{s.mpixels:.0f}"))])
            parts.append(folded(f"{family.name} ({len(rows)})", titles, rows))
        services = [[f"`{name}`", f"{time:.0f}"] for name, time in self.best.services.items()]
        parts.append(folded(f"Services ({len(services)})", ["function", " ns a call"], services))
        return section("Every function", paragraph(f"""
                By family, with each instruction set. The last two columns are of images of
                {SMALL_SIZE.replace("x", " by ")} pixels, which stay in the caches, with {SETS[self.isa]}. The services
                take no image; the random generators make 4096 numbers a call, and what one function makes another frees
                within the same time."""),
            *parts)


def peer_name(peer):
    return peer.name + ("&dagger;" if peer.similar else "")


# ---- The chart ------------------------------------------------------------------------------------------------------

COLOURS = {"avx512": "#0b4f8a", "avx2": "#2f9e8f", "ssse3": "#a08a5b", "neon": "#0b4f8a"}
GOAL_COLOUR, INK, FAINT = "#d1344b", "#24292f", "#d0d7de"


def chart(page):
    """A band for each family, and in it a line for each instruction set: from the lowest share to the highest, a dot at
    the median, a mark at the goal."""
    left, right, top, pitch, bottom = 285, 960, 62, 8, 36
    band = pitch * len(page.sets) + 6
    height = top + band * len(page.divided) + bottom
    highest = max(speed.share for results in page.sets.values() for speed in results.rows.values())
    fifths = max(5, min(7, -int(-highest // 0.2)))  # of the copy limit; what lies beyond 1.4 ends at the edge

    def x(share):
        return left + min(share, fifths / 5) * (right - left) / (fifths / 5)

    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="1000" height="{height}" viewBox="0 0 1000 {height}" '
           f'font-family="Helvetica, Arial, sans-serif" font-size="12" fill="{INK}">',
           "<title>Share of the copy limit by family and instruction set</title>",
           f'<rect width="1000" height="{height}" fill="#ffffff"/>']
    legend = left
    for isa in page.sets:
        out.append(f'<path d="M{legend} 20h24" stroke="{COLOURS[isa]}" stroke-width="2"/>'
                   f'<circle cx="{legend + 12}" cy="20" r="3.5" fill="{COLOURS[isa]}"/>'
                   f'<text x="{legend + 32}" y="24">{SETS[isa]}</text>')
        legend += 110
    out.append(f'<path d="M{legend + 12} 15v10" stroke="{GOAL_COLOUR}" stroke-width="2"/>'
               f'<text x="{legend + 22}" y="24">goal</text>')
    out.append(f'<text x="{right}" y="24" text-anchor="end">share of the copy limit, {SIZE}</text>')
    for index in range(0, len(page.divided), 2):
        out.append(f'<rect x="0" y="{top + index * band}" width="1000" height="{band}" fill="#f6f8fa"/>')
    base = top + band * len(page.divided)
    for fifth in range(fifths + 1):
        at = round(x(fifth / 5)) + 0.5
        out.append(f'<path d="M{at} {top}V{base}" stroke="{"#8c959f" if fifth == 5 else FAINT}"/>')
        for y in (top - 8, base + 18):
            out.append(f'<text x="{at}" y="{y}" text-anchor="middle">{fifth / 5:.1f}</text>')
    for index, family in enumerate(page.divided):
        y = top + index * band
        out.append(f'<text x="{left - 14}" y="{y + band // 2 + 4}" text-anchor="end">{html.escape(family.name)}</text>')
        for line, isa in enumerate(page.sets):
            shares, at, colour = page.values(isa, family), y + 3 + pitch // 2 + line * pitch, COLOURS[isa]
            out.append(f'<path d="M{x(min(shares)):.1f} {at}H{x(max(shares)):.1f}" stroke="{colour}" stroke-width="2"/>'
                       f'<circle cx="{x(statistics.median(shares)):.1f}" cy="{at}" r="3.5" fill="{colour}"/>')
            if isa in family.goals:
                goal = round(x(family.goals[isa]))
                out.append(f'<path d="M{goal} {at - 5}v10" stroke="{GOAL_COLOUR}" stroke-width="2"/>')
    return "\n".join(out + ["</svg>"]) + "\n"


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    arguments.add_argument("results", type=pathlib.Path)
    arguments.add_argument("pages", type=pathlib.Path)
    arguments.add_argument("--run", type=pathlib.Path, metavar="PROGRAMS")
    arguments.add_argument("--quick", action="store_true")
    given = arguments.parse_args()
    if given.run:
        run(given.run, given.results, given.quick)
    Page(given.results, Families(pathlib.Path(__file__).with_name("goals.txt"))).write(given.pages)


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Makes the report of a measurement, in Markdown, from the results of both benchmark programs."""

import json
import os
import platform
import sys
from datetime import date
from pathlib import Path

ROWS = [
    # benchmark, its yardstick, what is measured, what the yardstick is
    ("keys/10000", "keysYardstick/10000", "Reading a parameter file of 10,000 keys", "reading its lines with Qt"),
    ("longBody/5000000", "longBodyYardstick/5000000", "Reading a file with a `BODY` of 5 MB, and `body()`",
     "reading its lines with Qt"),
    ("bodyFile/5000000", "bodyFileYardstick/5000000", "`body()` with a body file of 5 MB", "reading its lines with Qt"),
    ("aliasWalk/100000", "aliasWalkYardstick/100000", "Alias walk over 100,000 entries",
     "the same four operations an entry without wrappers"),
    ("toByteText/10000000", "toByteTextYardstick/10000000", "`toByteText` of 10 MB", "iconv to code page 850"),
    ("fromByteText/10000000", "fromByteTextYardstick/10000000", "`fromByteText` of 10 MB", "iconv from code page 850"),
    ("escapeNonPrintable/10000000", "escapeNonPrintableYardstick/10000000", "`escapeNonPrintable` of 10 MB",
     "looking at each character and copying it"),
    ("percentDecode/10000000", "percentDecodeYardstick/10000000", "`percentDecode` of 10 MB", "Qt's percent decoding"),
    ("replaceLineEnds/10000000", "replaceLineEndsYardstick/10000000", "`replaceLineEnds` in 10 MB",
     "`QString::remove` and `QString::replace`"),
    ("formatNumber/200000", "formatNumberYardstick/200000", "`formatNumber` of 200,000 numbers", "`QString::number`"),
    ("traceSite/10000000", "traceSiteYardstick/10000000", "10,000,000 trace sites without flags", "an empty loop"),
    ("traceLines/1000000/real_time", "traceLinesYardstick/1000000/real_time",
     "1,000,000 trace lines of 8 threads to a file", "one thread, each line with `Qt::endl`"),
]
GROWTH = [
    # benchmark, the smaller and the larger input, what grows
    ("keys", 2_500, 10_000, "Keys"),
    ("longBody", 1_000_000, 5_000_000, "`BODY`"),
    ("bodyFile", 1_000_000, 5_000_000, "Body file"),
    ("aliasWalk", 25_000, 100_000, "Alias walk"),
    ("toByteText", 1_000_000, 10_000_000, "`toByteText`"),
    ("fromByteText", 1_000_000, 10_000_000, "`fromByteText`"),
    ("escapeNonPrintable", 1_000_000, 10_000_000, "`escapeNonPrintable`"),
    ("percentDecode", 1_000_000, 10_000_000, "`percentDecode`"),
    ("replaceLineEnds", 1_000_000, 10_000_000, "`replaceLineEnds`"),
    ("formatNumber", 20_000, 200_000, "`formatNumber`, numbers"),
    ("traceSite", 1_000_000, 10_000_000, "Trace sites"),
]
TRACE_SITES = 10_000_000
LOOKUPS = [
    # row of the dictionaries, its yardsticks, what is measured
    ("open/messages/iterations:50", "open/qt/iterations:50", "open/gettext/iterations:50",
     "Opening the message dictionary, and one text"),
    ("open/gui/iterations:50", "open/qt/iterations:50", "open/gettext/iterations:50",
     "Opening the GUI dictionary, and one text"),
    ("translate/first/manual_time", "qt/first/manual_time", "gettext/first", "`translate`, each text for the first time"),
    ("translate/repeated", "qt/repeated", "gettext/repeated", "`translate`, all texts again"),
    ("translate/few", "qt/few", "gettext/few", "`translate`, 200 texts again and again"),
    ("translate/miss", "qt/miss", "gettext/miss", "`translate`, unknown texts"),
    ("messageText/repeated", "qt/repeated", "gettext/repeated", "`messageText`, all texts"),
    ("messageText/few", "qt/few", "gettext/few", "`messageText`, 200 texts again and again"),
    ("messageText/miss", "qt/miss", "gettext/miss", "`messageText`, unknown numbers"),
]
GETTEXT = [
    ("gettext", "`QString`"),
    ("gettextUncached", "`QString`, without its cache"),
    ("gettextView", "`const char *`"),
    ("gettextUncachedView", "`const char *`, without its cache"),
]
FAULTS = [
    ("messages", "message dictionary"), ("gui", "GUI dictionary"), ("qt", "Qt"), ("gettext", "gettext"),
]


def processor() -> str:
    for line in Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def medians(path: str) -> dict[str, dict[str, float]]:
    results = json.loads(Path(path).read_text(encoding="utf-8"))["benchmarks"]
    return {entry["run_name"]: entry for entry in results if entry["aggregate_name"] == "median"}


def main() -> None:
    functions = medians(sys.argv[1])
    runs = json.loads(Path(sys.argv[3]).read_text(encoding="utf-8"))
    print(f"""# Benchmarks

Written by `tools/benchmark --write`; medians.

{date.today().isoformat()}, {os.cpu_count()} cores of {processor()}, {platform.system()} {platform.machine()}, \
optimised build with GCC.

## Functions

| What | Time | Yardstick | Its time | Ratio |
|---|---|---|---|---|""")
    for name, yardstick, what, against in ROWS:
        mine, theirs = functions[name]["real_time"], functions[yardstick]["real_time"]
        print(f"| {what} | {mine:.2f} ms | {against} | {theirs:.2f} ms | {mine / theirs:.2f} |")
    walk = functions["aliasWalk/100000"]
    to_bytes, from_bytes = (functions[f"{name}/10000000"]["bytes_per_second"] / 1e6
                            for name in ("toByteText", "fromByteText"))
    site = (functions[f"traceSite/{TRACE_SITES}"]["real_time"]
            - functions[f"traceSiteYardstick/{TRACE_SITES}"]["real_time"]) * 1e6 / TRACE_SITES
    trace, bare_trace = functions["traceLines/1000000/real_time"], functions["traceLinesYardstick/1000000/real_time"]
    print(f"""
The alias walk takes {walk["s_per_entry"] * 1e6:.2f} µs an entry and leaves {walk["wrappers"]:.0f} wrappers alive.
The byte encoding is written with {to_bytes:.0f} MB/s and read with {from_bytes:.0f} MB/s; the aim is no less than iconv.
A trace site without flags costs {site:.2f} ns more than a turn of an empty loop; the aim is 1 ns.

The trace lines come at {trace["lines_per_s"]:,.0f} a second, those of the yardstick at \
{bare_trace["lines_per_s"]:,.0f}. At the peak they take {trace["memory_growth"] / 2**20:.1f} MiB more memory than before, \
the yardstick {bare_trace["memory_growth"] / 2**20:.1f} MiB.

## Growth

| What | Input grows | Time grows | Yardstick's time grows |
|---|---|---|---|""")
    for name, small, large, what in GROWTH:
        growth = [functions[f"{row}/{large}"]["real_time"] / functions[f"{row}/{small}"]["real_time"]
                  for row in (name, name + "Yardstick")]
        print(f"| {what} | {large // small} times | {growth[0]:.2f} times | {growth[1]:.2f} times |")
    print_lookups(medians(sys.argv[2]))
    print(f"""
## Whole run

A plain mail that is displayed, against a `QApplication` that opens nothing; {runs["rounds"]} runs of each, in turn, on a
display of Xvfb.

| | Letterlift | Bare application | Ratio | Aim |
|---|---|---|---|---|
| Wall time | {runs["time"] * 1e3:.1f} ms | {runs["yardstick_time"] * 1e3:.1f} ms | \
{runs["time"] / runs["yardstick_time"]:.2f} | 1.15 |
| Peak memory | {runs["memory"]:.1f} MiB | {runs["yardstick_memory"]:.1f} MiB | \
{runs["memory"] / runs["yardstick_memory"]:.2f} | 1.15 |""")

    if len(sys.argv) > 4:
        print_windows(json.loads(Path(sys.argv[4]).read_text(encoding="utf-8")),
                      json.loads(Path(sys.argv[5]).read_text(encoding="utf-8")))


def print_lookups(results: dict[str, dict[str, float]]) -> None:
    def nanoseconds(name: str) -> float:
        # A look-up counts its texts, an opening is one turn.
        entry = results[name]
        return entry["s_per_text"] * 1e9 if "s_per_text" in entry else entry["real_time"]

    print("""
## Looking up texts

20,000 texts in 33 columns, against Qt's translator on a `.qm` file and gettext on a `.mo` file, all made from one catalogue;
nanoseconds a text, looked up in a shuffled order. What is compared returns a `QString` each. The aim is no more than either,
and half of it in `translate` again and in opening the message dictionary.

| What | Time | Qt | Ratio | gettext | Ratio |
|---|---|---|---|---|---|""")
    for mine, qt, gettext, what in LOOKUPS:
        own, theirs, others = nanoseconds(mine), nanoseconds(qt), nanoseconds(gettext)
        print(f"| {what} | {own:,.0f} | {theirs:,.0f} | {own / theirs:.2f} | {others:,.0f} | {own / others:.2f} |")
    print("""
gettext has a cache of its own, which doesn't know what isn't there, and returns a view of UTF-8 text:

| gettext's result | all texts | 200 texts | unknown texts |
|---|---|---|---|""")
    for name, what in GETTEXT:
        values = " | ".join(f"{nanoseconds(f'{name}/{kind}'):,.0f}" for kind in ("repeated", "few", "miss"))
        print(f"| {what} | {values} |")
    faults = ", ".join(f"{results[f'faults/{name}/iterations:3']['faults']:.0f} for the {what}" if what.endswith("ary")
                       else f"{results[f'faults/{name}/iterations:3']['faults']:.0f} for {what}" for name, what in FAULTS)
    print(f"""
Page faults of opening and one text, in a process that has opened another such file before: {faults}.

The GUI dictionary makes the table of its source texts when it is opened, and remembers what it has translated and what it
doesn't know; a first look-up and an unknown text pay for that. Neither Qt nor gettext has such a table.""")


def print_windows(walk: dict[str, float], runs: dict[str, float]) -> None:
    mine, asking, knowing = (walk[name] * 1e3 for name in (
        "s_per_entry", "yardstick_s_per_entry", "knowing_yardstick_s_per_entry"))
    print(f"""
## Windows, under Wine

The alias walk over {walk["entries"]:.0f} entries of the stand-in's address list through the COM client, with the start of
the server and the end of all objects; {walk["rounds"]:.0f} rounds. The yardstick is a bare loop on `IDispatch` that makes
the same four calls an entry, with the numbers of their members from the first entry. The client asks each object for the
numbers, three times more an entry; the second loop does so as well.

| What | Time an entry | Ratio | Aim |
|---|---|---|---|
| COM client | {mine:.2f} ms | | |
| Bare loop of four calls | {knowing:.2f} ms | {mine / knowing:.2f} | 1.2 |
| Bare loop that asks each object for the numbers of its members | {asking:.2f} ms | {mine / asking:.2f} | |

A whole run as above, {runs["rounds"]} times, which starts the stand-in as well. Wine waits a second for every COM server that it
starts.

| | Letterlift | Bare application | Ratio |
|---|---|---|---|
| Wall time | {runs["time"] * 1e3:.0f} ms | {runs["yardstick_time"] * 1e3:.0f} ms | \
{runs["time"] / runs["yardstick_time"]:.2f} |""")


if __name__ == "__main__":
    main()

"""Runs the benchmarks that have budgets and prints their ratios as a Markdown table."""

import json
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path
from statistics import median
from typing import NamedTuple

MIB = 1 << 20


class Ratio(NamedTuple):
    work: str
    name: str  # of the measurement
    label: str  # of what it is measured against
    against: str
    budget: float | None = None


def read(format, size, floor=None, peer=None):
    work = f"Read `.{format}`, {size:,} {'entries' if format == 'spi1d' else 'points'}"
    name = f"read/{format}/{size}"
    return [
        Ratio(work, name, "floor", f"floor/{name}", floor),
        Ratio(work, name, "OpenColorIO", f"peer/{name}", peer),
    ]


def resample(sizes):
    work, name = "Resample {} to {} points".format(*sizes.split("/")), f"resample/{sizes}"
    return [
        Ratio(work, name, "floor", f"floor/{name}", 5 / 3.5),
        Ratio(work, name, "visit to the cells", f"floor/cells/{sizes}"),
        Ratio(work, name, "OpenColorIO", f"peer/{name}"),
    ]


RATIOS = [
    *read("cube", 65, floor=1.2, peer=1 / 15),
    *read("csp", 65, floor=1.2, peer=1 / 15),
    *read("itx", 65, floor=1.2, peer=1 / 15),
    *read("cub", 65, floor=1.2, peer=1 / 15),
    *read("spi3d", 65, peer=1 / 5),
    *read("spi1d", 65536, peer=1 / 9),
    *read("3dl", 33, peer=1 / 50),
    Ratio("Write `.cube`, 65 points", "write/cube/65", "floor", "floor/write/cube/65", 0.3),
    *resample("33/64"),
    *resample("65/48"),
    Ratio("Allocate, 65 points", "allocate/65", "floor", "floor/allocate/65"),
    Ratio("Release, 65 points", "release/65", "floor", "floor/release/65"),
    Ratio("Read `.cube`, 129 points", "read/cube/129", "33 points", "read/cube/33", 1.3),
    Ratio("Write `.cube`, 129 points", "write/cube/129", "33 points", "write/cube/33", 1.3),
    Ratio("Resample 65 to 129 points", "resample/65/129", "17 to 33", "resample/17/33", 1.3),
    Ratio("Whole process, 65 points", "process", "OpenColorIO", "peer/process", 0.1),
    Ratio("Memory of that process", "process/memory", "OpenColorIO", "peer/process/memory"),
    Ratio("Peak memory of a read", "read/memory", "table + file + 4 MiB", "read/memory/limit", 1),
]


def three_digits(value):
    return f"{value:.3g}" if value < 1000 else f"{value:,.0f}"


class Measured(NamedTuple):
    values: list[float]  # one per repetition; comparable where the samples are equally many
    unit: str
    samples: float = 1

    def __str__(self):
        value = median(self.values)
        each = f" ({three_digits(1e6 * value / self.samples)} ns)" if self.samples > 1 else ""
        return f"{three_digits(value)} {self.unit}{each}"

    def over(self, other):
        pairs = zip(self.values, other.values)
        return median(a / b for a, b in pairs) * other.samples / self.samples


def run_suite(programs, repetitions, seconds):
    """CPU times of the benchmarks that RATIOS names, in one run; and what Google Benchmark reports
    about the machine."""
    names = {name for ratio in RATIOS for name in (ratio.name, ratio.against)}
    with tempfile.NamedTemporaryFile() as result:
        command = [
            programs / "tintwell-bench",
            f"--benchmark_filter=^({'|'.join(map(re.escape, sorted(names)))})$",
            f"--benchmark_repetitions={repetitions}",
            f"--benchmark_min_time={seconds}",
            "--benchmark_enable_random_interleaving",
            f"--benchmark_out={result.name}",
        ]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        report = json.load(result)
    measured = {}
    for run in sorted(report["benchmarks"], key=lambda run: run.get("repetition_index", -1)):
        if run["run_type"] == "iteration":
            time = run["cpu_time"]
            samples = round(run["items_per_second"] * time / 1e3)
            measured.setdefault(run["run_name"], Measured([], "ms", samples)).values.append(time)
    return measured, report["context"]


def run_process(*command):
    """CPU time in milliseconds and peak memory in MiB."""
    process = subprocess.Popen(command, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise subprocess.CalledProcessError(process.returncode, command)
    return 1e3 * (usage.ru_utime + usage.ru_stime), usage.ru_maxrss / 1024


def run_processes(programs, repetitions):
    with tempfile.TemporaryDirectory() as folder:
        cube = Path(folder) / "in.cube"
        bench = programs / "tintwell-bench"
        subprocess.run([bench, "--make-cube", cube], check=True)

        measured = {}
        for n in range(repetitions):
            for name, program in ("process", "convert"), ("peer/process", "peer-convert"):
                out = Path(folder) / f"{name.replace('/', '-')}-{n}.cube"
                time, memory = run_process(programs / program, cube, out)
                out.unlink()
                measured.setdefault(name, Measured([], "ms")).values.append(time)
                measured.setdefault(f"{name}/memory", Measured([], "MiB")).values.append(memory)

        memory = subprocess.run(
            [bench, "--peak-memory", cube], check=True, capture_output=True, text=True
        ).stdout
        rise, table, file = (int(size) / MIB for size in memory.split())
        measured["read/memory"] = Measured([rise], "MiB")
        measured["read/memory/limit"] = Measured([table + file + 4], "MiB")
        return measured


def show(ratio):
    return f"1/{three_digits(1 / ratio)}" if ratio <= 0.2 else three_digits(ratio)


def rows(measured):
    yield "| Work | Tintwell | Against | | Ratio | Budget | |"
    yield "|---|--:|---|--:|--:|--:|---|"
    for ratio in RATIOS:
        ours, theirs = measured[ratio.name], measured[ratio.against]
        value = ours.over(theirs)
        budget, verdict = "", ""
        if ratio.budget is not None:
            budget = show(ratio.budget)
            verdict = "met" if value <= ratio.budget else "**over**"
        yield (
            f"| {ratio.work} | {ours} | {ratio.label} | {theirs} | {show(value)} "
            f"| {budget} | {verdict} |"
        )


def main():
    programs = Path(sys.argv[1])
    quick = sys.argv[2:] == ["--quick"]
    if sys.argv[2:] and not quick:
        sys.exit("usage: bench/compare [--quick]")
    repetitions, seconds = (3, 0.02) if quick else (15, 0.1)
    measured, machine = run_suite(programs, repetitions, seconds)
    measured.update(run_processes(programs, repetitions))
    print("\n".join(rows(measured)))
    print(
        f"\nMedians of {repetitions} runs; {machine['date'][:10]}, {machine['num_cpus']} cores of "
        f"{machine['mhz_per_cpu']} MHz, load {machine['load_avg'][0]:.1f}; "
        f"OpenColorIO {machine['OpenColorIO']}."
    )


main()

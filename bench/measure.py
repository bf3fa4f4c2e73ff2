"""Runs benchmarks and programs and keeps what they took."""

import json
import os
import pathlib
import shutil
import sqlite3
import statistics
import struct
import subprocess
import tempfile
import time


class Result:
    """Medians of several runs: milliseconds, bytes, counters."""

    def __init__(self, cpu, wall, peak=0.0, counters=None):
        self.cpu = statistics.median(cpu)
        self.wall = statistics.median(wall)
        self.peak = peak
        self._counters = counters or {}

    def counter(self, name):
        return self._counters[name]


class Benchmarks:
    """The programs *_bench. Each runs once, when its first result is asked for."""

    def __init__(self, folder, rounds):
        self._folder = folder
        self._rounds = rounds
        self._results = {}

    def result(self, program, name):
        if program not in self._results:
            self._results[program] = self._run(program)
        return self._results[program][name]

    def _run(self, program):
        tell(f"{program}_bench")
        # A minimum time below one run's makes every repetition a single run.
        output = subprocess.run(
            [self._folder / f"{program}_bench", "--benchmark_format=json",
             f"--benchmark_repetitions={self._rounds}", "--benchmark_min_time=0.02",
             "--benchmark_enable_random_interleaving=true"],
            check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
        runs = {}
        for run in json.loads(output)["benchmarks"]:
            if run.get("error_occurred"):
                raise RuntimeError(f"{run['name']}: {run['error_message']}")
            if run["run_type"] == "iteration":
                runs.setdefault(run["run_name"], []).append(run)
        return {name: self._median(repetitions) for name, repetitions in runs.items()}

    @staticmethod
    def _median(runs):
        to_ms = {"ns": 1e-6, "us": 1e-3, "ms": 1.0}[runs[0]["time_unit"]]
        counters = {name: statistics.median(run[name] for run in runs)
                    for name in ("peak", "compilations") if name in runs[0]}
        return Result([run["cpu_time"] * to_ms for run in runs],
                      [run["real_time"] * to_ms for run in runs], counters=counters)


class Programs:
    """Programs as a user starts them. All that were added run in turns, when the first
    result is asked for."""

    def __init__(self, rounds):
        self._rounds = rounds
        self._added = []
        self._samples = {}

    def add(self, name, command, prepare=None, repeat=1, rounds=None):
        """`prepare` makes what the command needs anew, before each run; `rounds`: at most so
        many of the rounds."""
        self._added.append((name, [str(word) for word in command], prepare, repeat, rounds))

    def result(self, name):
        if not self._samples:
            for number in range(self._rounds):
                tell(f"programs, round {number + 1} of {self._rounds}")
                self._round(number)
        cpu, wall, peak = zip(*self._samples[name])
        return Result(cpu, wall, peak=max(peak))

    def _round(self, number):
        for name, command, prepare, repeat, rounds in self._added:
            if rounds is not None and number >= rounds:
                continue
            for _ in range(repeat):
                if prepare is not None:
                    prepare()
                self._samples.setdefault(name, []).append(run_process(command))


def run_process(command):
    """Processor and elapsed milliseconds, largest resident bytes."""
    with tempfile.TemporaryFile() as errors:
        start = time.monotonic()
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=errors)
        _, status, usage = os.wait4(process.pid, 0)
        elapsed = time.monotonic() - start
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            errors.seek(0)
            raise RuntimeError(f"{' '.join(command[:4])}: {errors.read().decode()}")
    return ((usage.ru_utime + usage.ru_stime) * 1000, elapsed * 1000, usage.ru_maxrss * 1024)


class Workspace:
    """Inputs and table sets, below the build folder while it is open. Each table set is there
    twice, on disk and in memory, where no disk is waited for."""

    # The registration number of a declaration stands in its file's name.
    NAME = "10702020_110615_{:07d}.xml"

    def __init__(self, root, build):
        self._build = build
        self._program = build / "src/customsconv"
        self._root = root
        self._folder = None

    def __enter__(self):
        self._folder = pathlib.Path(tempfile.mkdtemp(prefix="inputs-", dir=self._build))
        self._memory = pathlib.Path(tempfile.mkdtemp(prefix="customsconv-", dir=memory_folder()))
        shutil.copytree(self._root / "examples/program", self._folder / "program")
        self._empty = self._folder / "empty"
        self._empty.mkdir()
        self._tables = {True: self._memory / "tables", False: self._folder / "tables"}
        self.flat_table = self._folder / "tables/flat.dbf"
        subprocess.run([self._program, "tables", "create", "--description",
                        self._root / "examples/armti/tables.txt", "--output", self._empty],
                       check=True, stdout=subprocess.DEVNULL)
        return self

    def __exit__(self, *_):
        shutil.rmtree(self._folder)
        shutil.rmtree(self._memory)

    def declaration(self, megabytes, documents=1, goods=None):
        folder = pathlib.Path(tempfile.mkdtemp(dir=self._folder))
        file = folder / self.NAME.format(1)
        extra = [] if goods is None else [str(goods)]
        subprocess.run([self._build / "bench/generate_declarations", file, str(megabytes),
                        str(documents), *extra], check=True)
        return file

    def copies(self, file, count):
        folder = pathlib.Path(tempfile.mkdtemp(dir=self._folder))
        files = [folder / self.NAME.format(number) for number in range(1, count + 1)]
        for copy in files:
            shutil.copyfile(file, copy)
        return files

    def empty_tables(self):
        for tables in self._tables.values():
            shutil.rmtree(tables, ignore_errors=True)
            shutil.copytree(self._empty, tables)

    def convert(self, files, in_memory=True, tables=None):
        return [self._program, "convert", "--program", self._folder / "program", "--rules",
                self._root / "examples/rules/armti.txt", "--output",
                tables or self._tables[in_memory], *files]

    def large_tables(self, file, gigabytes):
        """A table set on disk that holds the rows of `file` again and again."""
        folder = self._folder / "large"
        shutil.copytree(self._empty, folder)
        subprocess.run(self.convert([file], tables=folder), check=True, stdout=subprocess.DEVNULL)
        filled = [DbfTable(path) for path in sorted(folder.glob("*.DBF"))]
        times = (gigabytes << 30) // sum(table.row_bytes() for table in filled)
        for table in filled:
            table.repeat(times)
        os.sync()  # else the disk is still busy with it when others are measured
        return folder

    def sqlite_insert(self, file):
        """The rows of `file` into a database with the tables of the set; a preparation for it."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self._folder))
        tables = folder / "tables"
        shutil.copytree(self._empty, tables)
        subprocess.run(self.convert([file], tables=tables), check=True, stdout=subprocess.DEVNULL)
        empty, database, rows = folder / "empty.db", folder / "peer.db", folder / "rows"
        with rows.open("w") as lines, sqlite3.connect(empty) as to:
            for table in (DbfTable(path) for path in sorted(tables.glob("*.DBF"))):
                to.execute(f"CREATE TABLE {table.name} ({', '.join(table.columns)})")
                for row in table.rows():
                    print(len(row), table.name, *row, sep="\t", file=lines)
        return ([self._build / "bench/sqlite_peer", database, rows],
                lambda: shutil.copyfile(empty, database))

    def validate(self, file):
        return [self._program, "validate", "--program", self._folder / "program", "--schemas",
                self._root / "examples/schemas", file]


class DbfTable:
    """A table, as far as it is copied here."""

    def __init__(self, path):
        self._path = path
        self.name = path.stem
        self._bytes = path.read_bytes()
        self._count, self._start, self._length = struct.unpack_from("<IHH", self._bytes, 4)
        heads = [self._bytes[at:at + 32] for at in range(32, self._start - 31, 32)]
        self.columns = [head[:11].split(b"\0")[0].decode() for head in heads]
        self._widths = [head[16] for head in heads]

    def row_bytes(self):
        return self._count * self._length

    def rows(self):
        for number in range(self._count):
            at = self._start + number * self._length + 1
            row = []
            for width in self._widths:
                row.append(self._bytes[at:at + width].decode("cp866").strip())
                at += width
            yield row

    def repeat(self, times):
        rows = self._bytes[self._start:self._start + self.row_bytes()]
        with self._path.open("r+b") as file:
            file.write(self._bytes[:4] + struct.pack("<I", self._count * times))
            file.seek(self._start)
            for _ in range(times):
                file.write(rows)
            file.write(b"\x1a")


def memory_folder():
    return "/dev/shm" if os.access("/dev/shm", os.W_OK) else None


def tell(what):
    print(f"... {what}", flush=True)

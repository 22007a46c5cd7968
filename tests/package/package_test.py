#!/usr/bin/env python3
"""Makes the packages and installs one under Wine: package_test.py PROJECT WINE PLANTED VERSION

PROJECT is the project's folder, in which both Windows builds stand; WINE runs a Windows program;
a program that loads the library PLANTED ends with status 99.
"""

import hashlib
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile

project, wine, planted, version = sys.argv[1:5]
NAME = f"Tallowmere32-{version}"
FILES = {"Tallowmere32.exe", "tallowmere-find.exe", "s_done.wav", "ReadMe.txt"}
MACHINES = {"win64": 0x8664, "win32": 0x14C}
NAMES = {"win64": NAME, "win32": f"{NAME}-win32"}
UNINSTALL = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tallowmere32"
MENUS = [rf"HKCU\Software\Classes\{kind}\shell\Tallowmere32" for kind in ("Directory", "Drive")]
OVERRIDES = r"HKCU\Software\Wine\AppDefaults\Tallowmere32.exe\DllOverrides"
SETTINGS = r"HKCU\Software\Tallowmere\Startup"
DEFAULT_FOLDER = r"%LOCALAPPDATA%\Programs\Tallowmere32"
SHORTCUT = r"%APPDATA%\Microsoft\Windows\Start Menu\Programs\Tallowmere 32.lnk"


def read(path):
    with open(path, "rb") as file:
        return file.read()


def machine(program):
    """The kind of processor in the header of a Windows program."""
    return struct.unpack_from("<H", program, struct.unpack_from("<I", program, 0x3C)[0] + 4)[0]


def run(*command):
    """The status and the output. A pipe would stay open as long as what Wine starts besides."""
    with tempfile.TemporaryFile() as output:
        status = subprocess.run([wine, *command], stdin=subprocess.DEVNULL, stdout=output,
                                stderr=subprocess.DEVNULL, check=False).returncode
        output.seek(0)
        return status, output.read().decode(errors="replace")


def unix_path(windows_path):
    """Where a path of Windows, with its variables, really is."""
    parts = run("cmd", "/c", "echo", windows_path)[1].strip('"\r\n ').split("\\")[1:]
    return os.path.join(project, "build", "wine", "null", "drive_c", *parts)


def value(key, name=None):
    """A value of the registry as text; None when it is missing."""
    status, output = run("reg", "query", key, *(["/v", name] if name else ["/ve"]))
    found = re.search(r"    REG_\w+    (.*?)\r?\n", output)
    return found.group(1) if status == 0 and found else None


def wait_until(done):
    deadline = time.monotonic() + 120
    while not done():
        if time.monotonic() > deadline:
            return False
        time.sleep(0.05)
    return True


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="tallowmere-package-")
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        for output, zone in (("one", "UTC"), ("two", "Asia/Tokyo")):
            subprocess.run([os.path.join(project, "package"), "--no-build", "--output",
                            os.path.join(cls.folder, output)],
                           env={**os.environ, "TZ": zone, "SOURCE_DATE_EPOCH": "1700000000"},
                           stdout=subprocess.DEVNULL, check=True)
            # What is packed has other dates the second time.
            for name in FILES - {"ReadMe.txt"}:
                path = os.path.join(project, "build", "win64", name)
                date = os.stat(path).st_mtime_ns
                cls.addClassCleanup(os.utime, path, ns=(date, date))
                os.utime(path)

    def package(self, name, output="one"):
        return os.path.join(self.folder, output, name)

    def test_same_bytes_each_time_and_their_checksums(self):
        lines = [line.split() for line in read(self.package("SHA256SUMS")).decode().splitlines()]
        sums = {name.lstrip("*"): digest for digest, name in lines}
        self.assertEqual(set(os.listdir(self.package(""))), {*sums, "SHA256SUMS"})
        self.assertEqual(set(sums), {name + end for name in NAMES.values()
                                     for end in (".zip", "-setup.exe")})
        for name, digest in sums.items():
            content = read(self.package(name))
            self.assertEqual(content, read(self.package(name, "two")), name)
            self.assertEqual(digest, hashlib.sha256(content).hexdigest())

    def test_archives_hold_what_is_built(self):
        for preset, name in NAMES.items():
            self.assertEqual(machine(read(self.package(name + "-setup.exe"))), MACHINES[preset])
            with zipfile.ZipFile(self.package(name + ".zip")) as archive:
                held = {os.path.relpath(entry, NAME): archive.read(entry)
                        for entry in archive.namelist()}
            self.assertEqual(set(held), FILES)
            self.assertIn(b"\r\n", held.pop("ReadMe.txt"))
            for file, content in held.items():
                self.assertEqual(content, read(os.path.join(project, "build", preset, file)), file)
            self.assertEqual(machine(held["Tallowmere32.exe"]), MACHINES[preset])

    def install(self, *switches):
        return run(self.package(f"{NAME}-setup.exe"), "/S", *switches)[0]

    def empty_home(self):
        home = unix_path(DEFAULT_FOLDER)
        shutil.rmtree(home, ignore_errors=True)  # of a run that was broken off
        self.addCleanup(shutil.rmtree, home, ignore_errors=True)
        run("reg", "delete", UNINSTALL, "/f")
        return home

    def uninstall(self, home):
        self.assertEqual(run(os.path.join(home, "uninstall.exe"), "/S")[0], 0)
        # It goes on as a copy of itself, which can delete the file that was started.
        self.assertTrue(wait_until(lambda: value(UNINSTALL, "DisplayName") is None))

    def test_files_of_the_user_stay(self):
        home = self.empty_home()
        os.makedirs(home)

        def put(name, text):
            with open(os.path.join(home, name), "wb") as file:
                file.write(text)

        def contents():
            return {name: read(os.path.join(home, name)) for name in os.listdir(home)}

        mine = {"ReadMe.txt": b"mine", "s_done.wav": b"a tune"}
        for name, text in mine.items():
            put(name, text)
            self.assertEqual(self.install(), 0)
        self.assertEqual(set(contents()), FILES | {"uninstall.exe"})
        self.uninstall(home)
        self.assertEqual(contents(), mine)

        put("Tallowmere32.exe", b"another program")
        self.assertEqual(self.install(), 3)
        self.assertEqual(contents(), {**mine, "Tallowmere32.exe": b"another program"})
        self.assertIsNone(value(UNINSTALL, "DisplayName"))

        # A setup that has noted nothing has put all of it there.
        run("reg", "add", UNINSTALL, "/v", "InstallLocation", "/d",
            run("cmd", "/c", "echo", DEFAULT_FOLDER)[1].strip(), "/f")
        self.assertEqual(self.install(), 0)
        self.assertGreater(min(len(content) for content in contents().values()), 100)
        self.uninstall(home)
        self.assertFalse(os.path.exists(home))

    def test_runs_no_library_of_its_folder(self):
        with zipfile.ZipFile(self.package(f"{NAME}.zip")) as archive:
            archive.extractall(self.folder)
        folder = os.path.join(self.folder, NAME)
        self.addCleanup(run, "reg", "delete", OVERRIDES, "/f")
        for library in ("comctl32", "dwmapi", "uxtheme", "winmm"):
            shutil.copy(planted, os.path.join(folder, library + ".dll"))
            # Wine takes its own ones otherwise, wherever the others are.
            run("reg", "add", OVERRIDES, "/v", library, "/d", "native,builtin", "/f")
        running = self.start(os.path.join(folder, "Tallowmere32.exe"))
        self.assertEqual(self.close(running), 0)

    def test_installs_starts_and_uninstalls(self):
        run("reg", "delete", r"HKCU\Software\Tallowmere", "/f")
        home = self.empty_home()
        self.assertEqual(self.install(), 0)
        self.assertEqual(value(UNINSTALL, "DisplayVersion"), version)
        program = value(UNINSTALL, "DisplayIcon")
        folder = program[:program.rindex("\\")]
        self.assertEqual(value(UNINSTALL, "UninstallString"), f'"{folder}\\uninstall.exe"')
        for key in MENUS:
            self.assertEqual(value(key), "Search with Tallowmere")
            self.assertEqual(value(key + r"\command"), f'"{program}" "%1"')
        self.assertIn("Tallowmere32.exe".encode("utf-16-le"), read(unix_path(SHORTCUT)))
        self.assertEqual(self.install("/NOEXPLORER"), 0)
        self.assertIsNone(value(MENUS[0]))

        # It is not replaced while it runs.
        running = self.start(program)
        self.assertTrue(wait_until(lambda: self.install("/NOEXPLORER") != 0))
        self.assertNotEqual(run(os.path.join(home, "uninstall.exe"), "/S", "_?=" + folder)[0], 0)
        self.assertEqual(set(os.listdir(home)), FILES | {"uninstall.exe"})
        self.assertEqual(self.close(running), 0)
        self.assertEqual(self.install(), 0)
        self.assertIsNotNone(value(MENUS[0]))

        # Nothing is left but the settings, and what the user has put into the folder.
        open(os.path.join(home, "notes.txt"), "wb").close()
        self.uninstall(home)
        self.assertEqual(os.listdir(home), ["notes.txt"])
        self.assertFalse(os.path.exists(unix_path(SHORTCUT)))
        for key in MENUS:
            self.assertIsNone(value(key))
        self.assertIsNotNone(value(SETTINGS, "checked"))

    def start(self, program):
        running = subprocess.Popen([wine, program], stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(running.kill)
        return running

    def close(self, running):
        """Asks the window to close, once there is one; the status of the program."""
        wait_until(lambda: running.poll() is not None or
                   run("taskkill", "/im", "Tallowmere32.exe")[0] == 0)
        return running.wait(20)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])

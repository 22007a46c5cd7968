#!/usr/bin/env python3
"""Drives the console front end from outside: console_test.py [--windows] PROGRAM [ARGUMENT...]

With --windows the program is a Windows one run by the given command (Wine), and paths are handed
over as Windows knows them.
"""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

windows = False
command = []


def shown(path):
    """A path as the program knows it."""
    return "Z:" + path.replace("/", "\\") if windows else path


class ConsoleTest(unittest.TestCase):
    FILES = {
        "plain.txt": b"the big red dog sleeps",
        "upper.txt": b"THE BIG RED DOG SLEEPS",
        "words.log": b"a big house and a red barn",
        "part.txt": b"bigger dogs",
        "accent.txt": b"un caf\xe9 noir",
        "empty.txt": b"",
        "sub/deep.txt": b"big, far below the dog",
        "sub/.hidden.txt": b"big dog",
    }

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="tallowmere-")
        self.addCleanup(shutil.rmtree, self.folder)
        for name, content in self.FILES.items():
            path = os.path.join(self.folder, name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as file:
                file.write(content)

    def run_program(self, *arguments, stdin=b""):
        return subprocess.run([*command, *arguments], input=stdin, capture_output=True,
                              check=False)

    def search(self, *arguments, folder=None, stdin=b""):
        """The paths found below the folder in the order of the output, with "/", and the result."""
        base = shown(self.folder) if folder is None else folder
        result = self.run_program(*arguments[:-1], base, arguments[-1], stdin=stdin)
        names = []
        for line in result.stdout.decode().splitlines():
            self.assertTrue(line.startswith(base), line)
            names.append(line[len(base):].replace("\\", "/").lstrip("/"))
        return names, result

    def expect(self, names, *arguments):
        found, result = self.search(*arguments)
        self.assertEqual(sorted(found), sorted(names), arguments)
        self.assertEqual(result.returncode, 0 if names else 1, result.stderr)
        return result

    def test_search_types(self):
        self.expect(["plain.txt", "upper.txt"], "big red dog")  # a phrase is the default
        self.expect(["plain.txt"], "--match-case", "big red dog")
        self.expect(["plain.txt", "upper.txt", "sub/deep.txt"], "--search", "and", "dog big")
        self.expect(["plain.txt", "upper.txt", "words.log", "sub/deep.txt", "part.txt"],
                    "--search", "or", "barn bigger dog")
        self.expect(["plain.txt", "upper.txt", "part.txt", "sub/deep.txt"],
                    "--search", "and", '"big" "dog"')
        self.expect(["plain.txt", "upper.txt"], "--search", "near", "--before", "0", "--after",
                    "8", "big dog")
        self.expect(["plain.txt", "upper.txt", "words.log"], "--search", "near", "big red barn")
        self.expect(["words.log"], "--search", "near", "--prox", "all", "big red barn")

    def test_summary_and_status(self):
        result = self.expect(["words.log"], "barn")
        self.assertRegex(result.stderr.decode().splitlines()[0],
                         r"^1 file\(s\) matched out of 7 in \d+\.\d\d seconds$")
        self.expect([], "no such phrase")
        quiet = self.run_program("--quiet", shown(self.folder), "barn")
        self.assertEqual((quiet.returncode, quiet.stdout, quiet.stderr), (0, b"", b""))

    def test_code_page(self):
        self.expect(["accent.txt"], "café")
        self.expect(["accent.txt"], "CAFÉ")
        self.expect([], "--match-case", "CAFÉ")
        self.expect([], "caf中")  # lacking in the code page: must not turn into a wildcard

    def test_which_files(self):
        self.expect(["words.log"], "--files", "log", "big")
        self.expect(["words.log"], "--files", "L?G", "big")
        self.expect(["plain.txt", "upper.txt", "part.txt", "words.log"], "--no-subfolders", "big")
        self.expect(["plain.txt", "upper.txt", "accent.txt", "empty.txt", "part.txt",
                     "sub/deep.txt"], "--files", "txt", "")

    def test_dates(self):
        old = time.mktime((2001, 5, 20, 12, 0, 0, 0, 0, -1))
        os.utime(os.path.join(self.folder, "plain.txt"), (old, old))
        self.expect(["plain.txt"], "--year", "2001", "dog")
        self.expect(["plain.txt"], "--month", "5/2001", "dog")
        self.expect([], "--month", "6/2001", "dog")
        self.expect(["plain.txt"], "--between", "2001-05-20", "2001-05-20", "dog")
        self.expect([], "--between", "2001-05-21", "2001-06-20", "dog")
        self.expect(["upper.txt", "part.txt", "sub/deep.txt"], "--past-days", "1", "dog")

    def test_sorting(self):
        names, _ = self.search("--sort", "name", "big")
        self.assertEqual(names, ["sub/deep.txt", "part.txt", "plain.txt", "upper.txt",
                                 "words.log"])
        names, _ = self.search("--sort", "size", "--no-subfolders", "big")
        self.assertEqual(names, ["words.log", "plain.txt", "upper.txt", "part.txt"])
        names, _ = self.search("--sort", "type", "--reverse", "--no-subfolders", "big")
        self.assertEqual(names, ["upper.txt", "plain.txt", "part.txt", "words.log"])

    def test_lists(self):
        paths = [shown(os.path.join(self.folder, name)) for name in ("part.txt", "plain.txt")]
        missing = shown(os.path.join(self.folder, "missing.txt"))
        listing = "\n".join([paths[0], missing, paths[1]]).encode() + b"\n"
        result = self.run_program("--list", "-", "dog", stdin=listing)
        self.assertEqual(result.stdout.decode().splitlines(), paths)
        lines = result.stderr.decode().splitlines()
        self.assertTrue(lines[0].startswith("2 file(s) matched out of 3 in "), lines)
        self.assertIn(missing, lines[1])
        self.assertEqual((len(lines), result.returncode), (2, 0))

        names = os.path.join(self.folder, "names")
        with open(names, "wb") as file:
            file.write(listing)
        result = self.run_program("--null", "--list", shown(names), "dog")
        self.assertEqual(result.stdout, "".join(path + "\0" for path in paths).encode())

        again = self.run_program("--list", "-", "dog", stdin=result.stdout)
        self.assertEqual(again.stdout.decode().splitlines(), paths)
        marked = self.run_program("--list", "-", "dog", stdin=b"\xef\xbb\xbf" + listing)
        self.assertEqual(marked.stdout.decode().splitlines(), paths)

    def test_bad_usage(self):
        folder = shown(self.folder)
        for arguments in ([], [folder], ["--nonsense", folder, "x"],
                          ["--search", "xor", folder, "x"],
                          ["--before", "0", "--after", "0", "--search", "near", folder, "x y"],
                          ["--before", "1001", folder, "x"], ["--list", "", "x"], ["--month", "13/2001", folder, "x"],
                          ["--between", "2001-02-31", "soon", folder, "x"],
                          [shown(os.path.join(self.folder, "nowhere")), "x"]):
            result = self.run_program(*arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertEqual(result.stdout, b"", arguments)
            self.assertEqual(len(result.stderr.decode().strip().splitlines()), 1, arguments)

    def test_help_and_version(self):
        text = self.run_program("--help")
        self.assertEqual(text.returncode, 0)
        for option in ("--search", "--match-case", "--before", "--after", "--prox", "--files",
                       "--no-subfolders", "--between", "--year", "--month", "--past-days",
                       "--sort", "--reverse", "--list", "--null", "--quiet", "--version"):
            self.assertIn(option, text.stdout.decode())
        self.assertRegex(self.run_program("--version").stdout.decode(), r"\b2\.1\b")

    def test_closed_pipe(self):
        for number in range(3000):
            with open(os.path.join(self.folder, f"many-{number}.txt"), "wb") as file:
                file.write(b"dog")
        with subprocess.Popen([*command, shown(self.folder), "dog"], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as process:
            process.stdout.readline()
            process.stdout.close()
            errors = process.stderr.read().decode()
            self.assertIsNotNone(process.wait())
        self.assertFalse(re.search("terminate|abort|rror", errors), errors)

    def test_interrupt(self):
        if windows:
            self.skipTest("an interrupt of the terminal does not reach Wine")
        with open(os.path.join(self.folder, "z-huge.bin"), "wb") as file:
            file.truncate(200 << 30)
        with subprocess.Popen([*command, "--no-subfolders", self.folder, "bigger"],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            # A match is printed while the search goes on in the huge file.
            match = process.stdout.readline()
            self.assertIsNone(process.poll(), "the search ended before it was interrupted")
            process.send_signal(signal.SIGINT)
            output, errors = process.communicate()
        self.assertEqual((match + output).decode().splitlines(),
                         [os.path.join(self.folder, "part.txt")])
        self.assertIn("1 file(s) matched out of", errors.decode())

    def test_names_beyond_ascii(self):
        name = "naïve 中文 😀.txt"
        with open(os.path.join(self.folder, name), "wb") as file:
            file.write(b"umbrella")
        self.expect([name], "umbrella")


if __name__ == "__main__":
    command = sys.argv[1:]
    if command[:1] == ["--windows"]:
        windows = True
        command = command[1:]
    if not command:
        sys.exit(__doc__)
    unittest.main(argv=sys.argv[:1])

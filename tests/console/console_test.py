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
        ".git/HEAD": b"big dog",
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

    def search(self, *arguments):
        """The names found, in the order of the output and without their extensions; the result."""
        base = shown(self.folder)
        result = self.run_program(*arguments[:-1], base, arguments[-1])
        lines = result.stdout.decode().splitlines()
        self.assertTrue(all(line.startswith(base) for line in lines), lines)
        paths = (line[len(base):].replace("\\", "/").lstrip("/") for line in lines)
        return [os.path.splitext(path)[0] for path in paths], result

    def expect(self, names, options, criteria):
        found, result = self.search(*options.split(), criteria)
        self.assertEqual(sorted(found), sorted(names.split()), (options, criteria))
        self.assertEqual(result.returncode, 0 if names else 1, result.stderr)
        return result

    def test_what_is_found(self):
        old = time.mktime((2001, 5, 20, 12, 0, 0, 0, 0, -1))
        os.utime(os.path.join(self.folder, "plain.txt"), (old, old))
        for names, options, criteria in (
                ("plain upper", "", "big red dog"),  # a phrase is the default
                ("plain", "--match-case", "big red dog"),
                ("plain upper sub/deep", "--search and", "dog big"),
                ("plain upper words sub/deep part", "--search or", "barn bigger dog"),
                ("plain upper", "--search near --before 0 --after 8", "big dog"),
                ("words", "--search near --prox all", "big red barn"),
                ("words", "--files L?G", "big"),
                ("plain upper part words", "--no-subfolders", "big"),
                ("part words", "--exclude P*N.TXT;sub --exclude=u????.txt", "big"),
                ("sub/.hidden .git/HEAD", "--hidden --online", "big dog"),
                ("sub/.hidden", "--hidden --exclude .g?t --files txt", "big dog"),
                ("part plain upper words accent empty sub/deep",
                 "--files txt --files ??? --files log", ""),
                ("plain", "--year 2001", "dog"),
                ("plain", "--month 5/2001", "dog"),
                ("", "--month 6/2001", "dog"),
                ("plain", "--between 2001-05-21 2001-05-20", "dog"),
                ("upper part sub/deep", "--past-days 1", "dog"),
                ("accent", "", "CAFÉ"),
                ("", "--match-case", "CAFÉ"),
                ("", "--text bytes", "caf中"),
                ("", "--no-subfolders --", "--match-case"),
                ("", "", "caf中")):  # lacking in the code page: must not turn into a wildcard
            self.expect(names, options, criteria)

    def test_one_letter_in_six_encodings(self):
        letter = "Sehr geehrter Herr Müller,\nhiermit die Kündigung: 中 Ж.\n"
        for name, codec, text in (("page", "cp1252", letter), ("utf8", "utf-8", letter),
                                  ("mark8", "utf-8-sig", letter), ("mark16", "utf-16", letter),
                                  ("swapped16", "utf-16-be", "\ufeff" + letter)):
            with open(os.path.join(self.folder, name), "wb") as file:
                file.write(text.encode(codec, "replace"))
        unicode = "utf8 mark8 mark16 swapped16"
        for names, options, criteria in (
                ("page " + unicode, "", "KÜNDIGUNG"),
                (unicode, "--search near", "ж 中"),
                ("page " + unicode, "--search and", "herr geehrter"),
                ("page", "--text bytes", "Kündigung"),
                ("utf8 mark8", "--text bytes", "KÃ¼ndigung"),
                ("", "--text bytes", "Ж")):
            self.expect(names, options, criteria)
        refused = self.run_program(shown(self.folder), "".join(map(chr, range(0x4e00, 0x4e7f))))
        self.assertEqual((refused.returncode, refused.stdout), (2, b""))
        self.assertIn(b"126", refused.stderr)

    def test_summary_and_status(self):
        result = self.expect("words", "", "barn")
        self.assertRegex(result.stderr.decode(),
                         r"^1 file\(s\) matched out of 7 in \d+\.\d\d seconds\n$")
        for option in ("--quiet", "-q", "-0q"):
            quiet = self.run_program(option, shown(self.folder), "barn")
            self.assertEqual((quiet.returncode, quiet.stdout, quiet.stderr), (0, b"", b""))

    def test_threads_change_nothing(self):
        os.symlink("nowhere", os.path.join(self.folder, "broken"))
        listing = "\n".join(shown(os.path.join(self.folder, name)) for name in
                            ("part.txt", "broken", "plain.txt", "sub/deep.txt")).encode()
        for arguments in (["--search", "or", "--files", "???", "--files", "txt",
                           shown(self.folder), "big barn"],
                          ["--sort", "date", shown(self.folder), "big"],
                          ["--list", "-", "big"]):
            told = set()
            for threads in ("1", "2", "3", "8", "32"):
                result = self.run_program("--threads", threads, *arguments, stdin=listing)
                told.add(result.stdout + re.sub(rb"in \S+ seconds", b"", result.stderr))
                self.assertEqual(result.returncode, 0)
            self.assertEqual(len(told), 1, told)

    def test_names_beyond_ascii(self):
        with open(os.path.join(self.folder, "naïve中文😀.txt"), "wb") as file:
            file.write(b"umbrella")
        self.expect("naïve中文😀", "", "umbrella")

    def test_sorting(self):
        for expected, *arguments in (
                ("sub/deep part plain upper words", "name"),
                ("words plain upper part", "size", "--no-subfolders"),
                ("upper plain part words", "type", "--reverse",
                 "--no-subfolders")):
            self.assertEqual(self.search("--sort", *arguments, "big")[0], expected.split())

    def test_lists(self):
        paths = [shown(os.path.join(self.folder, name)) for name in ("part.txt", "plain.txt")]
        missing = shown(os.path.join(self.folder, "missing.txt"))
        listing = "\n".join([paths[0], missing, paths[1]]).encode() + b"\n"
        names = os.path.join(self.folder, "names")
        with open(names, "wb") as file:
            file.write(b"\xef\xbb\xbf" + listing)
        found = self.run_program("-0", "--list", shown(names), "dog").stdout
        self.assertEqual(found, "".join(path + "\0" for path in paths).encode())

        for listed in (listing, found):
            result = self.run_program("--list", "-", "dog", stdin=listed)
            self.assertEqual(result.stdout.decode().splitlines(), paths)
            self.assertEqual(result.returncode, 0)
            lines = result.stderr.decode().splitlines()
            if listed is listing:
                self.assertTrue(lines[0].startswith("2 file(s) matched out of 3 in "), lines)
                self.assertIn(missing, lines.pop())
            self.assertEqual(len(lines), 1)

    def test_bad_usage(self):
        folder = shown(self.folder)
        wrong = ("--nonsense", "--search xor", "--before 0 --after 0", "--before 1001",
                 "--month 13/2001", "--between 2001-02-31 2001-03-01", "--files a.b/c", "--reverse",
                 "--year 2001 --month 5/2001", "--quiet=yes", "--threads 0", "--threads 65",
                 "--exclude ;", "--exclude a/b", "--hidden=no")
        for arguments in ([], [folder], [folder, "x", "y"], ["--list", "", "x"],
                          [shown(os.path.join(self.folder, "nowhere")), "x"], ["-qx", folder, "x"],
                          *([*options.split(), folder, "x"] for options in wrong)):
            result = self.run_program(*arguments)
            self.assertEqual(result.returncode, 2, arguments)
            self.assertEqual(result.stdout, b"", arguments)
            self.assertEqual(len(result.stderr.decode().strip().splitlines()), 1, arguments)

        for what_to_do, *arguments in (
                ("use --list", shown(os.path.join(self.folder, "part.txt")), "big"),
                ("in quotes", folder, "bigger", "dogs")):
            self.assertIn(what_to_do, self.run_program(*arguments).stderr.decode())

    def test_help_and_version(self):
        text = self.run_program("-h")
        self.assertEqual((text.returncode, text.stderr), (0, b""))
        self.assertLess(max(map(len, text.stdout.decode().splitlines())), 80)
        # Every option that the help names is one.
        for option in set(re.findall(r"--[a-z-]+", text.stdout.decode())):
            self.assertNotIn(b"unknown", self.run_program(option).stderr, option)
        self.assertRegex(self.run_program("-V").stdout.decode(), r"\b2\.1\b")

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


if __name__ == "__main__":
    command = sys.argv[1:]
    if command[:1] == ["--windows"]:
        windows = True
        command = command[1:]
    if not command:
        sys.exit(__doc__)
    unittest.main(argv=sys.argv[:1])

#!/usr/bin/env python3
"""Makes a zip archive that depends only on its files: make_zip.py ZIP FOLDER NAME EPOCH

The archive holds the files of FOLDER in the order of their names, below NAME/ and all with the same
date, which is EPOCH in seconds since 1970.
"""

import os
import sys
import time
import zipfile

EARLIEST = (1980, 1, 1, 0, 0, 0)  # archives know no earlier date


def main():
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    target, folder, name, epoch = sys.argv[1:]
    date = max(time.gmtime(int(epoch))[:6], EARLIEST)
    with zipfile.ZipFile(target, "w") as archive:
        for file in sorted(os.listdir(folder)):
            entry = zipfile.ZipInfo(f"{name}/{file}", date)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # MS-DOS: the entries carry no Unix permissions
            with open(os.path.join(folder, file), "rb") as source:
                archive.writestr(entry, source.read(), compresslevel=9)


if __name__ == "__main__":
    main()

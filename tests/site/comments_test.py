"""comments_test.py ROOT: site/comments.py gives every declaration the comment that describes it,
and doxygen then rejects a header in which a name has none.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(sys.argv[1]).resolve()
HEADER = """/* Frames. */
#ifndef A_H
#define A_H

/* Opens a frame.
 * In numbers:
 *
 *   a < b
 *
 * 1. First. See a.h.
 * 2. Second, `a < b`.
 */
int open(int a, int b);
int close(void); /* the other way round */

/* A size. */
typedef struct Size {
  int width, height; /* pixels */
  /* Bytes of a row. */
  int stride;
  int rows; /* from 1 */
  int columns;
} Size;

/* Colours. */
enum {
  RED = 0, /* the first */
  BLUE = 1 /* the last */
};

#endif
"""
# What stands before each declaration, words only.
WANTED = {
    "int open(": "Opens a frame. In numbers: @verbatim a < b @endverbatim **1** First. See %a.h. "
                 "**2** Second, `a < b`.",
    "int close(": "Opens a frame. In numbers: @verbatim a < b @endverbatim **1** First. See %a.h. "
                  "**2** Second, `a < b`. the other way round",
    "struct Size {": "A size.",
    "int width;": "pixels",
    "int height;": "pixels",
    "int stride;": "Bytes of a row.",
    "int rows;": "from 1",
    "int columns;": "Bytes of a row.",
    "RED = 0": "the first",
    "BLUE = 1": "the last",
}


def comment_before(declaration, text):
    found = re.search(r"/\*\*\n((?:(?!\*/).)*)\*/\n" + re.escape(declaration), text, re.S)
    return " ".join(found[1].split()) if found else None


def doxygen_accepts(header):
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        (root / "include" / "vistrel").mkdir(parents=True)
        (root / "include" / "vistrel" / "a.h").write_text(header)
        (root / "site").symlink_to(ROOT / "site")
        variables = {**os.environ, "VISTREL_ROOT": folder, "VISTREL_DOXYGEN": folder}
        return subprocess.run(["doxygen", ROOT / "site" / "Doxyfile"], env=variables, check=False,
                              capture_output=True).returncode == 0


with tempfile.NamedTemporaryFile("w", suffix=".h") as file:
    file.write(HEADER)
    file.flush()
    converted = subprocess.check_output([sys.executable, ROOT / "site" / "comments.py", file.name],
                                        text=True)
for declaration, wanted in WANTED.items():
    got = comment_before(declaration, converted)
    if got != wanted:
        sys.exit(f"{declaration}\nwanted: {wanted}\ngot:    {got}\n\n{converted}")
if not doxygen_accepts(HEADER):
    sys.exit("a described header is rejected")
for bare in (HEADER.replace("/* A size. */\n", ""), HEADER.replace(" /* pixels */", "")):
    if doxygen_accepts(bare):
        sys.exit(f"accepted without a description:\n{bare}")

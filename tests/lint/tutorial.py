"""tutorial.py PAGE PROGRAMS [PLUGINS]: runs the blocks of sh and Python of a tutorial, in order and
in an empty folder. All must succeed and print what the page says: "It prints `...`", at the end.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

BLOCK = re.compile(r"```(sh|python)\n(.*?)```(?:\n\nIt prints `([^`]*)`)?", re.S)
COMMANDS = {"sh": ["bash", "-euo", "pipefail", "-c"], "python": ["/usr/bin/python3", "-c"]}


def environment(programs, plugins, folder):
    """Finds our programs and plug-ins first. There is no screen for autovideosink."""
    return {**os.environ, "PATH": f"{programs}:{os.environ['PATH']}", "GST_PLUGIN_PATH": plugins,
            "GST_REGISTRY": f"{folder}/registry"}


def run(language, code, promise, folder, variables):
    code = code.replace("autovideosink", "fakesink")
    done = subprocess.run([*COMMANDS[language], code], cwd=folder, env=variables, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    kept = done.returncode == 0 and done.stdout.split()[-len(promise.split()):] == promise.split()
    if done.returncode or promise and not kept:
        sys.exit(f"{code}\n{done.stdout}\nends with {done.returncode}; promised: {promise}")


def main(page, programs, plugins=""):
    blocks = BLOCK.findall(pathlib.Path(page).read_text(encoding="utf-8"))
    if len(blocks) < 4:
        sys.exit(f"{page} has only {len(blocks)} blocks")
    programs, plugins = os.path.abspath(programs), os.path.abspath(plugins)
    with tempfile.TemporaryDirectory() as outside:
        folder = pathlib.Path(outside) / "tutorial"
        folder.mkdir()
        for language, code, promise in blocks:
            run(language, code, promise, folder, environment(programs, plugins, outside))
    print(f"{len(blocks)} blocks run")


if __name__ == "__main__":
    main(*sys.argv[1:])

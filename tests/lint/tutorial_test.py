"""tutorial_test.py PROGRAMS: proves that tutorial.py notices failing commands, wrong promises."""

import pathlib
import subprocess
import sys
import tempfile

SCRIPT = pathlib.Path(__file__).with_name("tutorial.py")
GOOD = "```sh\ntrue\n```\n\n" * 3 + "```sh\necho a b\n```\n\nIt prints `a b`.\n"
BAD = {
    "a command that fails": GOOD.replace("true", "false; true", 1),
    "a pipe that fails": GOOD.replace("true", "false | true", 1),
    "a wrong promise": GOOD.replace("`a b`", "`a c`"),
    "too few blocks": GOOD.replace("```sh\ntrue\n```", "", 1),
}


def passes(page):
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "page.md"
        path.write_text(page, encoding="utf-8")
        return subprocess.run([sys.executable, SCRIPT, path, sys.argv[1]], check=False,
                              capture_output=True).returncode == 0


if not passes(GOOD):
    sys.exit("a good page is rejected")
for name, page in BAD.items():
    if passes(page):
        sys.exit(f"{name} is accepted")

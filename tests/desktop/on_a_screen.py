"""Runs a command on a private virtual screen and ends with its exit code.

Usage: on_a_screen.py COMMAND [ARGUMENT...]
"""
import pathlib
import subprocess
import sys
import tempfile

import desk

with tempfile.TemporaryDirectory(prefix="vantorix-desk-") as folder:
    screen = desk.Screen(pathlib.Path(folder))
    try:
        code = subprocess.run(sys.argv[1:], env=screen.environment).returncode
    finally:
        screen.end()
sys.exit(code)

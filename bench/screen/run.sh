#!/usr/bin/env bash
# How soon ink is on the screen, and what it costs, against others:
#
#   bench/screen/run.sh BUILD_FOLDER [CASE...]
#
# The others are packages: apt-get install gromit-mpx xournalpp; they are installed if absent.
# Prints a table in Markdown. The cases are those that run.py names; all of them without any.
set -euo pipefail

if (($# == 0)); then
    echo "usage: $0 BUILD_FOLDER [CASE...]" >&2
    exit 2
fi
here=$(cd "$(dirname "$0")" && pwd)
source "$here/../../tools/packages.sh"
install_packages gromit-mpx xournalpp >&2

exec "$here/../../tests/support/with-x-server.sh" desktop python3 "$here/run.py" "$@"

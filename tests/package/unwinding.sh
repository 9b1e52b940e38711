#!/usr/bin/env bash
# Fails where a program has a function of no length in its table of functions: the next one begins at the same place,
# and an error thrown there finds no way out and ends the program.
#   unwinding.sh PROGRAM...
set -euo pipefail

for program in "$@"; do
    table=$(readelf --debug-dump=frames "$program" 2>/dev/null | grep -oE 'pc=[0-9a-f]+\.\.[0-9a-f]+')
    if empty=$(grep -E '^pc=([0-9a-f]+)\.\.\1$' <<<"$table"); then
        echo "$program: of no length: $(wc -l <<<"$empty") of $(wc -l <<<"$table") functions" >&2
        exit 1
    fi
done

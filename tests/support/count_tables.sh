#!/bin/sh
# Opens every text table below the folders with the batch program and counts what became of them: read without a word, read and told
# of, refused. With -v one line a file.
# Usage: count_tables.sh [-v] TARNWICK_CLI FOLDER...
verbose=
[ "$1" = -v ] && verbose=1 && shift
cli=$1
shift
find "$@" -type f \( -name '*.txt' -o -name '*.dat' -o -name '*.csv' -o -name '*.tsv' -o -name '*.tab' \) -size -4096k |
    while IFS= read -r file; do
        if told=$("$cli" import "$file" 2>&1 >/dev/null); then
            kind=${told:+read and told}
            kind=${kind:-read}
        else
            kind=refused
        fi
        echo "$kind"
        [ -z "$verbose" ] || echo "$kind: $file: $told" >&2
    done | sort | uniq -c

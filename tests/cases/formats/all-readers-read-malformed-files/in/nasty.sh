#!/bin/sh
# Runs one list of nasty files through the four readers and prints a line for each: status, points of the two columns,
# and the last error or warning. The good file of each format holds three points of two series.
good_req='run\nTitle\n1\n7 1 0 0 0\n1\n10\n2\n20\n3\n30\n'
good_mad='Title\n\n1 0\nname\n1\n10\n2\n20\n3\n30\n'
good_pos='time value\n1 10\n2 20\n3 30\n'
good_vdr='%%N\n3\n%%D\n1 10\n2 20\n3 30\n'

try() { # format selection
    out=$(crv -v 86 -r "$2" "$1" nasty.txt -w x 2>&1)
    status=$?
    points=$(printf '%s\n' "$out" | sed -n 's/.*numpts *= "\([0-9]*\)".*/\1/p' | tr '\n' ' ')
    tag=$(printf '%s\n' "$out" | grep -o -E '_(83|88|94|85|xx)-[efw]-[a-z]*' | tail -n 1)
    printf '    %-4s status %s  points %-6s %s\n' "$1" "$status" "${points:--}" "$tag"
}

row() { # name, then the four files as printf formats
    echo "$1"
    for pair in "-f 0,7" "-fm 0,1" "-fp 1,2" "-fg 0"; do
        shift
        # shellcheck disable=SC2059  # the files are formats
        printf "$1" > nasty.txt
        try "${pair%% *}" "${pair#* }"
    done
    rm -f nasty.txt
}

all_from() { # name and a sed script for the four good files
    row "$1" "$(printf '%s' "$good_req" | sed "$2")" "$(printf '%s' "$good_mad" | sed "$2")" \
        "$(printf '%s' "$good_pos" | sed "$2")" "$(printf '%s' "$good_vdr" | sed "$2")"
}

each() { # name, for a nasty.txt that is made beforehand
    echo "$1"
    try -f 0,7
    try -fm 0,1
    try -fp 1,2
    try -fg 0
}

long=$(printf '%2000s' '')

all_from 'a good file' ''
all_from 'line ends CR LF' 's/\\n/\\r\\n/g'
all_from 'the last line has no line end' 's/\\n$//'
all_from 'a blank line at the end' 's/$/\\n/'
all_from 'a data line of 2,000 blanks more' "s/20/20$long/"
all_from 'a data line cut by a NUL' 's/20/2\\0000/'
all_from 'words for a number' 's/20/twenty/'
all_from 'a number that is missing' 's/20//'
all_from 'a number beyond the range' 's/20/1e999/'
all_from 'not a number' 's/20/nan/'
all_from 'the mark of several result sets' 's/20/20<++>/'
row 'the file ends within a step' 'r\nT\n1\n7 1 0 0 0\n1\n10\n2\n' 'T\n\n1 0\nname\n1\n10\n2\n' 'time value\n1 10\n2\n' \
    '%%N\n3\n%%D\n1 10\n2 20\n'
row 'a count far above the file' 'r\nT\n2147483647\n7 1 0 0 0\n1\n10\n' 'T\n\n2147483647 0\nname\n1\n10\n' 'time value\n' \
    '%%N\n2147483647\n%%D\n1 10\n2 20\n3 30\n'
row 'a count below zero' 'r\nT\n-1\n1\n' 'T\n\n-1 0\n1\n' 'time value\n1 10\n' '%%N\n-1\n%%D\n1 10\n'
row 'an empty file' '' '' '' ''
row 'a single line end' '\n' '\n' '\n' '\n'
each 'no file'
mkdir nasty.txt
each 'a folder'
rmdir nasty.txt

# completions/crv.fish - fish completion for crv, the viewers crv-html, crv-term and crv-csv, and
# crv-info.
#
# Names and texts come from the disk and from the line: they are compared and listed, never run.

# Prints the option of crv-info for the format of a file, and the file; false if the word is not the
# name of a result file. The second argument is the word before.
function __crv_result_file --argument-names word before
    set -l file (string replace -r '^~/' "$HOME/" -- $word)
    string match -q -- '-*' $file; and return 1
    test -f "$file" -a -r "$file"; or return 1
    switch $file
        case '*.req'
            printf '%s\n' -f $file
        case '*.mad'
            printf '%s\n' -fm $file
        case '*.pos'
            string match -qr '^-fp[0-9]+$' -- $before; or set before -fp
            printf '%s\n' $before $file
        case '*.vdr'
            printf '%s\n' -fg $file
        case '*'
            return 1
    end
end

# Prints the same for the result file whose series are selected: the last on the line, otherwise the
# only one of its format in this directory. A completion sees only the words before the cursor.
function __crv_selected_file
    set -l words (commandline -opc)
    for k in (seq (count $words) -1 2)
        __crv_result_file $words[$k] $words[(math $k - 1)]; and return
    end
    for suffix in req mad pos vdr
        set -l names
        for file in ./*.$suffix
            test -f $file -a -r $file; and set -a names $file
        end
        test (count $names) -gt 1; and return 1
        test (count $names) -eq 1; and __crv_result_file $names[1] ''; and return
    end
    return 1
end

# The pairs that -r can select, as crv-info prints them: pair, name and item between tabs. At most a
# megabyte of the file is read.
function __crv_pairs
    set -l found (__crv_selected_file); or return
    LC_ALL=C head -c 1000000 <$found[2] 2>/dev/null | command crv-info --pairs $found[1] - 2>/dev/null
end

# The identifiers of the pairs, or the numbers of columns, each with its name.
function __crv_requests
    __crv_pairs | awk -F '\t' '
        { colon = sub(/:.*/, "", $1); text = $2 == "" ? (colon ? "request" : "column") : $2 }
        !seen[$1]++ && $1 != "0" { print $1 (colon ? ":" : "") "\t" text }'
end

# The items of a request.
function __crv_items --argument-names request
    __crv_pairs | awk -F '\t' -v request=$request '
        index($1, request ":") == 1 { print substr($1, length(request) + 2) "\t" $3 }'
end

# Files with the suffix, and directories.
function __crv_files --argument-names suffix
    set -l token (commandline -ct)
    complete -C "__crv_no_such_command $token" |
        string match -r "^[^-\t][^\t]*(?:/|\\Q$suffix\\E)(?:\t.*)?\$"
end

# The program on the line without its directory.
function __crv_program
    string replace -r '.*/' '' -- (commandline -opc)[1]
end

# The suffix of the output of the program.
function __crv_suffix
    switch (__crv_program)
        case crv-html
            echo .html
        case crv-term
            echo .txt
        case crv-csv
            echo .csv
        case '*'
            echo .ps
    end
end

# Names for the output with its suffix: crv.ps, the name of each result file on the line with the
# suffix .ps, and existing charts; or with another suffix.
function __crv_charts --argument-names pasted
    set -l suffix (__crv_suffix)
    begin
        echo crv$suffix
        for word in (commandline -opc)[2..]
            string match -qr '^[^-].*\.(req|mad|pos|vdr)$' -- $word
            and string replace -r '\.[a-z]+$' $suffix -- $word
        end
        __crv_files $suffix | string replace -r '\t.*' ''
    end | awk '!seen[$0]++' | string match -v -- "$pasted"
end

# Values for -r: identifiers, then items of a request, then the words of a condition.
function __crv_selection
    set -l current (commandline -ct | string replace -r '^["\']' '')
    set -l piece (string replace -r '.*[, ]' '' -- $current)
    if string match -q '*=*' -- $current
        contains -- (__crv_program) $__crv_viewers; and return
        set -l before (string replace -r '=.*' '=' -- $current)
        printf '%s%s\t%s\n' $before max 'where it is highest' $before min 'where it is lowest' \
            $before amax 'where its magnitude is highest' \
            $before amin 'where its magnitude is lowest'
    else if string match -q '*:*' -- $piece
        set -l before (string replace -r '[^:]*$' '' -- $current)
        for line in (__crv_items (string replace -r ':.*' '' -- $piece))
            printf '%s%s\n' $before $line
        end
    else
        set -l before (string replace -r '[^, ]*$' '' -- $current)
        test -z "$before"; and printf '0,\ttime\n'
        for line in (__crv_requests)
            printf '%s%s\n' "$before" $line
        end
    end
end

# Whether the file of a table is among the words before the last: nothing after it is scanned.
function __crv_ends_before
    for word in $argv
        set -l found (__crv_find_option $word)
        test $found[1] = table; and return 0
    end
    return 1
end

# Values for the option before the cursor; nothing when it has none or any text.
function __crv_value
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    test (count $words) -gt 2; and __crv_ends_before $words[2..-2]; and return
    string match -q -- '-*' $current; and return
    set -l pasted
    for k in (seq 2 (math (count $words) - 1))
        string match -q -- '-s0*' $words[$k]; and set pasted $words[(math $k + 1)]
    end
    set -l found (__crv_find_option $words[-1])
    switch $found[2]
        case selection
            __crv_selection
        case chart
            __crv_charts "$pasted"
        case '.*'
            __crv_files $found[2]
    end
end

# Whether the program would take an option here for an option.
function __crv_takes_option
    set -l words (commandline -opc)
    test (count $words) -gt 1; or return 0
    __crv_ends_before $words[2..]; and return 1
    set -l found (__crv_find_option $words[-1])
    test $found[1] != any
end

set -g __crv_viewers crv-html crv-term crv-csv
for program in crv $__crv_viewers
    complete -c $program -e
    complete -c $program -f -a '(__crv_value)'
end

# Generated by scripts/generate_options.py from the option table.
# Prints the kind of value of an option, and what its value is.
function __crv_find_option --argument-names option
    switch $option
        case '-fma*' '-fmc*' '-fmd*' '-fms*'
            printf '%s\n' table '.mad'
        case '-yla*'
            printf '%s\n' any ''
        case '-fm'
            printf '%s\n' plain '.mad'
        case '-fp'
            printf '%s\n' plain '.pos'
        case '-yl'
            printf '%s\n' any ''
        case '-fr*'
            printf '%s\n' plain '.req'
        case '-fp*'
            printf '%s\n' plain '.pos'
        case '-fg*'
            printf '%s\n' plain '.vdr'
        case '-tm*'
            printf '%s\n' any ''
        case '-fa*' '-fc*' '-fd*' '-fs*'
            printf '%s\n' table '.req'
        case '-p1*' '-p2*'
            printf '%s\n' any 'chart'
        case '-xl*' '-yl*'
            printf '%s\n' any ''
        case '-t1*' '-t2*'
            printf '%s\n' plain ''
        case '-s0*'
            printf '%s\n' plain '.ps'
        case '-s1*' '-s2*' '-s3*'
            printf '%s\n' plain ''
        case '-f'
            printf '%s\n' plain '.req'
        case '-t'
            printf '%s\n' plain ''
        case '-r*'
            printf '%s\n' any 'selection'
        case '-p*'
            printf '%s\n' any 'chart'
        case '-x*' '-y*' '-d*' '-v*'
            printf '%s\n' any ''
        case '-w*'
            printf '%s\n' plain ''
        case '-i*' '-n*'
            printf '%s\n' any ''
        case '*'
            printf '%s\n' none ''
    end
end

# Every option with its summary, in the order of the manual page.
function __crv_option --argument-names name summary
    complete -c crv -n __crv_takes_option -o $name -d $summary
end
__crv_option 'r' 'the series to take, 0,38:3'
__crv_option 'f' 'read a request file'
__crv_option 'fr' 'read a request file'
__crv_option 'fm' 'read a Madymo file'
__crv_option 'fp' 'read a column file'
__crv_option 'fg' 'read a frame file'
__crv_option 'tm' 'time window, low:high'
__crv_option 'fa' 'table: title, statistics and data'
__crv_option 'fc' 'table: title and data'
__crv_option 'fd' 'table: data'
__crv_option 'fs' 'table: title and statistics'
__crv_option 'fma' 'Madymo table: title, statistics and data'
__crv_option 'fmc' 'Madymo table: title and data'
__crv_option 'fmd' 'Madymo table: data'
__crv_option 'fms' 'Madymo table: title and statistics'
__crv_option 'abs' 'magnitudes in the table'
__crv_option 'all' 'all statistics in the table'
__crv_option 'p' 'draw the chart, give it last'
__crv_option 'p1' 'draw the chart; the digit is echoed'
__crv_option 'p2' 'draw the chart; the digit is echoed'
__crv_option 'x' 'X range, low:high, or a for that of the data'
__crv_option 'y' 'Y range, low:high, or a for that of the data'
__crv_option 'xl' 'X label'
__crv_option 'yl' 'Y label'
__crv_option 'yla' 'Y label'
__crv_option 't' 'title'
__crv_option 't1' 'title'
__crv_option 't2' 'subtitle'
__crv_option 's0' 'PostScript file to paste'
__crv_option 's1' 'text 1 for the pasted file'
__crv_option 's2' 'text 2 for the pasted file'
__crv_option 's3' 'text 3 for the pasted file'
__crv_option 'h' 'help'
__crv_option 'e' 'examples'
__crv_option 's' 'status'
__crv_option 'H' 'help for debug levels'
__crv_option '?' 'help for debug levels'
__crv_option 'B' 'bug list'
__crv_option 'b' 'bug list'
__crv_option 'd' 'debug level, to 999'
__crv_option 'v' 'debug level'
__crv_option 'm' 'debug level 24'
__crv_option 'w' 'end without data; the name is echoed'
__crv_option 'u' 'add to the usage file'
__crv_option 'i' 'name, echoed'
__crv_option 'n' 'number, echoed'

# Those of the viewers.
function __crv_viewer_option --argument-names kind name summary
    for program in $__crv_viewers
        complete -c $program -n __crv_takes_option $kind $name -d $summary
    end
end
__crv_viewer_option -o 'r' 'the series to take, 0,38:3'
__crv_viewer_option -o 'f' 'read a request file'
__crv_viewer_option -o 'fr' 'read a request file'
__crv_viewer_option -o 'fm' 'read a Madymo file'
__crv_viewer_option -o 'fp' 'read a column file'
__crv_viewer_option -o 'fg' 'read a frame file'
__crv_viewer_option -o 'tm' 'time window, low:high'
__crv_viewer_option -o 'p' 'the output'
__crv_viewer_option -o 'x' 'X range, low:high, or a for that of the data'
__crv_viewer_option -o 'y' 'Y range, low:high, or a for that of the data'
__crv_viewer_option -o 'xl' 'X label'
__crv_viewer_option -o 'yl' 'Y label'
__crv_viewer_option -o 'yla' 'Y label'
__crv_viewer_option -o 't' 'title'
__crv_viewer_option -o 't1' 'title'
__crv_viewer_option -o 't2' 'subtitle'
__crv_viewer_option -o 'h' 'help'
__crv_viewer_option -l 'help' 'help'
__crv_viewer_option -l 'version' 'version'
# End of the generated part.

# Result files of all formats, and directories.
function __crv_result_files
    for suffix in .req .mad .pos .vdr
        __crv_files $suffix
    end | awk '!seen[$0]++'
end

complete -c crv-info -e
complete -c crv-info -f -a '(__crv_result_files)'
complete -c crv-info -o f -d 'request files'
complete -c crv-info -o fr -d 'request files'
complete -c crv-info -o fm -d 'Madymo files'
complete -c crv-info -o fp -d 'column files'
complete -c crv-info -o fg -d 'frame files'
complete -c crv-info -l json -d 'print JSON'
complete -c crv-info -l pairs -d 'print the pairs that -r can select'
complete -c crv-info -o h -d help
complete -c crv-info -l help -d help
complete -c crv-info -l version -d version

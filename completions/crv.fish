# completions/crv.fish - what fish offers behind crv.
#
# Names and texts come from the disk and from the line: they are compared and listed, never run.

# The identifiers in the header of the only request file here, each with its name. No more than a megabyte is read.
function __crv_requests
    set -l files
    for file in *.req
        test -f $file -a -r $file; and set -a files $file
    end
    test (count $files) -eq 1; or return
    LC_ALL=C head -c 1000000 <$files[1] 2>/dev/null | LC_ALL=C awk '
        function show() { if (id != "") print id ":\t" text; id = "" }
        { gsub(/[,\r]/, " "); $0 = $0 }
        NR == 3 { left = int($1); next }
        NR < 3 { next }
        name { gsub(/[^A-Za-z0-9_. -]/, ""); text = substr($0, 1, 60); name = 0; show(); next }
        left-- < 1 { exit }
        { show(); text = "request"; name = int($5) != 0 }
        $1 ~ /^[0-9]+$/ && length($1) < 11 && !seen[$1]++ { id = $1 }
        END { show() }' 2>/dev/null
end

# Files with the suffix, and folders.
function __crv_files --argument-names suffix
    set -l token (commandline -ct)
    complete -C "__crv_no_such_command $token" | string match -r "^[^-\t][^\t]*(?:/|\\Q$suffix\\E)(?:\t.*)?\$"
end

# Names for the chart: the usual one, that of each result file on the line, and the charts that are here.
function __crv_charts --argument-names pasted
    begin
        echo crv.ps
        for word in (commandline -opc)[2..]
            string match -qr '^[^-].*\.(req|mad|pos|vdr)$' -- $word
            and string replace -r '\.[a-z]+$' .ps -- $word
        end
        __crv_files .ps | string replace -r '\t.*' ''
    end | awk '!seen[$0]++' | string match -v -- "$pasted"
end

# Behind -r: identifiers, then items of a request, then the words of a condition.
function __crv_selection
    set -l current (commandline -ct | string replace -r '^["\']' '')
    set -l piece (string replace -r '.*[, ]' '' -- $current)
    if string match -q '*=*' -- $current
        set -l before (string replace -r '=.*' '=' -- $current)
        printf '%s%s\t%s\n' $before max 'where it is highest' $before min 'where it is lowest' \
            $before amax 'where its magnitude is highest' $before amin 'where its magnitude is lowest'
    else if string match -q '*:*' -- $piece
        set -l before (string replace -r '[^:]*$' '' -- $current)
        printf '%s%s\t%s\n' $before 1 X $before 2 Y $before 3 Z $before 4 A1 $before 5 A2 $before 6 A3 \
            $before 7 'M, magnitude of 1 to 3' $before 8 'AM, magnitude of 4 to 6'
    else
        set -l before (string replace -r '[^, ]*$' '' -- $current)
        test -z "$before"; and printf '0,\ttime\n'
        for line in (__crv_requests)
            printf '%s%s\n' "$before" $line
        end
    end
end

# What the option before the cursor takes; nothing when it takes none or any text.
function __crv_value
    set -l words (commandline -opc)
    set -l current (commandline -ct)
    string match -qr -- '^-f(m?)[acds]' $words[2..-2]; and return # nothing behind the file of a table is looked at
    string match -q -- '-*' $current; and return
    set -l pasted
    for k in (seq 2 (math (count $words) - 1))
        string match -q -- '-s0*' $words[$k]; and set pasted $words[(math $k + 1)]
    end
    switch $words[-1]
        case '-r*'
            __crv_selection
        case '-p*'
            __crv_charts "$pasted"
        case -f '-fr*' '-fa*' '-fc*' '-fd*' '-fs*'
            __crv_files .req
        case -fm '-fma*' '-fmc*' '-fmd*' '-fms*'
            __crv_files .mad
        case '-fp*'
            __crv_files .pos
        case '-fg*'
            __crv_files .vdr
        case '-s0*'
            __crv_files .ps
    end
end

# Whether the program would take an option here for an option.
function __crv_takes_option
    set -l words (commandline -opc)
    string match -qr -- '^-f(m?)[acds]' $words[2..]; and return 1
    not string match -qr -- '^-([rpxydvin]|tm)' $words[-1]
end

complete -c crv -e
complete -c crv -f -a '(__crv_value)'

# Every option with a word of help, in the order of the manual page.
function __crv_option --argument-names name help
    complete -c crv -n __crv_takes_option -o $name -d $help
end
__crv_option r 'the series to take, 0,38:3'
__crv_option f 'read a request file'
__crv_option fr 'read a request file'
__crv_option fm 'read a Madymo file'
__crv_option fp 'read a column file'
__crv_option fg 'read a frame file'
__crv_option tm 'time window, low:high'
__crv_option fa 'table: title, statistics and data'
__crv_option fc 'table: title and data'
__crv_option fd 'table: data'
__crv_option fs 'table: title and statistics'
__crv_option fma 'Madymo table: title, statistics and data'
__crv_option fmc 'Madymo table: title and data'
__crv_option fmd 'Madymo table: data'
__crv_option fms 'Madymo table: title and statistics'
__crv_option abs 'magnitudes in the table'
__crv_option all 'all statistics in the table'
__crv_option p 'draw the chart, put it last'
__crv_option p1 'draw the chart; the digit is echoed'
__crv_option p2 'draw the chart; the digit is echoed'
__crv_option x 'X range, low:high'
__crv_option y 'Y range, low:high'
__crv_option xl 'X label'
__crv_option yl 'Y label'
__crv_option yla 'Y label'
__crv_option t 'title'
__crv_option t1 'title'
__crv_option t2 'subtitle'
__crv_option s0 'PostScript file to paste'
__crv_option s1 'text 1 for the pasted file'
__crv_option s2 'text 2 for the pasted file'
__crv_option s3 'text 3 for the pasted file'
__crv_option h 'help'
__crv_option e 'examples'
__crv_option s 'status'
__crv_option H 'help for debug levels'
__crv_option '?' 'help for debug levels'
__crv_option B 'bug list'
__crv_option b 'bug list'
__crv_option d 'debug level, to 999'
__crv_option v 'debug level'
__crv_option m 'debug level 24'
__crv_option w 'end without data'
__crv_option u 'add to the usage file'
__crv_option i 'name, echoed'
__crv_option n 'number, echoed'

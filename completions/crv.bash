# completions/crv.bash - what bash offers behind crv.
# shellcheck shell=bash
#
# Names and texts come from the disk and from the line: they are compared and listed, never run.

# Every option with a word of help, in the order of the manual page.
_crv_options=(
    '-r	the series to take, 0,38:3'
    '-f	read a request file'
    '-fr	read a request file'
    '-fm	read a Madymo file'
    '-fp	read a column file'
    '-fg	read a frame file'
    '-tm	time window, low:high'
    '-fa	table: title, statistics and data'
    '-fc	table: title and data'
    '-fd	table: data'
    '-fs	table: title and statistics'
    '-fma	Madymo table: title, statistics and data'
    '-fmc	Madymo table: title and data'
    '-fmd	Madymo table: data'
    '-fms	Madymo table: title and statistics'
    '-abs	magnitudes in the table'
    '-all	all statistics in the table'
    '-p	draw the chart, put it last'
    '-p1	draw the chart; the digit is echoed'
    '-p2	draw the chart; the digit is echoed'
    '-x	X range, low:high'
    '-y	Y range, low:high'
    '-xl	X label'
    '-yl	Y label'
    '-yla	Y label'
    '-t	title'
    '-t1	title'
    '-t2	subtitle'
    '-s0	PostScript file to paste'
    '-s1	text 1 for the pasted file'
    '-s2	text 2 for the pasted file'
    '-s3	text 3 for the pasted file'
    '-h	help'
    '-e	examples'
    '-s	status'
    '-H	help for debug levels'
    '-?	help for debug levels'
    '-B	bug list'
    '-b	bug list'
    '-d	debug level, to 999'
    '-v	debug level'
    '-m	debug level 24'
    '-w	end without data'
    '-u	add to the usage file'
    '-i	name, echoed'
    '-n	number, echoed'
)

# The identifiers in the header of the only request file here, one a line. No more than a megabyte is read.
_crv_requests() {
    local files=() file
    while IFS= read -r file; do
        [[ -f $file && -r $file ]] && files+=("$file")
    done < <(compgen -f -X '!*.req')
    ((${#files[@]} == 1)) || return 0
    LC_ALL=C head -c 1000000 <"${files[0]}" 2>/dev/null | LC_ALL=C awk '
        { gsub(/[,\r]/, " "); $0 = $0 }
        NR == 3 { left = int($1); next }
        NR < 3 { next }
        name { name = 0; next }
        left-- < 1 { exit }
        { name = int($5) != 0 }
        $1 ~ /^[0-9]+$/ && length($1) < 11 && !seen[$1]++ { print $1 ":" }' 2>/dev/null
}

# Takes the line up to the cursor apart as the program will see it, into words; the last is the one to be completed. The
# shell's own words begin behind ':' and '=' too: what stands before the last of them is glued.
_crv_split() {
    local rest=${COMP_LINE:0:COMP_POINT} piece k
    words=()
    glued=
    for ((k = 0; k <= COMP_CWORD; ++k)); do
        piece=${COMP_WORDS[k]}
        if ((k == 0)) || [[ $rest == [[:space:]]* || $piece == [\<\>\;\|\&\(]* || ${words[-1]} == *[\<\>\;\|\&\(] ]]; then
            words+=("$piece")
            glued=
        else
            glued=${words[-1]}
            words[-1]+=$piece
        fi
        rest=${rest#"${rest%%[![:space:]]*}"}
        rest=${rest#"$piece"}
    done
    [[ $piece == [:=]* ]] && glued+=${piece//[^:=]/}
    return 0
}

# Files with the suffix $1, and folders.
_crv_files() {
    local name
    compopt -o filenames 2>/dev/null
    while IFS= read -r name; do
        [[ $name == -* ]] || COMPREPLY+=("$name")
    done < <(compgen -f -X "!*$1" -- "$current"; compgen -d -- "$current")
}

# Names for the chart: the usual one, that of each result file on the line, and the charts that are here.
_crv_charts() {
    local k
    compopt -o filenames 2>/dev/null
    local names=(crv.ps) pasted=
    for ((k = 1; k < ${#words[@]} - 1; ++k)); do
        case ${words[k]} in
        -s0*) pasted=${words[k + 1]} ;;
        [!-]*.req | [!-]*.mad | [!-]*.pos | [!-]*.vdr) names+=("${words[k]%.*}.ps") ;;
        esac
    done
    _crv_files .ps
    local name
    for name in "${names[@]}"; do
        [[ $name == "$current"* && $name != *[\'\"\\\$\`]* ]] && COMPREPLY+=("$name")
    done
    names=("${COMPREPLY[@]}")
    COMPREPLY=()
    local seen=:
    for name in "${names[@]}"; do
        [[ $name == "$pasted" || $seen == *":$name:"* ]] && continue
        seen+=$name:
        COMPREPLY+=("$name")
    done
}

# Behind -r: identifiers, then items of a request, then the words of a condition.
_crv_selection() {
    local before piece=${current##*[, ]} word
    before=${current%"$piece"}
    compopt -o nospace -o nosort 2>/dev/null
    if [[ $current == *=* ]]; then
        before=${current%%=*}=
        compopt +o nospace 2>/dev/null
        for word in max min amax amin; do COMPREPLY+=("$before$word"); done
    elif [[ $piece == *:* ]]; then
        for word in 1 2 3 4 5 6 7 8; do COMPREPLY+=("$before${piece%%:*}:$word"); done
    else
        while IFS= read -r word; do COMPREPLY+=("$before$word"); done < <(
            [[ $before ]] || echo 0,
            _crv_requests
        )
    fi
    local all=("${COMPREPLY[@]}")
    COMPREPLY=()
    for word in "${all[@]}"; do
        [[ $word == "$current"* ]] && COMPREPLY+=("$word")
    done
}

# Options; in a list each with its help.
_crv_list_options() {
    local line lines=()
    compopt -o nosort 2>/dev/null
    for line in "${_crv_options[@]}"; do
        [[ $line == "$current"* ]] && lines+=("$line")
    done
    for line in "${lines[@]}"; do
        if ((${#lines[@]} > 1)) && [[ ${COMP_TYPE-} == @(9|33|63|64) ]]; then
            printf -v line '%-5s %s' "${line%%	*}" "(${line#*	})"
            COMPREPLY+=("$line")
        else
            COMPREPLY+=("${line%%	*}")
        fi
    done
}

_crv_offer() {
    local current=${words[-1]#[\"\']} before=${words[-2]}
    local k
    for ((k = 1; k < ${#words[@]} - 2; ++k)); do # nothing behind the file of a table is looked at
        [[ ${words[k]} == -f[acds]* || ${words[k]} == -fm[acds]* ]] && return
    done
    case $before in
    *[\<\>]) compopt -o filenames 2>/dev/null && mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
    -r*) _crv_selection ;;
    -p*) [[ $current == -* ]] || _crv_charts ;;
    -f[acds]*) _crv_files .req ;;
    -fm[acds]*) _crv_files .mad ;;
    -tm* | -x* | -y* | -d* | -v* | -i* | -n*) ;;
    *)
        if [[ $current == -* ]]; then
            _crv_list_options
            return
        fi
        case $before in
        -f | -fr*) _crv_files .req ;;
        -fm) _crv_files .mad ;;
        -fp*) _crv_files .pos ;;
        -fg*) _crv_files .vdr ;;
        -s0*) _crv_files .ps ;;
        -f* | -s[123]* | -t | -t[12]* | -w*) ;;
        *) _crv_list_options ;;
        esac
        ;;
    esac
}

_crv() {
    local words glued k
    COMPREPLY=()
    _crv_split
    _crv_offer
    for k in "${!COMPREPLY[@]}"; do
        COMPREPLY[k]=${COMPREPLY[k]#"$glued"}
    done
}

complete -F _crv crv

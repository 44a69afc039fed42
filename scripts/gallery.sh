#!/usr/bin/env bash
# Draws the pictures of the gallery and writes the page that shows them with their commands.
#
#   scripts/gallery.sh                  builds the program, writes docs/gallery.md and docs/gallery/
#   scripts/gallery.sh DIRECTORY CRV    the same into another directory, with a given program
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
if [ $# -eq 0 ]; then
    # shellcheck source=scripts/lib.sh
    . "$here/scripts/lib.sh"
    require_tier ci
    cmake --preset release >/dev/null
    cmake --build --preset release --parallel "$(nproc)" --target crv crv-html | tail -n 1
    set -- "$here/docs" "$here/build/release/crv"
fi
mkdir -p "$1/gallery"
docs=$(cd "$1" && pwd)
crv=$(realpath "$2")

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
mkdir "$scratch/bin"
ln -s "$crv" "$scratch/bin/crv"
ln -s "$(dirname "$crv")/crv-html" "$scratch/bin/crv-html"
export PATH="$scratch/bin:$here/companions:$PATH"
export CRV_PRINTCHAIN="crv2png -r 80"
page=$docs/gallery.md

# picture NAME HEADING TEXT <<commands: runs the commands among the examples and shows them with the
# crv.png that they leave. A test compares the checksum of the chart with that of a new one.
picture() {
    local name=$1 commands sum
    commands=$(cat)
    rm -rf "$scratch/run"
    cp -r "$here/examples" "$scratch/run"
    if ! (cd "$scratch/run" && sh -c "$commands" >log 2>&1
          grep -q 'fini, ' log && mv crv.png "$docs/gallery/$name.png"); then
        echo "gallery.sh: no picture $name" >&2
        cat "$scratch/run/log" >&2
        exit 1
    fi
    sum=$(sha256sum <"$scratch/run/crv.ps")
    # shellcheck disable=SC2016  # these backticks are for the page
    printf '\n## %s\n\n%s\n\n```sh\n%s\n```\n\n![%s](gallery/%s.png)\n<!-- crv.ps: %s -->\n' \
        "$2" "$3" "$commands" "$2" "$name" "${sum%% *}" >>"$page"
}

# page_picture NAME HEADING TEXT SCHEME KEY... <<commands: shows the page crv.html that the commands
# leave, after the keys, in a light or dark browser.
page_picture() {
    local name=$1 heading=$2 text=$3 commands
    shift 3
    commands=$(cat)
    rm -rf "$scratch/run"
    cp -r "$here/examples" "$scratch/run"
    if ! (cd "$scratch/run" && sh -c "$commands" >log 2>&1); then
        echo "gallery.sh: no page $name" >&2
        cat "$scratch/run/log" >&2
        exit 1
    fi
    "$here/scripts/gallery_page.py" "$scratch/run/crv.html" "$docs/gallery/$name.png" "$@"
    # shellcheck disable=SC2016  # these backticks are for the page
    printf '\n## %s\n\n%s\n\n```sh\n%s\n```\n\n![%s](gallery/%s.png)\n' \
        "$heading" "$text" "$commands" "$heading" "$name" >>"$page"
}

cat >"$page" <<'END'
# Gallery

Run the commands in the directory [examples](../examples), with `CRV_PRINTCHAIN="crv2png -r 80"` in
the environment: `crv` writes `crv.ps`, and `crv2png` converts it to `crv.png`. `scripts/gallery.sh`
makes the pictures and this page.
END

picture quarter_car "Several series over time" \
    "A car body, its wheel and the road below. The first curve is black; its legend sample is red." \
    <<'END'
crv -t "Quarter car over a bump" -r 0,38:3,52:3,70:2 -f run1.req -p
END

picture loop "One series over another" \
    "The first series is the X axis: here the travel of the spring, with the force as the curve." \
    <<'END'
crv -t "Spring and damper" -r 70:3,61:3 -f run1.req -xl "Travel (mm)" -yl "Force (N)" -p
END

picture zoom "A closer look" \
    "\`-x\` and \`-y\` set the ranges; by default they are those of the data." <<'END'
crv -t "Tyre and suspension" -t2 "Forces in N" \
    -r 0,62:3,61:3 -f run1.req -x 0.5:1 -y -3000:3000 -yl Tyre -yl2 Suspension -p
END

picture sled "A Madymo file" \
    "Requests are selected by position in the file: item 2 of sled, chest and head." <<'END'
crv -t "Sled test" -t2 "Accelerations in m/s2" \
    -r 0,1:2,2:2,3:2 -fm sled.mad -y -400:200 -yl1 Sled -yl2 Chest -yl3 Head -p
END

picture styles "All line styles" \
    "A chart has five curves, each in its own style. \
Points outside the ranges are left out and their
neighbors joined; a warning says how many." <<'END'
crv -t "Along x, and the magnitude" -t2 "Accelerations in m/s2" \
    -r 0,1:2,2:2,3:2,1:1,2:1 -fm sled.mad -y -400:400 \
    -yl1 "Sled, x" -yl2 "Chest, x" -yl3 "Head, x" -yl4 "Sled, magnitude" -yl5 "Chest, magnitude" -p
END

picture press "A column file" \
    "Columns of a table, with labels for the axis and the legend." <<'END'
crv -t "A press closes, holds and opens" -r 1,2,3 -fp sensors.pos \
    -xl "Time (s)" -yl "Force (kN)" -yl2 "Travel (mm)" -p
END

picture bumper "A frame file" \
    "The file contains its title, labels and ranges." <<'END'
crv -r 0 -fg bumper.vdr -p
END

picture story "A page of your own" \
    "\`-s0\` pastes a PostScript file, which must then draw legend, subtitle and X label.
\`-s1\` to \`-s3\` are strings that it can show." <<'END'
printf '%s\n' 'gsave HelvNorm setfont' \
    '480 490 [crv_story_1 crv_story_2 crv_story_3] BoxTextL' \
    '480 420 crv_Legend grestore' > box.ps
crv -t "Quarter car over a bump" -r 0,38:3,52:3 -f run1.req -yl Body -yl2 Wheel \
    -s0 box.ps -s1 "Model: quarter car" -s2 "Speed: 5 m/s" -s3 "Bump: 80 mm" -p
END

page_picture page "A page" \
    "\`crv-html\` writes a page to zoom and to read values in a browser. Here the pointer is at 0.6 s." \
    light <<'END'
crv-html -t "Quarter car over a bump" -r 0,38:3,52:3,61:3 -f run1.req
END

page_picture page_panels "A panel for each series" \
    "The key \`p\` gives each series its own panel. A page is dark where the system is." \
    dark p <<'END'
crv-html -t "Quarter car over a bump" -r 0,38:3,52:3,61:3 -f run1.req
END

#!/usr/bin/env bash
# Runs one example program on the shipped samples in a scratch folder and checks what it did:
# its output against the files in EXPECTED_DIR byte for byte, the links between the pages that
# convert writes, the catalogue that catalog reads back in a second run, the files that helper
# captures, and the exit status and message of every failure the example is meant to report.
#
# usage: check_example.sh convert|catalog|helper PROGRAM SAMPLES_DIR EXPECTED_DIR WORK_DIR
set -u
if [ $# -ne 5 ] && [ $# -ne 6 ]; then
    echo "usage: $0 convert|catalog|helper PROGRAM SAMPLES_DIR EXPECTED_DIR WORK_DIR [posix|windows]" >&2
    exit 2
fi
platform=${6:-posix}
example=$1
program=$(cd "$(dirname "$2")" && pwd)/$(basename "$2")
samples=$(cd "$3" && pwd)
expected=$(cd "$4" && pwd)
work=$5

rm -rf "$work"
mkdir -p "$work/config"
cd "$work" || exit 1
work=$(pwd)
# Keep the user's own options files out of the runs.
export XDG_CONFIG_HOME="$work/config"

failures=0
fail() {
    echo "FAIL ($example): $*" >&2
    failures=$((failures + 1))
}

# run STATUS ARGS...: runs the example with stdout into out.txt and stderr into err.txt, and
# fails unless it exits with STATUS.
run() {
    local want=$1
    shift
    "$program" "$@" >out.txt 2>err.txt
    local got=$?
    if [ "$got" != "$want" ]; then
        fail "'$example $*' exited with $got, not $want; its error output:"
        cat err.txt >&2
    fi
}

# same EXPECTED_FILE ACTUAL_FILE: byte for byte.
same() {
    if [ ! -f "$2" ]; then
        fail "$2 was not written"
    elif ! cmp -s "$1" "$2"; then
        fail "$2 differs from $1:"
        diff -u "$1" "$2" | cat -A | head -40 >&2
    fi
}

# contains FILE TEXT
contains() {
    grep -qF -- "$2" "$1" || fail "$1 does not contain \"$2\"; it holds: $(cat "$1")"
}

# The file that the relative link href in page leads to ("" when it leads nowhere).
link_target() {
    local page=$1 href=$2
    local decoded
    decoded=$(printf '%b' "${href//%/\\x}")
    realpath -e -- "$(dirname "$page")/$decoded" 2>/dev/null
}

# Every page holds exactly one link, and it leads to the other page.
check_links() {
    local index=$1 text=$2 page other href target
    for page in "$index" "$text"; do
        [ "$page" = "$index" ] && other=$text || other=$index
        mapfile -t hrefs < <(grep -o 'href="[^"]*"' "$page" | sed 's/^href="//; s/"$//')
        if [ "${#hrefs[@]}" -ne 1 ]; then
            fail "$page holds ${#hrefs[@]} links, not 1"
            continue
        fi
        href=${hrefs[0]}
        case $href in
            /* | *://*) fail "the link $href in $page is not relative" ;;
        esac
        target=$(link_target "$page" "$href")
        if [ "$target" != "$(realpath -e -- "$other")" ]; then
            fail "the link $href in $page leads to '${target:-nothing}', not to $other"
        fi
    done
}

check_convert() {
    # A name with a blank, reached through a variable reference that the program expands.
    mkdir -p input
    cp "$samples/notes.txt" "input/Release Notes.txt"
    export EXAMPLE_INPUT="$work/input"
    run 0 -in '%EXAMPLE_INPUT%/Release Notes.txt' -out site
    same "$expected/convert.out" out.txt
    [ -s err.txt ] && fail "convert wrote to its error output: $(cat err.txt)"
    same "$expected/convert-index.html" site/index.html
    same "$expected/convert-text.html" "site/text/Release Notes.html"
    check_links site/index.html "site/text/Release Notes.html"

    # Without -out the output folder comes from the options file in the configuration folder.
    # The options file in the configuration folder. (Wine sets APPDATA itself, so a Windows
    # build under Wine cannot be pointed at a scratch folder.)
    if [ "$platform" = posix ]; then
        printf 'outdir=%s\n' "$work/from-options" >config/convert.ini
        run 0 -in "$work/input/Release Notes.txt"
        same "$expected/convert-index.html" from-options/index.html
    fi

    # Refused: a type it cannot convert, a missing file, bad usage.
    # A logo is copied with its time into img/ and shown on the index page; the new site
    # replaces the old one as a whole, and no work folder is left beside it.
    run 0 -in "$work/input/Release Notes.txt" -out site -logo "$samples/types/logo.gif"
    same "$samples/types/logo.gif" site/img/logo.gif
    [ "$(stat -c %Y site/img/logo.gif)" = "$(stat -c %Y "$samples/types/logo.gif")" ] ||
        fail "site/img/logo.gif lost its modification time"
    contains site/index.html '<p><img src="img/logo.gif" alt=""></p>'
    same "$expected/convert-text.html" "site/text/Release Notes.html"
    [ -z "$(find . -maxdepth 1 -name '.convert-*')" ] || fail "a work folder was left behind"
    run 1 -in "$work/input/Release Notes.txt" -out site -logo "$work/no-such.gif"
    contains err.txt "ERROR: Cannot copy"
    contains site/index.html '<p><img src="img/logo.gif" alt=""></p>'  # the old site stays
    [ -z "$(find . -maxdepth 1 -name '.convert-*')" ] || fail "a failed run left its work folder"

    run 1 -in "$samples/types/logo.gif" -out refused
    contains err.txt "ERROR: logo.gif is image/gif, not plain text."
    [ -e refused/index.html ] && fail "a refused input still produced refused/index.html"
    run 1 -in "$work/input/missing.txt" -out missing
    contains err.txt "ERROR: Cannot open"
    run 2 -out site
    contains err.txt "Option -in is required."
    contains err.txt "-in FILE"
}

check_catalog() {
    run 0 -list "$samples/files.txt" -out files.vor
    same "$expected/catalog.out" out.txt
    # A second process reads the file and prints the same catalogue (without the line that
    # reports the write).
    tail -n +2 "$expected/catalog.out" >read-expected.txt
    run 0 -in files.vor
    same read-expected.txt out.txt

    # A file cut short, and a persistent object file of other content, are refused.
    head -c $(($(wc -c <files.vor) / 2)) files.vor >half.vor
    run 1 -in half.vor
    contains err.txt "ERROR: half.vor is not a complete catalogue."
    run 1 -in "$samples/catalog.vor"
    contains err.txt "is not a complete catalogue."
    run 2 -list "$samples/files.txt"
}

check_helper() {
    run 0 "$samples/files.txt"
    same "$expected/helper.out" out.txt
    same "$expected/helper.err" err.txt
    # What wc wrote, captured into a file: the count first. The text-mode file lost the
    # carriage returns that printf wrote.
    read -r count _ <wc.txt
    [ "$count" = "$(wc -l <"$samples/files.txt")" ] || fail "wc.txt holds '$(cat wc.txt)'"
    printf 'one\ntwo\n' >crlf-expected.txt
    same crlf-expected.txt crlf.txt

    run 1 "$work/no-such-list.txt"
    contains err.txt "ERROR: sort \"$work/no-such-list.txt\" ended with status"
    run 2
}

case $example in
    convert) check_convert ;;
    catalog) check_catalog ;;
    helper) check_helper ;;
    *)
        echo "unknown example $example" >&2
        exit 2
        ;;
esac

if [ "$failures" -ne 0 ]; then
    echo "$example: $failures check(s) failed (work folder $work)" >&2
    exit 1
fi
echo "$example: all checks passed"

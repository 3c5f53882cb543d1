#!/usr/bin/env bash
# Runs the vfc tool on the shipped samples and checks what it prints and how it exits.
# usage: vfc_tool_test.sh VFC SAMPLES_DIR
set -u
vfc=$1
samples=$2
failures=0

# expect NAME STATUS EXPECTED_OUTPUT -- COMMAND...
expect() {
    local name=$1 status=$2 want=$3
    shift 4
    local got rc
    got=$("$@" 2>/dev/null)
    rc=$?
    if [ "$rc" != "$status" ] || [ "$got" != "$want" ]; then
        echo "FAIL $name: exit $rc (want $status)"
        diff <(printf '%s\n' "$want") <(printf '%s\n' "$got") | sed 's/^/    /'
        failures=$((failures + 1))
    fi
}

cd "$samples" || exit 1

expect "env references" 0 "paths.txt:2:1:%VORLANDIXHOME%
paths.txt:4:1:\$HOME
paths.txt:11:1:\$TMPDIR
paths.txt:11:17:%USERNAME%" -- "$vfc" grep -o '%[^%]+%|\$[^$/:\\]+' paths.txt

expect "first match column" 0 "paths.txt:6:1:http://www.example.com:8080/docs/index.html#install
paths.txt:7:1:https://docs.example.org/search?q=path%20algebra&lang=en
paths.txt:8:1:file:///home/writer/drafts/Release%20Notes.html
notes.txt:7:4:See http://www.example.com/notes for the full list." \
    -- "$vfc" grep '^[a-z]+://|[ "][a-z]+://' paths.txt notes.txt

expect "semicolon list" 0 "files.txt:1:1:index.html
files.txt:2:1:index.htm
files.txt:8:1:toc.html" -- "$vfc" grep -list '*.htm;*.html' files.txt

expect "wildcard" 0 "files.txt:1:1:index.html
files.txt:2:1:index.htm" -- "$vfc" grep -glob 'index.*' files.txt

expect "no match" 1 "" -- "$vfc" grep 'no such text' notes.txt
expect "unreadable file" 1 "" -- "$vfc" grep 'x' does-not-exist.txt
expect "missing file argument" 2 "" -- "$vfc" grep 'x'
expect "unknown option" 2 "" -- "$vfc" grep -z 'x' notes.txt
expect "stdin" 0 "-:2:2:abba" -- bash -c "printf 'xx\r\nabba\r\n' | '$vfc' grep 'b+' -"

expect "urlencode" 0 "a%20b%2fc:d%7e
%25" -- "$vfc" urlencode 'a b/c:d~' '%'
expect "urldecode" 0 "a b/%00
%zz" -- "$vfc" urldecode 'a%20b%2F%00' '%zz'
expect "urlencode without text" 2 "" -- "$vfc" urlencode

help=$("$vfc" -help)
for sub in grep urlencode urldecode; do
    grep -q "^  $sub " <<<"$help" || { echo "FAIL vfc -help does not list $sub"; failures=$((failures + 1)); }
    "$vfc" $sub -help | grep -q "^usage: vfc $sub " ||
        { echo "FAIL vfc $sub -help"; failures=$((failures + 1)); }
done
expect "unknown subcommand" 2 "" -- "$vfc" frobnicate

[ "$failures" = 0 ] && echo "vfc tool: all checks passed"
exit $((failures > 0))

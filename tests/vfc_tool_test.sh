#!/usr/bin/env bash
# Runs the vfc tool on the shipped samples and checks what it prints and how it exits.
# usage: vfc_tool_test.sh VFC SAMPLES_DIR [posix|windows] [OPEN_CHILD]
# PLATFORM is the one the tool was built for (posix by default); a Windows tool runs under Wine
# through VFC, a script that gives its output POSIX line ends. The answers are the same on both
# except where the documented behaviour differs: the host notation (UNIX or DOS), the product
# directory's form, the user and machine information, file kinds and the programs to run.
set -u
vfc=$1
samples=$2
platform=${3:-posix}
# The recording child of the library's tests, which stands in for the browser and the mail
# program of "vfc open"; without it those checks are left out.
open_child=${4:-}
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

expect "path to URL" 0 "file:///C:/Docs/Release%20Notes.html
file://///server/share/a%23b" \
    -- "$vfc" path -from dos -to url+ 'C:/Docs/Release Notes.html' '\\server/share/a#b'
expect "path components" 0 "//h/Docs
  scheme:http
  host:h
  port:8080
  name:Docs
  (directory)" -- "$vfc" path -from url -to unix -list 'http://h:8080/Docs/'
expect "path to MIF and Mac" 0 "<u\\><c\\>img<c\\>a.gif
::img:a.gif" -- bash -c "'$vfc' path -from unix -to mifstring ../img/a.gif && '$vfc' path -from 3 -to 2 ../img/a.gif"
expect "path missing -to" 2 "" -- "$vfc" path -from dos C:/x
expect "path bad notation" 2 "" -- "$vfc" path -from dos -to klingon C:/x
expect "path help" 0 "	-from NOTATION               notation the PATHs are written in (required)" \
    -- bash -c "'$vfc' path -help | grep -e '-from'"
expect "rel" 0 "../d/e" -- "$vfc" rel -notation unix /a/b/c /a/b/d/e
expect "rel in DOS notation" 0 "../d/e" -- "$vfc" rel -notation dos C:/a/b/c C:/a/b/d/e
# The host notation: DOS on Windows (a drive letter), UNIX on POSIX (a relative name "C:").
if [ "$platform" = windows ]; then
    expect "host notation" 0 "file:///C:/Program Files/x.htm
../d/e
C:/x" -- bash -c "'$vfc' path -from host -to url 'C:/Program Files/x.htm' &&
                  '$vfc' rel C:/a/b/c C:/a/b/d/e && '$vfc' resolve C:/a/b ../../../x"
else
    expect "host notation" 0 "C:/Program Files/x.htm
../d/e
/x" -- bash -c "'$vfc' path -from host -to url 'C:/Program Files/x.htm' &&
                '$vfc' rel /a/b/c /a/b/d/e && '$vfc' resolve /a/b ../../../x"
fi
expect "rel of URLs" 0 "../c/x.html" -- "$vfc" rel -notation url http://h/a/b/ http://h/a/c/x.html
expect "rel needs two paths" 2 "" -- "$vfc" rel /a
expect "resolve" 0 "/x
http://h:81/x" -- bash -c "'$vfc' resolve -notation unix /a/b ../../../x && '$vfc' resolve -notation 15 http://h:81/a/b /x"
expect "resolve unknown option" 2 "" -- "$vfc" resolve -z /a b
# URLs as browsers resolve links: the first URL against each of the others.
expect "resolve -rfc3986" 0 "http://a/b/c/g
http://a/b/g
http://a/b/c/d;p?y
http://g
http:g" -- "$vfc" resolve -rfc3986 'http://a/b/c/d;p?q' g ../g '?y' //g http:g
expect "rel -rfc3986" 0 "g
/g
#s

https://a/b/c/g" -- "$vfc" rel -rfc3986 'http://a/b/c/d;p?q' http://a/b/c/g http://a/g \
    'http://a/b/c/d;p?q#s' 'http://a/b/c/d;p?q' https://a/b/c/g
expect "rel -rfc3986 of no URL" 1 "g" -- "$vfc" rel -rfc3986 http://a/b/c x/y http://a/b/g
expect "rel -rfc3986 names the text" 1 'ERROR: vfc rel: not a URL: "x/y"' \
    -- bash -c "'$vfc' rel -rfc3986 http://a/b/c x/y 2>&1 >/dev/null"
expect "-rfc3986 and -notation" 2 "" -- "$vfc" resolve -rfc3986 -notation url http://a/ b
expect "rel -rfc3986 needs two URLs" 2 "" -- "$vfc" rel -rfc3986 http://a/

tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
printf ':\n263\n\\[\n2\n"a\\""\n\\]\nN\n:\n515\n\\[\n2\n:\n259\n\\[\n7\n\\]\n:\n263\n\\[\n0\n""\n\\]\n\\]\n' >"$tmp/small.vor"
expect "dump" 0 'vString (263) "a\""
nil
vSlist (515)
  2
  vInt (259) 7
  vString (263) ""' -- "$vfc" dump "$tmp/small.vor"
printf ':\n263\n\\[\n2\n"ab"\n' >"$tmp/cut.vor"
expect "dump of a cut file" 1 "" -- "$vfc" dump "$tmp/cut.vor"
printf ':\n9999\n\\[\n\\]\n' >"$tmp/unknown.vor"
expect "dump of an unknown class" 1 "unknown class (9999)" -- "$vfc" dump "$tmp/unknown.vor"
expect "dump without file" 2 "" -- "$vfc" dump
# Hostile files: a reference to an element the set refused, and lists of references nested into
# 10^8 strings (426 bytes). The first reads, the second fails at once in little memory.
printf ':\n514\n\\[\n3\n:\n263\n\\[\n1\n"a"\n\\]\n:\n263\n\\[\n1\n"a"\n\\]\n@\n2\n\\]\n' \
    >"$tmp/refused.vor"
expect "dump of a reference to a refused element" 0 "vSet (514)
  3
  vString (263) \"a\"
  vString (263) \"a\"
  @2 (the object read before under this ordinal)" -- "$vfc" dump "$tmp/refused.vor"
{
    for level in 1 2 3 4 5 6 7 8; do printf ':\n515\n\\[\n10\n'; done
    printf ':\n263\n\\[\n1\n"x"\n\\]\n'
    for ordinal in 8 7 6 5 4 3 2 1; do
        for i in 1 2 3 4 5 6 7 8 9; do printf '@\n%d\n' "$ordinal"; done
        printf '\\]\n'
    done
} >"$tmp/nested.vor"
expect "dump of references nested into 10^8 objects" 1 "" \
    -- bash -c "timeout 20 '$vfc' dump '$tmp/nested.vor' >/dev/null"
expect "dump of a missing file" 1 "" -- "$vfc" dump "$tmp/none.vor"
catalog=$("$vfc" dump catalog.vor)
for line in 'vString (263) "vorlandix-catalog"' 'vHashvStringvString (550)' \
            '  vString (263) "Ann \"Ed\" Writer"' '    vString (263) "reference.mif"' \
            'vPair (513)' '  vSlist (515)' 'vFloat (274) 1.25' 'vInt (259) -42'; do
    grep -qxF "$line" <<<"$catalog" ||
        { echo "FAIL dump of catalog.vor lacks: $line"; failures=$((failures + 1)); }
done

# Content types of the shipped samples, one of each detected kind.
expect "type of every sample" 0 "types/catalog.xml: text/xml
types/chapter.fm: application/vnd.framemaker
types/chapter.mif: application/vnd.mif
types/data.bin: binary
types/doctype.tmpl: text/html
types/figure.ps: text/postscript
types/fileset.xml: vorlandix-ndt-xml
types/guide.book: application/vnd.framemakerbook
types/guide.book.mif: application/vnd.mifbook
types/icon.png: image/png
types/latin1-letter: text/plain
types/logo.gif: image/gif
types/make-samples.py: text/plain
types/page.html: text/html
types/photo.jpg: image/jpeg
types/project.ndt: vorlandix-ndt-80
types/readme: text/plain
types/settings.ini: text/plain" -- "$vfc" type types/catalog.xml types/chapter.fm types/chapter.mif \
    types/data.bin types/doctype.tmpl types/figure.ps types/fileset.xml types/guide.book \
    types/guide.book.mif types/icon.png types/latin1-letter types/logo.gif types/make-samples.py \
    types/page.html types/photo.jpg types/project.ndt types/readme types/settings.ini
expect "type of a directory and a missing file" 1 "types: directory" -- "$vfc" type types types/none
expect "type without files" 2 "" -- "$vfc" type
# FIFOs, sockets and devices are named by their kind at once, never opened: nobody waits for a
# writer that does not come, and a writer's data stays for the reader it was meant for. Windows
# has devices (NUL, in any folder) but no FIFOs or sockets in its file system.
if [ "$platform" = windows ]; then
    expect "type of a device" 0 "NUL: inode/chardevice
types/nul.txt: inode/chardevice" -- timeout 10 "$vfc" type NUL types/nul.txt
else
mkfifo "$tmp/pipe"
expect "type of a FIFO without a writer, a device" 0 "$tmp/pipe: inode/fifo
/dev/null: inode/chardevice" -- timeout 10 "$vfc" type "$tmp/pipe" /dev/null
(printf 'kept' >"$tmp/pipe") &
writer=$!
expect "type of a FIFO with a writer" 0 "$tmp/pipe: inode/fifo" \
    -- timeout 10 "$vfc" type "$tmp/pipe"
expect "the writer's data stays in the FIFO" 0 "kept" -- timeout 10 cat "$tmp/pipe"
wait "$writer"
if command -v python3 >/dev/null; then
    python3 -c 'import socket, sys; socket.socket(socket.AF_UNIX).bind(sys.argv[1])' "$tmp/sock"
    expect "type of a socket" 0 "$tmp/sock: inode/socket" -- timeout 10 "$vfc" type "$tmp/sock"
fi
fi

expect "ini" 0 "(before any section)
  language = en
[Links]
  base = http://www.example.com/docs/
  query = c
[Output]
  dir = out/html
  stylesheet = css/site.css" -- "$vfc" ini types/settings.ini
expect "ini of a missing file" 1 "" -- "$vfc" ini types/none.ini
expect "ini of binary garbage" 0 "" -- "$vfc" ini types/data.bin

expect "match" 0 "index.htm
toc.HTM" -- "$vfc" match -i '*.htm;a?c' index.htm index.html toc.HTM.bak toc.HTM abc
expect "match with case" 0 "index.htm" -- "$vfc" match '*.htm' index.htm toc.HTM
expect "match literal ?" 0 "a?c" -- "$vfc" match 'a?c;a+b' abc a?c aab
expect "match nothing" 1 "" -- "$vfc" match '*.gif' index.htm
expect "match without names" 2 "" -- "$vfc" match '*.htm'

# find: a scratch tree walked in sorted order (upper case before lower, a folder's contents
# right after it), filtered by name lists and depth. Paths print as DIR/PATH as given.
mkdir -p "$tmp/tree/a/deep" "$tmp/tree/CVS" "$tmp/tree/-d"
for f in B.htm a/x.htm a/deep/y.html a.txt CVS/z.htm -d/f; do printf 'x' >"$tmp/tree/$f"; done
expect "find everything" 0 "$tmp/tree/-d/f
$tmp/tree/B.htm
$tmp/tree/CVS/z.htm
$tmp/tree/a/deep/y.html
$tmp/tree/a/x.htm
$tmp/tree/a.txt" -- "$vfc" find "$tmp/tree"
expect "find with lists" 0 "tree/B.htm
tree/a/deep/y.html
tree/a/x.htm" -- bash -c "cd '$tmp' && '$vfc' find -include '*.htm;;*.html' -exclude 'CVS;-*' tree"
expect "find -depth -dirs" 0 "tree/-d
tree/B.htm
tree/CVS
tree/a
tree/a.txt" -- bash -c "cd '$tmp' && '$vfc' find tree -depth 0 -dirs"
expect "find -depth 1" 0 "tree/CVS
tree/CVS/z.htm
tree/a
tree/a/deep
tree/a/x.htm" -- bash -c "cd '$tmp' && '$vfc' find -dirs -depth 1 -exclude '*.txt;-d;B*' tree/"
expect "find nothing" 1 "" -- "$vfc" find -include '*.gif' "$tmp/tree"
expect "find in a missing folder" 1 "ERROR: vfc find: cannot read \"$tmp/none\"" \
    -- bash -c "'$vfc' find '$tmp/none' 2>&1"
expect "find in a file" 1 "" -- "$vfc" find "$tmp/tree/a.txt"
expect "find without DIR" 2 "" -- "$vfc" find -dirs
expect "find of two DIRs" 2 "" -- "$vfc" find "$tmp/tree" "$tmp/tree/a"
expect "find -depth of no number" 2 "" -- "$vfc" find -depth 1x "$tmp/tree"
expect "find after --" 0 "-d/f" -- bash -c "cd '$tmp/tree' && '$vfc' find -- -d"
# A link back up is listed with -dirs but never entered. Made by the host, it is a reparse point
# to a Windows program under Wine.
ln -s .. "$tmp/tree/a/up"
expect "find survives a link loop" 0 "tree/a/deep
tree/a/up" -- bash -c "cd '$tmp' && timeout 20 '$vfc' find -dirs -include 'deep;up' tree"

# The application object: what it gathered, variable expansion, errors through its log. On
# Windows the owner and organisation come from the registry, where vfc run puts them first.
if [ "$platform" = windows ]; then
    key='HKLM\Software\Microsoft\Windows NT\CurrentVersion'
    "$vfc" run reg add "$key" /v RegisteredOwner /t REG_SZ /d "Ann Writer" /f >/dev/null &&
        "$vfc" run reg add "$key" /v RegisteredOrganization /t REG_SZ /d "Example Press" /f \
            >/dev/null || { echo "FAIL reg add through vfc run"; failures=$((failures + 1)); }
    # Wine sets USERNAME, HOMEDRIVE and HOMEPATH itself: the tool must show what they hold.
    info=$(env VORLANDIXHOME=/opt/vx "$vfc" info)
    login=$("$vfc" expand %USERNAME%) home=$("$vfc" expand %HOMEDRIVE%%HOMEPATH%)
    wants=("product directory: \opt\vx" "user: $login" "user directory: $home"
           "user name: Ann Writer" "organization: Example Press" "platform: win32"
           "operating system: winnt" "language: en")
    product='\opt\vx'
else
    info=$(env USER=writer LOGNAME=writer ORGANIZATION="Example Press" LC_ALL= LC_MESSAGES= \
        LANG=de_DE.UTF-8 VORLANDIXHOME=/opt/vx "$vfc" info)
    wants=("product directory: /opt/vx" "user: writer" "organization: Example Press"
           "language: de" "platform: posix" "operating system: linux")
    product=/opt/vx
fi
for want in "product: vfc vfc/" "${wants[@]}"; do
    grep -qF "$want" <<<"$info" || { echo "FAIL vfc info lacks: $want"; failures=$((failures + 1)); }
done
# The product directory in the host's form.
expect "expand" 0 "/home/w/docs/a b
/home/w/docs/x
%NOPE%
/home/w/docs:y
$product/bin
%%" -- env DOCS=/home/w/docs VORLANDIXHOME=/opt/vx "$vfc" expand '%DOCS%/a b' '$DOCS/x' '%NOPE%' \
    '$DOCS:y' '%VORLANDIXHOME%/bin' '%%'
expect "expand without text" 2 "" -- "$vfc" expand
expect "errors go through the log" 1 'ERROR: vfc type: cannot read "types/none"' \
    -- bash -c "'$vfc' type types/none 2>&1 >/dev/null"
expect "usage errors too" 2 'ERROR: vfc ini: expected one FILE
       (see "vfc ini -help")' -- bash -c "'$vfc' ini a b 2>&1 >/dev/null"

# Progress: drawn on a terminal, nothing when standard error is not one. (A program under Wine
# writes to Wine's console, never to the terminal script gives it.)
if [ "$platform" = posix ]; then
    tty_out=$(script -qec "'$vfc' type types/readme types/logo.gif >/dev/null" /dev/null)
    grep -q '\[####################\] 100%' <<<"$tty_out" ||
        { echo "FAIL no progress bar on a terminal: $tty_out"; failures=$((failures + 1)); }
fi
plain_err=$("$vfc" type types/readme types/logo.gif 2>&1 >/dev/null)
[ -z "$plain_err" ] || { echo "FAIL progress drawn without a terminal: $plain_err"; failures=$((failures + 1)); }

# Child processes: captured output, the child's exit code, start failures through the log. The
# programs: the shell and printf on POSIX, cmd on Windows (whose echo ends lines with CR LF).
# A text-mode file on Windows gets CR LF from the C runtime again, after vfc took the CRs out.
if [ "$platform" = windows ]; then
    # cmd's CR LF reaches the console unchanged (which VFC shows with POSIX line ends); the
    # bytes themselves are checked through -out -binary below.
    expect "run captures" 0 "hello world" -- "$vfc" run cmd /c echo hello world
    expect "run exit code" 7 "" -- "$vfc" run cmd /c exit 7
    crlf=(cmd /c echo a) text_want='a\r\n'
else
    expect "run captures" 0 "hello world" -- "$vfc" run sh -c 'echo hello world'
    expect "run keeps CR LF in its output" 0 "a \\r \\n b" -- bash -c "'$vfc' run printf 'a\\r\\nb' | od -An -c | tr -s ' ' | sed 's/^ //'"
    expect "run exit code" 7 "" -- "$vfc" run sh -c 'exit 7'
    crlf=(printf 'a\r\n') text_want='a\n'
fi
"$vfc" run -out "$tmp/run.txt" "${crlf[@]}" &&
    cmp -s "$tmp/run.txt" <(printf "$text_want") ||
    { echo "FAIL run -out: CRs not removed"; failures=$((failures + 1)); }
"$vfc" run -out "$tmp/run.bin" -binary "${crlf[@]}" &&
    cmp -s "$tmp/run.bin" <(printf 'a\r\n') ||
    { echo "FAIL run -out -binary changed the bytes"; failures=$((failures + 1)); }
expect "run of a missing program" 1 "ERROR: The application was unable to execute the command
       no-such-program-vfc --x
       because the specified file or path was not found." \
    -- bash -c "'$vfc' run no-such-program-vfc --x 2>&1 >/dev/null"
expect "run without command" 2 "" -- "$vfc" run
expect "run -out without file" 2 "" -- "$vfc" run -out

# open: the recording child is the browser and the mail program (named by BROWSER and found as
# xdg-email in PATH on POSIX, registered for "http" and "mailto" on Windows). It writes the name
# it was started by and its arguments to $VFC_OPEN_RECORD; recorded prints that and removes it.
if [ -n "$open_child" ]; then
    export VFC_OPEN_RECORD=$tmp/open.rec
    recorded() {
        for _ in $(seq 300); do [ -f "$VFC_OPEN_RECORD" ] && break; sleep 0.1; done
        cat "$VFC_OPEN_RECORD" 2>/dev/null
        rm -f "$VFC_OPEN_RECORD"
    }
    page=$samples/types/page.html
    if [ "$platform" = windows ]; then
        # Registered for the current user through vfc run. Should that fail, the system's own
        # programs would be started: the checks of open end there.
        classes='HKCU\Software\Classes'
        register() {
            local key="$classes\\$1\\shell\\open\\command"
            "$vfc" run reg add "$key" /ve /d "$2" /f >/dev/null &&
                "$vfc" run reg query "$key" /ve | grep -qF "$2" ||
                { echo "FAIL reg add of the $1 handler"; failures=$((failures + 1)); open_child=; }
        }
        register http "$open_child --new %1"
        register mailto "$open_child %1"
        page_url="file:///Z:$page" mailer=vfc_open_child mail_path=()
    else
        mkdir -p "$tmp/bin"
        ln -s "$open_child" "$tmp/bin/xdg-email"
        export BROWSER="no-such-vfc-browser %s:$open_child --new %s"
        page_url="file://$page" mailer=xdg-email mail_path=(PATH="$tmp/bin:$PATH")
    fi
fi
if [ -n "$open_child" ]; then
    expect "open a URL" 0 "" -- "$vfc" open 'http://www.example.com/a b?x=1&y=2#top'
    expect "the browser got it" 0 "vfc_open_child
--new
http://www.example.com/a%20b?x=1&y=2#top" -- recorded
    expect "open a file" 0 "" -- "$vfc" open types/page.html
    expect "the browser got its file URL" 0 "vfc_open_child
--new
$page_url" -- recorded
    expect "open -show" 0 "$open_child --new $page_url" -- "$vfc" open -show types/page.html
    expect "open a missing file" 1 'WARNING: cannot show "types/none.html" in the web browser: no such file' \
        -- bash -c "'$vfc' open types/none.html 2>&1"
    expect "open -mail" 0 "" -- env "${mail_path[@]}" "$vfc" open -mail \
        -subject 'Build 7 & 8: 100% done?' -body 'Hi,
all done.' ann@example.org bo+b@example.org
    expect "the mail program got a mailto URL" 0 "$mailer
mailto:ann@example.org,bo%2Bb@example.org?subject=Build%207%20%26%208:%20100%25%20done%3F&body=Hi,%0D%0Aall%20done." \
        -- recorded
    # A program that stays open: the tool returns at once and keeps no pipe of the caller open.
    # (Under Wine every program inherits the Unix standard error of the one that started it, so
    # the script that runs vfc.exe would wait for the program's end; the unit tests check there
    # that the call returns at once.)
    if [ "$platform" = posix ]; then
        start=$SECONDS
        out=$(VFC_OPEN_SLEEP=30 "$vfc" open http://www.example.com/ 2>&1)
        rc=$? took=$((SECONDS - start))
        [ "$rc" = 0 ] && [ "$took" -lt 10 ] && [ -z "$out" ] ||
            { echo "FAIL open waits for the browser: exit $rc after $took s: $out"; failures=$((failures + 1)); }
        expect "the browser that stays open got it" 0 "vfc_open_child
--new
http://www.example.com/" -- recorded
    fi
    expect "open -subject without -mail" 2 "" -- "$vfc" open -subject x http://h/
    expect "open of two URLs" 2 "" -- "$vfc" open http://h/ http://g/
    # No browser: a registered program that is not there, or nothing at all on POSIX.
    if [ "$platform" = windows ]; then
        register http "$tmp/no-such-browser.exe %1"
        expect "open without a browser" 1 "because the specified file or path was not found." \
            -- bash -c "set -o pipefail; '$vfc' open http://h/ 2>&1 | tail -n 1 | sed 's/^ *//'"
    else
        expect "open without a browser" 1 \
            "WARNING: no web browser found: no command of BROWSER exists and xdg-open is not in PATH" \
            -- bash -c "BROWSER=no-such-vfc-browser PATH='$tmp/bin' '$vfc' open http://h/ 2>&1"
        expect "open -mail without a mail program" 1 \
            "WARNING: no mail program found: neither xdg-email nor xdg-open is in PATH" \
            -- bash -c "PATH='$tmp' '$vfc' open -mail a@b 2>&1"
    fi
    [ -f "$VFC_OPEN_RECORD" ] && { echo "FAIL a failed open started the child"; failures=$((failures + 1)); }
fi
if [ "$platform" = windows ] && [ -n "${4:-}" ]; then
    for scheme in http mailto; do
        "$vfc" run reg delete "$classes\\$scheme" /f >/dev/null
    done
fi

# "vfc -help" lists exactly the subcommands; "vfc SUB -help" prints its usage screen on standard
# output, nothing on standard error, and exits 0.
subcommands="dump expand find grep info ini match open path rel resolve run type urldecode urlencode"
help=$("$vfc" -help)
listed=$(sed -n 's/^  \([a-z][a-z]*\) .*/\1/p' <<<"$help" | sort | tr '\n' ' ')
[ "$listed" = "$subcommands " ] || { echo "FAIL vfc -help lists: $listed"; failures=$((failures + 1)); }
for sub in $subcommands; do
    out=$("$vfc" $sub -help 2>/tmp/vfc-help-err.$$)
    rc=$?
    if [ $rc != 0 ] || [ -s /tmp/vfc-help-err.$$ ] ||
       ! grep -q -e "^usage: vfc $sub " -e "^	vfc $sub \[-options ...\]" <<<"$out" ||
       ! grep -qF '"--" ends the options' <<<"$out"; then
        echo "FAIL vfc $sub -help (exit $rc)"
        # What it wrote, to tell a failed start of the program from a wrong usage screen.
        sed 's/^/  stderr: /' /tmp/vfc-help-err.$$
        head -n 3 <<<"$out" | sed 's/^/  stdout: /'
        failures=$((failures + 1))
    fi
done
rm -f /tmp/vfc-help-err.$$
# "--" ends the options of every subcommand: what follows is taken as it stands.
expect "rel of paths that begin with -" 0 "." -- "$vfc" rel -- -a/b -a/c
expect "rel with an option, then --" 0 "../-c/x" -- "$vfc" rel -notation unix -- /a/-b /a/-c/x
expect "without --, -a/b is an unknown option" 2 "" -- "$vfc" rel -a/b -a/c
expect "resolve after --" 0 "/a/-b" -- "$vfc" resolve -- /a -b
expect "path after --" 0 "-x/y" -- "$vfc" path -from unix -to unix -- -x/y
expect "expand after --" 0 "-help" -- "$vfc" expand -- -help
expect "only the first -- ends the options" 0 "--" -- "$vfc" expand -- --
expect "urlencode after --" 0 "-a%20b" -- "$vfc" urlencode -- '-a b'
expect "match after --" 0 "-x.htm" -- "$vfc" match -i -- '*.htm' -x.htm y.gif
printf 'a
-x marks
' >"$tmp/-x.txt"
expect "grep of a pattern that begins with -" 0 "./-x.txt:2:1:-x marks" \
    -- bash -c "cd '$tmp' && '$vfc' grep -- -x ./-x.txt"
expect "type and ini of a file named -x.txt" 0 "-x.txt: text/plain" \
    -- bash -c "cd '$tmp' && '$vfc' type -- -x.txt && '$vfc' ini -- -x.txt"
expect "dump reads a file named -x.txt" 0 "1" \
    -- bash -c "cd '$tmp' && '$vfc' dump -- -x.txt 2>&1 >/dev/null | grep -c 'vfc dump: -x.txt: '"
expect "run: -- ends the options, -out is then the program" 1 "" -- "$vfc" run -- -out
expect "info takes -- and nothing else" 0 "" -- bash -c "'$vfc' info -- >/dev/null"

expect "no subcommand" 2 "" -- "$vfc"
expect "unknown subcommand" 2 "" -- "$vfc" frobnicate

[ "$failures" = 0 ] && echo "vfc tool: all checks passed"
exit $((failures > 0))

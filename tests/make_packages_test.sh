#!/usr/bin/env bash
# The Makefile's package check, with stand-ins for dpkg, id and apt-get: nothing happens when every
# package is there; a missing one is installed (and announced) when run as root; otherwise make
# stops with the one command to run.
# usage: make_packages_test.sh SOURCE_DIR
set -u
src=$1
failures=0
stubs=$(mktemp -d)
trap 'rm -rf "$stubs"' EXIT

# dpkg knows every package except those named vfc-missing-*; id -u answers $FAKE_UID; apt-get
# logs its arguments and fails when $FAKE_APT_FAILS is set.
cat >"$stubs/dpkg" <<'STUB'
#!/bin/sh
case "$2" in vfc-missing-*) exit 1 ;; esac
exit 0
STUB
cat >"$stubs/id" <<'STUB'
#!/bin/sh
echo "$FAKE_UID"
STUB
cat >"$stubs/apt-get" <<'STUB'
#!/bin/sh
echo "$*" >>"$APT_LOG"
[ -z "${FAKE_APT_FAILS:-}" ]
STUB
chmod +x "$stubs/dpkg" "$stubs/id" "$stubs/apt-get"
export APT_LOG=$stubs/apt.log

# check NAME WANT_STATUS WANT_OUTPUT WANT_APT_LOG UID PACKAGES...
check() {
    local name=$1 status=$2 want=$3 wantApt=$4 uid=$5
    shift 5
    rm -f "$APT_LOG"
    local got rc apt
    # Run as a user would, not as a sub-make of the "make test" that may be running this.
    got=$(env -u MAKEFLAGS -u MFLAGS -u MAKELEVEL FAKE_UID="$uid" PATH="$stubs:$PATH" \
        make -s --no-print-directory -C "$src" deps PACKAGES="$*" 2>&1)
    rc=$?
    got=$(grep -v '^make: \*\*\*' <<<"$got")  # make's own report of the failed recipe
    apt=$(cat "$APT_LOG" 2>/dev/null)
    if { [ "$status" = 0 ] && [ "$rc" != 0 ]; } || { [ "$status" != 0 ] && [ "$rc" = 0 ]; } ||
       [ "$got" != "$want" ] || [ "$apt" != "$wantApt" ]; then
        echo "FAIL $name: exit $rc; output:"
        printf '%s\n' "$got" | sed 's/^/    /'
        echo "  apt-get was called with:"
        printf '%s\n' "$apt" | sed 's/^/    /'
        failures=$((failures + 1))
    fi
}

check "all there" 0 "" "" 1000 cmake g++
check "missing, not root" 1 "make: missing Debian packages: vfc-missing-a vfc-missing-b
make: install them with: sudo apt-get update && sudo apt-get install -y vfc-missing-a vfc-missing-b" \
    "" 1000 cmake vfc-missing-a g++ vfc-missing-b
check "missing, root" 0 "make: installing the missing Debian packages: vfc-missing-a" \
    "update -qq
install -y -qq vfc-missing-a" 0 cmake vfc-missing-a
FAKE_APT_FAILS=1 check "missing, root, apt-get fails" 1 \
    "make: installing the missing Debian packages: vfc-missing-a" "update -qq" 0 vfc-missing-a

[ "$failures" = 0 ] && echo "package check: all cases passed"
exit $((failures > 0))

#!/usr/bin/env bash
# Runs a Windows program under Wine: quiet, with the prefix of the build folder (made on first
# use), so that nothing of the user's own Wine set-up is touched. VFC_WINEPREFIX names the
# prefix (the toolchain file sets it); by default it is build-windows/wineprefix.
set -euo pipefail
wine=${VFC_WINE:-/usr/lib/wine/wine64}
[ -x "$wine" ] || wine=$(command -v wine64 || command -v wine || echo "$wine")
if [ -z "${VFC_WINEPREFIX:-}" ]; then
    dir=$(cd "$(dirname "$0")/.." && pwd)
    VFC_WINEPREFIX=$dir/build-windows/wineprefix
fi
# No Mono or Gecko: the prefix is made without asking to install them.
export WINEPREFIX=$VFC_WINEPREFIX WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
if [ ! -f "$WINEPREFIX/system.reg" ]; then
    mkdir -p "$WINEPREFIX"
    # Several tests may start at once: one of them makes the prefix, the others wait.
    exec 9>"$WINEPREFIX.lock"
    flock 9
    [ -f "$WINEPREFIX/system.reg" ] || "$wine" wineboot -i >/dev/null 2>&1
    flock -u 9
fi
# The server, and Wine's services that the first program starts, outlive the program. Started
# from here with the null device as their standard streams they hold none of the caller's
# pipes: a test runner would otherwise wait for them to end. The server stays 30 seconds after
# its last program, so that the next one does not start it all anew. With a server running
# already this does nothing.
server=$(dirname "$wine")/wineserver
[ -x "$server" ] || server=$(command -v wineserver || true)
if [ -n "$server" ] && "$server" -p30 </dev/null >/dev/null 2>&1; then
    "$wine" cmd /c exit 0 </dev/null >/dev/null 2>&1 || true
fi
exec "$wine" "$@"

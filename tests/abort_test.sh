#!/usr/bin/env bash
# Interrupts the abort probe the way a user at the console would (SIGINT) and checks that the
# application noticed: the abort flag seen by the polling loop and the hook called.
# usage: abort_test.sh ABORT_PROBE
set -u
probe=$1
out=$(mktemp)
trap 'rm -f "$out"' EXIT

"$probe" >"$out" 2>&1 &
pid=$!
for _ in $(seq 100); do
    grep -qx ready "$out" && break
    sleep 0.05
done
if ! grep -qx ready "$out"; then
    echo "FAIL: the probe never became ready"
    cat "$out"
    kill -KILL "$pid" 2>/dev/null
    exit 1
fi
kill -INT "$pid"
wait "$pid"
rc=$?
want=$'ready\naborted, hook called'
got=$(cat "$out")
if [ "$rc" != 0 ] || [ "$got" != "$want" ]; then
    echo "FAIL: exit $rc (want 0)"
    diff <(printf '%s\n' "$want") <(printf '%s\n' "$got") | sed 's/^/    /'
    exit 1
fi
echo "ok"

#!/usr/bin/env bash
# Every public class, struct and exported free function of the installed headers carries a
# reference comment ("///") right above its declaration (template heads and attributes may sit
# in between). Prints each one that does not and exits 1.
# usage: api_docs_check.sh [SOURCE_ROOT]
set -eu
root=${1:-$(dirname "$0")/..}
cd "$root"
status=0
for header in $(find vfc -name '*.h' -not -path '*/internal/*' -not -path 'vfc/os/*' \
                    -not -path 'vfc/testing/*' | sort); do
    awk -v file="$header" '
        # A declaration that needs a comment: a class or struct with a body, or an exported
        # function at file scope.
        function needs(line) {
            if (line ~ /^(class|struct) [A-Za-z_ ]*[A-Za-z_0-9]+( final)? *(:|\{|$)/ &&
                line !~ /;[ ]*$/) return 1
            if (line ~ /^VFC_API /) return 1
            return 0
        }
        {
            if (needs($0) && !documented) {
                printf "%s:%d: no reference comment: %s\n", file, NR, $0
                bad = 1
            }
            # What counts as "right above": a /// line, possibly followed by template heads
            # (which may span lines), or another declaration of the same overload group.
            if ($0 ~ /^\/\/\//) documented = 1
            else if ($0 ~ /^template|^ +[A-Za-z_:<>,& ]+[>,]$/ && documented) documented = 1
            else if ($0 ~ /^VFC_API / && documented) documented = 1
            else if ($0 ~ /^    [^ }]/ && prev ~ /^VFC_API .*[,(]$/ && documented) documented = 1
            else documented = 0
            prev = $0
        }
        END { exit bad }' "$header" || status=1
done
exit $status

#!/usr/bin/env bash
# Whether check-sources.sh finds what it is there for: each case makes a small checkout with one fault.
set -euo pipefail

check="$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/check-sources.sh"
folder=$(mktemp -d)
trap 'rm -rf -- "$folder"' EXIT
root="$folder/a checkout"
failed=0

# A checkout without fault: a low source, a header that it includes, a window that may include Widgets.
makeCheckout() {
    rm -rf -- "$root" "$folder/qt"
    mkdir -p "$root/src/store" "$root/src/rules" "$root/src/windows/one" "$root/src/windows/other" "$root/src/app" "$root/docs" "$folder/qt/QtWidgets" "$folder/qt/QtCore"
    touch "$folder/qt/QtWidgets/QWidget" "$folder/qt/QtCore/QString"
    printf '#include "store/Low.h"\n#include <QString>\n' >"$root/src/store/Low.cpp"
    printf '#include <QtCore/QDate>\n' >"$root/src/store/Low.h"
    printf '#include "store/Low.h"\n' >"$root/src/rules/Logic.cpp"
    printf '#include <QWidget>\n' >"$root/src/app/Window.h"
    printf '#include "app/Window.h"\n#include <QtWidgets/QWidget>\n' >"$root/src/windows/one/Form.cpp"
    printf 'See [the other page](docs/other.md) and `src/store/Low.h`, [away](https://example.org/x).\n' >"$root/README.md"
    printf 'Back to [the first](../README.md#top).\n' >"$root/docs/other.md"
    printf '%s\n' "$root/src/store/Low.cpp" "$root/src/rules/Logic.cpp" >"$folder/low"
}

# expect TITLE STATUS TEXT: the check ends with the status and, where TEXT is not empty, says it.
expect() {
    local title=$1 status=$2 text=$3 told=0 output
    output=$(bash "$check" "$root" "$folder/qt" "$folder/low" 2>&1) || told=$?
    if [[ $told -ne $status || ($output != *"$text"*) || ($status -eq 0 && -n $output) ]]; then
        printf 'FAILED: %s: status %d, output:\n%s\n' "$title" "$told" "$output"
        failed=1
    fi
}

makeCheckout
expect "a clean checkout passes" 0 ""

makeCheckout
printf '#include <QWidget>\n' >>"$root/src/store/Low.cpp"
expect "a Widgets header in a low source" 1 "Low.cpp: includes QWidget"

makeCheckout
printf '  #  include <QtWidgets/QLabel>\n' >>"$root/src/store/Low.h"
expect "a Widgets header by its module, in a header of a low source" 1 "Low.h: includes QtWidgets/QLabel"

makeCheckout
printf '#include "app/Window.h"\n' >>"$root/src/rules/Logic.cpp"
expect "a window's header in the logic" 1 "Logic.cpp: includes app/Window.h"

makeCheckout
printf '#include "Beside.h"\n' >>"$root/src/rules/Logic.cpp"
printf '#include <QWidget>\n' >"$root/src/rules/Beside.h"
expect "a Widgets header reached through a header beside the source" 1 "Beside.h: includes QWidget"

makeCheckout
printf '#include "rules/Rule.h"\n' >>"$root/src/store/Low.h"
expect "an include that runs up" 1 "Low.h: includes rules/Rule.h, which stands above it"

makeCheckout
printf '#include "windows/other/Other.h"\n' >>"$root/src/windows/one/Form.cpp"
expect "a window that knows another" 1 "Form.cpp: includes windows/other/Other.h, another window"

makeCheckout
printf '#include "windows/other/Other.h"\n' >>"$root/src/windows/RegisterWindows.cpp"
expect "the one place that knows all windows" 0 ""

makeCheckout
mkdir -p "$root/src/elsewhere"
printf '\n' >"$root/src/elsewhere/Source.cpp"
expect "a folder of no floor" 1 "Source.cpp: stands on no floor"

makeCheckout
: >"$folder/low"
expect "an empty list of low sources" 1 "lists no sources"

makeCheckout
for ((line = 0; line < 501; ++line)); do printf '\n'; done >"$root/src/app/Long.cpp"
expect "a source of 501 lines" 1 "Long.cpp: 501 lines"

makeCheckout
for ((line = 0; line < 500; ++line)); do printf '\n'; done >"$root/src/app/Long.cpp"
expect "a source of 500 lines passes" 0 ""

# joined LINE: a low source, a window or a source of the store has the line.
joined() {
    makeCheckout
    printf '%s\n' "$1" >>"$root/src/${2:-rules/Logic.cpp}"
}

for line in "run(u\"... where EmpNo ='\"_s + code + rest);" "run(code + u\"' order by EmpNo\"_s);" \
    "run(QStringLiteral(\"... EmpNo = '%1' and\").arg(code));" "run(u\"... '\"_s + low + u\"' and '\"_s + high);" \
    "run(QStringLiteral(\"a '%1'\") \"b\");" "run(statement + code + u'\\'');" "run(u\"... = #\"_s + day + u\"#\"_s);" \
    "run(QStringLiteral(\"... = #%1#\").arg(day));" "run(u'#' + day);" "f(1'000, '\"'); run(u\"x = '\"_s + a); // no"; do
    joined "$line"
    expect "a value that is joined: $line" 1 "joins a value"
    joined "$line" app/Window.h
    expect "a value that is joined in a window: $line" 1 "joins a value"
    joined "$line" store/Low.cpp
    expect "the engine's own statement passes: $line" 0 ""
done

for line in "run(QStringLiteral(\"... class ='081' and format(T%1,'hh:nn:ss')='00:00:00'\").arg(n));" \
    "// a comment with \"='\" in it" "f(); // \"='\"" "f(1'000'000, '\"', '\\\\'); g(\"a\", '\"', \"b\");" \
    "tell(u\"錯誤 '%1'\"_s.arg(number)); // no statement" "run(u\"... = #2038/01/01# \"_s);" "#include \"store/Low.h\""; do
    joined "$line"
    expect "no value is joined: $line" 0 ""
done

makeCheckout
printf '// TO''DO later\n' >>"$root/src/app/Window.h"
expect "a mark of work left undone" 1 "Window.h:2:"

makeCheckout
rm "$root/docs/other.md"
expect "a link that leads nowhere" 1 "README.md: leads to docs/other.md"

makeCheckout
printf 'In `src/store/Gone.cpp`.\n' >>"$root/docs/other.md"
expect "a source that is named and gone" 1 "other.md: names src/store/Gone.cpp"

((failed == 0))

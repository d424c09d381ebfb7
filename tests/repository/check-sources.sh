#!/usr/bin/env bash
# check-sources.sh ROOT QT_HEADERS LOW_SOURCES
# Fails, with a line for each fault, where the sources of the checkout ROOT break a rule of the house:
# - no include of Widgets or of the windows in the files that LOW_SOURCES lists, or in any header that they reach
#   (the folders of Qt's modules stand in QT_HEADERS): linking alone does not stop it, since the headers are there;
# - no include that runs up the floors of src, store, rules, paper, app, windows, or from the window of one folder to that
#   of another, which only windows/RegisterWindows.cpp knows together;
# - no source file over 500 lines;
# - no value joined into a statement but by src/store/StatementText.h: outside src/store, where statements are the
#   engine's, no literal opens or closes a quoted value, and none has one for a place holder. A line that ends in
#   "// no statement" may;
# - no word that marks work left undone;
# - no link in a page, or path of a file of this checkout named in one, that leads nowhere.
set -euo pipefail

root=$1 qtHeaders=$2 lowSources=$3
faults=0

fault() {
    printf '%s\n' "$*"
    faults=$((faults + 1))
}

includesOf() {
    sed -n 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*[<"]\([^>"]*\)[>"].*/\1/p' "$1"
}

isWindowHeader() {
    local name=$1
    [[ $name == QtWidgets* || $name == QtPrintSupport* || $name == app/* || $name == windows/* ]] ||
        [[ -e $qtHeaders/QtWidgets/$name || -e $qtHeaders/QtPrintSupport/$name ]]
}

checkLayers() {
    local -a waiting
    local -A seen=()
    local file name reached
    mapfile -t waiting <"$lowSources"
    while ((${#waiting[@]} > 0)); do
        file=${waiting[-1]}
        unset 'waiting[-1]'
        [[ -n $file && -z ${seen[$file]:-} ]] || continue
        seen[$file]=1
        [[ -f $file ]] || { fault "$file: listed or included, and not there"; continue; }
        while IFS= read -r name; do
            if isWindowHeader "$name"; then
                fault "$file: includes $name, which belongs to the windows"
                continue
            fi
            for reached in "$root/src/$name" "$(dirname -- "$file")/$name"; do
                [[ ! -f $reached ]] || { waiting+=("$reached"); break; }
            done
        done < <(includesOf "$file")
    done
    ((${#seen[@]} > 0)) || fault "$lowSources lists no sources."
}

declare -A floors=([store]=1 [rules]=2 [paper]=3 [app]=4 [windows]=5 [main.cpp]=6)

checkFloors() {
    local file inside name from to
    while IFS= read -r -d '' file; do
        inside=${file#"$root/src/"}
        from=${inside%%/*}
        [[ -n ${floors[$from]:-} ]] || { fault "$file: stands on no floor"; continue; }
        while IFS= read -r name; do
            to=${floors[${name%%/*}]:-}
            if [[ -n $to ]] && ((to > floors[$from])); then
                fault "$file: includes $name, which stands above it"
            elif [[ $from == windows && $name == windows/*/* && $inside != windows/RegisterWindows.cpp &&
                    ${name%/*} != "${inside%/*}" ]]; then
                fault "$file: includes $name, another window"
            fi
        done < <(includesOf "$file")
    done < <(find "$root/src" \( -name '*.cpp' -o -name '*.h' \) -print0)
}

checkLength() {
    local file lines
    while IFS= read -r -d '' file; do
        lines=$(wc -l <"$file")
        ((lines <= 500)) || fault "$file: $lines lines; 500 are the most"
    done < <(find "$root/src" \( -name '*.cpp' -o -name '*.h' \) -print0)
}

checkJoinedValues() {
    local any='(?:[^"\\]|\\.)*' before odd= sign line
    # From the start of the line over whole literals and characters, so that no comment is looked at.
    before='^(?:[^"\x27/]|/(?!/)|(?<=[0-9])\x27(?=[0-9])|(?<![0-9])\x27(?:[^\x27\\]|\\.)+\x27|"'$any'")*?'
    for sign in '\x27' '#'; do
        local other='(?:[^"'$sign'\\]|\\.)*'
        odd+='"'$other$sign'(?:'$other$sign$other$sign')*'$other'"|'
    done
    while IFS= read -r line; do
        [[ $line == *'// no statement' ]] || fault "$line: joins a value, which is for StatementText.h"
    done < <(grep -rnP --include='*.cpp' --include='*.h' --exclude-dir=store -- \
        "$before(?:$odd\"$any[\\x27#]%[0-9]$any\"|\\x27\\\\\\x27\\x27|\\x27#\\x27)" "$root/src" || true)
}

checkMarks() {
    local line
    # The words are written so that this file does not hold them.
    while IFS= read -r line; do
        fault "$line"
    done < <(grep -rnIwE 'TO[D]O|FIX[M]E|XX[X]' --exclude-dir=build --exclude-dir=.git -- "$root" || true)
}

checkPages() {
    local page target
    while IFS= read -r -d '' page; do
        while IFS= read -r target; do
            [[ -e $(dirname -- "$page")/$target ]] || fault "$page: leads to $target, which is not there"
        done < <(grep -oE '\]\([^)#:]+\)' "$page" | sed -e 's/^](//' -e 's/)$//')
        while IFS= read -r target; do
            [[ -e $root/$target ]] || fault "$page: names $target, which is not there"
        done < <(grep -oE '`(src|tests|tools|demo|bench|docs)/[A-Za-z0-9_./-]+`' "$page" | tr -d '`')
    done < <(find "$root" -maxdepth 1 -name '*.md' -print0; find "$root/docs" -name '*.md' -print0)
}

checkLayers
checkFloors
checkLength
checkJoinedValues
checkMarks
checkPages
((faults == 0))

#!/usr/bin/env bash
# check-package.sh PACKAGE: fails, with a line for each fault, where the Debian package is not as it should be: what the
# checkers of Debian and of the desktops say, what stands in it, and whether its set-up finds its own master copy.
set -uo pipefail

package=$(readlink -f -- "$1")
cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/../.." || exit 1
work=$(mktemp -d) || exit 1
trap 'rm -rf -- "$work"' EXIT
faults=0

fault() {
    printf '%s\n' "$*"
    faults=$((faults + 1))
}

# Runs a checker; tells all that it says where it fails.
checker() {
    local said
    said=$("$@" 2>&1) || fault "$* fails:" "$said"
}

field() { dpkg-deb -f "$package" "$1"; }

dpkg-deb -x "$package" "$work/root" || exit 1
root=$work/root/usr

checker lintian --fail-on error,warning "$package"
checker desktop-file-validate "$root/share/applications/pontrel.desktop"
checker appstreamcli validate --no-net "$root/share/metainfo/tw.pontrel.pontrel.metainfo.xml"

# One version everywhere.
version=$(field Version)
project=$(sed -n 's/^project(Pontrel VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
[[ ${version%-*} == "$project" ]] || fault "The package is of version $version, the sources of $project."
[[ $(zcat "$root/share/doc/pontrel/changelog.Debian.gz" | head -n 1) == "pontrel ($version) "* ]] ||
    fault "The changelog does not begin with $version."
grep -q "<release version=\"$project\"" "$root"/share/metainfo/*.xml || fault "The metainfo knows no release $project."

# What no linker sees, and that it was asked at all.
for need in fonts-noto-cjk hicolor-icon-theme qt6-translations-l10n libqt6widgets6 libqt6printsupport6 \
    libsqlite3-0 libxlsxwriter4; do
    grep -qE ", ${need}( |,)" <<<", $(field Depends)," || fault "The package does not depend on $need."
done

# A manual page for each program, and a program for the icon.
for program in pontrel-{setup,newstore,report,admin}; do
    [[ -x $root/bin/$program ]] || fault "There is no $program."
done
programs=("$root"/bin/*)
for program in "${programs[@]}" "$root/lib/pontrel/pontrel"; do
    page=$root/share/man/man1/${program##*/}.1.gz
    if [[ ! -f $page ]]; then
        fault "${program##*/} has no manual page."
    elif said=$(zcat "$page" | man --warnings -l - 2>&1 >/dev/null) && [[ -n $said ]]; then
        fault "The manual page of ${program##*/}: $said"
    fi
done
for key in Exec TryExec; do
    command=$(sed -n "s/^$key=\([^ ]*\).*/\1/p" "$root/share/applications/pontrel.desktop")
    [[ -z $command || -x $root/bin/$command ]] || fault "The icon's $key is $command, which is not there."
done

for size in 16 22 24 32 48 64 128 256; do
    icon=$root/share/icons/hicolor/${size}x${size}/apps/pontrel.png
    # Width and height stand at the head of the file.
    measured=$(od -An -j16 -N8 --endian=big -tu4 "$icon" 2>/dev/null | tr -s ' ')
    [[ $measured == " $size $size" ]] || fault "$icon is of the size$measured."
done

diff -r --exclude=places.txt docs/manual "$root/share/doc/pontrel/manual" || fault "The manual is not that of the sources."
diff -r report "$root/share/pontrel/report" || fault "The templates are not those of the sources."

# The programs find their own, wherever they stand.
folder=$work/program
if "$root/bin/pontrel-setup" --lay-out "$folder"; then
    cmp "$root/lib/pontrel/pontrel" "$folder/pontrel" || fault "Another program has been laid out."
    diff -r report "$folder/report" || fault "Other templates have been laid out."
else
    fault "Nothing can be laid out."
fi
printf 'secret\n' | "$root/bin/pontrel-newstore" "$folder" --password-stdin >/dev/null || fault "No store can be made."
[[ $(head -c 15 "$folder/DB/Pontrel.mdb" 2>/dev/null) == "SQLite format 3" ]] || fault "There is no store."
"$root/bin/pontrel-report" check "$folder"/report/*.rpt >/dev/null || fault "The templates cannot be read."

((faults == 0)) && printf 'The package %s is in order.\n' "${package##*/}"

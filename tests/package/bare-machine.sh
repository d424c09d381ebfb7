#!/usr/bin/env bash
# bare-machine.sh PACKAGE [BASE]: shows on a bare Debian 12 that the package works by itself: it is installed with its
# dependencies alone, set up and used by keyboard, brought up to date, and removed again without a trace outside the
# user's folder. The machine is a folder that debootstrap fills, or a copy of the folder BASE that it has filled before.
#
# Needs root, a network, and besides packages.txt the packages debootstrap, sqlite3, xdotool and, for dumps of the
# screen at each step in build/bare-machine/, x11-apps. Ends with 0 where all was as it should be.
set -euo pipefail
shopt -s inherit_errexit

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
if [[ ${1:-} != --inside ]]; then
    package=$(readlink -f -- "${1:?Name the package.}")
    base=${2:+$(readlink -f -- "$2")}
    # Mounts of its own, which go with it, and a display of its own.
    exec unshare --mount --propagation private \
        "$here/../support/with-display" bash "${BASH_SOURCE[0]}" --inside "$package" "$base"
fi
package=$2
base=$3
pictures=$here/../../build/bare-machine
work=$(mktemp -d)
machine=$work/machine
home=$machine/home/clerk
folder=$home/Pontrel
password="It's 1 secret"

leave() {
    local status=$?
    [[ $status -eq 0 ]] || { picture failure; printf 'Failed: see build/bare-machine/.\n' >&2; }
    [[ -z ${started:-} ]] || kill "$started" 2>/dev/null || true
    umount --recursive --lazy "$machine/dev" "$machine/proc" 2>/dev/null || true
    rm -rf --one-file-system -- "$work"
}
trap leave EXIT
trap 'exit 1' HUP INT TERM

say() { printf '== %s\n' "$*"; }
fail() { printf '%s\n' "$@" >&2; exit 1; }

onMachine() {
    chroot "$machine" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"
}

asClerk() {
    chroot --userspec=4711:4711 "$machine" env -i PATH=/usr/bin:/bin HOME=/home/clerk LANG=C.UTF-8 DISPLAY="$DISPLAY" \
        XAUTHORITY=/home/clerk/.Xauthority XDG_RUNTIME_DIR=/home/clerk "$@"
}

# picture NAME: a dump of what the screen shows, where there is a program for it.
picture() {
    mkdir -p "$pictures"
    xwd -root -silent -out "$pictures/$1.xwd" 2>/dev/null || true
}

# Waits until a window of that title is there and in front.
await() {
    local tries
    for ((tries = 0; tries < 1200; ++tries)); do
        if [[ $(xdotool getactivewindow getwindowname 2>/dev/null) == "$1" ]]; then
            picture "$((++step))-$1"
            return
        fi
        sleep 0.1
    done
    fail "There is no window \"$1\" in front, but \"$(xdotool getactivewindow getwindowname 2>/dev/null)\"."
}
step=0

# Waits until a query of the store gives that answer.
awaitStore() {
    local tries answer
    for ((tries = 0; tries < 1200; ++tries)); do
        answer=$(sqlite3 -readonly "$folder/DB/Pontrel.mdb" "$1" 2>&1) || true
        [[ $answer != "$2" ]] || return 0
        sleep 0.1
    done
    fail "The store answers \"$answer\" to $1, not \"$2\"."
}

keys() { xdotool key --clearmodifiers --delay 60 "$@"; }
# Text in place of what the box holds, and on to the next.
entry() {
    keys ctrl+a
    if [[ -n $1 ]]; then xdotool type --clearmodifiers --delay 40 -- "$1"; else keys Delete; fi
    keys Return
}

# Files of the machine that outlast a package: not the caches, lists and logs that apt and the linker keep.
files() {
    (cd "$machine" && find . -xdev -not -path './home/*' -not -path './var/cache/*' -not -path './var/lib/apt/*' \
        -not -path './var/lib/dpkg/*' -not -path './var/log/*' -not -path './run/*' -not -path './tmp/*' |
        LC_ALL=C sort)
}

startByIcon() {
    local command
    command=$(sed -n 's/^Exec=//p' "$machine/usr/share/applications/pontrel.desktop")
    asClerk "$command" >"$work/output" 2>&1 &
    started=$!
}

logIn() {
    await 登入
    entry clerk
    entry "$password"
    keys Return
}

closeProgram() {
    xdotool key --clearmodifiers alt+F4
    wait "$started" || fail "The program ended with $?: $(cat "$work/output")"
}

# From the main window to the punches and back; the focus is on the first button of the toolbar, later on the tabs.
readPunches() {
    keys Tab Tab space
    await 出勤管理
    keys Tab Tab space
    await 開啟
    xdotool type --clearmodifiers --delay 40 "$1"
    keys Return
    await 警告訊息
    keys Return
    await 出勤管理
    keys Tab Tab Tab Tab Tab Tab Tab Tab space # to "離開"
    await "$mainWindow"
}

makeMachine() {
    if [[ -n $base ]]; then
        cp -a -- "$base" "$machine"
    else
        debootstrap --variant=minbase bookworm "$machine" http://deb.debian.org/debian >"$work/debootstrap" ||
            { tail "$work/debootstrap"; fail "debootstrap failed."; }
    fi
    mount -t proc proc "$machine/proc"
    mount --rbind /dev "$machine/dev"
    cp /etc/resolv.conf "$machine/etc/"
    # Nothing may be started on the machine, which has no services.
    printf '#!/bin/sh\nexit 101\n' >"$machine/usr/sbin/policy-rc.d"
    chmod +x "$machine/usr/sbin/policy-rc.d"
    onMachine apt-get -q update >/dev/null
    onMachine useradd --create-home --uid 4711 clerk
    install -m 600 -o 4711 -g 4711 -- "$XAUTHORITY" "$home/.Xauthority"
}

# installPackage FILE: with what it depends on, and nothing that is only recommended.
installPackage() {
    cp -- "$1" "$machine/tmp/pontrel.deb"
    onMachine apt-get -q install -y --no-install-recommends /tmp/pontrel.deb >"$work/apt" 2>&1 ||
        { cat "$work/apt"; fail "The package cannot be installed."; }
    rm "$machine/tmp/pontrel.deb"
}

# A package of the next version, with another program and two other templates.
makeNewer() {
    dpkg-deb -R "$package" "$work/newer"
    sed -i 's/^Version: .*/&+newer/' "$work/newer/DEBIAN/control"
    printf '\n' >>"$work/newer/usr/lib/pontrel/pontrel"
    local template
    for template in C01 C02; do
        printf '<!-- newer -->\n' >>"$work/newer/usr/share/pontrel/report/$template.rpt"
    done
    (cd "$work/newer" && find usr -type f -print0 | xargs -0 md5sum >DEBIAN/md5sums)
    dpkg-deb --root-owner-group -b "$work/newer" "$work/newer.deb" >/dev/null
}

mainWindow="Pontrel V1.1 - Norvale"

rm -rf -- "$pictures"
say "Making the machine"
makeMachine
files >"$work/before"

say "Installing the package with its dependencies alone"
installPackage "$package"

say "Setting up by keyboard, with the example"
startByIcon
await "Pontrel 初次設定"
entry /home/clerk/Pontrel
entry clerk
entry "$password"
entry "$password"
entry "O'Neil"
xprop -id "$(xdotool getactivewindow)" _NET_WM_ICON | grep -qF "Icon (" || fail "The window has no icon."
keys Down Return Return Return # over the zoom, which stays as proposed
logIn
await "$mainWindow"
[[ $(cat "$home/.config/pontrel/folder") == /home/clerk/Pontrel ]] || fail "Another folder is remembered."
[[ $(stat -c %a "$folder/DB/Pontrel.mdb") == 600 ]] || fail "The store is open to others."
awaitStore "select Account, CmpName from syst02, Syst01" "clerk|O'Neil"
awaitStore "select count(*) from Base06" 42

say "Reading a punch file"
readPunches 20100301.txt
awaitStore "select count(*) from Atte01" 126
awaitStore "select count(*) from Atte02" 41
closeProgram

say "Starting again, which asks nothing, and reading the next day"
startByIcon
logIn
await "$mainWindow"
readPunches 20100302.txt
awaitStore "select count(distinct UseDate) from Atte02" 2
closeProgram

say "Bringing it up to date, with an edited template"
makeNewer
printf '<!-- mine -->\n' >>"$folder/report/C02.rpt"
sqlite3 -readonly "$folder/DB/Pontrel.mdb" .dump >"$work/store"
installPackage "$work/newer.deb"
startByIcon
await Pontrel # the message on the template
keys Return
logIn
await "$mainWindow"
closeProgram
cmp "$work/newer/usr/lib/pontrel/pontrel" "$folder/pontrel"
cmp "$work/newer/usr/share/pontrel/report/C01.rpt" "$folder/report/C01.rpt"
cmp "$work/newer/usr/share/pontrel/report/C02.rpt" "$folder/report/C02.rpt.new"
tail -n 1 "$folder/report/C02.rpt" | grep -qF mine || fail "The edited template has gone."
sqlite3 -readonly "$folder/DB/Pontrel.mdb" .dump | cmp "$work/store" - || fail "The store has changed."

say "Printing a report from the command line"
asClerk pontrel-report print C02 --folder /home/clerk/Pontrel --from 2010-03-01 --to 2010-03-02 \
    --output /home/clerk/C02.pdf
[[ $(head -c 5 "$home/C02.pdf") == %PDF- ]] || fail "There is no report."

say "Removing it"
(cd "$home" && find . -type f ! -name .Xauthority -exec sha256sum {} + | LC_ALL=C sort) >"$work/home"
onMachine apt-get -q purge -y pontrel >"$work/apt" 2>&1 || { cat "$work/apt"; fail "It cannot be removed."; }
onMachine apt-get -q autoremove --purge -y >"$work/apt" 2>&1 || { cat "$work/apt"; fail "Its needs stay."; }
files >"$work/after"
traces=$(find "$machine" -xdev -iname '*pontrel*' -not -path "$home/*")
[[ -z $traces ]] || fail "Traces are left:" "$traces"
(cd "$home" && find . -type f ! -name .Xauthority -exec sha256sum {} + | LC_ALL=C sort) | cmp "$work/home" - ||
    fail "The user's files have changed."
left=$(comm -13 "$work/before" "$work/after")
[[ -z $left ]] || printf 'Left by packages that it needed:\n%s\n' "$left"
say "All was as it should be"

# The desktop program, with what its package asks for and no more: started without a display, then gone.
set -euo pipefail
. /given/common.sh
cd "$(mktemp -d)"

install /given/libzglobal1_*.deb /given/zglobal-tools_*.deb /given/zglobal-inspector_*.deb
expect "zglobal-inspector 1." env QT_QPA_PLATFORM=offscreen zglobal-inspector --version
expect "" env QT_QPA_PLATFORM=offscreen zglobal-inspector --screenshots pictures
for page in overview tables log; do expect "" test -s "pictures/$page.png"; done

expect "客户端" env QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 zglobal-inspector --language zh_CN --help

page=/usr/share/man/man1/zglobal-inspector.1.gz
zcat "$page" | sed 's/\\-/-/g' >manual
QT_QPA_PLATFORM=offscreen zglobal-inspector --help | grep -o -e '--[a-z]*' | grep -v help-all >options
expect "--server" cat options
while read -r option; do expect "$option" cat manual; done <options

install man-db desktop-file-utils
expect "see what a live-streaming client sees" man zglobal-inspector
expect "" test -z "$(man --warnings -l "$page" 2>&1 >/dev/null)"
expect "" desktop-file-validate /usr/share/applications/zglobal-inspector.desktop

dpkg -L zglobal-inspector >files
expect /usr/share/icons cat files
apt-get -qy purge zglobal-inspector >/tmp/apt.log
left=$(find /etc /usr /var/lib -name '*zglobal-inspector*')
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }

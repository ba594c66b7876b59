# A client's programs, compiled against the packages; then the packages go.
set -euo pipefail
. /given/common.sh
cd "$(mktemp -d)"
install /given/*.deb cmake g++ make pkg-config
cp -r /usr/share/doc/libzglobal-dev/examples/. .
serve

for name in embed managers testing; do
    expect "" cmake -S "$name" -B "by_cmake_$name"
    expect "" cmake --build "by_cmake_$name"
done
expect "rose" by_cmake_testing/testing
expect "星光皇冠" by_cmake_embed/embed "$(cat address)"
expect "星光皇冠" by_cmake_managers/managers "$(cat address)"

of_ours=(libzglobal1 libzglobal-dev zglobal-tools)
for name in "${of_ours[@]}"; do dpkg -L "$name"; done | sort -u >files
expect /usr/include/ZGlobal cat files
apt-get -qy purge "${of_ours[@]}" >/tmp/apt.log
while read -r file; do
    [ -d "$file" ] || [ ! -e "$file" ] || { echo "$file stayed"; exit 1; }
done <files
left=$(find /etc /usr /var/lib -iname '*zglobal*' -o -name '*ZNetWork*' -o -name '*ZUtility*')
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }

# A client's programs, compiled against the packages; then the packages go.
set -euo pipefail
. /given/common.sh
cd "$(mktemp -d)"
install /given/*.deb cmake g++ make pkg-config
cp -r /usr/share/doc/libzglobal-dev/examples/. .
serve

for name in embed giftshop guide managers testing; do
    expect "" cmake -S "$name" -B "by_cmake_$name"
    expect "" cmake --build "by_cmake_$name"
done
expect "rose" by_cmake_testing/testing
for name in embed giftshop guide managers; do
    expect "星光" "by_cmake_$name/$name" "$(cat address)"
done

# Without CMake.
mkdir by_qmake && cd by_qmake
expect "" "$(compgen -c qmake | sort | tail -1)" ../embed/embed.pro
expect "" make
expect "星光皇冠" ./embed "$(cat ../address)"
# shellcheck disable=SC2046
expect "" g++ -std=c++17 -fPIC ../managers/main.cpp -o managers $(pkg-config --cflags --libs zglobal)
expect "星光皇冠" ./managers "$(cat ../address)"
# shellcheck disable=SC2046
expect "" g++ -std=c++17 -fPIC ../guide/main.cpp -o guide $(pkg-config --cflags --libs zglobalclient zglobalmodels)
expect "星光" ./guide "$(cat ../address)"
cd ..

of_ours=(libzglobal1 libzglobal-dev zglobal-tools zglobal-inspector)
for name in "${of_ours[@]}"; do dpkg -L "$name"; done | sort -u >files
expect /usr/include/ZGlobal cat files
apt-get -qy purge "${of_ours[@]}" >/tmp/apt.log
while read -r file; do
    [ -d "$file" ] || [ ! -e "$file" ] || { echo "$file stayed"; exit 1; }
done <files
left=$(find /etc /usr /var/lib -iname '*zglobal*' -o -name '*ZNetWork*' -o -name '*ZUtility*')
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }

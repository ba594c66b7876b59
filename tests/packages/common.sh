# What the scripts of this folder share; they run in a clean Debian that has nothing of ours.

# There is no network: a dependency that no package names was not fetched before and is missing.
install() {
    apt-get -qy -o Dpkg::Options::=--force-unsafe-io install \
        --no-install-recommends "$@" >/tmp/apt.log 2>&1 || {
        cat /tmp/apt.log
        exit 1
    }
}

# expect WORDS COMMAND...: it ends with 0 and says the words.
expect() {
    local said
    said=$("${@:2}" 2>&1) && grep -qF -e "$1" <<<"$said" || {
        printf '%s: not "%s" but\n%s\n' "${*:2}" "$1" "$said"
        exit 1
    }
}

# The content server of the examples: where and how the manual page says.
serve() {
    cp -r /usr/share/zglobal/content site
    zglobal serve site --port 8080 >address 2>serve.log &
    until [ -s address ]; do
        kill -0 $! || exit
        sleep 0.1
    done
}

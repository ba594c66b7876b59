#!/usr/bin/env bash
# Makes ./zglobal-data a client that is up to date with the content in a folder, by default the
# example content, and whose content server is gone again: to try out what asks a client.
set -euo pipefail
content=${1:-$(dirname "$0")/content}
coproc server { exec zglobal serve "$content" 2>/dev/null; }
trap 'kill "$server_PID" 2>/dev/null || true' EXIT
read -r address <&"${server[0]}"
zglobal update --server "$address" >/dev/null 2>&1 || true # of what is refused, the client tells

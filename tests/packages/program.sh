# The program alone: used as its manual page says; the page and the completion in the shells.
set -euo pipefail
. /given/common.sh
cd "$(mktemp -d)"

install /given/libzglobal1_*.deb /given/zglobal-tools_*.deb
expect "zglobal 1." zglobal --version
expect "ok" zglobal demo
serve
zcat /usr/share/man/man1/zglobal.1.gz | sed -n '/^\.EX/,/^\.EE/{/^\./d;s/\\-/-/g;p}' >examples
expect "zglobal update" cat examples
while read -r line; do
    case $line in
        *" serve "*) ;;
        *) expect "" bash -euc "$line" ;;
    esac
done <examples

install man-db bash-completion zsh
expect "zglobal show [options] KIND [ID]" man zglobal
expect "" test -z "$(man --warnings -l /usr/share/man/man1/zglobal.1.gz 2>&1 >/dev/null)"

mkdir folder
touch file
complete() { # complete WORD...: what bash offers for the last
    bash -c '. /usr/share/bash-completion/bash_completion
        _completion_loader zglobal || [ $? = 124 ]
        COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
        _zglobal 2>/dev/null # "compopt" wants to be called by the shell
        echo "<${COMPREPLY[*]}>"' complete "$@"
}
expect "<status>" complete zglobal st
expect "<CS_MedalList>" complete zglobal show CS_Med
expect "<>" complete zglobal show CS_MedalList CS
expect "<--data>" complete zglobal show CS_MedalList --d
expect "<folder>" complete zglobal status --data f
expect "<CS_MedalList>" complete zglobal diff a b --table CS_Med
expect "<folder>" complete zglobal status --data = f
expect "<banner>" complete zglobal why b
expect "<CS_MedalList>" complete zglobal show --server http : //127.0.0.1 : 80 CS_Med
[ "$(complete zglobal status --config f | wc -w)" = 2 ] || { echo "no file is offered"; exit 1; }

in_zsh() { # in_zsh WORDS: what zsh makes of them when asked to complete
    timeout 60 zsh -fc 'zmodload zsh/zpty
        zpty shell zsh -fi
        zpty -w shell "PS1=; autoload -U compinit && compinit -u -D; print rea""dy"
        zpty -r shell said "*ready*"
        zpty -w -n shell "$1"$'"'\\t'"'
        zpty -r shell said "*${2}*" && print -r -- "$said"' in_zsh "$@"
}
expect "zglobal status" in_zsh "zglobal stat" "zglobal status"
expect "CS_MedalList" in_zsh "zglobal show CS_Med" "CS_MedalList"
expect "--explain" in_zsh "zglobal mask --expl" "--explain"
expect "folder/" in_zsh "zglobal status --data fol" "folder/"

# Completion of zvi in bash: the verbs, and the options of a verb as its own help tells them.

_zvi() {
    local current=${COMP_WORDS[COMP_CWORD]} program=${COMP_WORDS[0]} words=
    if ((COMP_CWORD == 1)); then
        words=$("$program" help 2>/dev/null | sed -n '/^Verbs:/,/^$/s/^  \([a-z-]*\) .*/\1/p')' --help --version'
    elif [[ $current == -* ]]; then
        words=$("$program" "${COMP_WORDS[1]}" -h 2>/dev/null |
            sed -n '/^Options:/,/^$/s/^  \(-[a-z],\)\{0,1\}\(--[a-z-]*\).*/\2/p')
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

# Whatever is no verb and no option is a file.
complete -o default -F _zvi zvi

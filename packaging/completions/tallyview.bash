# Completes the arguments of tallyview in bash.
_tallyview() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words
    # "--name=value" comes as three words.
    if [[ $current == '=' ]]; then
        current=
    elif [[ $previous == '=' ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $previous in
    --status) words="running completed all" ;;
    --recency) words="recent today week older" ;;
    --format) words="plain waybar" ;;
    --color) words="auto always never" ;;
    --project)
        local name IFS=$'\n'
        for name in $(tallyview projects 2>/dev/null); do
            [[ $name != "$current"* ]] || COMPREPLY+=("$(printf '%q' "$name")")
        done
        return
        ;;
    show | open)
        words=$(tallyview --all --json 2>/dev/null | sed -n 's/^\[*{"id":"\([^"\\]*\)".*/\1/p')
        ;;
    --search | --interval | -n) return ;;
    *)
        words="list show open status watch projects --status --recency --project --search
            --subagents --pinned --oldest-first --all -n --interval --format --json --color
            --help --version"
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _tallyview tallyview

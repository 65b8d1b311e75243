# Completes the arguments of tallyview in bash.

# Offers the lines of its input that begin with $1. They come from the database: what is in them
# must reach the command line as it is, and compgen -W would run it.
_tallyview_offer() {
    local line
    while IFS= read -r line; do
        [[ $line != "$1"* ]] || COMPREPLY+=("$(printf '%q' "$line")")
    done
}

_tallyview() {
    COMPREPLY=()
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
        _tallyview_offer "$current" < <(tallyview projects 2>/dev/null)
        return
        ;;
    show | open)
        _tallyview_offer "$current" < <(tallyview --all --json 2>/dev/null |
            sed -n 's/^\[*{"id":"\([^"\\]*\)".*/\1/p')
        return
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

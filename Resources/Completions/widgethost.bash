# Completion of widgethost's command line for bash.

_widgethost() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local command="" positionals=0 choice=() words="" i

    # What stands before, where bash has made three words of NAME=VALUE.
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            --extension | --home) choice+=("${COMP_WORDS[i]}" "${COMP_WORDS[i + 1]/#\~/$HOME}"); ((++i)) ;;
            --family | --set | --request | --preview | --mode | --appearance | --contrast | --accent | --scale | --format | \
                --output | -o | --at | --matching)
                ((++i)) ;;
            =) ((++i)) ;;
            -*) ;;
            *) if [ -z "$command" ]; then command=${COMP_WORDS[i]}; else ((++positionals)); fi ;;
        esac
    done

    # The value of an option.
    case "$command $previous" in
        *" --family") words="small medium large extraLarge" ;;
        *" --request") words="timeline snapshot placeholder" ;;
        *" --mode") words="fullColor tinted vibrant" ;;
        "gallery --appearance") words="light dark both" ;;
        *" --appearance") words="light dark" ;;
        *" --contrast") words="normal high" ;;
        *" --format") words="png svg pdf tree frames" ;;
        *" --home" | "gallery --output" | "gallery -o")
            compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;;
        *" --extension" | "render --output" | *" -o")
            compopt -o filenames; mapfile -t COMPREPLY < <(compgen -f -- "$current"); return ;;
        *" --set" | *" --preview" | *" --accent" | *" --scale" | *" --at" | *" --matching" | *" --output" | *" =") return ;;
    esac
    if [ -n "$words" ]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
        return
    fi

    words="--extension --home --unconfined --help"
    case $command in
        "") words+=" --version desktop host describe options render gallery add list edit move remove lock unlock mode reload explain doctor" ;;
        describe | list | doctor) words+=" --json" ;;
        desktop) words+=" --background" ;;
        options) words+=" --matching --json" ;;
        render) words+=" --family --set --request --preview --mode --appearance --contrast --accent --scale --format --output" ;;
        gallery) words+=" --output --appearance --contrast" ;;
        add) words+=" --family --set --output --at" ;;
        edit) words+=" --set" ;;
        move) words+=" --output" ;;
    esac
    case $positionals$command in
        0options | 0render | 0add | 0reload)
            words+=" $("${COMP_WORDS[0]}" "${choice[@]}" describe --json 2>/dev/null | grep -o '"kind":"[^"]*"' | cut -d '"' -f 4)" ;;
        0edit | 0move | 0remove | 0explain)
            words+=" $("${COMP_WORDS[0]}" list --json 2>/dev/null | grep -o '"id":[0-9]*' | cut -d : -f 2)" ;;
        0mode) words+=" fullColor tinted vibrant" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _widgethost widgethost

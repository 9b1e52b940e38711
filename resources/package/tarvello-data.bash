# What tarvello-data understands, for the Tab key of bash.
_tarvello_data() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} verb= i
    local verbs="check compact copy export import import-products move queries repair take-over"
    local options="--help --quiet"
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
            -*) ;;
            *)
                verb=${COMP_WORDS[i]}
                break
                ;;
        esac
    done
    COMPREPLY=()
    case $before in
        --currency) mapfile -t COMPREPLY < <(compgen -W "eur din" -- "$word") && return ;;
        --decimal) mapfile -t COMPREPLY < <(compgen -W "comma point" -- "$word") && return ;;
        --map | --rate) return ;;
    esac
    case $verb in
        "") options="$verbs $options" ;;
        queries) options="--sweep $options" ;;
        repair) options="--backup $options" ;;
        import-products)
            options="--map --stock --try --skip-bad --currency --rate --decimal $options"
            ;;
    esac
    if [[ $verb == "" || $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    else
        compopt -o filenames
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
    fi
}
complete -F _tarvello_data tarvello-data

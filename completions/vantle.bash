# Completion of vantle(1) for bash.

_vantle()
{
    local current=${COMP_WORDS[COMP_CWORD]}
    local previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()

    if [[ $COMP_CWORD -eq 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W "record replay inspect doctor --help --version" -- "$current")
        return
    fi

    case ${COMP_WORDS[1]} in
    record)
        # What follows the program is the program's own.
        local i
        for ((i = 2; i < COMP_CWORD; i++)); do
            case ${COMP_WORDS[i]} in
            --)
                if ((i + 1 == COMP_CWORD)); then
                    mapfile -t COMPREPLY < <(compgen -c -- "$current")
                else
                    mapfile -t COMPREPLY < <(compgen -f -- "$current")
                fi
                return
                ;;
            -o | --output | --without-coordinates | --start-timeout | --debug-compression | --extensions | --names)
                ((i++))
                ;;
            -*) ;;
            *)
                mapfile -t COMPREPLY < <(compgen -f -- "$current")
                return
                ;;
            esac
        done
        case $previous in
        -o | --output | --names)
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        --debug-compression)
            mapfile -t COMPREPLY < <(compgen -W "0 1 2" -- "$current")
            return
            ;;
        --extensions)
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        --without-coordinates | --start-timeout)
            return
            ;;
        esac
        if [[ $current == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "-o --output --without-coordinates --tree --keep-running \
                --start-timeout --debug-compression --extensions --names -h --help --" -- "$current")
        else
            mapfile -t COMPREPLY < <(compgen -c -- "$current")
        fi
        ;;
    inspect)
        # What follows the program is the program's own.
        local i
        for ((i = 2; i < COMP_CWORD; i++)); do
            case ${COMP_WORDS[i]} in
            --)
                if ((i + 1 == COMP_CWORD)); then
                    mapfile -t COMPREPLY < <(compgen -c -- "$current")
                else
                    mapfile -t COMPREPLY < <(compgen -f -- "$current")
                fi
                return
                ;;
            --name | --timeout | --start-timeout | --extensions | --names)
                ((i++))
                ;;
            -*) ;;
            *)
                mapfile -t COMPREPLY < <(compgen -f -- "$current")
                return
                ;;
            esac
        done
        case $previous in
        --names)
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        --extensions)
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        --name | --timeout | --start-timeout)
            return
            ;;
        esac
        if [[ $current == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "--name --functions --check-names --json --timeout \
                --start-timeout --extensions --names -h --help --" -- "$current")
        else
            mapfile -t COMPREPLY < <(compgen -c -- "$current")
        fi
        ;;
    replay)
        # Scripts and options in any order, and behind "--" the program.
        local i
        for ((i = 2; i < COMP_CWORD; i++)); do
            [[ ${COMP_WORDS[i]} == -- ]] || continue
            if ((i + 1 == COMP_CWORD)); then
                mapfile -t COMPREPLY < <(compgen -c -- "$current")
            else
                mapfile -t COMPREPLY < <(compgen -f -- "$current")
            fi
            return
        done
        case $previous in
        --timeout | --start-timeout | --workers)
            return
            ;;
        esac
        if [[ $current == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "--timeout --start-timeout --junit --report --update-images \
                --record --tree --workers --offscreen --share-display --fresh-settings \
                --extensions --names -h --help --" -- "$current")
        else
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
        fi
        ;;
    doctor)
        mapfile -t COMPREPLY < <(compgen -W "-h --help" -- "$current")
        ;;
    esac
}

complete -o filenames -F _vantle vantle

# Completion of vantle(1) for bash.

# Offers values for option $1 that begin with $2; $3 goes in front of each.
# Fails if the option takes none.
_vantle_value()
{
    case $1 in
    -o | --output | --tree | --names | --record | --junit | --report)
        mapfile -t COMPREPLY < <(compgen -P "$3" -f -- "$2")
        ;;
    --extensions)
        mapfile -t COMPREPLY < <(compgen -P "$3" -d -- "$2")
        ;;
    --debug-compression)
        mapfile -t COMPREPLY < <(compgen -P "$3" -W "0 1 2" -- "$2")
        ;;
    --name | --timeout | --start-timeout | --without-coordinates | --workers)
        COMPREPLY=()
        ;;
    *)
        return 1
        ;;
    esac
}

# The words up to the one to be completed, with "--option=value" as three words,
# whether bash has split it or not, and without the "=".
_vantle_words()
{
    local i
    words=()
    for ((i = 1; i <= COMP_CWORD; i++)); do
        local word=${COMP_WORDS[i]}
        if [[ $word == = ]]; then
            # Bash has split it; without a value yet, there is one to be begun.
            ((i == COMP_CWORD)) && words+=("")
        elif [[ $word == --*=* ]]; then
            ((i == COMP_CWORD)) && prefix=${word%%=*}=
            words+=("${word%%=*}" "${word#*=}")
        else
            words+=("$word")
        fi
    done
}

# The place of the program in the words, behind "--" or, where no files may come
# first, the first word that belongs to no option. Empty if there is none yet.
_vantle_program()
{
    local i
    for ((i = 1; i + 1 < ${#words[@]}; i++)); do
        if [[ ${words[i]} == -- ]]; then
            echo $((i + 1))
            return
        elif _vantle_value "${words[i]}" "" ""; then
            ((i++))
        elif [[ ${words[i]} != -* && ${words[0]} != replay ]]; then
            echo "$i"
            return
        fi
    done
}

_vantle_options()
{
    case $1 in
    record)
        echo -o --output --without-coordinates --tree --verify --fresh-settings --keep-running --start-timeout \
            --debug-compression --extensions --no-standard-extension --names -h --help --
        ;;
    inspect)
        echo --name --functions --check-names --json --timeout --start-timeout --extensions --no-standard-extension --names -h --help --
        ;;
    replay)
        echo --timeout --start-timeout --junit --report --update-images --allow-paths --record --tree --workers --strict --offscreen \
            --share-display --fresh-settings --extensions --no-standard-extension --names -h --help --
        ;;
    doctor)
        echo -h --help
        ;;
    esac
}

_vantle()
{
    local words prefix=
    _vantle_words
    local last=$((${#words[@]} - 1))
    local current=${words[last]}
    if ((last == 0)); then
        mapfile -t COMPREPLY < <(compgen -W "record replay inspect doctor --help --version" -- "$current")
        return
    fi

    local program
    program=$(_vantle_program)
    if [[ -n $program ]]; then
        # What follows the program is the program's own.
        local kind=-f
        ((program == last)) && kind=-c
        mapfile -t COMPREPLY < <(compgen $kind -- "$current")
    elif ((last > 1)) && _vantle_value "${words[last - 1]}" "$current" "$prefix"; then
        return
    elif [[ $current == -* || ${words[0]} == doctor ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_vantle_options "${words[0]}")" -- "$current")
    elif [[ ${words[0]} == replay ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -c -- "$current")
    fi
}

complete -o filenames -F _vantle vantle

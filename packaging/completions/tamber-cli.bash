# bash completion for tamber-cli

_tamber_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local commands='identify devices ports read program verify erase blank auto inspect convert'
    local options='-C --device --port --only --simulate --socket --trace --json --quiet --help
        --version'
    local command='' folder=. word index
    local IFS=$' \t\n'

    for ((index = 1; index < COMP_CWORD; index++)); do
        word=${COMP_WORDS[index]}
        case $word in
            -C) folder=${COMP_WORDS[index + 1]}; ((index++)) ;;
            --device | --port | --only | --socket | --trace | --set | --calibration) ((index++)) ;;
            -*) ;;
            *) [[ -z $command && " $commands " == *" $word "* ]] && command=$word ;;
        esac
    done

    COMPREPLY=()
    case $previous in
        -C)
            compopt -o dirnames 2>/dev/null
            return ;;
        --device)
            IFS=$'\n'
            COMPREPLY=($(compgen -W "$(tamber-cli -C "$folder" -q devices 2>/dev/null |
                cut -c3- | awk '{ print $1 }')" -- "$current"))
            return ;;
        --port)
            COMPREPLY=($(compgen -W '1 2 3 4' -- "$current") $(compgen -G "/dev/serial/by-id/*"))
            compopt -o default 2>/dev/null
            return ;;
        --only)
            local done=''
            [[ $current == *,* ]] && done=${current%,*},
            COMPREPLY=($(compgen -P "$done" -W 'pm eeprom id config' -- "${current##*,}"))
            compopt -o nospace 2>/dev/null
            return ;;
        --socket | --trace)
            compopt -o default 2>/dev/null
            return ;;
        --calibration)
            COMPREPLY=($(compgen -W 'keep file drop' -- "$current"))
            return ;;
        --set)
            COMPREPLY=($(compgen -W '1= 2= 3= 4=' -- "$current"))
            compopt -o nospace 2>/dev/null
            return ;;
    esac

    if [[ $current == -* ]]; then
        case $command in
            ports) options+=' --set' ;;
            program) options+=' --force --as-is --calibration' ;;
            auto) options+=' --force --as-is --calibration --exact' ;;
            verify) options+=' --force --as-is --exact' ;;
            blank) options+=' --exact' ;;
            erase) options+=' --calibration' ;;
            convert) options+=' --force' ;;
            inspect) options+=' --strict' ;;
        esac
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    elif [[ -z $command ]]; then
        COMPREPLY=($(compgen -W "$commands" -- "$current"))
    elif [[ " read program verify auto inspect convert " == *" $command "* ]]; then
        IFS=$'\n'
        COMPREPLY=($(compgen -f -X '!*.[hH][eE][xX]' -- "$current") $(compgen -d -- "$current"))
        compopt -o filenames 2>/dev/null
    fi
}

complete -F _tamber_cli tamber-cli

# Completion of netxml's command line in bash.

_netxml()
{
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local commands="check format convert tree path validate schema"
    local common="--help --quiet --color --error-format"
    local several="--recursive --jobs"
    local schemas="--include-path --location --catalog --type-map --network-types --strict"
    local command="" i
    COMPREPLY=()

    # "--color=al" comes as three words: "--color", "=" and "al".
    if [[ $word == "=" ]]; then
        word=""
    elif [[ $previous == "=" ]]; then
        previous=${COMP_WORDS[COMP_CWORD-2]}
    fi

    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ " $commands " == *" ${COMP_WORDS[i]} "* ]]; then
            command=${COMP_WORDS[i]}
            break
        fi
    done
    if [[ -z $command ]]; then
        COMPREPLY=($(compgen -W "$commands --help --version" -- "$word"))
        return
    fi

    case $previous in
        --color)
            COMPREPLY=($(compgen -W "auto always never" -- "$word"))
            return ;;
        --error-format)
            COMPREPLY=($(compgen -W "text json" -- "$word"))
            return ;;
        --indent)
            COMPREPLY=($(compgen -W "2 4 8 tab" -- "$word"))
            return ;;
        -t | --to)
            COMPREPLY=($(compgen -W "UTF-8 UTF-16LE UTF-16BE GB2312 UTF-32LE UTF-32BE UTF-16 \
                UTF-32 GBK GB18030 UCS-4 UCS-4BE UCS-4LE" -- "${word^^}"))
            return ;;
        --lang)
            COMPREPLY=($(compgen -W "c c++" -- "$word"))
            return ;;
        schema)
            COMPREPLY=($(compgen -W "compile --help" -- "$word"))
            return ;;
        -j | --jobs | --max-errors)
            return ;;
    esac

    if [[ $word == -* ]]; then
        case $command in
            format) common="$common $several --indent --check --in-place --drop-doctype" ;;
            convert) common="$common --to --output" ;;
            validate) common="$common $several --schema --max-errors $schemas" ;;
            schema) common="$common --output --header --prefix --lang --namespace-map --depfile \
                --list-outputs $schemas" ;;
            *) common="$common $several" ;;
        esac
        COMPREPLY=($(compgen -W "$common" -- "$word"))
    else
        compopt -o filenames 2> /dev/null
        local IFS=$'\n'
        COMPREPLY=($(compgen -f -- "$word"))
    fi
}

complete -F _netxml netxml

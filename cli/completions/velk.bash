# What the last word can become is asked from the command: lines with a word, a tab and its description.

_velk()
{
    local cur prev words cword split line
    _init_completion -s || return

    local last=$cur
    $split && last=$prev=$cur
    while IFS= read -r line; do
        case $line in
            $'\tNETLIST')
                _filedir net
                ((${#COMPREPLY[@]})) || _filedir
                ;;
            $'\tFILE' | $'\tTABLE') _filedir ;;
            $'\t'*) ;;
            *)
                printf -v line '%q' "${line%%$'\t'*}"
                [[ $COMP_WORDBREAKS == *=* && $last == *=* ]] && line=${line#*=} # which is a word of its own to the shell
                COMPREPLY+=("$line")
                ;;
        esac
    done < <("${1/#\~\//"$HOME"/}" __complete "${words[@]:1:cword-1}" "$last" 2>/dev/null)
}

complete -F _velk velk

# What the last word can become is asked from the command: lines with a word, a tab and its description. Of that word it
# gets no value, since fish compares values in its own way.

function __velk_candidates
    set -l words (commandline -opc)
    set -l program (string replace -r '^~/' "$HOME/" -- $words[1])
    set -l beginning (commandline -ct | string match -r '^(?:-[^=]*=?|)')
    set -l lines ($program __complete $words[2..] "$beginning" 2>/dev/null)
    switch "$lines[1]"
        case \tNETLIST
            __fish_complete_suffix .net | string match -er '(/|[.]net)\z' # no other files
        case \tFILE \tTABLE
            __fish_complete_suffix ''
        case \t\*
        case \*
            set -l option (string match -e = -- $beginning)
            printf '%s\n' "$option"$lines
    end
end

complete -c velk -f -k -a '(__velk_candidates)'

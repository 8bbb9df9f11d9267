# Completion of fish for kelstd. The program answers: a new option needs no change here.
function __kelstd_complete
    set -l words (commandline -opc)
    set -l program $words[1]
    command -q -- $program; or set program kelstd
    set -l current (commandline -ct)
    set -l answer ($program complete fish (string escape -- $words[2..-1]) "$current" 2>/dev/null)
    switch "$answer[1]"
        case '*files*'
            __fish_complete_path "$current"
        case '*directories*'
            __fish_complete_directories "$current" ''
    end
    printf '%s\n' $answer[2..-1]
end
complete -c kelstd -f -a '(__kelstd_complete)'

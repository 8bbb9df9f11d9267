# Completion of bash for kelstd. The program answers: a new option needs no change here.
_kelstd()
{
    local program=$1 answer
    command -v -- "$program" >/dev/null 2>&1 || program=kelstd
    mapfile -t answer < <("$program" complete bash "$COMP_WORDBREAKS" \
        "${COMP_LINE:0:COMP_POINT}" 2>/dev/null)
    COMPREPLY=("${answer[@]:1}")
    case ${answer[0]} in
    *open*) compopt -o nospace ;;
    esac
    # Where nothing is proposed, bash completes names of files by itself.
    case ${answer[0]} in
    *files*) compopt -o default ;;
    *directories*) compopt -o dirnames ;;
    esac
}
complete -F _kelstd kelstd

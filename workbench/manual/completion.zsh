
_intake_workbench() {
    local current=${words[CURRENT]} before=${words[CURRENT-1]} command=''
    ((CURRENT > 2)) && command=${words[2]}
    local -a words
    local files
    _intake_workbench_words "$command" "$before" "$current"
    # A setting goes on behind its equals sign.
    compadd -S '' -- ${(M)words:#*=}
    compadd -- ${words:#*=}
    [[ -n $files ]] && _files
}
_intake_workbench "$@"

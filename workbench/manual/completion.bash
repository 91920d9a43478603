
_intake_workbench() {
    # Bash breaks words at "=", which belongs to a setting here; so the line is broken at blanks.
    local line=${COMP_LINE:0:COMP_POINT} current='' command='' words files
    local -a typed
    read -ra typed <<<"$line"
    local count=${#typed[@]}
    [[ $line = *' ' ]] || { current=${typed[-1]}; ((count -= 1)); }
    ((count > 1)) && command=${typed[1]}
    _intake_workbench_words "$command" "${typed[count - 1]}" "$current"

    # Bash puts what is found in the place of what stands behind the last sign it breaks words at.
    local broken='' word
    [[ $COMP_WORDBREAKS = *=* && $current = *=* ]] && broken=${current%"${current##*=}"}
    COMPREPLY=()
    for word in "${words[@]}"; do
        [[ $word = "$current"* ]] && COMPREPLY+=("$(printf %q "${word#"$broken"}")")
    done
    if [[ -n $files ]]; then
        compopt -o filenames 2>/dev/null
        while read -r word; do COMPREPLY+=("$word"); done < <(compgen -f -- "$current")
    fi
    [[ ${#COMPREPLY[@]} -eq 1 && ${COMPREPLY[0]} = *= ]] && compopt -o nospace 2>/dev/null
    return 0
}
complete -F _intake_workbench intake-workbench

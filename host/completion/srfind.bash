# Completion of srfind for bash: source it, or put it into the folder of bash-completion.
_srfind() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} name
    COMPREPLY=()
    case $before in
        -w | --where | -o | --or)
            # Names of properties, as one word each.
            while IFS= read -r name; do
                [[ ${name,,} == "${word,,}"* ]] && COMPREPLY+=("${name// /\\ }\\ ")
            done < <(srfind --criteria 2> /dev/null | sed -n 's/^[0-9]*:[0-9]*  //p' | sort -u)
            compopt -o nospace
            return
            ;;
        --sort)
            mapfile -t COMPREPLY < <(compgen -W "name folder" -- "$word")
            return
            ;;
        --open | --save | --delete)
            while IFS= read -r name; do
                [[ ${name,,} == "${word,,}"* ]] && COMPREPLY+=("${name// /\\ }")
            done < <(srfind --searches 2> /dev/null)
            return
            ;;
        --files-from | --related | --export)
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
            ;;
    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(srfind --help 2> /dev/null |
            grep -oE -- '--[a-z0-9-]+' | sort -u)" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -d -- "$word")
    fi
}
complete -o filenames -F _srfind srfind

# Completion of the orvello command for bash.
_orvello() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  local command="" action="" one
  COMPREPLY=()
  for one in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case $one in
      import | export | agenda | search | render | settings | backup | restore)
        [ -n "$command" ] || { command=$one; continue; } ;;
    esac
    if [ "$command" = settings ] && [ -z "$action" ] && [[ $one != -* ]]; then action=$one; fi
  done

  case $before in
    --view) mapfile -t COMPREPLY < <(compgen -W "day month year" -- "$word"); return ;;
    --language) mapfile -t COMPREPLY < <(compgen -W "en ru" -- "$word"); return ;;
    --measure) mapfile -t COMPREPLY < <(compgen -W "start turn edit" -- "$word"); return ;;
    --data) compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- "$word"); return ;;
    --date | --now | --from | --to | --screen | --dpi) return ;;
  esac

  if [[ $word == -* ]]; then
    local options="--data --now --language --help --version"
    case $command in
      "" | render) options+=" --view --date --screen --dpi" ;;&
      "") options+=" --new --measure" ;;
      export) options+=" --from --to" ;;
      agenda | search) options+=" --json" ;;
      restore) options+=" --list" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    return
  fi

  local words=""
  case $command in
    "") words="import export agenda search render settings backup restore" ;;
    render) [ "$before" = render ] && words="day month year" ;;
    settings)
      case $action in
        "") words="list get set export import" ;;
        get | set)
          [ "$before" = "$action" ] &&
            words=$(orvello settings list 2>/dev/null | tail -n +2 | cut -d' ' -f1) ;;
      esac ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
  case $command in
    "" | import | export) ;;
    render) [ "$before" = render ] && return ;;
    settings) [ "$action" = import ] || [ "$action" = export ] || return ;;
    *) return ;;
  esac
  compopt -o filenames
  mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$word")
}
complete -F _orvello orvello

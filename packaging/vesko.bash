# Bash completion of `vesko`: sub-commands, their options, dossier types,
# papers, stores and the print server's queues.
_vesko() {
  local cur prev words cword
  _init_completion || return
  local sous="init import export select print printers component"
  if [[ $cword -eq 1 ]]; then
    COMPREPLY=($(compgen -W "$sous --help --version" -- "$cur"))
    return
  fi
  case $prev in
    --db) _filedir vesko; return ;;
    --type) COMPREPLY=($(compgen -W "AIDE AIDANT" -- "$cur")); return ;;
    --paper) COMPREPLY=($(compgen -W "A4 A3 Letter" -- "$cur")); return ;;
    --printer)
      COMPREPLY=($(compgen -W "$(lpstat -e 2>/dev/null)" -- "$cur"))
      return ;;
    --pdf|--fallback-pdf|--text|--json) _filedir; return ;;
    --png|--dir) _filedir -d; return ;;
    --plugin) _filedir so; return ;;
  esac
  case ${words[1]} in
    init) COMPREPLY=($(compgen -W "--db --help" -- "$cur")) ;;
    import) [[ $cur == -* ]] && COMPREPLY=($(compgen -W "--db --help" -- "$cur")) || _filedir json ;;
    export) COMPREPLY=($(compgen -W "--db --help" -- "$cur")) ;;
    select) COMPREPLY=($(compgen -W "--db --fields --help" -- "$cur")) ;;
    print)
      COMPREPLY=($(compgen -W "--db --type --date --pdf --printer --text --json --png --preview
        --fallback-pdf --wait --timeout --copies --paper -o --help" -- "$cur")) ;;
    printers) COMPREPLY=($(compgen -W "--help" -- "$cur")) ;;
    component)
      if [[ $cword -eq 2 ]]; then
        COMPREPLY=($(compgen -W "register unregister info" -- "$cur"))
      else
        COMPREPLY=($(compgen -W "--plugin --dir --help" -- "$cur"))
      fi ;;
  esac
} && complete -F _vesko vesko

# Completes pelorin-cli: its commands, then the options that the command tells of itself.
_pelorin_cli() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command=${COMP_WORDS[1]}
  COMPREPLY=()
  if [ "$COMP_CWORD" -eq 1 ]; then
    COMPREPLY=($(compgen -W "passes track overlay align identify picture alignments elements update scan line scanners master --help --version" -- "$current"))
  elif [[ $current == -* ]]; then
    local options
    options=$(pelorin-cli "$command" --help 2>/dev/null | grep -oE -e '--[a-z][a-z-]*' | sort -u)
    COMPREPLY=($(compgen -W "$options" -- "$current"))
  elif [ "$previous" = --direction ]; then
    COMPREPLY=($(compgen -W "auto north south" -- "$current"))
  elif [ "$previous" = --stored ]; then
    COMPREPLY=($(compgen -W "auto received turned mirrored turned-mirrored" -- "$current"))
  elif [ "$previous" = --format ]; then
    COMPREPLY=($(compgen -W "text csv json" -- "$current"))
  else
    compopt -o filenames 2>/dev/null
    COMPREPLY=($(compgen -f -- "$current"))
  fi
}
complete -F _pelorin_cli pelorin-cli

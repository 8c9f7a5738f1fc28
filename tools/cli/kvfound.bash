# Completion of the command line of kvfound in bash.

_kvfound() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} words=
  # Bash takes --format=json for three words.
  if [[ $current == = ]]; then
    current=
  elif [[ $previous == = ]]; then
    previous=${COMP_WORDS[COMP_CWORD - 2]}
  fi

  case $previous in
    --format) words="table json csv" ;;
    --to) words="legacy exchange exchange-1.0 kvml" ;;
    --version) words="1.0" ;;
    --used-by | -o | --output | --unit-force | --unit-length) ;;
    *)
      if ((COMP_CWORD == 1)); then
        words="show convert check diff prune report --help --version"
      elif [[ $current == -* ]]; then
        case ${COMP_WORDS[1]} in
          show) words="--help --format --version" ;;
          convert) words="--help --to --strict --version" ;;
          check | diff) words="--help --version" ;;
          prune) words="--help --generated --used-by --version" ;;
          report) words="--help --output --unit-force --unit-length --version" ;;
        esac
      fi
      ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

# Where there is nothing to choose from, a file is meant.
complete -o bashdefault -o default -F _kvfound kvfound

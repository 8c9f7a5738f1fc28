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
    --format)
      case ${COMP_WORDS[1]} in
        check) words="text json sarif" ;;
        diff) words="text json" ;;
        *) words="table json csv" ;;
      esac
      ;;
    --to) words="legacy exchange exchange-1.0 kvml" ;;
    --version) words="1.0" ;;
    --by) words="number name" ;;
    --messages) words="text json" ;;
    --on-clash) words="refuse rename renumber skip replace" ;;
    --part) words="area line" ;;
    --name | --relative | --used-by | -o | --output | --unit-force | --unit-length) ;;
    *)
      if ((COMP_CWORD == 1)); then
        words="show convert check diff merge set add remove prune report --help --version"
      elif [[ $current == -* ]]; then
        case ${COMP_WORDS[1]} in
          show) words="--help --format --name --generated --part --version" ;;
          convert) words="--help --all --to --strict --version" ;;
          check) words="--help --format --version" ;;
          add) words="--help --version" ;;
          diff) words="--help --by --format --relative --version" ;;
          merge) words="--help --output --on-clash --dry-run --all --version" ;;
          set | remove) words="--help --name --generated --part --version" ;;
          prune) words="--help --generated --ignore-missing --keep-numbers --used-by --version" ;;
          report) words="--help --output --name --generated --part --unit-force --unit-length --version" ;;
        esac
        words+=" --messages --quiet"
      fi
      ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

# Where there is nothing to choose from, a file is meant.
complete -o bashdefault -o default -F _kvfound kvfound

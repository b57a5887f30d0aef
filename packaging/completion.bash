# Completion of zelview, zelreport, zelanalyzer and zelweb: the options that --help lists, the
# names of pages, and files.
_zelwbr3() {
  local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
  case $before in
    --page)
      mapfile -t COMPREPLY < <(compgen -W 'Main DataArea LogArea Parameters InfoCaches InfoActivity Sessions SysInfos SysDD DBAnalyzer History Default' -- "$word")
      return
      ;;
    --out | --events | --record | --screenshot | --config | --pdf | --*-file | --tls-*)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return
      ;;
  esac
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$("${COMP_WORDS[0]}" --help 2>/dev/null | grep -oE -- '--[a-z][a-z-]*')" -- "$word")
  else
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -- "$word")
  fi
}
complete -F _zelwbr3 zelview zelreport zelanalyzer zelweb

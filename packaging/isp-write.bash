# bash completion for isp-write(1)

_isp_write() {
  local cur prev words cword
  _init_completion || return
  local commands="program erase read compare check ports boards"
  local chips="vsk830 vsk630 rtd2120"
  local options="--port --board --speed --codes --simulated --fault --flash --json --quiet --strict
    --second --no-compare --pages --help --version"
  case $prev in
    --codes | --flash | --second) _filedir; return ;;
    --speed) COMPREPLY=($(compgen -W "{1..10}" -- "$cur")); return ;;
    --fault)
      COMPREPLY=($(compgen -W "unplugged busy-for-ever sda-stuck-low byte-refused
        flash-bit-flipped" -- "$cur"))
      return
      ;;
    --port | --board | --pages) return ;;
  esac
  if [[ $cur == -* ]]; then
    COMPREPLY=($(compgen -W "$options" -- "$cur"))
    return
  fi
  local word command=
  for word in "${words[@]:1:cword-1}"; do
    [[ " $commands " == *" $word "* ]] && command=$word && break
  done
  case $command in
    "") COMPREPLY=($(compgen -W "$commands" -- "$cur")) ;;
    erase) COMPREPLY=($(compgen -W "$chips" -- "$cur")) ;;
    program | read | compare)
      if [[ " $chips " == *" ${prev,,} "* ]]; then
        _filedir
      else
        COMPREPLY=($(compgen -W "$chips" -- "$cur"))
      fi
      ;;
    check) if [[ $prev == check ]]; then _filedir; else COMPREPLY=($(compgen -W "$chips" -- "$cur")); fi ;;
  esac
} && complete -F _isp_write isp-write

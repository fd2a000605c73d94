# Terminación de q19 en bash.
_q19() {
  local actual=${COMP_WORDS[COMP_CWORD]} anterior=${COMP_WORDS[COMP_CWORD - 1]} orden=${COMP_WORDS[1]} opciones
  COMPREPLY=()
  if ((COMP_CWORD == 1)); then
    mapfile -t COMPREPLY < <(compgen -W 'unir separar comprobar listar anteriores devoluciones xml ver iban nif --help --version' -- "$actual")
    return
  fi
  case $orden in
    unir) opciones='--salida --bloques --renovar --de-todos-modos --help' ;;
    separar) opciones='--salida --por --cada --reemplazar --help' ;;
    listar) opciones='--salida --referencia --solo-adeudos --bloques --horizontal --help' ;;
    ver) opciones='--registro --help' ;;
    devoluciones) opciones='--remesa --carpeta --json --csv --nueva --motivos --fecha-cobro --help' ;;
    xml) opciones='--salida --version --direcciones --omitir --cada --compacto --detalle --json --help' ;;
    comprobar) opciones='--json --fecha --anteriores --meses --help' ;;
    anteriores) opciones='--mandato --cuenta --referencia --nombre --json --help' ;;
    *) opciones='--help' ;;
  esac
  if [[ $actual == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$opciones" -- "$actual")
  elif [[ $orden == separar && $anterior == --por ]]; then
    mapfile -t COMPREPLY < <(compgen -W 'bloque acreedor fecha' -- "$actual")
  elif [[ $anterior == --@(carpeta|anteriores) || $orden == anteriores && $anterior != --@(mandato|cuenta|referencia|nombre) || $orden == separar && $anterior == @(-o|--salida) ]]; then
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -d -- "$actual")
  elif [[ $orden == xml && $anterior == --version ]]; then
    mapfile -t COMPREPLY < <(compgen -W '08 02' -- "$actual")
  elif [[ $anterior == --direcciones ]]; then
    mapfile -t COMPREPLY < <(compgen -W 'necesarias todas ninguna' -- "$actual")
  elif [[ $orden == @(unir|separar|comprobar|listar|devoluciones|xml|ver) && $anterior != --@(registro|motivos|fecha-cobro|cada) ]]; then
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -X '!*.@([qQ]19|[xX][mM][lL])' -- "$actual"; compgen -d -- "$actual")
  fi
}
complete -F _q19 q19

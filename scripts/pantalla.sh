# Si hay pantalla donde abrir una ventana; se incluye con "." detrás de scripts/preparar.sh.

# ¿Atiende alguien en el zócalo local que se da?
atiende() {
  perl -MSocket -e 'socket(my $s, PF_UNIX, SOCK_STREAM, 0) or exit 1;
    exit !(connect($s, pack_sockaddr_un($ARGV[0])) || connect($s, pack_sockaddr_un("\0$ARGV[0]")))' -- "$1"
}

hay_x11() {
  local d=${DISPLAY-} n
  [[ $d =~ ^(unix)?:([0-9]+)(\.[0-9]+)?$ ]] && { atiende "/tmp/.X11-unix/X${BASH_REMATCH[2]}"; return; }
  [[ $d =~ ^\[?([^][]+)\]?:([0-9]+)(\.[0-9]+)?$ ]] || return 1
  n=$((6000 + BASH_REMATCH[2]))
  timeout 3 bash -c '</dev/tcp/"$1"/"$2"' _ "${BASH_REMATCH[1]}" "$n" 2>/dev/null
}

hay_wayland() {
  local w=${WAYLAND_DISPLAY-}
  [[ $w ]] || return 1
  [[ $w == /* ]] || w=${XDG_RUNTIME_DIR-}/$w
  atiende "$w"
}

# Qt abre la ventana en X11; donde solo hay Wayland necesita además su complemento.
hay_pantalla() {
  [[ ${QT_QPA_PLATFORM-} ]] && return 0
  hay_x11 && return 0
  hay_wayland && instalar qt6-wayland
}

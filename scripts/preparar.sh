# Lo común a las órdenes del proyecto; se incluye con ".". Espera en `raiz` la carpeta del proyecto.

# Lo que hace falta para construir el programa y, además, para sus pruebas y para buscar fallos con libFuzzer.
paquetes_programa=(g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools qt6-translations-l10n libcli11-dev
                   libgl-dev fonts-liberation)
paquetes_pruebas=(libgtest-dev libgmock-dev libxml2-utils poppler-utils python3)
paquetes_fuzz=(clang libclang-rt-14-dev)
paquetes_analisis=(clang clang-tidy cppcheck libbenchmark-dev)

decir() { printf '%s\n' "$*" >&2; }

# instalar PAQUETE…: instala los que falten, y no pide nada si no falta ninguno.
instalar() {
  local p faltan=()
  local -A puestos=()
  while read -r p; do puestos[$p]=1; done < <(
    dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null | sed -n 's/^installed //p')
  for p in "$@"; do [[ ${puestos[$p]-} ]] || faltan+=("$p"); done
  ((${#faltan[@]})) || return 0

  decir "Faltan paquetes de Debian; se instalan: ${faltan[*]}"
  local como=()
  if ((EUID)); then
    command -v sudo >/dev/null || { decir "Hace falta sudo, o ser root, para instalarlos."; return 1; }
    como=(sudo)
  fi
  # Solo si las listas no conocen alguno hay que ponerlas al día.
  local orden=("${como[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${faltan[@]}")
  apt-get install -s --no-install-recommends "${faltan[@]}" >/dev/null 2>&1 || "${como[@]}" apt-get update >&2
  "${orden[@]}" >&2 || { "${como[@]}" apt-get update >&2 && "${orden[@]}" >&2; }
}

# configurar PRESET [OPCIÓN…]: prepara build/PRESET, desde cero si la carpeta del proyecto ha cambiado de sitio.
configurar() {
  local preset=$1 dir=$raiz/build/$1
  shift
  if [[ -f $dir/CMakeCache.txt ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$raiz" "$dir/CMakeCache.txt"; then
    decir "El proyecto ha cambiado de carpeta: se construye de nuevo build/$preset"
    rm -rf "$dir"
  fi
  (cd "$raiz" && cmake --preset "$preset" -DAGRUPAR=ON "$@")
}

# nuevo_debian CARPETA REGISTRO: hace en ella un Debian 12 mínimo, del espejo de este equipo. Hace falta ser root.
nuevo_debian() {
  local espejo
  espejo=$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' | head -n1)
  debootstrap --variant=minbase bookworm "$1" "$espejo" >"$2"
}

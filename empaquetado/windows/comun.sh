# Lo común a las órdenes de esta carpeta; se incluye con ".", después de scripts/preparar.sh.

# Lo que enlaza el programa de Windows se guarda fuera del proyecto y sirve para todas sus copias.
cache=${XDG_CACHE_HOME:-$HOME/.cache}/unirq19/windows

paquetes_toolkit=(g++-mingw-w64-x86-64-posix cmake ninja-build qt6-base-dev qt6-base-dev-tools dpkg-dev
                  googletest libcli11-dev)

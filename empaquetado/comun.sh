# Lo común a las órdenes de empaquetado; se incluye con "." detrás de scripts/preparar.sh. Espera `raiz`.

# La versión está en un solo sitio: el project() de CMakeLists.txt.
version=$(sed -n 's/^project(UnirQ19 VERSION \([0-9.]*\).*/\1/p' "$raiz/CMakeLists.txt")
dist=$raiz/dist

# La fecha de todo lo que se empaqueta, para que dos construcciones den los mismos bytes: la del último commit.
if [[ -z ${SOURCE_DATE_EPOCH-} ]]; then
  SOURCE_DATE_EPOCH=$(git -C "$raiz" log -1 --format=%ct 2>/dev/null || stat -c %Y "$raiz/CMakeLists.txt")
fi
export SOURCE_DATE_EPOCH

# Donde se publica: AppStream solo admite capturas que estén en la red. La de aquí no existe: quien publique dice la suya.
sitio=${SITIO:-https://unirq19.example}

# Ninguna fecha de la carpeta pasa de esa.
fechar() { find "$1" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +; }

# Lo que enlaza el programa de Windows se guarda fuera del proyecto y sirve para todas sus copias.
cache_windows=${XDG_CACHE_HOME:-$HOME/.cache}/unirq19/windows
paquetes_toolkit=(g++-mingw-w64-x86-64-posix cmake ninja-build qt6-base-dev qt6-base-dev-tools dpkg-dev
                  googletest libcli11-dev)
paquetes_windows=(nsis cmark-gfm qt6-translations-l10n fonts-liberation)
paquetes_wine=(wine wine64 locales fonts-wine fonts-dejavu-core xvfb xauth openbox xdotool imagemagick poppler-utils)

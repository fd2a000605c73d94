# Construcción cruzada con la mingw-w64 de Debian, en su variante con hilos POSIX (la de std::thread).
# TOOLKIT es la carpeta que escribe empaquetado/windows/toolkit.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(mingw x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw}-windres)

# Lo que se enlaza es de Windows; los programas que se ejecutan al construir, de este equipo.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TOOLKIT)
set(CMAKE_FIND_ROOT_PATH /usr/${mingw} ${TOOLKIT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(QT_HOST_PATH /usr)

# Sin DLL al lado, ni de GCC ni de los hilos; y sin la fecha en el ejecutable.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT "-s")

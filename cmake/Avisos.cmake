# Un solo juego de avisos para todo lo propio; un aviso detiene la construcción.
add_library(avisos INTERFACE)
target_compile_options(avisos INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 lo da en falso al insertar o sumar cadenas con optimización (error 105651 de GCC).
  target_compile_options(avisos INTERFACE -Wno-restrict)
endif()

# biblioteca(NOMBRE FUENTES… [ENLAZA…]): biblioteca estática que ve su carpeta y lo que enlaza.
function(biblioteca nombre)
  cmake_parse_arguments(B "" "" "FUENTES;ENLAZA" ${ARGN})
  add_library(${nombre} STATIC ${B_FUENTES})
  target_include_directories(${nombre} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${nombre} PUBLIC ${B_ENLAZA} PRIVATE avisos)
  # Un literal sin más no es un QString: se escribe u"…"_s, que no se convierte al ejecutar.
  target_compile_definitions(${nombre} PRIVATE QT_NO_CAST_FROM_ASCII)
  agrupar(${nombre})
endfunction()

# Un solo juego de avisos para todo lo propio; un aviso detiene la construcción.
add_library(avisos INTERFACE)
target_compile_options(avisos INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror)

# biblioteca(NOMBRE FUENTES… [ENLAZA…]): biblioteca estática que ve su carpeta y lo que enlaza.
function(biblioteca nombre)
  cmake_parse_arguments(B "" "" "FUENTES;ENLAZA" ${ARGN})
  add_library(${nombre} STATIC ${B_FUENTES})
  target_include_directories(${nombre} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${nombre} PUBLIC ${B_ENLAZA} PRIVATE avisos)
endfunction()

# Para construir entero y desde cero (./probar, ./ejecutar): los fuentes de cada biblioteca se compilan agrupados y
# las cabeceras de las pruebas se precompilan, que es leer las del toolkit una vez y no una por fichero. Sin ello, cada
# fichero demuestra que incluye lo que usa.
option(AGRUPAR "Agrupa los fuentes y precompila las cabeceras de las pruebas" OFF)

# agrupar(BIBLIOTECA): compila juntos sus fuentes.
function(agrupar biblioteca)
  if(AGRUPAR)
    set_target_properties(${biblioteca} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    # Visto desde un grupo, lo anónimo de un fuente parece venir de una cabecera.
    target_compile_options(${biblioteca} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  endif()
endfunction()

# portadora(NOMBRE ENLAZA… CABECERAS…): unas cabeceras precompiladas con lo que enlaza, y nada más.
function(portadora nombre)
  cmake_parse_arguments(P "" "" "ENLAZA;CABECERAS" ${ARGN})
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${nombre}.cpp CONTENT "")
  add_library(${nombre} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${nombre}.cpp)
  target_link_libraries(${nombre} PRIVATE ${P_ENLAZA} avisos)
  target_precompile_headers(${nombre} PRIVATE ${P_CABECERAS})
endfunction()

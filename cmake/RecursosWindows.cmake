# recursos_windows(OBJETIVO DESCRIPCION): da al ejecutable de Windows su icono, su versión, que es la del proyecto, y su
# manifiesto. En los demás sistemas no hace nada.
function(recursos_windows objetivo DESCRIPCION)
  if(NOT WIN32)
    return()
  endif()
  set(plantillas ${PROJECT_SOURCE_DIR}/empaquetado/windows)
  set(NOMBRE ${objetivo})
  configure_file(${plantillas}/recursos.rc.in ${objetivo}.rc @ONLY)
  configure_file(${plantillas}/programa.manifest.in ${objetivo}.manifest @ONLY)
  target_sources(${objetivo} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${objetivo}.rc)
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${objetivo}.rc PROPERTIES
    OBJECT_DEPENDS "${CMAKE_CURRENT_BINARY_DIR}/${objetivo}.manifest;${PROJECT_SOURCE_DIR}/app/iconos/unirq19.ico")
endfunction()

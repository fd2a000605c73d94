# Con PRECOMPILADOS, las cabeceras del toolkit se leen una vez por construcción y no una por fichero. Es para
# construir entero y desde cero (./probar); sin ello, cada fichero demuestra que incluye lo que usa.
option(PRECOMPILADOS "Precompila las cabeceras del toolkit" OFF)

# enlaza_con(BIBLIOTECA RESULTADO DESTINOS…): ON si algún destino, o lo que enlaza, es la biblioteca.
function(enlaza_con biblioteca resultado)
  set(${resultado} OFF PARENT_SCOPE)
  set(vistos "")
  set(pendientes ${ARGN})
  while(pendientes)
    list(POP_FRONT pendientes destino)
    if(destino STREQUAL biblioteca)
      set(${resultado} ON PARENT_SCOPE)
      return()
    endif()
    if(TARGET "${destino}" AND NOT destino IN_LIST vistos)
      list(APPEND vistos ${destino})
      get_target_property(suyas ${destino} INTERFACE_LINK_LIBRARIES)
      if(suyas)
        list(APPEND pendientes ${suyas})
      endif()
    endif()
  endwhile()
endfunction()

# Cada portadora no es más que unas cabeceras compiladas con lo que enlaza.
function(portadora nombre)
  cmake_parse_arguments(P "" "" "ENLAZA;CABECERAS" ${ARGN})
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${nombre}.cpp CONTENT "")
  add_library(${nombre} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${nombre}.cpp)
  set_target_properties(${nombre} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_link_libraries(${nombre} PRIVATE ${P_ENLAZA} avisos)
  target_precompile_headers(${nombre} PRIVATE ${P_CABECERAS})
endfunction()

set(cabeceras_estandar <algorithm> <cmath> <filesystem> <functional> <map> <memory> <optional> <string> <string_view>
    <vector>)
set(cabeceras_core <QDate> <QDateTime> <QDir> <QFile> <QFileInfo> <QHash> <QList> <QString> <QStringList> <QVariant>)
set(cabeceras_ventanas <QAbstractItemModel> <QApplication> <QComboBox> <QDialog> <QFont> <QKeyEvent> <QLabel>
    <QLineEdit> <QListView> <QMainWindow> <QMessageBox> <QPainter> <QPushButton> <QTableView> <QTimer> <QWidget>)

if(PRECOMPILADOS)
  # Con las cabeceras así, GCC 12 da en falso dos avisos más al insertar en cadenas (el mismo error 105651).
  target_compile_options(avisos INTERFACE -Wno-error=array-bounds -Wno-error=stringop-overflow)
  portadora(precompilado_core ENLAZA Qt6::Core CABECERAS ${cabeceras_estandar} ${cabeceras_core})
  portadora(precompilado_ventanas
    ENLAZA Qt6::Widgets CABECERAS ${cabeceras_estandar} ${cabeceras_core} ${cabeceras_ventanas})
endif()

# precompilar(DESTINO PORTADORA ENLAZADAS…): le da las cabeceras ya compiladas; si no se dice de qué portadora, las
# que correspondan a lo que enlaza.
function(precompilar destino portadora)
  if(NOT PRECOMPILADOS)
    return()
  endif()
  if(NOT portadora)
    enlaza_con(Qt6::Widgets ventanas ${ARGN})
    enlaza_con(Qt6::Core core ${ARGN})
    if(ventanas)
      set(portadora precompilado_ventanas)
    elseif(core)
      set(portadora precompilado_core)
    endif()
  endif()
  if(portadora)
    target_precompile_headers(${destino} REUSE_FROM ${portadora})
  endif()
endfunction()

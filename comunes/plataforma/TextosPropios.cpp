#include "comunes/plataforma/TextosPropios.h"

#include <array>
#include <string_view>

namespace comunes {

namespace {

struct Texto {
  std::string_view original;
  const char* propio;
};

constexpr std::array kTextos{
    Texto{"Ctrl", "Ctrl"},
    Texto{"Shift", "Mayús"},
    Texto{"Del", "Supr"},
    Texto{"Drive", "Unidad"},
    Texto{"Folder", "Carpeta"},
    Texto{"File Folder", "Carpeta de archivos"},
    Texto{"Go to the parent directory", "Ir al directorio superior"},
    Texto{"Change to list view mode", "Cambiar al modo de vista de lista"},
    Texto{"Select Color", "Seleccione un color"},
    Texto{"Pages", "Páginas"},
    Texto{"Off", "No"},
    Texto{"Double Sided Printing", "Impresión a doble cara"},
    Texto{"Long side binding", "Encuadernada por el lado largo"},
    Texto{"Short side binding", "Encuadernada por el lado corto"},
    Texto{"Specify pages or ranges separated by commas. Ranges are specified by two numbers separated by a "
          "hyphen. "
          "E.g: 3,5-7,9 prints pages 3, 5, 6, 7 and 9.",
          "Páginas o intervalos separados por comas. Un intervalo son dos números separados por un guion: "
          "3,5-7,9 "
          "imprime las páginas 3, 5, 6, 7 y 9."},
    Texto{"%1 does not follow the correct syntax. Please use ',' to separate ranges and pages, '-' to define "
          "ranges "
          "and make sure ranges do not intersect with each other.",
          "%1 no está bien escrito. Separe páginas e intervalos con «,», los extremos de un intervalo con "
          "«-» y "
          "compruebe que ninguno se cruza con otro."},
    Texto{"Invalid Pages Definition", "Páginas mal indicadas"},
    Texto{"Page Setup Conflicts", "Opciones de página incompatibles"},
    Texto{"Advanced Option Conflicts", "Opciones avanzadas incompatibles"},
    Texto{"Duplex Settings Conflicts", "Opciones de doble cara incompatibles"},
    Texto{"There are conflicts in page setup options. Do you want to fix them?",
          "Hay opciones de página incompatibles. ¿Quiere corregirlas?"},
    Texto{"There are conflicts in some advanced options. Do you want to fix them?",
          "Hay opciones avanzadas incompatibles. ¿Quiere corregirlas?"},
    Texto{"There are conflicts in duplex settings. Do you want to fix them?",
          "Hay opciones de doble cara incompatibles. ¿Quiere corregirlas?"},
    Texto{"There are conflicts in some options. Please fix them.", "Hay opciones incompatibles. Corríjalas."},
    Texto{"Critical Error:", "Error crítico:"}};

}  // namespace

QString TextosPropios::translate(const char*, const char* texto, const char*, int) const {
  for (const Texto& t : kTextos)
    if (t.original == texto) return QString::fromUtf8(t.propio);
  return {};
}

}  // namespace comunes

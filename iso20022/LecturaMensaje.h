#pragma once

#include <QString>
#include <QStringList>
#include <filesystem>
#include <memory>
#include <vector>

#include "ficheros/FicheroProvisional.h"
#include "iso20022/Aviso.h"
#include "remesa/Fichero.h"
#include "remesa/ListaRegistros.h"

namespace iso20022 {

/// Un pain.008 hecho registros.
struct MensajeLeido {
  remesa::ListaRegistros registros;
  std::vector<AvisoLectura> avisos;  ///< Lo que los registros no dicen, en el orden del mensaje.
  /// Por qué no se toma, en una frase sin punto: es otra cosa, o lleva adeudos entre empresas. Entonces no
  /// hay registros.
  QString rechazo;
};

/// Lee un pain.008.001.02 o .08 en los registros que serían los suyos: 01, bloques de 02, adeudos con sus 004
/// y 006 donde hagan falta, 04, 05 y 99. Lanza ErrorEjecucion si no se puede leer o no es un XML como debe
/// (321, con la línea).
MensajeLeido LeerMensaje(const std::filesystem::path& ruta, const remesa::AvanceLectura& avance = {});

/// Un pain.008 cuyos registros no están en memoria.
struct MensajeEnFichero {
  /// Los mismos, de 600 bytes con CR LF; vacío si no se toma.
  std::unique_ptr<ficheros::FicheroProvisional> registros;
  QStringList avisos;  ///< Resumidos.
  QString rechazo;
};

/// Lo mismo, con los registros en un fichero provisional de esa carpeta. Lanza además lo que él.
MensajeEnFichero LeerMensajeEnFichero(const std::filesystem::path& ruta, const std::filesystem::path& carpeta,
                                      const remesa::AvanceLectura& avance = {});

}  // namespace iso20022

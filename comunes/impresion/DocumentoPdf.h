#pragma once

#include <QString>
#include <filesystem>
#include <memory>

#include "comunes/impresion/Trabajo.h"

namespace comunes {

/// La impresora propia del programa: un PDF en A4, con la zona imprimible a 73 twips de los lados y 567 de
/// arriba y abajo. El fichero aparece, entero, al confirmar; antes, `destino` queda como estaba. Lanza
/// ficheros::ErrorEjecucion.
class DocumentoPdf {
 public:
  DocumentoPdf(const std::filesystem::path& destino, bool apaisado, const QString& titulo);
  ~DocumentoPdf();
  DocumentoPdf(const DocumentoPdf&) = delete;
  DocumentoPdf& operator=(const DocumentoPdf&) = delete;

  TrabajoImpresion& trabajo();
  /// El error que haya habido al escribir, para no seguir dibujando en balde.
  void comprobar();
  void confirmar();

 private:
  struct Interior;
  std::unique_ptr<Interior> interior_;
};

}  // namespace comunes

#include <QPrinterInfo>

#include "comunes/impresion/Impresora.h"

namespace comunes {

std::vector<InfoImpresora> ListaDeImpresoras() {
  std::vector<InfoImpresora> lista;
  for (const QPrinterInfo& info : QPrinterInfo::availablePrinters()) {
    lista.push_back({0, info.makeAndModel(), info.printerName(), info.location()});
  }
  return lista;
}

int ShowPrinterProperties(quintptr, const QString&) {
  return 0;
}

}  // namespace comunes

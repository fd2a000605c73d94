#include "comunes/impresion/ImprimirRejilla.h"

#include "comunes/impresion/Listado.h"

namespace comunes {

bool ImprimirRejilla(TrabajoImpresion& impresora, Rejilla& rejilla, const QString& titulo, bool marco,
                     const QString& subtitulo, bool ajustar, int desde, int hasta, bool terminar,
                     bool conFecha, const QString& lineas, const AvanceImpresion& avance) {
  const int fila = rejilla.Row();
  const int columna = rejilla.Col();
  const int filaSel = rejilla.RowSel();
  const int columnaSel = rejilla.ColSel();
  rejilla.PonerVisible(false);

  Listado listado(impresora, rejilla, {titulo, subtitulo, conFecha}, marco, ajustar, avance);
  const int primera = desde == -1 ? rejilla.FixedRows() : desde;
  const int ultima = hasta == -1 ? rejilla.Rows() - 1 : hasta;
  const bool completa = listado.empezar() && listado.filas(primera, ultima) && listado.bloque(lineas);
  if (completa && terminar) impresora.Terminar();

  rejilla.PonerRow(fila);
  rejilla.PonerCol(columna);
  rejilla.PonerRowSel(filaSel);
  rejilla.PonerColSel(columnaSel);
  rejilla.PonerVisible(true);
  return completa;
}

bool ImprimirSecciones(TrabajoImpresion& impresora, Rejilla& rejilla,
                       const std::vector<SeccionListado>& secciones, const QString& subtitulo,
                       const QString& lineas, const AvanceImpresion& avance) {
  rejilla.PonerVisible(false);
  Listado listado(impresora, rejilla, {{}, subtitulo, true}, true, true, avance);
  bool completa = true;
  for (const SeccionListado& seccion : secciones)
    completa = completa && listado.seccion(seccion);
  completa = completa && listado.bloque(lineas);
  rejilla.PonerVisible(true);
  return completa;
}

}  // namespace comunes

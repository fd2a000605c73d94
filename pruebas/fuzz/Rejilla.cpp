// Columnas por especificación y Subtotales. La entrada, por líneas en Windows-1252: especificación, tipos de
// columna, grupo, plantilla, etiqueta, opción y títulos que se suman (separados por ";"); y una línea por
// fila, con sus celdas separadas por ";". La que empieza por "!" queda oculta.
#include "comunes/rejilla/Rejilla.h"

#include <algorithm>

#include "Objetivo.h"
#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/rejilla/Importe.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Orden.h"
#include "comunes/rejilla/Subtotales.h"
#include "ficheros/ErrorEjecucion.h"

using namespace comunes;
using fuzz::Exigir;

namespace {

using namespace Qt::StringLiterals;

constexpr int kMaxFilas = 60;

using Filas = std::vector<QStringList>;

/// Los textos de las filas, sin celdas vacías al final: puede haber más columnas que antes. Con `soloDatos`,
/// sin las filas insertadas.
Filas Textos(const Rejilla& rejilla, bool soloDatos) {
  Filas filas;
  for (int f = rejilla.FixedRows(); f < rejilla.Rows(); ++f) {
    if (soloDatos && rejilla.RowData(f) > 0) continue;
    QStringList celdas;
    for (int c = 0; c < rejilla.Cols(); ++c)
      celdas += rejilla.TextMatrix(f, c);
    while (!celdas.isEmpty() && celdas.last().isEmpty())
      celdas.removeLast();
    filas.push_back(celdas);
  }
  return filas;
}

/// false si acaba en un error de ejecución; cualquier otra cosa es un fallo.
template <class Accion>
bool Hacer(const Rejilla& rejilla, Accion&& accion) {
  bool hecho = true;
  try {
    accion();
  } catch (const ficheros::ErrorEjecucion&) {
    hecho = false;
  }
  Exigir(rejilla.Redraw() && rejilla.Visible(), "la rejilla se vuelve a ver, también tras un error");
  return hecho;
}

void MirarTotal(const Rejilla& rejilla, const QString& titulo, const QString& etiqueta) {
  const int columna = BuscarColumna(rejilla, titulo, true);
  const int ultima = rejilla.Rows() - 1;
  if (columna < 0 || rejilla.TextMatrix(ultima, columna) == etiqueta) return;
  Diezmilesimas suma = 0;
  for (int f = rejilla.FixedRows(); f < rejilla.Rows(); ++f)
    if (rejilla.RowData(f) < 1 && rejilla.RowHeight(f) > 0)
      suma += LeerImporte(rejilla.TextMatrix(f, columna));
  Exigir(rejilla.TextMatrix(ultima, columna) == FormatoCelda(suma), "el total es la suma de lo que se ve");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  PonerAvisador([](GradoAviso, const QString&, const QString&) {});
  PonerFechaActual(QDate(2026, 11, 25));
  PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain));
  fuzz::Entrada entrada(datos, largo);
  const auto linea = [&] { return DesdeWindows1252(entrada.hasta('\n')); };

  Rejilla rejilla(u"prueba"_s);
  PrepararRejilla(rejilla, linea());
  rejilla.PonerTag(linea());
  const QString grupo = linea();
  const QString plantilla = linea();
  const QString etiqueta = linea();
  const QString opcion = linea();
  const QStringList sumados = linea().split(u';', Qt::SkipEmptyParts);
  for (int f = rejilla.FixedRows(); !entrada.resto().empty() && f < kMaxFilas; ++f) {
    QString celdas = linea();
    const bool oculta = celdas.startsWith(u'!');
    if (oculta) celdas.remove(0, 1);
    const QStringList partes = celdas.split(u';');
    for (int c = 0; c < std::min<qsizetype>(partes.size(), rejilla.Cols()); ++c)
      PonerCelda(rejilla, f, c, partes[c]);
    if (oculta) rejilla.PonerRowHeight(f, 0);
  }

  Filas antes = Textos(rejilla, true);
  const auto subtotales = [&] { Subtotales(grupo, rejilla, plantilla, etiqueta, opcion, sumados); };
  constexpr int kMuchas = 100;  // con "#30000" crece hasta ella, y mirarlas todas sería no acabar
  if (!Hacer(rejilla, subtotales) || rejilla.Cols() > kMuchas) return 0;
  Filas despues = Textos(rejilla, true);
  Exigir(despues.size() == antes.size(), "los subtotales conservan las filas");
  if (grupo.isEmpty() || opcion == "NOSORT"_L1)
    Exigir(despues == antes, "sin ordenar, las filas quedan como estaban");
  for (const QString& titulo : sumados)
    MirarTotal(rejilla, titulo, grupo.isEmpty() ? plantilla : u"Total general"_s);
  // Otro formato de fecha puede perder lo que ordenaba: el mes sin su año.
  if (QStringList{"", "NOSORT", "dd/mm/yyyy", "dd mmm yyyy", "mmmm yyyy", "yyyy"}.contains(opcion)) {
    const Filas una = Textos(rejilla, false);
    Exigir(Hacer(rejilla, subtotales) && Textos(rejilla, false) == una, "repetir los subtotales da lo mismo");
  }

  rejilla.QuitarMarcadas();
  antes = Textos(rejilla, false);
  for (int c = 0; c < rejilla.Cols(); ++c) {
    rejilla.PonerTag({});
    Exigir(Hacer(rejilla, [&] { OrdenarColumna(rejilla, c, true); }), "por texto siempre se puede ordenar");
  }
  despues = Textos(rejilla, false);
  std::ranges::sort(antes);
  std::ranges::sort(despues);
  Exigir(antes == despues, "ordenar conserva las filas");
  return 0;
}

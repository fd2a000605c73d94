#include "comunes/rejilla/Subtotales.h"

#include <QCursor>
#include <QGuiApplication>

#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Orden.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

/// Gris claro, RGB 192,192,192.
constexpr int kGrisTotales = 12632256;

/// El reloj de arena mientras vive; sin aplicación gráfica no hay puntero que cambiar.
class Reloj {
 public:
  Reloj() : hay_(qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr) {
    if (hay_) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  }
  ~Reloj() {
    if (hay_) QGuiApplication::restoreOverrideCursor();
  }
  Reloj(const Reloj&) = delete;
  Reloj& operator=(const Reloj&) = delete;

 private:
  bool hay_;
};

/// Un par de filas tras cada grupo, la primera con su etiqueta. Las filas ocultas no cambian de grupo. Todos
/// los pares se insertan de una pasada, para que muchos grupos no cuesten su cuadrado.
void insertarGrupos(Rejilla& rejilla, int grupo, int etiqueta, const QString& plantilla) {
  std::vector<int> antesDe;
  QStringList valores;
  bool hayAnterior = false;
  QString anterior;
  for (int f = 1; f < rejilla.Rows(); ++f) {
    if (rejilla.RowHeight(f) < 1) continue;
    const QString& valor = rejilla.TextMatrix(f, grupo);
    if (hayAnterior && valor != anterior) {
      antesDe.push_back(f);
      valores.append(anterior);
    }
    anterior = valor;
    hayAnterior = true;
  }
  if (hayAnterior) {
    antesDe.push_back(rejilla.Rows());
    valores.append(anterior);
  }
  rejilla.InsertarPares(antesDe);
  for (std::size_t i = 0; i < antesDe.size(); ++i) {
    const int fila = antesDe[i] + 2 * static_cast<int>(i);
    rejilla.PonerRowData(fila, 1);
    rejilla.PonerRowData(fila + 1, 1);
    PonerCelda(rejilla, fila, etiqueta, QString(plantilla).replace(u'?', valores[static_cast<qsizetype>(i)]));
  }
}

void sumarGrupos(Rejilla& rejilla, int columna) {
  int primera = 1;
  for (int f = 1; f < rejilla.Rows(); ++f) {
    if (rejilla.RowData(f) < 1) continue;
    if (f > primera) {
      const QString suma = SumarColumna(rejilla, columna, primera, f - 1);
      EscribirCelda(rejilla, f, columna, suma, -1, kGrisTotales, u"D"_s);
    }
    primera = f + 1;
  }
}

void ponerTotal(Rejilla& rejilla, int desde, const QString& etiqueta, int columnaEtiqueta,
                const QStringList& titulos) {
  const int total = rejilla.Rows();
  rejilla.PonerRows(total + 1);
  rejilla.PonerRowData(total, 1);
  if (columnaEtiqueta >= 0) PonerCelda(rejilla, total, columnaEtiqueta, etiqueta);
  for (const QString& titulo : titulos) {
    const int columna = BuscarColumna(rejilla, titulo);
    const QString suma = SumarColumna(rejilla, columna, desde, total);
    EscribirCelda(rejilla, total, columna, suma, -1, kGrisTotales, u"D"_s);
  }
}

}  // namespace

void Subtotales(const QString& tituloGrupo, Rejilla& rejilla, const QString& plantilla,
                const QString& tituloEtiqueta, const QString& opcion, const QStringList& titulosTotal) {
  const Reloj reloj;
  const Oculta oculta(rejilla);
  const SinRedibujo sinRedibujo(rejilla);
  rejilla.QuitarMarcadas();

  const bool conGrupo = !tituloGrupo.isEmpty();
  int grupo = -1;
  if (conGrupo) {
    grupo = BuscarColumna(rejilla, tituloGrupo);
    rejilla.PonerCol(grupo);
    if (opcion.isEmpty()) {
      OrdenarColumna(rejilla);
      rejilla.PonerVisible(false);
    } else if (opcion != u"NOSORT") {
      OrdenarFechas(rejilla, grupo, opcion);
    }
  }
  const int etiqueta = tituloEtiqueta.isEmpty() ? grupo : BuscarColumna(rejilla, tituloEtiqueta);
  if (conGrupo) {
    insertarGrupos(rejilla, grupo, etiqueta, plantilla);
    for (const QString& titulo : titulosTotal)
      sumarGrupos(rejilla, BuscarColumna(rejilla, titulo));
  }

  ponerTotal(rejilla, 1, conGrupo ? u"Total general"_s : plantilla, etiqueta, titulosTotal);
}

void FilaTotal(Rejilla& rejilla, int desde, const QString& etiqueta, const QString& tituloEtiqueta,
               const QString& tituloTotal) {
  ponerTotal(rejilla, desde, etiqueta, BuscarColumna(rejilla, tituloEtiqueta), {tituloTotal});
}

}  // namespace comunes

#include "comunes/herramientas/CargarGrabarTabla.h"

#include <QFileInfo>
#include <algorithm>

#include "comunes/campos/Blancos.h"
#include "comunes/herramientas/CargarGrabar.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/LecturaTexto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t kTanda = 100;
constexpr int kFilasPorPaso = 1000;  // entre dos miradas a si hay que detenerse

/// Deja la rejilla con una sola fila de datos, en blanco.
void vaciar(comunes::Rejilla& rejilla) {
  const int primera = rejilla.FixedRows();
  rejilla.PonerRows(primera + 1);
  for (int columna = 0; columna < rejilla.Cols(); ++columna)
    rejilla.PonerTextMatrix(primera, columna, {});
}

/// false si se detuvo, y la rejilla queda vacía.
bool llenar(comunes::Rejilla& rejilla, const QString& texto) {
  const comunes::Reloj reloj;
  comunes::Avance avance(u"Cargando la tabla…"_s);
  const comunes::SinRedibujo quieta(rejilla);
  vaciar(rejilla);
  int fila = rejilla.FixedRows();
  qsizetype leido = 0;
  bool seguir = true;
  comunes::RecorrerLineas(texto, [&](QStringView linea) {
    if (!seguir) return;
    comunes::PonerCelda(rejilla, fila++, 0, linea.toString());
    leido += linea.size() + 1;
    if (fila % kFilasPorPaso == 0)
      seguir = avance.avanzar(static_cast<double>(leido), static_cast<double>(texto.size()));
  });
  if (!seguir) vaciar(rejilla);
  return seguir;
}

std::string bytesDe(const comunes::Rejilla& rejilla, const comunes::Codificacion& codificacion) {
  QString texto;
  for (int fila = rejilla.FixedRows(); fila < rejilla.Rows(); ++fila) {
    const QString& valor = rejilla.TextMatrix(fila, 0);
    if (!comunes::SinBlancos(valor).isEmpty()) texto += valor + u"\r\n"_s;
  }
  return comunes::EscribirTexto(texto, codificacion);
}

}  // namespace

bool CargarGrabarTabla(const QString& Accion, QString& Ruta, comunes::Rejilla& rejilla, QWidget* visor,
                       comunes::Codificacion* codificacion) {
  return CargarGrabar(
      Accion, Ruta,
      {u"Editor de Tablas de QMX"_s, visor,
       [&](const QByteArray& bytes) {
         const comunes::TextoLeido leido = comunes::LeerTexto(bytes);
         if (!QuiereAbrir(leido.texto) || !llenar(rejilla, leido.texto)) return false;
         if (codificacion != nullptr) *codificacion = leido.codificacion;
         return true;
       },
       [&] { return bytesDe(rejilla, codificacion != nullptr ? *codificacion : comunes::Codificacion()); }});
}

void LeerLineas(const QString& Ruta, std::vector<QString>& Lineas, int Maximo, bool& Ok) {
  Ok = QFileInfo::exists(Ruta);
  if (!Ok) return;
  if (Maximo != -1) Lineas.assign(kTanda + 1, {});
  std::size_t leidas = 0;
  for (const QString& linea :
       comunes::PartirLineas(comunes::LeerTexto(comunes::LeerBytes(Ruta, kMaximoTexto)).texto)) {
    ++leidas;
    while (leidas >= Lineas.size())
      Lineas.resize(std::max<std::size_t>(Lineas.size(), 1) + kTanda);
    Lineas[leidas] = linea;
    if (Maximo >= 1 && leidas == static_cast<std::size_t>(Maximo)) break;
  }
  if (Maximo != -1) Lineas.resize(leidas + 1);
}

}  // namespace herramientas

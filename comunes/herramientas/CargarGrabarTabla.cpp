#include "comunes/herramientas/CargarGrabarTabla.h"

#include <QFileInfo>
#include <algorithm>

#include "comunes/campos/Blancos.h"
#include "comunes/herramientas/CargarGrabar.h"
#include "comunes/plataforma/LecturaTexto.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t kTanda = 100;

QStringList lineasDe(const QByteArray& bytes) {
  return comunes::PartirLineas(
      comunes::DesdeWindows1252({bytes.data(), static_cast<std::size_t>(bytes.size())}));
}

void poner(const QByteArray& bytes, comunes::Rejilla& rejilla) {
  const comunes::SinRedibujo quieta(rejilla);
  const int primera = rejilla.FixedRows();
  rejilla.PonerRows(primera + 1);
  for (int columna = 0; columna < rejilla.Cols(); ++columna)
    rejilla.PonerTextMatrix(primera, columna, {});
  int fila = primera;
  for (const QString& linea : lineasDe(bytes))
    comunes::PonerCelda(rejilla, fila++, 0, linea);
}

std::string bytesDe(const comunes::Rejilla& rejilla) {
  std::string bytes;
  for (int fila = rejilla.FixedRows(); fila < rejilla.Rows(); ++fila) {
    const QString& valor = rejilla.TextMatrix(fila, 0);
    if (!comunes::SinBlancos(valor).isEmpty()) bytes += comunes::AWindows1252(valor) + "\r\n";
  }
  return bytes;
}

}  // namespace

bool CargarGrabarTabla(const QString& Accion, QString& Ruta, comunes::Rejilla& rejilla, QWidget* visor) {
  return CargarGrabar(Accion, Ruta,
                      {u"Editor de Tablas de QMX"_s, visor,
                       [&rejilla](const QByteArray& bytes) {
                         const comunes::Reloj reloj;
                         poner(bytes, rejilla);
                         return true;
                       },
                       [&rejilla] { return bytesDe(rejilla); }});
}

void LeerLineas(const QString& Ruta, std::vector<QString>& Lineas, int Maximo, bool& Ok) {
  Ok = QFileInfo::exists(Ruta);
  if (!Ok) return;
  if (Maximo != -1) Lineas.assign(kTanda + 1, {});
  std::size_t leidas = 0;
  for (const QString& linea : lineasDe(comunes::LeerBytes(Ruta, kMaximoTexto))) {
    ++leidas;
    while (leidas >= Lineas.size())
      Lineas.resize(std::max<std::size_t>(Lineas.size(), 1) + kTanda);
    Lineas[leidas] = linea;
    if (Maximo >= 1 && leidas == static_cast<std::size_t>(Maximo)) break;
  }
  if (Maximo != -1) Lineas.resize(leidas + 1);
}

}  // namespace herramientas

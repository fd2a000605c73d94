#include "comunes/plataforma/LecturaTexto.h"

#include <QFile>
#include <QStringDecoder>

#include "comunes/plataforma/Texto.h"
#include "remesa/ErrorEjecucion.h"
#include "remesa/Lectura.h"

namespace comunes {

QByteArray LeerBytes(const QString& ruta, qint64 maximo) {
  constexpr int kDemasiado = 7;  // "Memoria insuficiente"
  if (ruta.startsWith(u':')) {
    QFile recurso(ruta);
    if (!recurso.open(QIODevice::ReadOnly)) throw remesa::ErrorEjecucion(53, ARuta(ruta));
    if (recurso.size() > maximo) throw remesa::ErrorEjecucion(kDemasiado, ARuta(ruta));
    return recurso.readAll();
  }
  remesa::LecturaFichero fichero(ARuta(ruta));
  if (fichero.tamano() > static_cast<std::uintmax_t>(maximo)) {
    throw remesa::ErrorEjecucion(kDemasiado, ARuta(ruta));
  }
  QByteArray bytes(static_cast<qsizetype>(fichero.tamano()), Qt::Uninitialized);
  bytes.truncate(
      static_cast<qsizetype>(fichero.leer({bytes.data(), static_cast<std::size_t>(bytes.size())})));
  return bytes;
}

QString DecodificarTexto(const QByteArray& bytes) {
  const auto marcada = QStringConverter::encodingForData(bytes);
  // Sin estado: con él, un carácter a medias al final se callaría en vez de delatar que no es UTF-8.
  QStringDecoder lector(marcada.value_or(QStringConverter::Utf8), QStringConverter::Flag::Stateless);
  const QString texto = lector(bytes);
  return lector.hasError() ? DesdeWindows1252({bytes.data(), static_cast<std::size_t>(bytes.size())}) : texto;
}

QStringList PartirLineas(QString texto) {
  texto.replace("\r\n", "\n").replace(u'\r', u'\n');
  if (texto.isEmpty()) return {};
  if (texto.endsWith(u'\n')) texto.chop(1);
  return texto.split(u'\n');
}

}  // namespace comunes

#include "comunes/plataforma/LecturaTexto.h"

#include <QFile>
#include <QStringDecoder>
#include <algorithm>

#include "comunes/plataforma/Texto.h"
#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Lectura.h"

namespace comunes {

QByteArray LeerBytes(const QString& ruta, qint64 maximo) {
  if (ruta.startsWith(u':')) {
    QFile recurso(ruta);
    if (!recurso.open(QIODevice::ReadOnly))
      throw ficheros::ErrorEjecucion(ficheros::kNoEncontrado, ARuta(ruta));
    if (recurso.size() > maximo) throw ficheros::ErrorEjecucion(ficheros::kMemoriaInsuficiente, ARuta(ruta));
    return recurso.readAll();
  }
  ficheros::LecturaFichero fichero(ARuta(ruta));
  if (fichero.tamano() > static_cast<std::uintmax_t>(maximo)) {
    throw ficheros::ErrorEjecucion(ficheros::kMemoriaInsuficiente, ARuta(ruta));
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

void RecorrerLineas(QStringView texto, const std::function<void(QStringView linea)>& ver) {
  for (qsizetype desde = 0; desde < texto.size();) {
    const auto* salto =
        std::find_if(texto.begin() + desde, texto.end(), [](QChar c) { return c == u'\r' || c == u'\n'; });
    const qsizetype fin = salto - texto.begin();
    ver(texto.sliced(desde, fin - desde));
    desde = fin + (texto.mid(fin, 2) == u"\r\n" ? 2 : 1);
  }
}

QStringList PartirLineas(const QString& texto) {
  QStringList lineas;
  RecorrerLineas(texto, [&](QStringView linea) { lineas.append(linea.toString()); });
  return lineas;
}

}  // namespace comunes

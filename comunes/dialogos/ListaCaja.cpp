#include "comunes/dialogos/ListaCaja.h"

#include <QFileInfo>

#include "comunes/plataforma/Codificacion.h"
#include "comunes/plataforma/LecturaTexto.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMaximo = 16 * 1024 * 1024;

QStringList LineasFichero(const QString& ruta) {
  if (!QFileInfo::exists(ruta)) return {};
  return PartirLineas(LeerTexto(LeerBytes(ruta, kMaximo)).texto);
}

}  // namespace

QStringList ElementosLista(const QString& valor) {
  if (valor.startsWith(u'@')) return LineasFichero(valor.sliced(1));
  const bool menores = !valor.contains(u';') && valor.contains(u"<<"_s);
  QStringList elementos = valor.split(menores ? "<<"_L1 : ";"_L1);
  if (elementos.size() > 1 && elementos.constLast().isEmpty()) elementos.removeLast();
  return elementos;
}

}  // namespace comunes

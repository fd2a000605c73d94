#include "comunes/campos/Etiquetas.h"

#include <QCoreApplication>

#include "comunes/plataforma/Aviso.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

QString parDe(const QString& clave, const QString& par) {
  if (!par.isEmpty()) return par;
  return clave == "+"_L1 ? u"[]"_s : u"()"_s;
}

/// Nombre de una clave obligatoria en el aviso; vacío si no lo es.
QString rotuloObligatorio(const QString& clave) {
  if (clave == "T"_L1) return u"(T) Tipo"_s;
  if (clave == "A"_L1) return u"(A) Ajuste"_s;
  if (clave == "L"_L1) return u"(L) Longitud"_s;
  return {};
}

/// Dónde está el valor de una clave; `desde` -1 si no está.
struct Lugar {
  qsizetype desde = -1;
  qsizetype hasta = -1;
};

Lugar lugarDe(const QString& descriptor, const QString& clave, const QString& par) {
  const qsizetype p = descriptor.indexOf(clave + par.left(1));
  if (p < 0) return {};
  const qsizetype desde = p + clave.size() + 1;
  const qsizetype cierre = descriptor.indexOf(par.mid(1, 1), desde);
  return {desde, cierre < 0 ? descriptor.size() : cierre};
}

}  // namespace

std::optional<QString> GetTag(const QString& descriptor, const QString& clave, const QString& par) {
  const Lugar lugar = lugarDe(descriptor, clave, parDe(clave, par));
  if (lugar.desde >= 0) return descriptor.mid(lugar.desde, lugar.hasta - lugar.desde);
  const QString rotulo = rotuloObligatorio(clave);
  if (!rotulo.isEmpty()) {
    AvisarPlataforma(GradoAviso::Critico,
                     u" No encontrado dato TAG obligatorio "_s + rotulo + u" en "_s + descriptor,
                     QCoreApplication::applicationName());
  }
  return std::nullopt;
}

QString SetTag(const QString& descriptor, const QString& clave, const QString& valor, const QString& par) {
  const QString signos = parDe(clave, par);
  const Lugar lugar = lugarDe(descriptor, clave, signos);
  if (lugar.desde < 0) return descriptor + u' ' + clave + signos.left(1) + valor + signos.mid(1, 1);
  return descriptor.left(lugar.desde) + valor + descriptor.mid(lugar.hasta);
}

}  // namespace comunes

#include "comunes/campos/Etiquetas.h"

#include <QCoreApplication>

#include "comunes/plataforma/Aviso.h"

namespace comunes {

namespace {

QString parDe(const QString& clave, const QString& par) {
  if (!par.isEmpty()) return par;
  return clave == QLatin1String("+") ? QStringLiteral("[]") : QStringLiteral("()");
}

/// Nombre de una clave obligatoria en el aviso; vacío si no lo es.
QString rotuloObligatorio(const QString& clave) {
  if (clave == QLatin1String("T")) return QStringLiteral("(T) Tipo");
  if (clave == QLatin1String("A")) return QStringLiteral("(A) Ajuste");
  if (clave == QLatin1String("L")) return QStringLiteral("(L) Longitud");
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
    AvisarPlataforma(
        GradoAviso::Critico,
        QStringLiteral(" No encontrado dato TAG obligatorio ") + rotulo + QStringLiteral(" en ") + descriptor,
        QCoreApplication::applicationName());
  }
  return std::nullopt;
}

QString SetTag(const QString& descriptor, const QString& clave, const QString& valor, const QString& par) {
  const QString signos = parDe(clave, par);
  const Lugar lugar = lugarDe(descriptor, clave, signos);
  if (lugar.desde < 0)
    return descriptor + QLatin1Char(' ') + clave + signos.left(1) + valor + signos.mid(1, 1);
  return descriptor.left(lugar.desde) + valor + descriptor.mid(lugar.hasta);
}

}  // namespace comunes

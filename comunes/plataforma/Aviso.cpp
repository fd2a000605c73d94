#include "comunes/plataforma/Aviso.h"

#include <cstdio>
#include <utility>

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

void avisarPorErrores(GradoAviso, const QString& texto, const QString& titulo) {
  const QString linea = titulo.isEmpty() ? texto : titulo + u": "_s + texto;
  std::fprintf(stderr, "%s\n", linea.toUtf8().constData());
}

Avisador& avisador() {
  static Avisador actual = avisarPorErrores;
  return actual;
}

}  // namespace

void AvisarPlataforma(GradoAviso grado, const QString& texto, const QString& titulo) {
  avisador()(grado, texto, titulo);
}

Avisador PonerAvisador(Avisador nuevo) {
  return std::exchange(avisador(), nuevo ? std::move(nuevo) : Avisador(avisarPorErrores));
}

}  // namespace comunes

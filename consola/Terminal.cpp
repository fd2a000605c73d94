#include "consola/Terminal.h"

#include <cerrno>
#include <cstdio>
#include <utility>

#include "comunes/plataforma/Texto.h"

namespace consola {

namespace {

bool Escribir(std::FILE* donde, const QString& linea) {
  const QByteArray utf8 = linea.toUtf8() + '\n';
  const auto bytes = static_cast<std::size_t>(utf8.size());
  const bool escrito = std::fwrite(utf8.constData(), 1, bytes, donde) == bytes;
  return std::fflush(donde) == 0 && escrito;
}

}  // namespace

bool Decir(const QString& linea) {
  if (Escribir(stdout, linea)) return true;
  if (errno != EPIPE) Avisar(QStringLiteral("no se puede escribir la salida"));
  return false;
}

void Avisar(const QString& linea) {
  Escribir(stderr, QStringLiteral("q19: ") + linea);
}

std::filesystem::path RutaDe(const std::string& argumento) {
  return {std::u8string(argumento.begin(), argumento.end())};
}

QString Mostrable(const std::filesystem::path& ruta) {
  return Mostrable(comunes::DesdeRuta(ruta));
}

QString Mostrable(QString texto) {
  return comunes::SinControles(std::move(texto));
}

QString Explicar(const remesa::ErrorEjecucion& error, const std::filesystem::path& fichero) {
  return QStringLiteral("%1: %2 (error %3)")
      .arg(Mostrable(error.fichero().empty() ? fichero : error.fichero()),
           QString::fromStdString(error.texto()))
      .arg(error.numero());
}

QString ProblemaCabeza(remesa::Cabeza cabeza) {
  switch (cabeza) {
    case remesa::Cabeza::VersionAnterior:
      return QStringLiteral("Versión incorrecta de archivo Q19");
    case remesa::Cabeza::Desconocida:
      return QStringLiteral("El archivo no parece ser tipo Q19");
    case remesa::Cabeza::Q19:
      break;
  }
  return {};
}

}  // namespace consola

#include "consola/Terminal.h"

#include <cerrno>
#include <cstdio>
#include <utility>

#include "comunes/plataforma/Texto.h"
#include "consola/Sistema.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kCadaAvance{500};

/// Columnas que ocupa ahora la línea de avance.
qsizetype anchoAvance = 0;

void PonerLineaAvance(const QString& linea) {
  // Lo que sobra de la anterior se tapa con blancos, que vale en cualquier terminal.
  const QString puesta = u'\r' + linea.leftJustified(anchoAvance) + (linea.isEmpty() ? u"\r"_s : QString());
  std::fputs(puesta.toUtf8().constData(), stderr);
  std::fflush(stderr);
  anchoAvance = linea.size();
}

bool Escribir(std::FILE* donde, std::string_view utf8) {
  if (anchoAvance > 0 && EsTerminal(donde)) PonerLineaAvance({});
  const bool escrito = std::fwrite(utf8.data(), 1, utf8.size(), donde) == utf8.size();
  return std::fflush(donde) == 0 && escrito;
}

}  // namespace

bool Decir(const QString& linea) {
  return DecirLineas((linea + u'\n').toStdString());
}

bool DecirLineas(std::string_view utf8) {
  if (Escribir(stdout, utf8)) return true;
  if (errno != EPIPE) Avisar(u"no se puede escribir la salida"_s);
  return false;
}

void Avisar(const QString& linea) {
  Escribir(stderr, u"q19: %1\n"_s.arg(linea).toStdString());
}

Avance::Avance(const QString& verbo, const std::filesystem::path& fichero)
    : titulo_(verbo + u' ' + Mostrable(fichero.filename()).left(40)), visible_(EsTerminal(stderr)) {}

Avance::~Avance() {
  if (anchoAvance > 0) PonerLineaAvance({});
}

void Avance::poner(std::uintmax_t hecho, std::uintmax_t total) {
  if (!visible_) return;
  const auto ahora = std::chrono::steady_clock::now();
  if (total > 0 && ahora - ultima_ < kCadaAvance) return;
  ultima_ = ahora;
  PonerLineaAvance(total > 0 ? u"%1: %2 %"_s.arg(titulo_, QString::number(hecho * 100 / total))
                             : titulo_ + u'…');
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

QString TextoAjeno(const QString& texto, bool json) {
  if (!json) return Mostrable(texto);
  return CadenaJson(texto).sliced(1).chopped(1);
}

QString Explicar(const ficheros::ErrorEjecucion& error, const std::filesystem::path& fichero) {
  return u"%1: %2 (error %3)"_s
      .arg(Mostrable(error.fichero().empty() ? fichero : error.fichero()),
           QString::fromStdString(error.texto()))
      .arg(error.numero());
}

QString ProblemaCabeza(remesa::Cabeza cabeza) {
  switch (cabeza) {
    case remesa::Cabeza::VersionAnterior:
      return u"Versión incorrecta de archivo Q19"_s;
    case remesa::Cabeza::Desconocida:
      return u"El archivo no parece ser tipo Q19"_s;
    case remesa::Cabeza::Q19:
      break;
  }
  return {};
}

}  // namespace consola

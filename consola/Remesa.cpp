#include "consola/Remesa.h"

#include <set>
#include <utility>

#include "consola/Terminal.h"
#include "ficheros/Rutas.h"
#include "iso20022/LectorXml.h"
#include "iso20022/Textos.h"
#include "remesa/Fichero.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

/// El mensaje, como lo dé `leer` con su avance; nada si no se toma, que queda dicho.
template <class Leer>
auto LeerXml(const std::filesystem::path& ruta, Leer leer) {
  Avance avance(u"Leyendo"_s, ruta);
  std::optional mensaje =
      leer([&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
  if (!mensaje->rechazo.isEmpty()) {
    Avisar(u"%1: %2"_s.arg(Mostrable(ruta), Mostrable(mensaje->rechazo)));
    mensaje.reset();
  }
  return mensaje;
}

void AvisarLineas(const std::filesystem::path& ruta, const QStringList& lineas) {
  for (const QString& linea : lineas)
    Avisar(u"%1: aviso: %2"_s.arg(Mostrable(ruta), Mostrable(linea)));
}

/// `tomarXml` da la remesa de un mensaje XML.
template <class TomarXml>
std::optional<Remesa> TomarCon(const std::filesystem::path& ruta, TomarXml tomarXml) try {
  if (iso20022::EmpiezaComoXml(ruta)) return tomarXml();
  const QString problema = ProblemaCabeza(remesa::ComprobarCabeza(ruta));
  if (problema.isEmpty()) return Remesa{ruta, std::nullopt};
  Avisar(u"%1: %2"_s.arg(Mostrable(ruta), problema));
  return std::nullopt;
} catch (const ficheros::ErrorEjecucion& error) {
  Avisar(Explicar(error, ruta));
  return std::nullopt;
}

}  // namespace

std::optional<iso20022::MensajeLeido> LeerMensajeXml(const std::filesystem::path& ruta) {
  return LeerXml(ruta, [&](const auto& avance) { return iso20022::LeerMensaje(ruta, avance); });
}

void AvisarResumidos(const std::filesystem::path& ruta, const std::vector<iso20022::AvisoLectura>& avisos) {
  AvisarLineas(ruta, iso20022::ResumirAvisos(avisos));
}

std::optional<Remesa> TomarRemesa(const std::filesystem::path& ruta) {
  return TomarCon(ruta, [&]() -> std::optional<Remesa> {
    auto mensaje = LeerMensajeXml(ruta);
    if (!mensaje) return std::nullopt;
    AvisarResumidos(ruta, mensaje->avisos);
    return Remesa{ruta, std::move(mensaje->registros)};
  });
}

std::optional<Remesa> TomarRemesaEnFichero(const std::filesystem::path& ruta,
                                           const std::filesystem::path& salida) {
  std::error_code error;
  const bool esCarpeta = std::filesystem::is_directory(salida, error);
  const std::filesystem::path suya = esCarpeta ? salida : salida.parent_path();
  return TomarCon(ruta, [&]() -> std::optional<Remesa> {
    auto mensaje = LeerXml(ruta, [&](const auto& avance) {
      return iso20022::LeerMensajeEnFichero(ruta, suya.empty() ? "." : suya, avance);
    });
    if (!mensaje) return std::nullopt;
    AvisarLineas(ruta, mensaje->avisos);
    return Remesa{ruta, std::nullopt, std::move(mensaje->registros)};
  });
}

namespace {

/// Sin valor también si no se puede mirar: ya fallará al leerlo. La excepción no pasa de aquí: el compilador,
/// al optimizar, da por asignado lo que se quedó sin asignar por ella.
std::optional<ficheros::Identidad> IdentidadSiSeSabe(const std::filesystem::path& ruta) {
  try {
    return ficheros::IdentidadDe(ruta);
  } catch (const ficheros::ErrorEjecucion&) {
    return std::nullopt;
  }
}

}  // namespace

std::vector<std::filesystem::path> SinRepetir(const std::vector<std::string>& argumentos) {
  std::vector<std::filesystem::path> ficheros;
  std::set<ficheros::Identidad> vistos;
  for (const std::string& argumento : argumentos) {
    const std::filesystem::path fichero = RutaDe(argumento);
    const std::optional<ficheros::Identidad> identidad = IdentidadSiSeSabe(fichero);
    if (!identidad || vistos.insert(*identidad).second)
      ficheros.push_back(fichero);
    else
      Avisar(u"%1: ya importado, se omite"_s.arg(Mostrable(fichero)));
  }
  return ficheros;
}

remesa::ListaRegistros Registros(Remesa remesa) {
  if (remesa.lista) return std::move(*remesa.lista);
  Avance avance(u"Leyendo"_s, remesa.ruta);
  return remesa::LeerFichero(
      remesa.ruta, [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
}

}  // namespace consola

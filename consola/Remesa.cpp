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

std::optional<iso20022::MensajeLeido> LeerMensajeXml(const std::filesystem::path& ruta) {
  Avance avance(u"Leyendo"_s, ruta);
  iso20022::MensajeLeido mensaje = iso20022::LeerMensaje(
      ruta, [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
  if (mensaje.rechazo.isEmpty()) return mensaje;
  Avisar(u"%1: %2"_s.arg(Mostrable(ruta), Mostrable(mensaje.rechazo)));
  return std::nullopt;
}

void AvisarResumidos(const std::filesystem::path& ruta, const std::vector<iso20022::AvisoLectura>& avisos) {
  for (const QString& linea : iso20022::ResumirAvisos(avisos))
    Avisar(u"%1: aviso: %2"_s.arg(Mostrable(ruta), Mostrable(linea)));
}

std::optional<Remesa> TomarRemesa(const std::filesystem::path& ruta) try {
  if (iso20022::EmpiezaComoXml(ruta)) {
    auto mensaje = LeerMensajeXml(ruta);
    if (!mensaje) return std::nullopt;
    AvisarResumidos(ruta, mensaje->avisos);
    return Remesa{ruta, std::move(mensaje->registros)};
  }
  const QString problema = ProblemaCabeza(remesa::ComprobarCabeza(ruta));
  if (problema.isEmpty()) return Remesa{ruta, std::nullopt};
  Avisar(u"%1: %2"_s.arg(Mostrable(ruta), problema));
  return std::nullopt;
} catch (const ficheros::ErrorEjecucion& error) {
  Avisar(Explicar(error, ruta));
  return std::nullopt;
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

#include "consola/Remesa.h"

#include <utility>

#include "consola/Terminal.h"
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

std::optional<Remesa> TomarRemesa(const std::filesystem::path& ruta, std::vector<iso20022::AvisoLectura>* avisos) {
  try {
    if (iso20022::EmpiezaComoXml(ruta)) {
      auto mensaje = LeerMensajeXml(ruta);
      if (!mensaje) return std::nullopt;
      if (avisos != nullptr)
        *avisos = std::move(mensaje->avisos);
      else
        for (const QString& linea : iso20022::ResumirAvisos(mensaje->avisos))
          Avisar(u"%1: aviso: %2"_s.arg(Mostrable(ruta), Mostrable(linea)));
      return Remesa{ruta, std::move(mensaje->registros)};
    }
    const QString problema = ProblemaCabeza(remesa::ComprobarCabeza(ruta));
    if (problema.isEmpty()) return Remesa{ruta, std::nullopt};
    Avisar(u"%1: %2"_s.arg(Mostrable(ruta), problema));
  } catch (const ficheros::ErrorEjecucion& error) {
    Avisar(Explicar(error, ruta));
  }
  return std::nullopt;
}

remesa::ListaRegistros Registros(Remesa remesa) {
  if (remesa.lista) return std::move(*remesa.lista);
  Avance avance(u"Leyendo"_s, remesa.ruta);
  return remesa::LeerFichero(
      remesa.ruta, [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
}

}  // namespace consola

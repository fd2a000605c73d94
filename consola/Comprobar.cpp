#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "comunes/plataforma/Texto.h"
#include "consola/Anteriores.h"
#include "consola/LineasXml.h"
#include "consola/Ordenes.h"
#include "consola/Remesa.h"
#include "consola/Terminal.h"
#include "consola/Uso.h"
#include "iso20022/LectorXml.h"
#include "remesa/Comprobacion.h"
#include "ventanas/principal/TextosComprobacion.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

struct PeticionComprobar {
  std::vector<std::string> ficheros;
  bool json = false;
  std::string fecha;
  std::vector<std::string> anteriores;
  std::vector<std::string> meses;  // con uno o, si no se dice cuántos, ninguno
};

/// Los hallazgos de un fichero, cada uno en su línea. Se dicen de muchas en muchas: de una en una cuesta más
/// que hallarlos.
class Lineas {
 public:
  Lineas(const QString& fichero, bool json, const comunes::EscritorUtf8& datos)
      : nombre_(fichero), fichero_(TextoAjeno(fichero, json).toStdString()), json_(json), datos_(datos) {}

  void dar(const remesa::Hallazgo& h) {
    ++cuentas_[static_cast<std::size_t>(h.codigo)];
    json_ ? principal::AnadirJson(texto_, h, fichero_, datos_) : ponerLinea(h);
    if (texto_.size() >= kTrozo) vaciar();
  }
  /// Lo que un mensaje XML dice y sus registros no.
  void dar(const iso20022::AvisoLectura& aviso) {
    ++avisosXml_[std::string(iso20022::TextoCodigo(aviso.codigo))];
    poner((json_ ? EnLineaJson(nombre_, aviso) : EnLinea(nombre_, aviso)).toStdString(), "\n");
    if (texto_.size() >= kTrozo) vaciar();
  }
  void dar(const remesa::ResultadoComprobacion& resultado) {
    poner(fichero_, ": ", principal::TextoRecuento(resultado.errores, resultado.avisos).toStdString());
    const char* separador = ": ";
    for (const auto& [codigo, cuantos] : avisosXml_) {
      poner(separador, std::to_string(cuantos), " ", codigo);
      separador = ", ";
    }
    for (const remesa::CodigoHallazgo codigo : remesa::CodigosHallazgo()) {
      const std::uint64_t cuantos = cuentas_[static_cast<std::size_t>(codigo)];
      if (cuantos == 0) continue;
      poner(separador, std::to_string(cuantos), " ", remesa::TextoCodigo(codigo));
      separador = ", ";
    }
    poner("\n");
  }
  /// false si ya no se pueden escribir; entonces no se intenta más.
  bool vaciar() {
    if (!texto_.empty()) escrito_ = escrito_ && DecirLineas(texto_);
    texto_.clear();
    return escrito_;
  }
  bool escrito() const { return escrito_; }

 private:
  static constexpr std::size_t kTrozo = std::size_t{1} << 16;

  template <class... Partes>
  void poner(const Partes&... partes) {
    ((texto_ += std::string_view(partes)), ...);
  }

  /// "fichero: registro 3, 89-99 Importe del adeudo (Ana Peña, REF1): error E304: …"
  void ponerLinea(const remesa::Hallazgo& h) {
    poner(fichero_, ":");
    const std::size_t sinLugar = texto_.size();
    if (h.registro > 0) poner(" registro ", std::to_string(h.registro));
    if (h.donde.desde > 0) poner(", ", std::to_string(h.donde.desde), "-", std::to_string(h.donde.hasta));
    if (h.campo != nullptr) poner(" ", h.campo->nombre);
    if (!h.deudor.empty() || !h.referencia.empty()) {
      poner(" (");
      datos_.anadir(texto_, h.deudor);
      if (!h.deudor.empty() && !h.referencia.empty()) poner(", ");
      datos_.anadir(texto_, h.referencia);
      poner(")");
    }
    if (texto_.size() > sinLugar) poner(":");
    poner(" ", principal::TextoNivel(h.codigo).data(), " ", remesa::TextoCodigo(h.codigo), ": ");
    principal::AnadirHallazgo(texto_, h, datos_);
    poner(" Se esperaba: ");
    principal::AnadirEsperado(texto_, h, datos_);
    poner(".\n");
  }

  QString nombre_;
  std::string fichero_;  // como se escribe
  bool json_;
  const comunes::EscritorUtf8& datos_;
  std::string texto_;
  std::vector<std::uint64_t> cuentas_ = std::vector<std::uint64_t>(remesa::CodigosHallazgo().size());
  std::map<std::string, std::uint64_t> avisosXml_;  // por código
  bool escrito_ = true;
};

/// Comprueba un fichero de texto o los registros de un XML; nada si este no se toma, que queda dicho.
std::optional<remesa::ResultadoComprobacion> ComprobarUno(const std::filesystem::path& ruta, remesa::Dia hoy,
                                                          const EnviadoAntes* antes, Lineas& lineas) {
  const auto recibir = [&](remesa::Hallazgo&& h) { lineas.dar(h); };
  const auto seguir = [&] { return lineas.escrito(); };
  if (!iso20022::EmpiezaComoXml(ruta)) {
    Avance avance(u"Comprobando"_s, ruta);
    auto resultado =
        remesa::ComprobarFichero(ruta, hoy, recibir, [&](std::uintmax_t leidos, std::uintmax_t total) {
          avance.poner(leidos, total);
          return lineas.escrito();
        });
    if (antes != nullptr && resultado.registros > 0) antes->comparar(ruta, resultado, recibir, seguir);
    return resultado;
  }
  const auto mensaje = LeerMensajeXml(ruta);
  if (!mensaje) return std::nullopt;
  for (const iso20022::AvisoLectura& aviso : mensaje->avisos)
    lineas.dar(aviso);
  Avance avance(u"Comprobando"_s, ruta);
  auto resultado = remesa::ComprobarLista(mensaje->registros, hoy, recibir, false,
                                          [&](std::uintmax_t mirados, std::uintmax_t total) {
                                            avance.poner(mirados, total);
                                            return lineas.escrito();
                                          });
  resultado.avisos += mensaje->avisos.size();
  if (antes != nullptr) antes->comparar(mensaje->registros, ruta, resultado, recibir, seguir);
  return resultado;
}

Salida Comprobar(const PeticionComprobar& peticion) {
  const remesa::Dia hoy = HoyDe(peticion.fecha);
  const comunes::EscritorUtf8 datos([&](const QString& texto) { return TextoAjeno(texto, peticion.json); });
  Salida salida = Salida::Hecho;
  std::optional<EnviadoAntes> antes;
  if (!peticion.anteriores.empty()) {
    antes.emplace(peticion.anteriores, peticion.meses, hoy);
    if (!antes->todas()) salida = Salida::Fallo;
  }
  for (const std::string& nombre : peticion.ficheros) {
    const std::filesystem::path ruta = RutaDe(nombre);
    Lineas lineas(comunes::DesdeRuta(ruta), peticion.json, datos);
    try {
      const auto resultado = ComprobarUno(ruta, hoy, antes ? &*antes : nullptr, lineas);
      if (!resultado || resultado->errores > 0) salida = Salida::Fallo;
      if (resultado && !peticion.json) lineas.dar(*resultado);
      if (!lineas.vaciar()) return Salida::Fallo;
    } catch (const ficheros::ErrorEjecucion& error) {
      lineas.vaciar();
      Avisar(Explicar(error, ruta));
      salida = Salida::Fallo;
    }
  }
  if (antes) antes->decirOmitidos();
  return salida;
}

}  // namespace

void OrdenComprobar(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("comprobar", "Busca en una remesa lo que no cumple la norma");
  auto peticion = std::make_shared<PeticionComprobar>();
  orden->add_option("FICHERO", peticion->ficheros, "Remesas que se comprueban")->type_name("")->required();
  orden->add_flag("--json", peticion->json, "Un objeto JSON por línea y hallazgo, y nada más");
  OpcionFecha(*orden, peticion->fecha);
  OpcionesAnteriores(*orden, peticion->anteriores, peticion->meses);
  orden->footer("No cambia ningún fichero. Sale con 1 si hay errores y con 0 si solo hay avisos.");
  orden->callback([peticion, &accion] { accion = [peticion] { return Comprobar(*peticion); }; });
}

}  // namespace consola

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <set>

#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Remesa.h"
#include "consola/Sustituido.h"
#include "consola/Terminal.h"
#include "consola/Uso.h"
#include "ficheros/EscrituraSegura.h"
#include "iso20022/LectorXml.h"
#include "remesa/Correcciones.h"
#include "ventanas/principal/TextosComprobacion.h"
#include "ventanas/principal/TextosCorreccion.h"
#include "ventanas/principal/TextosObservacion.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

struct PeticionCorregir {
  std::string entrada;
  std::string salida;
  std::vector<std::string> solo;
  std::string fecha;
  bool ensayo = false;
  bool json = false;
};

std::optional<remesa::CodigoHallazgo> CodigoCorregible(std::string_view texto) {
  for (const remesa::CodigoHallazgo codigo : remesa::CodigosHallazgo())
    if (remesa::TextoCodigo(codigo) == texto && remesa::PuedeCorregirse(codigo)) return codigo;
  return std::nullopt;
}

/// Lo corregido, cada cambio en su línea.
class LineasCorreccion {
 public:
  LineasCorreccion(const fs::path& fichero, bool json)
      : fichero_(TextoAjeno(comunes::DesdeRuta(fichero), json).toStdString()),
        json_(json),
        datos_([json](const QString& texto) { return TextoAjeno(texto, json); }) {}

  void dar(const remesa::Correccion& c) {
    json_ ? ponerJson(c) : ponerLinea(c);
    if (texto_.size() >= kTrozo) vaciar();
  }
  /// false si alguna no se pudo escribir.
  bool vaciar() {
    if (!texto_.empty()) escrito_ = escrito_ && DecirLineas(texto_);
    texto_.clear();
    return escrito_;
  }

 private:
  static constexpr std::size_t kTrozo = std::size_t{1} << 16;

  template <class... Partes>
  void poner(const Partes&... partes) {
    ((texto_ += std::string_view(partes)), ...);
  }

  /// "fichero: registro 3, 119-188 Nombre del deudor (Ana Peña, REF1): A301: «Ana Peña» → «Ana Pena»"
  void ponerLinea(const remesa::Correccion& c) {
    poner(fichero_, ": registro ", std::to_string(c.registro));
    if (c.donde.desde > 0) poner(", ", std::to_string(c.donde.desde), "-", std::to_string(c.donde.hasta));
    if (c.campo != nullptr) poner(" ", c.campo->nombre);
    if (!c.deudor.empty() || !c.referencia.empty()) {
      poner(" (");
      datos_.anadir(texto_, c.deudor);
      if (!c.deudor.empty() && !c.referencia.empty()) poner(", ");
      datos_.anadir(texto_, c.referencia);
      poner(")");
    }
    poner(": ", remesa::TextoCodigo(c.codigo), ": ");
    switch (c.cambio) {
      case remesa::CambioRegistro::Quita:
        poner("se elimina el registro");
        break;
      case remesa::CambioRegistro::Orden:
        poner(c.codigo == remesa::CodigoHallazgo::SinOrdenar ? "se ordena el bloque por referencia"
                                                             : "se ordenan los registros del adeudo",
              ": cambian de sitio ",
              principal::TextoCuenta(c.movidos, u"registro"_s, u"registros"_s).toStdString());
        break;
      case remesa::CambioRegistro::Campo:
        poner("«");
        datos_.anadir(texto_, c.antes);
        poner("» → «");
        datos_.anadir(texto_, c.despues);
        poner("»");
        break;
    }
    poner(c.arrastrada ? ", por otra corrección\n" : "\n");
  }

  void ponerJson(const remesa::Correccion& c) {
    poner(R"({"antes":")");
    datos_.anadir(texto_, c.antes);
    poner(R"(","arrastrada":)", c.arrastrada ? "true" : "false", R"(,"cambio":")",
          c.cambio == remesa::CambioRegistro::Campo   ? "campo"
          : c.cambio == remesa::CambioRegistro::Quita ? "quita"
                                                      : "orden",
          R"(","campo":")", c.campo != nullptr ? c.campo->nombre : std::string_view(), R"(","codigo":")",
          remesa::TextoCodigo(c.codigo), R"(","desde":)", std::to_string(c.donde.desde), R"(,"despues":")");
    datos_.anadir(texto_, c.despues);
    poner(R"(","deudor":")");
    datos_.anadir(texto_, c.deudor);
    poner(R"(","fichero":")", fichero_, R"(","hasta":)", std::to_string(c.donde.hasta), R"(,"movidos":)",
          std::to_string(c.movidos), R"(,"referencia":")");
    datos_.anadir(texto_, c.referencia);
    poner(R"(","registro":)", std::to_string(c.registro), "}\n");
  }

  std::string fichero_;
  bool json_;
  comunes::EscritorUtf8 datos_;
  std::string texto_;
  bool escrito_ = true;
};

/// Los registros de la entrada, sea una remesa o no: eso lo dirá la comprobación. Nada si es un XML que no se
/// toma.
std::optional<remesa::ListaRegistros> Entrada(const fs::path& ruta) {
  if (!iso20022::EmpiezaComoXml(ruta)) return Registros({ruta, std::nullopt});
  auto mensaje = LeerMensajeXml(ruta);
  if (!mensaje) return std::nullopt;
  AvisarResumidos(ruta, mensaje->avisos);
  return std::move(mensaje->registros);
}

QString Resumen(const remesa::ResultadoCorreccion& resultado) {
  std::map<std::string_view, std::size_t> cuentas;
  for (const remesa::Correccion& c : resultado.hechas)
    ++cuentas[remesa::TextoCodigo(c.codigo)];
  QString texto = u"Correcciones: %1"_s.arg(resultado.hechas.size());
  QString separador = u" ("_s;
  for (const auto& [codigo, cuantas] : cuentas) {
    texto += separador + u"%1 %2"_s.arg(cuantas).arg(QString::fromUtf8(codigo.data()));
    separador = u", "_s;
  }
  if (!cuentas.empty()) texto += u')';
  return texto +
         u"\nQueda: %1"_s.arg(principal::TextoRecuento(resultado.quedan.errores, resultado.quedan.avisos));
}

/// Lo que no se sabe completar va como vino: lo que le sobra no se pierde, ni se dan por buenos blancos donde
/// faltan datos.
void Escribir(const fs::path& salida, const remesa::ListaRegistros& lista) {
  ficheros::EscrituraSegura escritura(salida);
  for (const std::string_view registro : lista) {
    escritura.escribir(registro);
    escritura.escribir("\r\n");
  }
  Avance avance(u"Llevando al disco"_s, salida);
  avance.poner(0, 0);
  escritura.confirmar();
}

Salida Corregir(const PeticionCorregir& peticion) {
  const fs::path entrada = RutaDe(peticion.entrada);
  fs::path enCurso = entrada;
  try {
    auto lista = Entrada(entrada);
    if (!lista) return Salida::Fallo;
    std::set<remesa::CodigoHallazgo> solo;
    for (const std::string& codigo : peticion.solo)
      solo.insert(*CodigoCorregible(codigo));
    remesa::PeticionCorreccion como{.hoy = HoyDe(peticion.fecha)};
    // Los blancos del final se ponen siempre, como al guardar.
    if (!solo.empty())
      como.admitir = [&](const remesa::Correccion& c) {
        return c.codigo == remesa::CodigoHallazgo::Longitud || solo.contains(c.codigo);
      };
    remesa::ResultadoCorreccion resultado;
    {
      Avance avance(u"Corrigiendo"_s, entrada);
      resultado = remesa::Corregir(*lista, como, [&](std::uintmax_t mirados, std::uintmax_t total) {
        avance.poner(mirados, total);
        return true;
      });
    }
    if (resultado.impide) {
      Avisar(u"%1: no se puede corregir: %2"_s.arg(Mostrable(entrada),
                                                   Mostrable(principal::TextoHallazgo(*resultado.impide))));
      return Salida::Fallo;
    }
    LineasCorreccion lineas(entrada, peticion.json);
    for (const remesa::Correccion& c : resultado.hechas)
      lineas.dar(c);
    if (!lineas.vaciar()) return Salida::Fallo;
    QString dicho = Resumen(resultado);
    if (peticion.ensayo) {
      dicho += u"\nEnsayo: no se ha escrito nada"_s;
    } else {
      enCurso = RutaDe(peticion.salida);
      enCurso = SalidaQ19(enCurso);
      const Sustituido sustituido(enCurso);
      Escribir(enCurso, *lista);
      sustituido.decir();
      dicho += u"\nEscrito: "_s + Mostrable(enCurso);
    }
    // Aunque no se pueda decir, está escrita.
    if (!peticion.json) Decir(dicho);
  } catch (const ficheros::ErrorEjecucion& error) {
    Avisar(Explicar(error, enCurso));
    return Salida::Fallo;
  }
  return Salida::Hecho;
}

/// Lo que la biblioteca no sabe mirar: qué es un código y qué la entrada, y cuándo hace falta la salida.
void Repasar(PeticionCorregir& peticion) {
  for (std::string& codigo : peticion.solo) {
    if (CodigoCorregible(codigo)) continue;
    if (!peticion.entrada.empty())
      throw CLI::ValidationError("--solo", codigo + " no es el código de nada que se corrija");
    peticion.entrada = std::move(codigo);
    codigo.clear();
  }
  std::erase(peticion.solo, std::string());
  if (peticion.entrada.empty()) throw CLI::RequiredError("ENTRADA");
  if (peticion.salida.empty() && !peticion.ensayo) throw CLI::RequiredError("--salida");
}

}  // namespace

void OrdenCorregir(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("corregir", "Corrige en una remesa lo que tiene una sola respuesta");
  auto peticion = std::make_shared<PeticionCorregir>();
  orden->add_option("ENTRADA", peticion->entrada, "Remesa que se corrige")->type_name("");
  OpcionSalida(*orden, peticion->salida);
  orden
      ->add_option("--solo", peticion->solo,
                   "Solo lo que «q19 comprobar» dice con estos códigos (E310, A301…)")
      ->type_name("CÓDIGO")
      ->allow_extra_args();
  OpcionFecha(*orden, peticion->fecha);
  orden->add_flag("--ensayo", peticion->ensayo, "Dice lo que corregiría y no escribe nada");
  orden->add_flag("--json", peticion->json, "Un objeto JSON por línea y corrección, y nada más");
  orden->footer(
      "Ni importes ni nombres ni cuentas se adivinan: lo que puede ser de dos maneras se queda como está. "
      "Con una "
      "corrección va lo que ella pide: al quitar un registro, los totales, y al cambiar la fecha de cobro de "
      "un 02, "
      "la de su 04.\n"
      "Sale con 0 si se escribió, aunque no hubiera nada que corregir, y con 1 si no, sin dejar nada "
      "escrito. Con "
      "--ensayo, con 0 si se habría escrito.");
  orden->callback([peticion, &accion] {
    Repasar(*peticion);
    accion = [peticion] { return Corregir(*peticion); };
  });
}

}  // namespace consola

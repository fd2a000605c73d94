#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>
#include <set>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Sustituido.h"
#include "consola/Terminal.h"
#include "consola/UnionFlujo.h"
#include "ficheros/Rutas.h"
#include "remesa/Fichero.h"
#include "ventanas/principal/TextosObservacion.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

struct OpcionesUnir {
  std::string salida;
  std::vector<std::string> ficheros;
  bool deTodosModos = false;
};

/// La salida, absoluta y con la extensión forzada como al guardar; aquí solo la tiene el último nombre.
fs::path ConExtension(const fs::path& salida) {
  const fs::path nombre = salida.filename();
  if (nombre.empty() || nombre == "." || nombre == "..")
    throw ficheros::ErrorEjecucion(ficheros::kErrorDeAcceso, salida, "es una carpeta");
  fs::path::string_type texto = nombre.native();
  texto.resize(std::min(texto.rfind('.'), texto.size()));
  return ficheros::RutaAbsoluta(salida.parent_path() / fs::path(texto).concat(".Q19"));
}

/// Quita los que ya estaban, con ese nombre o con otro, avisando. Los que no se pueden mirar se quedan: ya
/// fallarán.
std::vector<fs::path> SinRepetir(const std::vector<std::string>& argumentos) {
  std::vector<fs::path> ficheros;
  std::set<ficheros::Identidad> vistos;
  for (const std::string& argumento : argumentos) {
    const fs::path fichero = RutaDe(argumento);
    std::optional<ficheros::Identidad> identidad;
    try {
      identidad = ficheros::IdentidadDe(fichero);
    } catch (const ficheros::ErrorEjecucion&) {
    }
    if (!identidad || vistos.insert(*identidad).second)
      ficheros.push_back(fichero);
    else
      Avisar(u"%1: ya importado, se omite"_s.arg(Mostrable(fichero)));
  }
  return ficheros;
}

/// Comprueba todas las cabezas, no solo hasta la primera mala.
bool CabezasValidas(const std::vector<fs::path>& ficheros) {
  bool validas = true;
  for (const fs::path& fichero : ficheros) {
    QString problema;
    try {
      problema = ProblemaCabeza(remesa::ComprobarCabeza(fichero));
      if (problema.isEmpty()) continue;
      problema = u"%1: %2"_s.arg(Mostrable(fichero), problema);
    } catch (const ficheros::ErrorEjecucion& error) {
      problema = Explicar(error, fichero);
    }
    Avisar(problema);
    validas = false;
  }
  return validas;
}

void AvisarObservaciones(const fs::path& fichero, const std::vector<remesa::Observacion>& observaciones) {
  for (const remesa::Observacion& observacion : observaciones)
    Avisar(u"%1: aviso: %2"_s.arg(Mostrable(fichero), Mostrable(principal::TextoObservacion(observacion))));
}

/// Por qué no debe unirse lo que se acaba de leer; vacío si puede unirse.
QString Perdida(const UnionFlujo& flujo) {
  if (!remesa::SePierdenSusAdeudos(flujo.resumen(), flujo.tipo())) return {};
  const QString que = flujo.tipo() == remesa::TipoFichero::Presentacion
                          ? u"sus líneas acaban solo en LF"_s
                          : u"es "_s + QString::fromUtf8(remesa::NombreTipo(flujo.tipo()).data());
  return que + u" y se perderían todos sus adeudos: no se une sin --de-todos-modos"_s;
}

bool Importar(UnionFlujo& flujo, const fs::path& fichero, bool ultimo, bool deTodosModos) {
  try {
    Avance avance(u"Uniendo"_s, fichero);
    flujo.unir(fichero, ultimo,
               [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
  } catch (const ficheros::ErrorEjecucion& error) {
    const bool delRegistro = error.fichero().empty();
    Avisar(Explicar(error, fichero) +
           (delRegistro ? u" en el registro %1"_s.arg(flujo.registroActual()) : QString()));
    return false;
  }
  if (const QString perdida = Perdida(flujo); !deTodosModos && !perdida.isEmpty()) {
    Avisar(u"%1: %2"_s.arg(Mostrable(fichero), perdida));
    return false;
  }
  AvisarObservaciones(fichero, flujo.observaciones());
  return true;
}

Salida Unir(const OpcionesUnir& opciones) {
  const std::vector<fs::path> ficheros = SinRepetir(opciones.ficheros);
  if (!CabezasValidas(ficheros)) return Salida::Fallo;

  fs::path salida = RutaDe(opciones.salida);
  try {
    salida = ConExtension(salida);
    ficheros::EscrituraSegura escritura(salida);
    UnionFlujo flujo(escritura);
    for (std::size_t i = 0; i < ficheros.size(); ++i)
      if (!Importar(flujo, ficheros[i], i + 1 == ficheros.size(), opciones.deTodosModos))
        return Salida::Fallo;
    const Sustituido sustituido(salida);
    {
      Avance avance(u"Llevando al disco"_s, salida);
      avance.poner(0, 0);
      escritura.confirmar();
    }
    sustituido.decir();
    AvisarObservaciones(salida, flujo.observacionesFinales());
    // Aunque no se pueda decir, la remesa está escrita.
    Decir(u"Ficheros: %1\nAdeudos: %2\nTotal: %3\nEscrito: %4"_s.arg(
        QString::number(ficheros.size()), comunes::FormatoNumero(flujo.totales().adeudos, 0),
        principal::TextoEuros(flujo.totales().importe), Mostrable(salida)));
  } catch (const ficheros::ErrorEjecucion& error) {
    Avisar(Explicar(error, salida));
    return Salida::Fallo;
  }
  return Salida::Hecho;
}

}  // namespace

void OrdenUnir(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("unir", "Une varias remesas en una");
  auto opciones = std::make_shared<OpcionesUnir>();
  orden->add_option("-o,--salida", opciones->salida, "Fichero que se escribe; su extensión pasa a ser .Q19")
      ->type_name("SALIDA")
      ->required()
      ->check([](const std::string& salida) { return salida.empty() ? "está vacía" : std::string(); }, "");
  orden->add_option("FICHERO", opciones->ficheros, "Remesas, en el orden en que se importan")
      ->type_name("")
      ->required();
  orden->add_flag("--de-todos-modos", opciones->deTodosModos,
                  "Une también un fichero del que se perderían todos los adeudos");
  orden->footer(
      "La primera da el presentador y el acreedor; de las demás solo entran los adeudos. Los totales se "
      "rehacen.\n"
      "Sale con 0 si se escribió la remesa y con 1 si no, sin dejar nada escrito.");
  orden->callback([opciones, &accion] { accion = [opciones] { return Unir(*opciones); }; });
}

}  // namespace consola

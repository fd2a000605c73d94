#include <CLI/CLI.hpp>
#include <memory>
#include <set>

#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Terminal.h"
#include "consola/UnionFlujo.h"
#include "remesa/Fichero.h"
#include "ventanas/principal/TextosObservacion.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

struct OpcionesUnir {
  std::string salida;
  std::vector<std::string> ficheros;
};

/// Los bytes de la ruta, uno por carácter: para buscar en ella sin que importe su codificación.
QString ComoBytes(const fs::path& ruta) {
  const std::u8string bytes = ruta.u8string();
  return QString::fromLatin1(reinterpret_cast<const char*>(bytes.data()),
                             static_cast<qsizetype>(bytes.size()));
}

/// La ruta absoluta y sin rodeos; si la carpeta actual ya no existe, como estaba.
fs::path Absoluta(const fs::path& ruta) {
  std::error_code error;
  const fs::path absoluta = fs::absolute(ruta, error);
  return (error ? ruta : absoluta).lexically_normal();
}

/// La salida con la extensión forzada como al guardar. Los "." y ".." que solo nombran carpetas se resuelven
/// antes, para que no pasen por el punto de una extensión.
fs::path ConExtension(const fs::path& salida) {
  fs::path ruta = salida.lexically_normal();
  if (*ruta.begin() == "..") ruta = Absoluta(salida);
  return RutaDe(comunes::QuitarExtension(ComoBytes(ruta)).toLatin1().toStdString() + ".Q19");
}

/// Con qué se reconoce un fichero ya importado: la ruta absoluta en mayúsculas, sin resolver enlaces.
QString Clave(const fs::path& ruta) {
  const fs::path absoluta = Absoluta(ruta);
  const QString texto = comunes::DesdeRuta(absoluta);
  return comunes::ARuta(texto) == absoluta ? texto.toUpper() : ComoBytes(absoluta);
}

/// Quita los repetidos, avisando.
std::vector<fs::path> SinRepetir(const std::vector<std::string>& argumentos) {
  std::vector<fs::path> ficheros;
  std::set<QString> vistos;
  for (const std::string& argumento : argumentos) {
    const fs::path fichero = RutaDe(argumento);
    if (vistos.insert(Clave(fichero)).second)
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

bool Importar(UnionFlujo& flujo, const fs::path& fichero, bool ultimo) {
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
  AvisarObservaciones(fichero, flujo.observaciones());
  return true;
}

Salida Unir(const OpcionesUnir& opciones) {
  const std::vector<fs::path> ficheros = SinRepetir(opciones.ficheros);
  if (!CabezasValidas(ficheros)) return Salida::Fallo;

  const fs::path salida = Absoluta(ConExtension(RutaDe(opciones.salida)));
  try {
    ficheros::EscrituraSegura escritura(salida);
    UnionFlujo flujo(escritura);
    for (std::size_t i = 0; i < ficheros.size(); ++i)
      if (!Importar(flujo, ficheros[i], i + 1 == ficheros.size())) return Salida::Fallo;
    {
      Avance avance(u"Llevando al disco"_s, salida);
      avance.poner(0, 0);
      escritura.confirmar();
    }
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
  orden->footer(
      "La primera da el presentador y el acreedor; de las demás solo entran los adeudos. Los totales se "
      "rehacen.\n"
      "Sale con 0 si se escribió la remesa y con 1 si no, sin dejar nada escrito.");
  orden->callback([opciones, &accion] { accion = [opciones] { return Unir(*opciones); }; });
}

}  // namespace consola

#include <CLI/CLI.hpp>
#include <chrono>
#include <memory>
#include <thread>

#include "comunes/plataforma/Formatos.h"
#include "consola/Ordenes.h"
#include "consola/Remesa.h"
#include "consola/Sustituido.h"
#include "consola/Terminal.h"
#include "consola/UnionBloques.h"
#include "consola/Uso.h"
#include "remesa/Separacion.h"
#include "ventanas/principal/TextosObservacion.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

struct PeticionSeparar {
  std::string entrada;
  std::string carpeta;
  std::string por;
  std::size_t cada = 0;
  bool reemplazar = false;
};

remesa::Separacion ComoSePide(const PeticionSeparar& peticion) {
  remesa::Separacion como{.cada = peticion.cada, .sustituir = peticion.reemplazar};
  if (peticion.cada > 0)
    como.por = remesa::SepararPor::Cada;
  else if (peticion.por == "acreedor")
    como.por = remesa::SepararPor::Acreedor;
  else if (peticion.por == "fecha")
    como.por = remesa::SepararPor::Fecha;
  return como;
}

/// Por qué no se puede separar lo leído; vacío si se puede. Lo demás que haya que saber, lo dice.
QString Impedimento(UnionBloques& lectura, const fs::path& entrada) {
  using C = remesa::ClaseObservacion;
  if (const std::size_t cual = lectura.reparto().indice().avisos().sinDueno; cual != 0)
    return u"el registro %1 es un adeudo que no tiene delante ninguna cabecera de acreedor (02): no se sabe "
           "de quién es y no se puede separar"_s.arg(comunes::FormatoNumero(static_cast<double>(cual), 0));
  for (const remesa::Observacion& observacion : lectura.observaciones()) {
    const QString texto = Mostrable(principal::TextoObservacion(observacion));
    if (observacion.clase == C::SoloLF) return texto;
    if (observacion.clase != C::BloquesNuevos && observacion.clase != C::SinCabeceras)
      Avisar(u"%1: aviso: %2"_s.arg(Mostrable(entrada), texto));
  }
  if (!lectura.reparto().presentador())
    return u"no tiene cabecera del presentador (01), que va en cada parte"_s;
  return lectura.reparto().indice().vivos() == 0 ? u"no tiene adeudos que separar"_s : QString();
}

Salida Separar(const PeticionSeparar& peticion) {
  const fs::path carpeta = RutaDe(peticion.carpeta);
  const std::optional<Remesa> remesa = TomarRemesaEnFichero(RutaDe(peticion.entrada), carpeta);
  if (!remesa) return Salida::Fallo;
  try {
    UnionBloques lectura;
    if (remesa->fichero) {
      lectura.leer(*remesa->fichero);
    } else {
      Avance avance(u"Leyendo"_s, remesa->ruta);
      lectura.leer(remesa->ruta,
                   [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
    }
    if (const QString impide = Impedimento(lectura, remesa->ruta); !impide.isEmpty()) {
      Avisar(u"%1: %2"_s.arg(Mostrable(remesa->ruta), impide));
      return Salida::Fallo;
    }
    lectura.reparto().ordenar();
    const remesa::Separacion como = ComoSePide(peticion);
    const std::vector<remesa::Parte> partes = Separar(lectura.reparto(), como);
    std::vector<Sustituido> sustituidos;
    sustituidos.reserve(partes.size());
    for (const remesa::Parte& parte : partes)
      sustituidos.emplace_back(carpeta / parte.nombre);
    const auto empezado = std::chrono::steady_clock::now();
    {
      Avance avance(u"Separando"_s, remesa->ruta);
      EscribirPartes(
          lectura.reparto(), partes, lectura.fuente(), carpeta, como, comunes::Ahora(),
          [&] { lectura.terminar(); },
          [&](std::size_t escritos, std::size_t total) {
            avance.poner(escritos, total);
            return true;
          });
    }
    // Cada parte lleva una milésima más que la anterior: hasta que no pasen, otra separación las repetiría.
    std::this_thread::sleep_until(empezado + std::chrono::milliseconds(partes.size()));
    for (const Sustituido& sustituido : sustituidos)
      sustituido.decir();
    QString dicho = u"Partes: %1\n"_s.arg(partes.size());
    for (const remesa::Parte& parte : partes)
      dicho += u"Escrito: %1\n"_s.arg(Mostrable(carpeta / parte.nombre));
    dicho.chop(1);
    Decir(dicho);
  } catch (const ficheros::ErrorEjecucion& error) {
    Avisar(Explicar(error, carpeta));
    return Salida::Fallo;
  }
  return Salida::Hecho;
}

}  // namespace

void OrdenSeparar(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("separar", "Separa una remesa en varias");
  auto peticion = std::make_shared<PeticionSeparar>();
  orden->add_option("FICHERO", peticion->entrada, "Remesa que se separa")->type_name("")->required();
  orden->add_option("-o,--salida", peticion->carpeta, "Carpeta en que se escriben, que se hace si no la hay")
      ->type_name("CARPETA")
      ->required()
      ->check([](const std::string& salida) { return salida.empty() ? "está vacía" : std::string(); }, "");
  CLI::Option* por = orden
                         ->add_option("--por", peticion->por,
                                      "Un fichero por bloque, que es lo normal, por acreedor o por fecha")
                         ->type_name("QUÉ")
                         ->check(
                             [](const std::string& dado) {
                               return dado == "bloque" || dado == "acreedor" || dado == "fecha"
                                          ? std::string()
                                          : "ha de ser bloque, acreedor o fecha";
                             },
                             "");
  orden->add_option("--cada", peticion->cada, "A lo más N adeudos en cada fichero")
      ->type_name("N")
      ->check(NumeroDesdeUno(), "")
      ->transform(SinCerosDelante(), "")
      ->excludes(por);
  orden->add_flag("--reemplazar", peticion->reemplazar,
                  "Sustituye los ficheros que ya haya con esos nombres");
  orden->footer(
      "Cada parte es una remesa entera, con sus totales y una identificación de fichero nueva, y se llama "
      "IDENTIFICADOR_AAAAMMDD_N.Q19.\n"
      "Sale con 0 si se escribieron todas y con 1 si no, sin dejar ninguna.");
  orden->callback([peticion, &accion] { accion = [peticion] { return Separar(*peticion); }; });
}

}  // namespace consola

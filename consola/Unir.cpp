#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Remesa.h"
#include "consola/Sustituido.h"
#include "consola/Terminal.h"
#include "consola/UnionBloques.h"
#include "consola/UnionFlujo.h"
#include "consola/Uso.h"
#include "ficheros/EscrituraSegura.h"
#include "ventanas/principal/TextosObservacion.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

struct OpcionesUnir {
  std::string salida;
  std::vector<std::string> ficheros;
  bool deTodosModos = false;
  bool bloques = false;
  bool renovar = false;
};

/// Lo que se dice de la remesa escrita.
struct Unida {
  std::int64_t adeudos = 0;
  std::int64_t importe = 0;
  QString bloques;  // una línea, con su fin; "" si no se conservan
};

/// Las mira todas, no solo hasta la primera mala; nada si alguna lo es.
std::vector<Remesa> Tomar(const std::vector<fs::path>& ficheros, const OpcionesUnir& opciones) {
  std::vector<Remesa> remesas;
  for (const fs::path& fichero : ficheros)
    if (auto remesa =
            opciones.bloques ? TomarRemesaEnFichero(fichero, RutaDe(opciones.salida)) : TomarRemesa(fichero))
      remesas.push_back(std::move(*remesa));
  if (remesas.size() < ficheros.size()) remesas.clear();
  return remesas;
}

void AvisarObservaciones(const fs::path& fichero, const std::vector<remesa::Observacion>& observaciones) {
  for (const remesa::Observacion& observacion : observaciones)
    Avisar(u"%1: aviso: %2"_s.arg(Mostrable(fichero), Mostrable(principal::TextoObservacion(observacion))));
}

/// false, tras decirlo, si del fichero no quedaría ningún adeudo y no se quiere así.
bool QuedaAlgo(const fs::path& fichero, const remesa::Resumen& resumen, bool deTodosModos) {
  if (deTodosModos || !remesa::SePierdenSusAdeudos(resumen)) return true;
  const QString que = resumen.tipo == remesa::TipoFichero::Presentacion
                          ? u"sus líneas acaban solo en LF"_s
                          : u"es "_s + QString::fromUtf8(remesa::NombreTipo(resumen.tipo).data());
  Avisar(u"%1: %2 y se perderían todos sus adeudos: no se une sin --de-todos-modos"_s.arg(Mostrable(fichero),
                                                                                          que));
  if (remesa::EsDeDevoluciones(resumen.tipo))
    Avisar(u"%1: se lee con q19 devoluciones"_s.arg(Mostrable(fichero)));
  return false;
}

bool Importar(UnionFlujo& flujo, const Remesa& remesa, bool ultimo, bool deTodosModos) {
  const fs::path& fichero = remesa.ruta;
  try {
    Avance avance(u"Uniendo"_s, fichero);
    if (remesa.lista)
      flujo.unir(*remesa.lista, ultimo);
    else
      flujo.unir(fichero, ultimo,
                 [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
  } catch (const ficheros::ErrorEjecucion& error) {
    const bool delRegistro = error.fichero().empty();
    Avisar(Explicar(error, fichero) +
           (delRegistro ? u" en el registro %1"_s.arg(flujo.registroActual()) : QString()));
    return false;
  }
  if (!QuedaAlgo(fichero, flujo.resumen(), deTodosModos)) return false;
  AvisarObservaciones(fichero, flujo.observaciones());
  return true;
}

bool FaltaPresentador(const fs::path& salida) {
  Avisar(u"%1: ningún fichero da cabecera del presentador (01), y no hay identificación que renovar"_s.arg(
      Mostrable(salida)));
  return false;
}

bool UnirEnUno(const OpcionesUnir& opciones, const std::vector<Remesa>& remesas, const fs::path& salida,
               ficheros::EscrituraSegura& escritura, Unida& unida,
               std::vector<remesa::Observacion>& finales) {
  UnionFlujo flujo(escritura);
  if (opciones.renovar) flujo.renovar(comunes::Ahora());
  for (std::size_t i = 0; i < remesas.size(); ++i)
    if (!Importar(flujo, remesas[i], i + 1 == remesas.size(), opciones.deTodosModos)) return false;
  if (flujo.faltaRenovar()) return FaltaPresentador(salida);
  unida.adeudos = flujo.totales().adeudos;
  unida.importe = flujo.totales().importe;
  finales = flujo.observacionesFinales();
  return true;
}

bool LeerParaReunir(UnionBloques& lectura, const Remesa& remesa, bool deTodosModos) {
  const fs::path& fichero = remesa.ruta;
  if (remesa.fichero) {
    lectura.leer(*remesa.fichero);
  } else {
    Avance avance(u"Leyendo"_s, fichero);
    lectura.leer(fichero, [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
  }
  if (!QuedaAlgo(fichero, lectura.resumen(), deTodosModos)) return false;
  if (lectura.reparto().indice().avisos().sinDueno != 0) {
    for (const remesa::Observacion& observacion : lectura.observaciones())
      Avisar(u"%1: %2"_s.arg(Mostrable(fichero), Mostrable(principal::TextoObservacion(observacion))));
    return false;
  }
  std::vector<remesa::Observacion> avisos = lectura.observaciones();
  std::erase_if(avisos, [](const remesa::Observacion& observacion) {
    return observacion.clase == remesa::ClaseObservacion::BloquesNuevos;
  });
  AvisarObservaciones(fichero, avisos);
  return true;
}

bool UnirPorBloques(const OpcionesUnir& opciones, const std::vector<Remesa>& remesas, const fs::path& salida,
                    ficheros::EscrituraSegura& escritura, Unida& unida) {
  UnionBloques lectura;
  for (const Remesa& remesa : remesas)
    if (!LeerParaReunir(lectura, remesa, opciones.deTodosModos)) return false;
  remesa::RepartoBloques& reparto = lectura.reparto();
  if (opciones.renovar && !reparto.presentador()) return FaltaPresentador(salida);
  std::optional<remesa::Renovacion> renovacion;
  if (opciones.renovar) renovacion = {comunes::Ahora()};
  reparto.ordenar();
  const std::uintmax_t total = lectura.bytes();
  std::uintmax_t escritos = 0;
  Avance avance(u"Uniendo"_s, salida);
  const remesa::SumaNorma suma =
      EscribirBloques(reparto, Enteros(reparto), lectura.fuente(), renovacion, [&](std::string_view bytes) {
        escritura.escribir(bytes);
        avance.poner(escritos += bytes.size(), total);
      });
  lectura.terminar();
  unida.adeudos = suma.adeudos;
  unida.importe = suma.importe;
  unida.bloques = u"Bloques: %1 (%2)\n"_s.arg(
      comunes::FormatoNumero(static_cast<double>(reparto.indice().vivos()), 0),
      principal::TextoCuenta(reparto.indice().acreedores(), u"acreedor"_s, u"acreedores"_s));
  return true;
}

Salida Unir(const OpcionesUnir& opciones) {
  const std::vector<Remesa> remesas = Tomar(SinRepetir(opciones.ficheros), opciones);
  if (remesas.empty()) return Salida::Fallo;

  fs::path salida = RutaDe(opciones.salida);
  try {
    salida = SalidaQ19(salida);
    ficheros::EscrituraSegura escritura(salida);
    Unida unida;
    std::vector<remesa::Observacion> finales;
    if (!(opciones.bloques ? UnirPorBloques(opciones, remesas, salida, escritura, unida)
                           : UnirEnUno(opciones, remesas, salida, escritura, unida, finales)))
      return Salida::Fallo;
    const Sustituido sustituido(salida);
    {
      Avance avance(u"Llevando al disco"_s, salida);
      avance.poner(0, 0);
      escritura.confirmar();
    }
    sustituido.decir();
    AvisarObservaciones(salida, finales);
    // Aunque no se pueda decir, la remesa está escrita.
    Decir(u"Ficheros: %1\n%2Adeudos: %3\nTotal: %4\nEscrito: %5"_s.arg(
        QString::number(remesas.size()), unida.bloques,
        comunes::FormatoNumero(static_cast<double>(unida.adeudos), 0), principal::TextoEuros(unida.importe),
        Mostrable(salida)));
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
  OpcionSalida(*orden, opciones->salida)->required();
  orden->add_option("FICHERO", opciones->ficheros, "Remesas, en el orden en que se importan")
      ->type_name("")
      ->required();
  orden->add_flag("--bloques", opciones->bloques,
                  "Conserva el acreedor, la fecha y la cuenta de cada adeudo");
  orden->add_flag("--renovar", opciones->renovar,
                  "Pone la fecha de hoy y una identificación de fichero nueva");
  orden->add_flag("--de-todos-modos", opciones->deTodosModos,
                  "Une también un fichero del que se perderían todos los adeudos");
  orden->footer(
      "La primera da el presentador y el acreedor, y de las demás solo entran los adeudos. Con --bloques, "
      "cada acreedor, fecha y cuenta tiene su bloque, con los adeudos por orden de referencia. Los totales "
      "se rehacen.\n"
      "Sale con 0 si se escribió la remesa y con 1 si no, sin dejar nada escrito.");
  orden->callback([opciones, &accion] { accion = [opciones] { return Unir(*opciones); }; });
}

}  // namespace consola

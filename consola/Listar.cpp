#include <CLI/CLI.hpp>
#include <QGuiApplication>
#include <filesystem>
#include <memory>
#include <new>
#include <utility>

#include "comunes/impresion/DocumentoPdf.h"
#include "comunes/impresion/Letra.h"
#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Remesa.h"
#include "consola/Sustituido.h"
#include "consola/Terminal.h"
#include "ficheros/Rutas.h"
#include "ventanas/principal/Informe.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

struct PeticionListar {
  std::string fichero;
  std::string destino;
  bool referencia = false;
  bool soloAdeudos = false;
  bool bloques = false;
  bool horizontal = false;
};

Salida Listar(const PeticionListar& peticion) {
  const fs::path fichero = RutaDe(peticion.fichero);
  const fs::path destino = RutaDe(peticion.destino);
  // Escribir el listado encima de la remesa la perdería.
  if (ficheros::EsElMismo(fichero, destino)) {
    Avisar(u"%1: el listado no puede escribirse sobre la remesa"_s.arg(Mostrable(destino)));
    return Salida::Fallo;
  }
  const fs::path* enCurso = &fichero;
  try {
    // Antes que la remesa: el sistema carga sus letras sin mirar si le queda memoria, y sin ella muere.
    const comunes::Letra letra(false);
    auto remesa = TomarRemesa(fichero);
    if (!remesa) return Salida::Fallo;
    const remesa::ListaRegistros lista = Registros(std::move(*remesa));
    Avance escritura(u"Listando"_s, fichero);
    escritura.poner(0, 0);
    comunes::Rejilla visor(u"VisorPrt"_s);
    const principal::Informe informe =
        principal::PrepararInforme(visor, lista, comunes::DesdeRuta(fichero), peticion.referencia,
                                   peticion.soloAdeudos, peticion.bloques);
    enCurso = &destino;
    comunes::DocumentoPdf pdf(destino, peticion.horizontal, informe.titulo);
    principal::ImprimirInforme(pdf.trabajo(), visor, informe, [&](int hechas, int total, int) {
      escritura.poner(static_cast<std::uintmax_t>(hechas), static_cast<std::uintmax_t>(total));
      pdf.comprobar();
      return true;
    });
    const Sustituido sustituido(destino);
    pdf.confirmar();
    sustituido.decir();
  } catch (const ficheros::ErrorEjecucion& error) {
    Avisar(Explicar(error, *enCurso));
    return Salida::Fallo;
  } catch (const std::bad_alloc&) {
    Avisar(Explicar(ficheros::ErrorEjecucion(ficheros::kMemoriaInsuficiente), *enCurso));
    return Salida::Fallo;
  }
  Decir(u"Escrito: %1"_s.arg(Mostrable(destino)));
  return Salida::Hecho;
}

}  // namespace

void OrdenListar(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("listar", "Escribe en PDF el listado de una remesa");
  auto peticion = std::make_shared<PeticionListar>();
  orden->add_option("FICHERO", peticion->fichero, "Remesa que se lista")->type_name("")->required();
  orden->add_flag("--referencia", peticion->referencia, "Añade la columna de la referencia del adeudo");
  orden->add_flag("--solo-adeudos", peticion->soloAdeudos,
                  "Sin los registros opcionales, que no son adeudos ni llevan importe");
  orden->add_flag("--bloques", peticion->bloques, "Bloque a bloque, cada acreedor en otra página");
  orden->add_flag("--horizontal", peticion->horizontal, "Con el papel apaisado");
  orden->add_option("-o,--salida", peticion->destino, "Fichero PDF que se escribe")
      ->type_name("LISTADO")
      ->required()
      ->check([](const std::string& salida) { return salida.empty() ? "está vacía" : std::string(); }, "");
  orden->callback([peticion, &accion] {
    accion = [peticion] {
      // Las letras y el PDF piden una aplicación gráfica, pero ninguna pantalla.
      qputenv("QT_QPA_PLATFORM", "offscreen");
      // Sin sesión de escritorio el toolkit se queja de cosas que aquí no importan.
      qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
      int argc = 1;
      char nombre[] = "q19";
      char* argv[] = {nombre, nullptr};
      const QGuiApplication aplicacion(argc, argv);
      return Listar(*peticion);
    };
  });
}

}  // namespace consola

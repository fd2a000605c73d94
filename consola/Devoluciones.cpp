#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "consola/Ajustes.h"
#include "consola/LineasDevoluciones.h"
#include "consola/LineasXml.h"
#include "consola/Ordenes.h"
#include "consola/Sustituido.h"
#include "consola/Terminal.h"
#include "devoluciones/RemesaNueva.h"
#include "devoluciones/Textos.h"
#include "ficheros/Rutas.h"
#include "iso20022/Exportacion.h"
#include "remesa/Guardado.h"

namespace consola {

namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

struct PeticionDevoluciones {
  std::vector<std::string> ficheros;
  std::vector<std::string> remesas;
  std::string carpeta;
  std::string nueva;
  std::vector<std::string> motivos;
  std::string fechaCobro;
  bool json = false;
  bool csv = false;
};

bool TieneExtension(const fs::path& ruta, const QString& extension) {
  return comunes::DesdeRuta(ruta.extension()).compare(extension, Qt::CaseInsensitive) == 0;
}

bool EsXml(const fs::path& ruta) {
  return TieneExtension(ruta, u".xml"_s);
}

/// La que diga que es un XML, o .Q19.
fs::path ConSuExtension(fs::path ruta) {
  return EsXml(ruta) || TieneExtension(ruta, u".q19"_s) ? ruta : ruta.replace_extension(".Q19");
}

class OrdenDeDevoluciones {
 public:
  explicit OrdenDeDevoluciones(const PeticionDevoluciones& peticion) : peticion_(peticion) {}

  Salida hacer() {
    for (const std::string& nombre : peticion_.ficheros)
      leer(RutaDe(nombre));
    if (!peticion_.remesas.empty() || !peticion_.carpeta.empty()) buscar();
    if (!escribirLista()) return Salida::Fallo;
    if (!peticion_.nueva.empty()) hacerNueva();
    return falla_ ? Salida::Fallo : Salida::Hecho;
  }

 private:
  void leer(const fs::path& ruta);
  void buscar();
  void buscarEnRemesa(const fs::path& ruta);
  void buscarEnCarpeta(const fs::path& carpeta);
  bool escribirLista() const;
  void hacerNueva();
  bool puedeEscribirse(const fs::path& destino);
  std::vector<std::size_t> elegidas() const;
  void decirFuera(const devoluciones::RemesaNueva& nueva) const;
  bool escribirNueva(const remesa::ListaRegistros& registros, const fs::path& destino);
  bool escribirXml(const remesa::ListaRegistros& registros, const fs::path& destino);

  void fallar(const QString& linea) {
    falla_ = true;
    Avisar(linea);
  }
  const PeticionDevoluciones& peticion_;
  devoluciones::Lote lote_;
  std::optional<devoluciones::Cotejo> cotejo_;
  bool falla_ = false;
};

void OrdenDeDevoluciones::leer(const fs::path& ruta) try {
  Avance avance(u"Leyendo"_s, ruta);
  const auto& fichero =
      lote_.leer(ruta, [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
  if (!fichero.completo) falla_ = true;
  for (const devoluciones::AvisoLectura& aviso : fichero.avisos)
    Avisar(
        u"%1: aviso: %2"_s.arg(Mostrable(ruta), Mostrable(devoluciones::TextoAviso(aviso, fichero.forma))));
} catch (const devoluciones::FicheroAjeno& ajeno) {
  fallar(u"%1: %2"_s.arg(Mostrable(ruta), Mostrable(ajeno.porque)));
} catch (const ficheros::ErrorEjecucion& error) {
  fallar(Explicar(error, ruta));
}

void OrdenDeDevoluciones::buscar() {
  cotejo_.emplace(lote_);
  for (const std::string& nombre : peticion_.remesas)
    buscarEnRemesa(RutaDe(nombre));
  if (!peticion_.carpeta.empty()) buscarEnCarpeta(RutaDe(peticion_.carpeta));
}

void OrdenDeDevoluciones::buscarEnRemesa(const fs::path& ruta) try {
  Avance avance(u"Buscando en"_s, ruta);
  if (!cotejo_->buscarEn(ruta,
                         [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); }))
    Avisar(u"%1: es copia de otra remesa, se omite"_s.arg(Mostrable(ruta)));
} catch (const devoluciones::FicheroAjeno& ajeno) {
  fallar(u"%1: %2"_s.arg(Mostrable(ruta), Mostrable(ajeno.porque)));
} catch (const ficheros::ErrorEjecucion& error) {
  fallar(Explicar(error, ruta));
}

void OrdenDeDevoluciones::buscarEnCarpeta(const fs::path& carpeta) try {
  Avance avance(u"Buscando en"_s, carpeta);
  const auto resultado = cotejo_->buscarEnCarpeta(
      carpeta, [&](std::uintmax_t leidos, std::uintmax_t total) { avance.poner(leidos, total); });
  for (const fs::path& copia : resultado.copias)
    Avisar(u"%1: es copia de otra remesa, se omite"_s.arg(Mostrable(copia)));
  for (const auto& [ruta, causa] : resultado.fallos)
    fallar(u"%1: %2"_s.arg(Mostrable(ruta), QString::fromStdString(causa)));
  if (resultado.leidas == 0) fallar(u"%1: en la carpeta no hay ninguna remesa"_s.arg(Mostrable(carpeta)));
} catch (const ficheros::ErrorEjecucion& error) {
  fallar(Explicar(error, carpeta));
}

bool OrdenDeDevoluciones::escribirLista() const {
  const devoluciones::Cotejo* cotejo = cotejo_ ? &*cotejo_ : nullptr;
  const FormaLista forma = peticion_.json  ? FormaLista::Json
                           : peticion_.csv ? FormaLista::Csv
                                           : FormaLista::Texto;
  return EscribirDevoluciones(lote_, cotejo, forma);
}

std::vector<std::size_t> OrdenDeDevoluciones::elegidas() const {
  if (peticion_.motivos.empty()) return devoluciones::Propuestas(lote_);
  std::vector<std::size_t> elegidas;
  for (std::size_t i = 0; i < lote_.size(); ++i) {
    const std::string_view motivo = lote_[i].motivo.bytes();
    if (std::ranges::find(peticion_.motivos, motivo) != peticion_.motivos.end()) elegidas.push_back(i);
  }
  return elegidas;
}

bool OrdenDeDevoluciones::puedeEscribirse(const fs::path& destino) {
  if (!cotejo_) {
    fallar(u"sin la remesa en que se presentaron no se pueden completar: use --remesa o --carpeta"_s);
    return false;
  }
  if (falla_) {
    fallar(u"la remesa nueva no se escribe: algún fichero no se ha podido leer entero"_s);
    return false;
  }
  std::vector<fs::path> leidos;
  for (const auto& fichero : lote_.ficheros())
    leidos.push_back(fichero.ruta);
  for (const auto& remesa : cotejo_->remesas())
    leidos.push_back(remesa.ruta);
  for (const fs::path& leido : leidos) {
    if (!ficheros::EsElMismo(leido, destino)) continue;
    fallar(u"%1: la remesa nueva no puede escribirse sobre un fichero que se lee"_s.arg(Mostrable(destino)));
    return false;
  }
  return true;
}

void OrdenDeDevoluciones::decirFuera(const devoluciones::RemesaNueva& nueva) const {
  for (const devoluciones::Fuera& fuera : nueva.fuera) {
    const devoluciones::Devolucion d = lote_[fuera.devolucion];
    QStringList quien{devoluciones::TextoQuien(d), d.referencia.texto(),
                      devoluciones::TextoImporte(d.importe)};
    quien.removeAll(QString());
    Avisar(u"queda fuera %1: %2"_s.arg(Mostrable(quien.join(u", "_s)), devoluciones::TextoFuera(fuera)));
  }
  for (const std::string& nombre : nueva.otrosPresentadores)
    Avisar(u"aviso: hay adeudos de otro presentador, %1: el fichero lleva el del primero"_s.arg(
        Mostrable(comunes::DesdeWindows1252(nombre))));
  if (nueva.conSufijo > 0)
    Avisar(u"aviso: referencias a las que se ha puesto un sufijo para que no se repitan: %1"_s.arg(
        QString::number(nueva.conSufijo)));
}

bool OrdenDeDevoluciones::escribirNueva(const remesa::ListaRegistros& registros,
                                        const fs::path& destino) try {
  const Sustituido sustituido(destino);
  if (!EsXml(destino))
    remesa::GuardarRemesa(destino, registros);
  else if (!escribirXml(registros, destino))
    return false;
  sustituido.decir();
  return true;
} catch (const ficheros::ErrorEjecucion& error) {
  fallar(Explicar(error, destino));
  return false;
}

bool OrdenDeDevoluciones::escribirXml(const remesa::ListaRegistros& registros, const fs::path& destino) {
  std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
  fuentes.push_back(std::make_unique<iso20022::FuenteLista>(registros));
  iso20022::OpcionesExportacion opciones;
  opciones.bicDe = BicsDeAjustes();
  iso20022::Exportacion exportacion(std::move(fuentes), std::move(opciones));
  const auto resumen = exportacion.examinar(
      [&](iso20022::Nota&& nota) { Avisar(EnLinea(comunes::DesdeRuta(destino), nota)); });
  if (resumen && resumen->posible) {
    exportacion.escribir(destino);
    return true;
  }
  fallar(u"%1: no se escribe, por los errores dichos"_s.arg(Mostrable(destino)));
  return false;
}

void OrdenDeDevoluciones::hacerNueva() {
  const fs::path destino = ConSuExtension(RutaDe(peticion_.nueva));
  if (!puedeEscribirse(destino)) return;
  const auto fecha = remesa::LeerFecha(peticion_.fechaCobro);
  const devoluciones::RemesaNueva nueva =
      devoluciones::HacerRemesa(lote_, *cotejo_,
                                {.elegidas = elegidas(),
                                 .fechaCobro = fecha ? *fecha : devoluciones::FechaPropuesta(comunes::Hoy()),
                                 .ahora = comunes::Ahora()});
  decirFuera(nueva);
  if (nueva.registros.empty())
    return fallar(u"%1: no hay nada que presentar otra vez, no se escribe"_s.arg(Mostrable(destino)));
  if (!escribirNueva(nueva.registros, destino)) return;
  const QString dicho = u"Remesa nueva: %1, en %2"_s.arg(
      devoluciones::TextoCuenta({static_cast<std::int64_t>(nueva.adeudos), nueva.importe}),
      Mostrable(destino));
  // En JSON y en CSV la salida es solo de las devoluciones.
  peticion_.json || peticion_.csv ? Avisar(dicho) : static_cast<void>(Decir(dicho));
}

}  // namespace

void OrdenDevoluciones(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("devoluciones", "Lee los adeudos que el banco rechaza o devuelve");
  auto peticion = std::make_shared<PeticionDevoluciones>();
  orden->add_option("FICHERO", peticion->ficheros, "Ficheros de rechazos o devoluciones, de texto o en XML")
      ->type_name("")
      ->required();
  CLI::Option* remesas =
      orden->add_option("--remesa", peticion->remesas, "Remesas en que se presentaron")->type_name("REMESA…");
  orden->add_option("--carpeta", peticion->carpeta, "Carpeta con las remesas en que se presentaron")
      ->type_name("CARPETA")
      ->excludes(remesas);
  CLI::Option* json =
      orden->add_flag("--json", peticion->json, "Un objeto JSON por línea y devolución, y nada más");
  orden->add_flag("--csv", peticion->csv, "Una tabla para una hoja de cálculo, y nada más")->excludes(json);
  CLI::Option* nueva =
      orden
          ->add_option("--nueva", peticion->nueva,
                       "Remesa que se escribe para presentarlos otra vez, .Q19 o .xml")
          ->type_name("SALIDA")
          ->check([](const std::string& salida) { return salida.empty() ? "está vacía" : std::string(); },
                  "");
  orden->add_option("--motivos", peticion->motivos, "Los que se presentan otra vez: AM04,MS03…")
      ->type_name("CÓDIGOS")
      ->delimiter(',')
      ->needs(nueva);
  orden->add_option("--fecha-cobro", peticion->fechaCobro, "La de la remesa nueva (AAAAMMDD)")
      ->type_name("FECHA")
      ->needs(nueva)
      ->check(
          [](const std::string& fecha) {
            return remesa::LeerFecha(fecha) ? std::string() : "ha de ser un día que exista, AAAAMMDD";
          },
          "");
  orden->footer(
      "Sin --motivos se presentan otra vez los que basta con repetir (AM04, MS03, ED05, TM01). La remesa "
      "nueva "
      "lleva los registros enteros de aquellas en que se presentaron.\n"
      "Sale con 1 si algo no se pudo leer o no hubo qué escribir en la remesa nueva.");
  orden->callback(
      [peticion, &accion] { accion = [peticion] { return OrdenDeDevoluciones(*peticion).hacer(); }; });
}

}  // namespace consola

#include "consola/Anteriores.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <mutex>

#include "anteriores/Apariciones.h"
#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Terminal.h"
#include "consola/Uso.h"
#include "devoluciones/Textos.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

void AvisarOmitido(const anteriores::Omitido& omitido) {
  Avisar(
      u"%1: %2, se omite"_s.arg(Mostrable(omitido.ruta), Mostrable(QString::fromStdString(omitido.causa))));
}

struct PeticionAnteriores {
  std::vector<std::string> carpetas;
  std::string mandato, cuenta, referencia, nombre;
  bool json = false;
};

std::string Bytes(const std::string& argumento) {
  return comunes::AWindows1252(QString::fromStdString(argumento).trimmed());
}

/// Sin blancos y en mayúsculas, que es como va en los registros.
std::string CuentaDe(const std::string& argumento) {
  QString cuenta = QString::fromStdString(argumento).toUpper();
  cuenta.removeIf([](QChar c) { return c.isSpace(); });
  if (cuenta.startsWith(u"IBAN"_s)) cuenta.remove(0, 4);
  return comunes::AWindows1252(cuenta);
}

QString TextoONulo(const QString& texto) {
  return texto.isEmpty() ? u"null"_s : CadenaJson(texto);
}

QString LineaJson(const anteriores::Aparicion& a) {
  QString fecha;
  if (a.fecha) {
    const QString cifras = QString::fromStdString(remesa::EscribirFecha(*a.fecha));
    fecha = u"%1-%2-%3"_s.arg(cifras.first(4), cifras.sliced(4, 2), cifras.last(2));
  }
  const std::pair<const char16_t*, QString> valores[] = {
      {u"acreedor", TextoONulo(a.acreedor)},
      {u"clase", CadenaJson(a.vuelta ? a.clase : u"adeudo"_s)},
      {u"concepto", TextoONulo(a.concepto)},
      {u"cuenta", TextoONulo(a.cuenta)},
      {u"deudor", TextoONulo(a.deudor)},
      {u"fecha", TextoONulo(fecha)},
      {u"fichero", CadenaJson(comunes::DesdeRuta(a.ruta))},
      {u"importe", a.importe ? QString::number(*a.importe) : u"null"_s},
      {u"mandato", TextoONulo(a.mandato)},
      {u"motivo", TextoONulo(a.motivo)},
      {u"referencia", TextoONulo(a.referencia)},
      {u"registro", QString::number(a.registro)},
      {u"tipo", TextoONulo(a.vuelta ? QString() : a.clase)}};
  QString linea;
  for (const auto& [clave, valor] : valores)
    linea += (linea.isEmpty() ? u"{\""_s : u",\""_s) + QString::fromUtf16(clave) + u"\":"_s + valor;
  return linea + u"}\n"_s;
}

/// "01/12/2026 RCUR 12,00 €, ANA PEÑA: cuenta …, mandato …, referencia …, concepto" y, debajo, dónde.
QString LineasTexto(const anteriores::Aparicion& a) {
  QStringList cabeza{devoluciones::TextoDia(a.fecha), a.clase};
  if (a.importe) cabeza += devoluciones::TextoImporte(a.importe) + u" €"_s;
  cabeza.removeAll(QString());
  QStringList datos;
  const auto anadir = [&](const QString& rotulo, const QString& valor) {
    if (!valor.isEmpty()) datos += rotulo + valor;
  };
  anadir(QString(), a.deudor);
  anadir(u"cuenta "_s, a.cuenta);
  anadir(u"mandato "_s, a.mandato);
  anadir(u"referencia "_s, a.referencia);
  anadir(QString(), a.concepto);
  anadir(u"motivo "_s, a.motivo);
  QString donde = u"%1, %2 %3"_s.arg(Mostrable(a.ruta), a.enLinea ? u"línea"_s : u"registro"_s,
                                     QString::number(a.registro));
  if (!a.acreedor.isEmpty()) donde += u", acreedor "_s + Mostrable(a.acreedor);
  return Mostrable(cabeza.join(u' ')) + u", "_s + Mostrable(datos.join(u", "_s)) + u"\n    "_s + donde +
         u'\n';
}

Salida Listar(const PeticionAnteriores& peticion) {
  std::vector<std::filesystem::path> carpetas;
  for (const std::string& carpeta : peticion.carpetas)
    carpetas.push_back(RutaDe(carpeta));
  const anteriores::Hallados hallados = anteriores::RecorrerCarpetas(carpetas, [] { return true; });
  for (const anteriores::Omitido& carpeta : hallados.carpetas)
    AvisarOmitido(carpeta);
  anteriores::Filtro filtro;
  filtro.mandato = Bytes(peticion.mandato);
  filtro.referencia = Bytes(peticion.referencia);
  filtro.cuenta = CuentaDe(peticion.cuenta);
  filtro.nombre = Bytes(peticion.nombre);
  std::vector<anteriores::Omitido> omitidos = hallados.omitidos;
  std::vector<anteriores::Aparicion> apariciones;
  {
    Avance avance(u"Buscando en"_s, carpetas.front());
    apariciones = anteriores::BuscarApariciones(
        hallados.ficheros, filtro,
        [&](std::uintmax_t leidos, std::uintmax_t total) {
          avance.poner(leidos, total);
          return true;
        },
        &omitidos);
  }
  constexpr qsizetype kTrozoApariciones = qsizetype{1} << 16;
  QString pendiente;
  for (const anteriores::Aparicion& aparicion : apariciones) {
    pendiente += peticion.json ? LineaJson(aparicion) : LineasTexto(aparicion);
    if (pendiente.size() < kTrozoApariciones) continue;
    if (!DecirLineas(pendiente.toStdString())) return Salida::Fallo;
    pendiente.clear();
  }
  if (!pendiente.isEmpty() && !DecirLineas(pendiente.toStdString())) return Salida::Fallo;
  for (const anteriores::Omitido& omitido : omitidos)
    AvisarOmitido(omitido);
  if (apariciones.empty()) Avisar(u"no hay ningún adeudo así"_s);
  return hallados.carpetas.empty() ? Salida::Hecho : Salida::Fallo;
}

}  // namespace

EnviadoAntes::EnviadoAntes(const std::vector<std::string>& carpetas, const std::vector<std::string>& meses,
                           remesa::Dia hoy) {
  anteriores::PeticionIndice peticion;
  for (const std::string& carpeta : carpetas)
    peticion.carpetas.push_back(RutaDe(carpeta));
  const bool conMeses = !meses.empty();
  const bool cuantos = conMeses && !meses.front().empty();
  peticion.desde = anteriores::MesesAntes(hoy, !conMeses  ? anteriores::kMeses
                                               : !cuantos ? anteriores::kMesesDeMas
                                                          : std::stoi(meses.front()));
  Avance avance(u"Leyendo"_s, peticion.carpetas.front());
  std::mutex cerrojo;
  indice_ = anteriores::Indice::Hacer(peticion, {}, [&](std::uintmax_t leidos, std::uintmax_t total) {
    const std::lock_guard puesto(cerrojo);
    avance.poner(leidos, total);
    return true;
  });
  for (const anteriores::Omitido& carpeta : indice_->carpetasSinLeer())
    AvisarOmitido(carpeta);
}

namespace {

void Sumar(const anteriores::ResultadoCruce& cruce, const std::filesystem::path& ruta,
           remesa::ResultadoComprobacion& resultado) {
  resultado.errores += cruce.errores;
  resultado.avisos += cruce.avisos;
  resultado.completa = resultado.completa && cruce.completo;
  if (cruce.elMismo)
    Avisar(u"%1: este fichero ya está guardado en %2: no se compara consigo mismo"_s.arg(
        Mostrable(ruta), Mostrable(*cruce.elMismo)));
}

}  // namespace

void EnviadoAntes::comparar(const std::filesystem::path& ruta, remesa::ResultadoComprobacion& resultado,
                            const remesa::ReceptorHallazgos& recibir,
                            const anteriores::Seguir& seguir) const {
  Sumar(anteriores::CruzarFichero(*indice_, ruta, recibir, seguir), ruta, resultado);
}

void EnviadoAntes::comparar(const remesa::ListaRegistros& lista, const std::filesystem::path& ruta,
                            remesa::ResultadoComprobacion& resultado,
                            const remesa::ReceptorHallazgos& recibir,
                            const anteriores::Seguir& seguir) const {
  Sumar(anteriores::CruzarLista(*indice_, lista, ruta, recibir, seguir), ruta, resultado);
}

void EnviadoAntes::decirOmitidos() const {
  for (const anteriores::Omitido& omitido : indice_->omitidos())
    AvisarOmitido(omitido);
}

void OpcionesAnteriores(CLI::App& orden, std::vector<std::string>& carpetas,
                        std::vector<std::string>& meses) {
  CLI::Option* anteriores =
      orden
          .add_option("--anteriores", carpetas,
                      "Carpetas con lo que se envió antes: se compara con ello, sin cambiar nada")
          ->type_name("CARPETA");
  orden
      .add_option(
          "--meses", meses,
          "Hasta cuándo se compara: los meses anteriores a hoy, por la fecha de cobro. Sin esta opción, 14. "
          "Sin número, 40")
      ->type_name("N")
      ->expected(0, 1)
      ->needs(anteriores)
      ->check(
          [](const std::string& texto) -> std::string {
            if (texto.empty()) return {};
            const bool cifras = std::ranges::all_of(texto, [](char c) { return c >= '0' && c <= '9'; });
            return cifras && texto.size() <= 3 && std::stoi(texto) > 0 ? ""
                                                                       : "ha de ser un número, de 1 a 999";
          },
          "");
}

void OrdenAnteriores(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand(
      "anteriores", "Busca los adeudos y las devoluciones de un deudor en lo que se envió");
  auto peticion = std::make_shared<PeticionAnteriores>();
  orden->add_option("CARPETA", peticion->carpetas, "Carpetas con lo que se envió y lo que volvió")
      ->type_name("")
      ->required();
  CLI::Option* mandato =
      orden->add_option("--mandato", peticion->mandato, "Los de una referencia de mandato")->type_name("M");
  CLI::Option* cuenta = orden->add_option("--cuenta", peticion->cuenta, "Los de una cuenta, IBAN o nacional")
                            ->type_name("IBAN")
                            ->excludes(mandato);
  CLI::Option* referencia =
      orden->add_option("--referencia", peticion->referencia, "Los de una referencia de adeudo")
          ->type_name("R")
          ->excludes(mandato)
          ->excludes(cuenta);
  orden
      ->add_option("--nombre", peticion->nombre,
                   "Los de un deudor, por parte de su nombre, con acentos o sin ellos")
      ->type_name("T")
      ->excludes(mandato)
      ->excludes(cuenta)
      ->excludes(referencia);
  orden->add_flag("--json", peticion->json, "Un objeto JSON por línea y aparición, y nada más");
  orden->footer(
      "Mira también las carpetas de dentro, y los ficheros por lo que llevan y no por su nombre. Da todo por "
      "fecha.\n"
      "No cambia ningún fichero. Sale con 1 si alguna carpeta no se puede leer.");
  orden->callback([peticion, &accion] { accion = [peticion] { return Listar(*peticion); }; });
}

}  // namespace consola

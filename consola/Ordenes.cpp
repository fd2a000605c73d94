#include "consola/Ordenes.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "consola/Terminal.h"
#include "consola/Uso.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

/// "q19" o, si ya se eligió una orden, "q19 orden".
QString Elegida(const CLI::App& q19) {
  const auto ordenes = q19.get_subcommands();
  return ordenes.empty() ? u"q19"_s : u"q19 "_s + QString::fromStdString(ordenes.front()->get_name());
}

Salida Ayudar(const CLI::App& q19) {
  const auto ordenes = q19.get_subcommands();
  const std::string ayuda = ordenes.empty() ? q19.help() : ordenes.front()->help("q19");
  return Decir(QString::fromStdString(ayuda).trimmed()) ? Salida::Hecho : Salida::Fallo;
}

}  // namespace

Salida Ejecutar(std::vector<std::string> argumentos) {
  CLI::App q19("Une y consulta remesas de adeudos SEPA del Cuaderno 19.14.", "q19");
  q19.formatter(FormatoAyuda());
  q19.allow_windows_style_options(false);
  q19.set_help_flag("-h,--help", "Muestra esta ayuda y termina");
  q19.set_version_flag("--version", "q19 " VERSION_Q19, "Muestra la versión y termina");
  q19.get_option("--help")->group("Opciones");
  q19.get_option("--version")->group("Opciones");
  q19.require_subcommand(1);
  q19.footer("Sale con 0 si todo fue bien, 1 si algo falló y 2 si la línea de órdenes no es correcta.");

  Accion accion;
  OrdenUnir(q19, accion);
  OrdenSeparar(q19, accion);
  OrdenComprobar(q19, accion);
  OrdenCorregir(q19, accion);
  OrdenListar(q19, accion);
  OrdenIban(q19, accion);
  OrdenNif(q19, accion);
  OrdenVer(q19, accion);
  OrdenDevoluciones(q19, accion);
  OrdenAnteriores(q19, accion);
  OrdenXml(q19, accion);
  for (CLI::App* orden : q19.get_subcommands({})) {
    orden->group("Órdenes");
    for (CLI::Option* opcion : orden->get_options())
      opcion->group("Opciones");
  }

  // La biblioteca tomaría "[a,b]" por una lista de valores: así sigue siendo el nombre de un fichero.
  for (std::string& argumento : argumentos)
    if (argumento.starts_with('[') && argumento.ends_with(']')) argumento.insert(0, "./");
  std::reverse(argumentos.begin(), argumentos.end());
  try {
    q19.parse(std::move(argumentos));
  } catch (const CLI::CallForHelp&) {
    return Ayudar(q19);
  } catch (const CLI::CallForVersion& version) {
    return Decir(QString::fromUtf8(version.what())) ? Salida::Hecho : Salida::Fallo;
  } catch (const CLI::ParseError& error) {
    Avisar(ErrorDeUso(error, q19.remaining(true)));
    Avisar(u"véase «%1 --help»"_s.arg(Elegida(q19)));
    return Salida::MalUso;
  }
  return accion();
}

}  // namespace consola

#include "consola/Uso.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string>

#include "comunes/plataforma/Formatos.h"
#include "consola/Terminal.h"
#include "ficheros/Rutas.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

/// Lo que el mensaje de la biblioteca dice antes de `separador`.
QString Antes(const QString& mensaje, const QString& separador) {
  return mensaje.left(mensaje.indexOf(separador));
}

QString Faltante(const QString& nombre) {
  return nombre == u"A subcommand"_s ? u"falta la orden"_s : u"falta %1"_s.arg(nombre);
}

/// La biblioteca alinea contando bytes, y cada letra con acento tiene dos.
class Formato : public CLI::Formatter {
 public:
  std::string make_option(const CLI::Option* opcion, bool posicional) const override {
    std::string lineas = CLI::Formatter::make_option(opcion, posicional);
    const std::string nombre = make_option_name(opcion, posicional) + make_option_opts(opcion);
    const auto deMas = std::ranges::count_if(nombre, [](char c) { return (c & 0xC0) == 0x80; });
    const std::size_t columna = get_column_width();
    constexpr std::size_t kSangria = 2;
    if (nombre.size() + kSangria < columna)
      lineas.insert(columna, std::string(static_cast<std::size_t>(deMas), ' '));
    return lineas;
  }
};

}  // namespace

std::shared_ptr<CLI::FormatterBase> FormatoAyuda() {
  auto formato = std::make_shared<Formato>();
  formato->label("Usage", "Uso");
  formato->label("OPTIONS", "OPCIONES");
  formato->label("SUBCOMMAND", "ORDEN");
  formato->label("SUBCOMMANDS", "ÓRDENES");
  formato->label("Positionals", "Argumentos");
  formato->label("REQUIRED", "(obligatorio)");
  formato->label("Needs", "Con");
  formato->label("Excludes", "Sin");
  formato->label("TEXT", "TEXTO");
  formato->label("UINT", "NÚMERO");
  formato->label("INT", "NÚMERO");
  formato->column_width(28);
  return formato;
}

QString ErrorDeUso(const CLI::ParseError& error, const std::vector<std::string>& sobrantes) {
  const QString mensaje = Mostrable(QString::fromUtf8(error.what()));
  // Antes que lo que falta: sin una orden conocida, la biblioteca solo dice que falta la orden.
  if (!sobrantes.empty())
    return u"sobra o no se conoce: %1"_s.arg(Mostrable(QString::fromStdString(sobrantes.front())));
  if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr)
    return Faltante(Antes(mensaje, u" is required"_s));
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    const QString opcion = Antes(mensaje, u":"_s);
    return mensaje.contains(u"At Most"_s) ? u"%1 solo se puede dar una vez"_s.arg(opcion)
                                          : u"a %1 le falta su valor"_s.arg(opcion);
  }
  if (dynamic_cast<const CLI::RequiresError*>(&error) != nullptr)
    return QString(mensaje).replace(u" requires "_s, u" pide también "_s);
  if (dynamic_cast<const CLI::ExcludesError*>(&error) != nullptr)
    return QString(mensaje).replace(u" excludes "_s, u" no puede ir con "_s);
  if (dynamic_cast<const CLI::ConversionError*>(&error) != nullptr)
    return u"valor no válido: %1"_s.arg(mensaje.mid(mensaje.indexOf(u": "_s) + 2));
  // Las comprobaciones de cada orden traen ya su texto: "--salida: está vacía".
  if (dynamic_cast<const CLI::ValidationError*>(&error) != nullptr) return mensaje;
  return u"línea de órdenes incorrecta"_s;
}

std::function<std::string(const std::string&)> NumeroDesdeUno() {
  return [](const std::string& numero) {
    const bool cifras = numero.size() <= 18 && numero.find_first_not_of("0123456789") == std::string::npos;
    const bool cero = numero.find_first_not_of('0') == std::string::npos;
    return cifras && !cero ? std::string() : "ha de ser un número desde 1";
  };
}

std::function<std::string(const std::string&)> SinCerosDelante() {
  return [](const std::string& numero) {
    const auto primera = numero.find_first_not_of('0');
    return primera == std::string::npos ? numero : numero.substr(primera);
  };
}

void OpcionFecha(CLI::App& orden, std::string& fecha) {
  orden.add_option("--fecha", fecha, "El día que se toma por hoy (AAAAMMDD)")
      ->type_name("FECHA")
      ->check(
          [](const std::string& dada) {
            return remesa::LeerFecha(dada) ? std::string() : "ha de ser un día que exista, AAAAMMDD";
          },
          "");
}

remesa::Dia HoyDe(const std::string& fecha) {
  if (const auto dada = remesa::LeerFecha(fecha)) return *dada;
  return comunes::Hoy();
}

CLI::Option* OpcionSalida(CLI::App& orden, std::string& salida) {
  return orden.add_option("-o,--salida", salida, "Fichero que se escribe. Su extensión pasa a ser .Q19")
      ->type_name("SALIDA")
      ->check([](const std::string& dada) { return dada.empty() ? "está vacía" : std::string(); }, "");
}

std::filesystem::path SalidaQ19(const std::filesystem::path& salida) {
  const std::filesystem::path nombre = salida.filename();
  if (nombre.empty() || nombre == "." || nombre == "..")
    throw ficheros::ErrorEjecucion(ficheros::kErrorDeAcceso, salida, "es una carpeta");
  std::filesystem::path::string_type texto = nombre.native();
  texto.resize(std::min(texto.rfind('.'), texto.size()));
  return ficheros::RutaAbsoluta(salida.parent_path() / std::filesystem::path(texto).concat(".Q19"));
}

}  // namespace consola

#include <CLI/CLI.hpp>
#include <QCoreApplication>
#include <QFileInfo>
#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Terminal.h"
#include "ficheros/Lectura.h"
#include "remesa/Fichero.h"
#include "remesa/LineasFichero.h"
#include "remesa/Registro.h"
#include "ventanas/editor/Ayudas.h"
#include "ventanas/editor/Descripciones.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

constexpr int kTipoFichero = 19;

struct OpcionesVer {
  std::string fichero;
  std::optional<std::uint64_t> registro;
};

/// Una línea leída; de las más largas que un registro, `bytes` puede ser solo lo que de él se ve.
struct Linea {
  std::string_view bytes;
  std::uint64_t longitud = 0;
};

/// Da a `alLeer` las líneas del fichero, cortadas como al cargar una remesa y por un búfer que se reutiliza,
/// hasta que devuelve false.
void RecorrerLineas(const std::filesystem::path& ruta, const std::function<bool(const Linea&)>& alLeer) {
  constexpr std::size_t kBufer = std::size_t{1} << 20;
  ficheros::LecturaFichero lectura(ruta);
  Avance avance(u"Leyendo"_s, ruta);
  std::uintmax_t total = 0;
  std::vector<char> bufer(kBufer);
  bool sigue = true;
  remesa::LineasFichero lineas(
      [&](std::string_view bytes, std::uint64_t longitud, remesa::FinLinea) {
        sigue = sigue && alLeer({bytes.substr(0, remesa::kLongitudRegistro), longitud});
      },
      remesa::Fines::SoloCR);
  while (const std::size_t leidos = sigue ? lectura.leer(bufer) : 0) {
    avance.poner(total += leidos, lectura.tamano());
    lineas.dar({bufer.data(), leidos});
  }
  lineas.terminar();
}

/// Lo que hay del campo, sin los blancos que lo rellenan, y lo que significa.
QString Valor(const editor::CampoDescrito& campo, std::string_view registro) {
  const QString texto = editor::ValorCampo(registro, campo);
  QString visto = texto;
  while (visto.endsWith(u' '))
    visto.chop(1);
  const QString significado = editor::Interpretar(campo.ayuda, texto);
  if (!significado.isEmpty()) visto += u"  (%1)"_s.arg(significado);
  return visto;
}

class Visor {
 public:
  /// false si ya no se puede escribir.
  bool Mostrar(std::uint64_t numero, const Linea& linea) {
    const editor::Descripcion& diseno = disenoDe(editor::SeccionDe(linea.bytes, kTipoFichero));
    QString texto = u"Registro %1: "_s.arg(numero);
    const bool descrito = !diseno.campos.empty();
    texto +=
        descrito
            ? diseno.titulo
            : u"el tipo «%1» no tiene descripción en Tarvo.INI"_s.arg(Mostrable(diseno.seccion.trimmed()));
    if (linea.longitud != remesa::kLongitudRegistro)
      texto += u" (%1 %2 en lugar de %3)"_s.arg(linea.longitud)
                   .arg(linea.longitud == 1 ? u"carácter"_s : u"caracteres"_s)
                   .arg(remesa::kLongitudRegistro);
    if (!descrito) texto += u"\n  "_s + Mostrable(comunes::DesdeWindows1252(linea.bytes));
    qsizetype ancho = 0;
    for (const editor::CampoDescrito& campo : diseno.campos)
      ancho = std::max(ancho, campo.rotulo.size());
    for (const editor::CampoDescrito& campo : diseno.campos) {
      const QString valor = Mostrable(Valor(campo, linea.bytes));
      texto +=
          u"\n  "_s + (valor.isEmpty() ? campo.rotulo : campo.rotulo.leftJustified(ancho) + u"  "_s + valor);
    }
    return Decir(texto + u'\n');
  }

 private:
  const editor::Descripcion& disenoDe(const QString& seccion) {
    const auto hallado = disenos_.find(seccion);
    if (hallado != disenos_.end()) return hallado->second;
    return disenos_.emplace(seccion, editor::LeerDescripcion(comunes::RutaAjustes, seccion)).first->second;
  }

  std::map<QString, editor::Descripcion> disenos_;
};

bool Ajustes() {
  // La carpeta del programa solo se sabe con una aplicación creada.
  std::unique_ptr<QCoreApplication> aplicacion;
  if (!QCoreApplication::instance()) {
    static int argumentos = 1;
    static char nombre[] = "q19";
    static char* lista[] = {nombre, nullptr};
    aplicacion = std::make_unique<QCoreApplication>(argumentos, lista);
  }
  comunes::RutaAjustes = QCoreApplication::applicationDirPath() + u"/Tarvo.INI"_s;
  if (QFileInfo(comunes::RutaAjustes).isFile()) return true;
  Avisar(Explicar(ficheros::ErrorEjecucion(ficheros::kNoEncontrado), comunes::ARuta(comunes::RutaAjustes)));
  return false;
}

Salida Ver(const OpcionesVer& opciones) {
  const std::filesystem::path fichero = RutaDe(opciones.fichero);
  try {
    const QString problema = ProblemaCabeza(remesa::ComprobarCabeza(fichero));
    if (!problema.isEmpty()) {
      Avisar(u"%1: %2"_s.arg(Mostrable(fichero), problema));
      return Salida::Fallo;
    }
    if (!Ajustes()) return Salida::Fallo;
    Visor visor;
    std::uint64_t leidos = 0;
    bool dicho = true;
    RecorrerLineas(fichero, [&](const Linea& linea) {
      ++leidos;
      if (!opciones.registro || leidos == *opciones.registro) dicho = visor.Mostrar(leidos, linea);
      return dicho && (!opciones.registro || leidos < *opciones.registro);
    });
    if (!dicho) return Salida::Fallo;
    if (!opciones.registro || leidos >= *opciones.registro) return Salida::Hecho;
    Avisar(u"%1: no tiene registro %2; el último es el %3"_s.arg(Mostrable(fichero))
               .arg(*opciones.registro)
               .arg(leidos));
  } catch (const ficheros::ErrorEjecucion& error) {
    Avisar(Explicar(error, fichero));
  }
  return Salida::Fallo;
}

}  // namespace

void OrdenVer(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("ver", "Muestra los registros de una remesa campo por campo");
  auto opciones = std::make_shared<OpcionesVer>();
  orden->add_option("FICHERO", opciones->fichero, "La remesa")->type_name("")->required();
  orden->add_option("--registro", opciones->registro, "Solo el registro de ese número, desde 1")
      ->type_name("N")
      ->check(
          [](const std::string& numero) {
            const bool cifras =
                numero.size() <= 18 && numero.find_first_not_of("0123456789") == std::string::npos;
            const bool cero = numero.find_first_not_of('0') == std::string::npos;
            return cifras && !cero ? std::string() : "ha de ser un número desde 1";
          },
          "")
      // Antes de mirarlo: con ceros delante, la biblioteca lo leería en octal.
      ->transform(
          [](const std::string& numero) {
            const auto primera = numero.find_first_not_of('0');
            return primera == std::string::npos ? numero : numero.substr(primera);
          },
          "");
  orden->footer("Los campos son los de Tarvo.INI, junto al programa.");
  orden->callback([opciones, &accion] { accion = [opciones] { return Ver(*opciones); }; });
}

}  // namespace consola

#include <CLI/CLI.hpp>
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
#include "consola/Ajustes.h"
#include "consola/Ordenes.h"
#include "consola/Remesa.h"
#include "consola/Terminal.h"
#include "consola/Uso.h"
#include "ficheros/Lectura.h"
#include "remesa/LineasFichero.h"
#include "remesa/Registro.h"
#include "remesa/TipoFichero.h"
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

/// Da a `alLeer` las líneas de la remesa, cortadas como al cargar una remesa y por un búfer que se reutiliza,
/// hasta que devuelve false.
void RecorrerLineas(const Remesa& remesa, const std::function<bool(const Linea&)>& alLeer) {
  if (remesa.lista) {
    std::ranges::all_of(*remesa.lista, [&](std::string_view r) { return alLeer({r, r.size()}); });
    return;
  }
  constexpr std::size_t kBufer = std::size_t{1} << 20;
  ficheros::LecturaFichero lectura(remesa.ruta);
  Avance avance(u"Leyendo"_s, remesa.ruta);
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
  if (BuscarAjustes()) return true;
  Avisar(Explicar(ficheros::ErrorEjecucion(ficheros::kNoEncontrado), comunes::ARuta(comunes::RutaAjustes)));
  return false;
}

/// Se ve igual, pero hay otra orden que lo entiende.
void DecirDevueltos(const std::filesystem::path& fichero, remesa::TipoFichero tipo) {
  if (remesa::EsDeDevoluciones(tipo))
    Avisar(u"%1: es %2: se lee con q19 devoluciones"_s.arg(
        Mostrable(fichero), QString::fromUtf8(remesa::NombreTipo(tipo).data())));
}

Salida Ver(const OpcionesVer& opciones) {
  const std::filesystem::path fichero = RutaDe(opciones.fichero);
  try {
    const auto remesa = TomarRemesa(fichero);
    if (!remesa || !Ajustes()) return Salida::Fallo;
    Visor visor;
    std::uint64_t leidos = 0;
    bool dicho = true;
    RecorrerLineas(*remesa, [&](const Linea& linea) {
      if (++leidos == 1) DecirDevueltos(fichero, remesa::TipoDe(linea.bytes));
      if (!opciones.registro || leidos == *opciones.registro) dicho = visor.Mostrar(leidos, linea);
      return dicho && (!opciones.registro || leidos < *opciones.registro);
    });
    if (!dicho) return Salida::Fallo;
    if (!opciones.registro || leidos >= *opciones.registro) return Salida::Hecho;
    Avisar(u"%1: no tiene registro %2: el último es el %3"_s.arg(Mostrable(fichero))
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
      ->check(NumeroDesdeUno(), "")
      ->transform(SinCerosDelante(), "");
  orden->footer("Los campos son los de Tarvo.INI, junto al programa.");
  orden->callback([opciones, &accion] { accion = [opciones] { return Ver(*opciones); }; });
}

}  // namespace consola

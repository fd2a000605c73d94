#include "anteriores/LecturaAnterior.h"

#include <array>
#include <memory>
#include <utility>

#include "devoluciones/Lectores.h"
#include "ficheros/Lectura.h"
#include "iso20022/LectorXml.h"
#include "iso20022/LecturaMensaje.h"
#include "remesa/LineasFichero.h"
#include "remesa/TipoFichero.h"
#include "remesa/Utf8.h"

namespace anteriores {
namespace {

using remesa::TipoFichero;

constexpr std::size_t kTrozoAnterior = std::size_t{1} << 18;
/// Más de lo que ocupa una remesa de un millón de adeudos. Un XML se tiene entero en memoria, ya en
/// registros.
constexpr std::uintmax_t kMaximoTexto = std::uintmax_t{1} << 30;
constexpr std::uintmax_t kMaximoXml = std::uintmax_t{1} << 28;
constexpr const char* kEnorme = "es demasiado grande";

bool EstaEnBlanco(std::string_view linea) {
  return linea.find_first_not_of(std::string_view(" \t\x1A\0", 4)) == std::string_view::npos;
}

bool TieneNulos(std::string_view linea) {
  return linea.find('\0') != std::string_view::npos;
}

/// Las líneas de un fichero, por trozos.
template <class Recibir>
void CortarLineas(const std::filesystem::path& ruta, Recibir&& recibir, const Seguir& seguir) {
  ficheros::LecturaFichero lectura(ruta);
  remesa::LineasFichero lineas(std::forward<Recibir>(recibir));
  const auto bufer = std::make_unique_for_overwrite<char[]>(kTrozoAnterior);
  for (bool fin = false; !fin;) {
    const std::size_t leidos = lectura.leer({bufer.get(), kTrozoAnterior});
    fin = leidos < kTrozoAnterior;
    lineas.dar({bufer.get(), leidos});
    if (!seguir()) throw Detenido();
  }
  lineas.terminar();
}

/// Mira que una remesa esté entera mientras pasa.
class Entereza {
 public:
  /// `linea`, de la que sale, y su longitud.
  void dar(std::string_view registro, std::string_view linea, std::uint64_t longitud) {
    ultimo_ = remesa::Codigo(registro);
    if (ultimo_ == remesa::CodigoRegistro::Otro || longitud > remesa::kRegistroUtf8 || TieneNulos(linea))
      throw NoSeToma{"está dañado: tiene líneas que no son registros"};
    if (remesa::Clase(registro) == remesa::ClaseRegistro::Adeudo &&
        std::cmp_less(longitud, remesa::kCuentaDeudor.desde))
      throw NoSeToma{"está dañado: tiene adeudos cortados"};
    if (ultimo_ == remesa::CodigoRegistro::Acreedor)
      enBloque_ = true;
    else if (remesa::EsDeTotales(ultimo_))
      enBloque_ = false;
    else if (ultimo_ == remesa::CodigoRegistro::Adeudo && !enBloque_)
      throw NoSeToma{"está dañado: tiene adeudos sin cabecera de acreedor"};
  }
  bool acabada() const { return ultimo_ == remesa::CodigoRegistro::TotalesGenerales; }
  void terminar() const {
    if (!acabada()) throw NoSeToma{"está dañado: no acaba en su registro 99"};
  }

 private:
  remesa::CodigoRegistro ultimo_ = remesa::CodigoRegistro::Otro;
  bool enBloque_ = false;
};

FinUniforme LeerTexto(const std::filesystem::path& ruta, const ReceptorRegistros& recibir,
                      const Seguir& seguir) {
  Entereza entereza;
  std::uint64_t numero = 0;
  std::string bufer;
  bool uniforme = true;
  remesa::FinLinea suFin = remesa::FinLinea::Ninguno;
  CortarLineas(
      ruta,
      [&](std::string_view linea, std::uint64_t longitud, remesa::FinLinea fin) {
        if (++numero == 1) suFin = fin;
        uniforme = uniforme && longitud == remesa::kLongitudRegistro &&
                   (fin == suFin || fin == remesa::FinLinea::Ninguno);
        // Con ceros puede acabar un fichero; en medio, es un registro que se ha perdido.
        if (EstaEnBlanco(linea) && (entereza.acabada() || !TieneNulos(linea))) return;
        const std::string_view registro = ComoRegistro(linea, longitud, bufer);
        entereza.dar(registro, linea, longitud);
        recibir(registro, numero);
      },
      seguir);
  entereza.terminar();
  return uniforme ? remesa::LargoFin(suFin) : 0;
}

void LeerXml(const std::filesystem::path& ruta, const ReceptorRegistros& recibir, const Seguir& seguir) {
  const iso20022::MensajeLeido mensaje = iso20022::LeerMensaje(ruta, [&](std::uintmax_t, std::uintmax_t) {
    if (!seguir()) throw Detenido();
  });
  if (!mensaje.rechazo.isEmpty()) {
    QString causa = mensaje.rechazo;
    causa.front() = causa.front().toLower();
    throw NoSeToma{causa.toStdString()};
  }
  std::uint64_t numero = 0;
  for (const std::string_view registro : mensaje.registros)
    recibir(registro, ++numero);
}

}  // namespace

ClaseFichero Reconocer(const FicheroHallado& fichero) {
  const bool xml = iso20022::EmpiezaComoXml(fichero.ruta);
  if (xml) {
    if (fichero.tamano > kMaximoXml) throw NoSeToma{kEnorme};
    return devoluciones::EsMensajeDeDevoluciones(fichero.ruta) ? ClaseFichero::Devoluciones
                                                               : ClaseFichero::Xml;
  }
  std::array<char, 7> cabeza{};
  ficheros::LecturaFichero lectura(fichero.ruta);
  const TipoFichero tipo = remesa::TipoDe({cabeza.data(), lectura.leer(cabeza)});
  const bool deRemesa =
      tipo == TipoFichero::Presentacion || tipo == TipoFichero::PlazoCorto || tipo == TipoFichero::Empresas;
  if (!deRemesa && !remesa::EsDeDevoluciones(tipo))
    throw NoSeToma{"es " + std::string(remesa::NombreTipo(tipo))};
  if (fichero.tamano > kMaximoTexto) throw NoSeToma{kEnorme};
  return deRemesa ? ClaseFichero::Texto : ClaseFichero::Devoluciones;
}

FinUniforme LeerRemesa(const std::filesystem::path& ruta, ClaseFichero clase,
                       const ReceptorRegistros& recibir, const Seguir& seguir) {
  if (clase == ClaseFichero::Texto) return LeerTexto(ruta, recibir, seguir);
  LeerXml(ruta, recibir, seguir);
  return 0;
}

std::string_view ComoRegistro(std::string_view linea, std::uint64_t longitud, std::string& bufer) {
  if (longitud == remesa::kLongitudRegistro) return linea;
  remesa::RegistroUtf8 leido;
  if (longitud > remesa::kLongitudRegistro && remesa::LeerUtf8(linea, longitud, leido) &&
      !leido.bytes.empty()) {
    bufer = std::move(leido.bytes);
    remesa::AjustarLongitud(bufer);
    return bufer;
  }
  return remesa::ComoSeGuarda(linea, bufer);
}

void RecorrerLista(
    const remesa::ListaRegistros& lista,
    const std::function<void(std::string_view registro, std::uint64_t numero, std::uint64_t fila)>& recibir,
    const Seguir& seguir) {
  constexpr std::size_t kCadaCuantos = 4096;
  std::uint64_t numero = 0, fila = 0;
  std::string bufer;
  const auto dar = [&](std::string_view linea, std::uint64_t longitud, remesa::FinLinea) {
    ++numero;
    if (!EstaEnBlanco(linea)) recibir(ComoRegistro(linea, longitud, bufer), numero, fila);
  };
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    fila = i + 1;
    const std::string_view registro = lista[i];
    if (registro.find('\n') == std::string_view::npos) {
      dar(registro, registro.size(), remesa::FinLinea::Ninguno);
    } else {
      remesa::LineasFichero lineas(dar);
      lineas.dar(registro);
      lineas.terminar();
    }
    if (fila % kCadaCuantos == 0 && !seguir()) throw Detenido();
  }
}

void RecorrerFichero(
    const std::filesystem::path& ruta,
    const std::function<void(std::string_view registro, std::uint64_t numero, std::uint64_t fila)>& recibir,
    const Seguir& seguir) {
  std::uint64_t numero = 0, fila = 1;
  std::string bufer;
  CortarLineas(
      ruta,
      [&](std::string_view linea, std::uint64_t longitud, remesa::FinLinea fin) {
        ++numero;
        if (!EstaEnBlanco(linea)) recibir(ComoRegistro(linea, longitud, bufer), numero, fila);
        if (fin != remesa::FinLinea::LF) ++fila;
      },
      seguir);
}

}  // namespace anteriores

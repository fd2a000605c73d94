#include "remesa/ReglasComprobacion.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "remesa/TipoFichero.h"
#include "remesa/Validez.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;
using namespace std::chrono_literals;

/// Desde entonces el esquema solo admite direcciones estructuradas, según la fecha de cobro.
constexpr Dia kDireccionesEstructuradas{2026y, std::chrono::November, 15d};
constexpr std::string_view kMarcaUtf8 = "\xEF\xBB\xBF";
constexpr std::size_t kCabeza = 7;

Posiciones Desde(std::uint64_t desde, std::uint64_t hasta) {
  constexpr std::uint64_t kTope = std::numeric_limits<int>::max();
  return {static_cast<int>(std::min(desde, kTope)), static_cast<int>(std::min(hasta, kTope))};
}

/// Un registro de presentación cuya versión no se reconoce: lo demás que lo delata está en su sitio.
bool ParecePresentacion(std::string_view bytes) {
  const auto sonCifras = [&](Posiciones desde, Posiciones hasta) {
    const Posiciones todos{desde.desde, hasta.hasta};
    const std::string_view cifras = LeerCampo(bytes, todos);
    return cifras.size() == static_cast<std::size_t>(todos.longitud()) && SonCifras(cifras);
  };
  switch (Clase(bytes)) {
    case ClaseRegistro::Presentador:
      return LeerCampo(bytes, kNumeroDato) == "001";
    case ClaseRegistro::Acreedor:
      return LeerCampo(bytes, kNumeroDato) == "002";
    case ClaseRegistro::TotalesFecha:
      return sonCifras(kImporte04, kRegistros04);
    case ClaseRegistro::TotalesAcreedor:
      return sonCifras(kImporte05, kRegistros05);
    case ClaseRegistro::TotalesGenerales:
      return sonCifras(kImporte99, kRegistros99);
    case ClaseRegistro::Desconocido:
      return LeerCampo(bytes, kVersion) == kVersion1914;
    default:
      return true;  // un 03: su número de dato ya lo dice
  }
}

bool EsUtf16(std::string_view bytes) {
  return bytes.size() >= 4 && ((bytes[0] == 0) != (bytes[1] == 0)) && bytes[0] == bytes[2] * (bytes[0] != 0);
}

/// Un registro sin clase que puede ser de un adeudo, con el código o el número de dato equivocado.
bool PareceAdeudo(std::string_view bytes) {
  const std::string_view dato = LeerCampo(bytes, kNumeroDato);
  return Codigo(bytes) == CodigoRegistro::Adeudo || (dato >= "003" && dato <= "006" && SonCifras(dato));
}

}  // namespace

ReglasComprobacion::ReglasComprobacion(Dia hoy, ReceptorHallazgos recibir)
    : anotador_(std::move(recibir)),
      cabeceras_(anotador_, hoy),
      adeudo_(anotador_, cabeceras_.bloque(), hoy) {}

void ReglasComprobacion::rechazar(C codigo, std::string valor, std::string esperado) {
  anotador_.fichero(codigo, std::move(valor), std::move(esperado));
  ajeno_ = true;
}

void ReglasComprobacion::marca(std::string_view marca) {
  marca_ = marca;
  if (marca != kMarcaUtf8) rechazar(C::NoEsRemesa, "UTF-16", "01" + std::string(kVersion1914));
}

void ReglasComprobacion::dar(std::string_view bytes, std::uint64_t longitud, std::uint64_t fila) {
  constexpr std::size_t kMaximoBlancos = 100;
  if (ajeno_) return;
  bytes = bytes.substr(0, kRegistroUtf8);
  if (!reconocido_) {
    const std::string_view registro = bytes.substr(0, kLongitudRegistro);
    const bool enBlanco = EnBlanco(registro);
    if (enBlanco && blancos_.size() < kMaximoBlancos) {
      blancos_.push_back({std::string(registro), longitud, fila});
      return;
    }
    if (!enBlanco) reconocer(registro);
    if (ajeno_) return;
    mirarBlancos();
  }
  mirar(bytes, longitud, fila);
}

/// Qué fichero es, por su primer registro que diga algo.
void ReglasComprobacion::reconocer(std::string_view bytes) {
  const std::string_view codigo = LeerCampo(bytes, kCodigo);
  const TipoFichero tipo = TipoDe(bytes);
  switch (tipo) {
    case TipoFichero::Presentacion:
      return;
    case TipoFichero::Rechazos:
    case TipoFichero::Devoluciones:
    case TipoFichero::SolicitudesCancelacion:
      return rechazar(C::DeVuelta, std::string(codigo));
    case TipoFichero::PlazoCorto:
    case TipoFichero::Empresas:
      if (codigo.starts_with('1') || codigo.starts_with('2') || codigo.starts_with('3'))
        rechazar(C::DeVuelta, std::string(codigo));
      return;
    case TipoFichero::Transferencias:
    case TipoFichero::Anterior:
      break;
    case TipoFichero::Ajeno:
      if (ParecePresentacion(bytes)) return;
  }
  rechazar(C::NoEsRemesa, EsUtf16(bytes) ? "UTF-16" : std::string(bytes.substr(0, kCabeza)),
           "01" + std::string(kVersion1914));
}

void ReglasComprobacion::mirarBlancos() {
  reconocido_ = true;
  for (const Blanco& blanco : blancos_)
    mirar(blanco.bytes, blanco.longitud, blanco.fila);
  blancos_.clear();
}

void ReglasComprobacion::terminar() {
  if (ajeno_) return;
  mirarBlancos();
  if (!marca_.empty() && !dichoUtf8_) anotador_.fichero(C::MarcaDeBytes, marca_);
  if (anotador_.numero() == 0) return anotador_.fichero(C::SinRegistros);
  adeudo_.cerrar();
  versiones_.terminar();
  cabeceras_.terminar();
  orden_.terminar();
}

void ReglasComprobacion::mirar(std::string_view bytes, std::uint64_t longitud, std::uint64_t fila) {
  esUtf8_ = LeerUtf8(bytes, longitud, leido_);
  if (esUtf8_ && !leido_.bytes.empty()) {
    bytes = leido_.bytes;
    longitud = leido_.longitud;
  }
  bytes = bytes.substr(0, kLongitudRegistro);
  anotador_.pasarA(bytes, fila);
  if (esUtf8_ && !dichoUtf8_) anotador_.fichero(C::Utf8, leido_.palabra, {}, anotador_.numero());
  dichoUtf8_ = dichoUtf8_ || esUtf8_;
  if (mirarForma(bytes, longitud)) mirarRegistro();
}

/// Longitud, código y número de dato. false si no hay nada más que mirar en el registro.
bool ReglasComprobacion::mirarForma(std::string_view bytes, std::uint64_t longitud) {
  if (longitud != kLongitudRegistro)
    anotador_.posiciones(C::Longitud,
                         Desde(std::min<std::uint64_t>(longitud, kLongitudRegistro) + 1,
                               std::max<std::uint64_t>(longitud, kLongitudRegistro)),
                         std::to_string(longitud), std::to_string(kLongitudRegistro));
  if (anotador_.clase() != ClaseRegistro::Desconocido) return true;
  if (longitud < kLongitudRegistro && EnBlanco(bytes)) return false;
  if (Codigo(bytes) == CodigoRegistro::Adeudo)
    anotador_.posiciones(C::NumeroDato, kNumeroDato, std::string(LeerCampo(bytes, kNumeroDato)),
                         "003 004 005 006");
  else
    anotador_.posiciones(C::CodigoDesconocido, kCodigo, std::string(LeerCampo(bytes, kCodigo)),
                         "01 02 03 04 05 99");
  return true;
}

void ReglasComprobacion::mirarRegistro() {
  const ClaseRegistro clase = anotador_.clase();
  const bool opcional =
      clase == ClaseRegistro::Ultimos || clase == ClaseRegistro::Balanza || clase == ClaseRegistro::Mandato;
  if (!opcional && clase != ClaseRegistro::Desconocido) adeudo_.cerrar();
  orden_.dar();
  versiones_.dar();
  if (clase == ClaseRegistro::Desconocido && PareceAdeudo(anotador_.registro())) {
    orden_.dudoso();
    adeudo_.dudoso();
  }
  if (clase == ClaseRegistro::Acreedor) {
    cabeceras_.abrirBloque();
    adeudo_.abrirBloque();
  }
  if (clase == ClaseRegistro::Adeudo) adeudo_.anticipar();
  ComprobarCampos(anotador_, contexto());
  switch (clase) {
    case ClaseRegistro::Presentador:
      cabeceras_.presentador();
      break;
    case ClaseRegistro::Acreedor:
      cabeceras_.acreedor();
      break;
    case ClaseRegistro::Adeudo:
      adeudo_.adeudo();
      break;
    case ClaseRegistro::TotalesFecha:
      cabeceras_.totalesFecha();
      adeudo_.cerrarBloque();
      break;
    case ClaseRegistro::TotalesAcreedor:
      cabeceras_.totalesAcreedor();
      break;
    default:
      if (opcional) adeudo_.opcional();
      break;
  }
  mirarTotales();
}

ContextoCampos ReglasComprobacion::contexto() const {
  const CabeceraVista& bloque = cabeceras_.bloque();
  const ClaseRegistro clase = anotador_.clase();
  ContextoCampos contexto;
  contexto.version = versiones_.actual();
  contexto.utf8 = esUtf8_;
  contexto.direccionLibre = !bloque.cobro || *bloque.cobro < kDireccionesEstructuradas;
  if (bloque.abierto && (clase == ClaseRegistro::TotalesFecha || clase == ClaseRegistro::TotalesAcreedor)) {
    contexto.acreedor = bloque.acreedor;
    contexto.fechaCobro = Recortar(bloque.fechaCobro);
  }
  return contexto;
}

/// Un importe que no se entiende, o un adeudo que quizá no lo es, ya se han anotado: de las sumas en que
/// entran no se puede decir nada.
ReglasComprobacion::Sabido ReglasComprobacion::sumaSabida() {
  const std::string_view registro = anotador_.registro();
  switch (anotador_.clase()) {
    case ClaseRegistro::Adeudo: {
      const bool entero = registro.size() >= static_cast<std::size_t>(kImporteAdeudo.hasta);
      if (!entero || !SonCifras(Recortar(LeerCampo(registro, kImporteAdeudo))))
        for (Sabido* suma : {&bloque_, &acreedor_, &fichero_})
          suma->importes = false;
      return {};
    }
    case ClaseRegistro::TotalesFecha:
      return std::exchange(bloque_, {});
    case ClaseRegistro::TotalesAcreedor:
      bloque_ = {};
      return std::exchange(acreedor_, {});
    case ClaseRegistro::Desconocido:
      if (PareceAdeudo(registro)) bloque_ = acreedor_ = fichero_ = {.importes = false, .adeudos = false};
      return {};
    default:
      return fichero_;
  }
}

/// Lo que un registro de totales debe decir. Un campo que no es un número ya se ha anotado, y el que está
/// completado con blancos y no con ceros, también, pero se entiende.
void ReglasComprobacion::mirarTotales() {
  constexpr C kCodigos[] = {C::TotalImportes, C::TotalAdeudos, C::TotalRegistros};
  const std::string_view registro = anotador_.registro();
  const Sabido sabido = sumaSabida();
  const C* codigo = kCodigos;
  for (const TotalDebido& debido : totales_.dar(registro, anotador_.clase())) {
    const C este = *codigo++;
    const std::string_view escrito = LeerCampo(registro, debido.donde), dicho = Recortar(escrito);
    const auto ancho = static_cast<std::size_t>(debido.donde.longitud());
    const bool seSabe = este == C::TotalImportes  ? sabido.importes
                        : este == C::TotalAdeudos ? sabido.adeudos
                                                  : true;
    if (escrito.size() != ancho || !SonCifras(dicho) || !seSabe) continue;
    const std::string debe = CifrasDe(debido.valor, debido.donde.longitud());
    if (std::string(ancho - dicho.size(), '0').append(dicho) != debe)
      anotador_.campo(este, *CampoEn(registro, debido.donde.desde), debe);
  }
}

}  // namespace remesa

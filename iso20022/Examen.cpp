#include "iso20022/Examen.h"
#include "iso20022/Valores.h"

#include <algorithm>

#include "remesa/CaracteresSEPA.h"
#include "remesa/Registro.h"
#include "remesa/Validez.h"

namespace iso20022 {
namespace {

using C = remesa::ClaseRegistro;
using N = CodigoNota;
using remesa::LeerCampo;
using remesa::Posiciones;
using remesa::Recortar;

constexpr std::string_view kVersionEmpresas = "19445";
constexpr Posiciones kIdPresentador =
    remesa::PosicionesDe(remesa::tabla::kPresentador, "Identificador del presentador");

/// Las líneas que no son nada: blancos, o la marca de fin de fichero de otros sistemas.
bool EsVacia(std::string_view bytes) {
  return bytes.find_first_not_of(" \t\x1A") == std::string_view::npos;
}

bool EsVersion(std::string_view version) {
  return version == "19143" || version == "19154" || version == kVersionEmpresas;
}

}  // namespace

std::optional<ResumenExportacion> Exportacion::examinar(const ReceptorNotas& recibir, const Avance& avance) {
  Examen examen(*this, recibir);
  for (std::size_t i = 0; i < fuentes_.size(); ++i)
    if (!examen.fuente(i, avance)) return std::nullopt;
  examen.terminar();
  return resumen_;
}

Exportacion::Examen::Examen(Exportacion& exportacion, const ReceptorNotas& recibir)
    : e_(exportacion),
      recibir_([this, recibir](Nota&& nota) {
        const bool error = EsError(nota.codigo);
        ++(error ? e_.resumen_.errores : e_.resumen_.avisos);
        remesaMala_ = remesaMala_ || (error && nota.alcance == Alcance::Remesa);
        if (recibir) recibir(std::move(nota));
      }),
      traduccion_(exportacion.opciones_, recibir_) {}

bool Exportacion::Examen::fuente(std::size_t cual, const Avance& avance) {
  fuente_ = cual;
  traduccion_.ponerFuente(cual);
  numero_ = 0;
  ajena_ = hayPresentador_ = hayCabecera_ = trasTotales_ = false;
  lf_ = trasTotalesCuenta_ = {};
  const bool entera = e_.fuentes_[cual]->recorrer([this](const Linea& l) { return linea(l); }, avance);
  if (!entera && !ajena_) return false;
  cerrarAdeudo();
  traduccion_.ponerDueno(nullptr);
  if (cual == 0 && !hayPresentador_ && !ajena_) anotarRemesa(N::FaltaPresentador);
  if (lf_.cuantos > 0) anotarRemesa(N::SoloLF, lf_.primero, std::to_string(lf_.cuantos));
  if (trasTotalesCuenta_.cuantos > 0)
    anotarRemesa(N::AdeudosTrasTotales, trasTotalesCuenta_.primero,
                 std::to_string(trasTotalesCuenta_.cuantos));
  return true;
}

bool Exportacion::Examen::linea(const Linea& l) {
  ++numero_;
  if (l.fin == remesa::FinLinea::LF) lf_.sumar(numero_);
  registro_.bytes.assign(l.bytes.substr(0, remesa::kLongitudRegistro));
  registro_.numero = numero_;
  registro_.fila = l.fila;
  if (numero_ == 1 && esAjena(registro_.bytes)) {
    ajena_ = true;
    anotarRemesa(N::NoEsRemesa, 0, registro_.bytes.substr(0, 10));
    return false;
  }
  mirarLargo(l);
  const C clase = remesa::Clase(registro_.bytes);
  switch (clase) {
    case C::Presentador:
      cerrarAdeudo();
      presentador();
      break;
    case C::Acreedor:
      cerrarAdeudo();
      cabecera();
      break;
    case C::Adeudo:
      cerrarAdeudo();
      abrirAdeudo(l);
      break;
    case C::Ultimos:
    case C::Balanza:
    case C::Mandato:
      opcional(clase);
      break;
    case C::TotalesFecha:
    case C::TotalesAcreedor:
    case C::TotalesGenerales:
      cerrarAdeudo();
      trasTotales_ = true;
      break;
    case C::Desconocido:
      if (registro_.bytes.starts_with("03"))
        anotarSuelto(N::NumeroDato, remesa::kNumeroDato, LeerCampo(registro_.bytes, remesa::kNumeroDato));
      else if (!EsVacia(registro_.bytes))
        traduccion_.anotar(N::RegistroDesconocido, registro_, {0, 0}, registro_.bytes.substr(0, 2));
      break;
  }
  return true;
}

/// Un primer registro que no es del Cuaderno: lo demás tampoco lo será.
bool Exportacion::Examen::esAjena(std::string_view bytes) const {
  const std::string_view codigo = LeerCampo(bytes, remesa::kCodigo);
  return codigo.size() < 2 || (codigo != "01" && codigo != "02" && codigo != "03") ||
         !EsVersion(LeerCampo(bytes, remesa::kVersion));
}

void Exportacion::Examen::mirarLargo(const Linea& l) {
  if (l.longitud <= remesa::kLongitudRegistro) return;
  const std::string_view sobra = l.bytes.substr(std::min(l.bytes.size(), remesa::kLongitudRegistro));
  if (l.longitud == l.bytes.size() && EsVacia(sobra)) return;
  traduccion_.anotar(N::RegistroLargo, registro_, {0, 0}, Recortar(sobra).substr(0, 40),
                     std::to_string(l.longitud));
}

/// Los adeudos básicos y los que son entre empresas no van nunca juntos.
void Exportacion::Examen::mirarEsquema() {
  const std::string_view version = LeerCampo(registro_.bytes, remesa::kVersion);
  if (!EsVersion(version)) return;
  const std::string_view esquema = version == kVersionEmpresas ? kEntreEmpresas : kEsquemaBasico;
  if (esquema_.empty()) esquema_ = esquema;
  if (esquema == esquema_ || mezclados_) return;
  mezclados_ = true;
  Nota nota{N::EsquemasMezclados, Alcance::Remesa, fuente_, numero_, registro_.fila};
  nota.clase = remesa::Clase(registro_.bytes);
  nota.donde = remesa::kVersion;
  for (const remesa::Campo& campo : remesa::CamposDe(nota.clase))
    if (campo.donde == nota.donde) nota.campo = &campo;
  nota.valor = version;
  recibir_(std::move(nota));
}

void Exportacion::Examen::presentador() {
  mirarEsquema();
  traduccion_.ponerDueno(nullptr);
  if (hayPresentador_) {
    traduccion_.anotar(N::OtroPresentador01, registro_, {0, 0},
                       Recortar(LeerCampo(registro_.bytes, kIdPresentador)));
    return;
  }
  hayPresentador_ = true;
  if (fuente_ == 0) {
    e_.presentador_ = registro_;
    traduccion_.presentador(registro_);
    return;
  }
  const std::string_view este = Recortar(LeerCampo(registro_.bytes, kIdPresentador));
  const std::string_view primero = Recortar(LeerCampo(e_.presentador_.bytes, kIdPresentador));
  if (e_.presentador_.numero > 0 && este != primero)
    traduccion_.anotar(N::OtroPresentador, registro_, kIdPresentador, este, std::string(primero));
}

void Exportacion::Examen::cabecera() {
  mirarEsquema();
  trasTotales_ = false;
  hayCabecera_ = true;
  cabeceraMala_ = !traduccion_.cabecera(registro_);
  if (cabeceraMala_) return;
  std::string clave = LeerCampo(registro_.bytes, remesa::kVersion) == kVersionEmpresas ? "1" : "0";
  for (const std::string_view valor : traduccion_.valores(Grado::Bloque))
    clave.append("\n").append(remesa::EquivalenteSEPA(valor));
  const auto [hallado, nuevo] = bloques_.emplace(std::move(clave), e_.bloques_.size());
  if (nuevo) e_.bloques_.push_back({registro_, hallado->first.front() == '1'});
  bloque_ = hallado->second;
}

void Exportacion::Examen::abrirAdeudo(const Linea& l) {
  mirarEsquema();
  if (trasTotales_) trasTotalesCuenta_.sumar(numero_);
  adeudo_.vaciar();
  std::swap(adeudo_.de(C::Adeudo), registro_);
  apunte_.sitio = l.sitio | (static_cast<std::uint64_t>(fuente_) << kBitsSitio);
  inicio_ = ultima_ = numero_;
  hayAdeudo_ = true;
  adeudoMalo_ = false;
}

void Exportacion::Examen::opcional(C clase) {
  const RegistroLeido& adeudo = adeudo_.de(C::Adeudo);
  const auto referencias = [](const RegistroLeido& r) { return LeerCampo(r.bytes, remesa::kReferencias); };
  if (!hayAdeudo_ || referencias(registro_) != referencias(adeudo))
    return anotarSuelto(N::ReferenciasDistintas, remesa::kReferenciaAdeudo,
                        Recortar(LeerCampo(registro_.bytes, remesa::kReferenciaAdeudo)));
  mirarEsquema();
  if (const std::string_view version = LeerCampo(registro_.bytes, remesa::kVersion); !EsVersion(version))
    return anotarSuelto(N::Version, remesa::kVersion, Recortar(version));
  if (adeudo_.hay(clase)) return anotarSuelto(N::OpcionalRepetido, {0, 0}, {});
  std::swap(adeudo_.de(clase), registro_);
  ultima_ = numero_;
}

/// De un registro que no se sabe de qué adeudo es: se tiene por malo el que le precede, no vaya a ser suyo.
void Exportacion::Examen::anotarSuelto(N codigo, Posiciones donde, std::string_view valor) {
  traduccion_.ponerDueno(hayAdeudo_ ? &adeudo_.de(C::Adeudo) : nullptr);
  traduccion_.anotar(codigo, registro_, donde, valor);
  adeudoMalo_ = true;
}

void Exportacion::Examen::cerrarAdeudo() {
  if (!hayAdeudo_) return;
  hayAdeudo_ = false;
  const bool bueno = traduccion_.adeudo(adeudo_);
  if (!hayCabecera_) traduccion_.anotar(N::AdeudoSinCabecera, adeudo_.de(C::Adeudo), {0, 0}, {});
  if (bueno && !adeudoMalo_ && hayCabecera_ && !cabeceraMala_)
    apuntar();
  else
    omitir();
}

void Exportacion::Examen::apuntar() {
  Grupo& suyo = e_.grupos_[grupo()];
  const auto indice = static_cast<std::uint32_t>(e_.apuntes_.size());
  apunte_.lineas = static_cast<std::uint32_t>(ultima_ - inicio_ + 1);
  e_.apuntes_.push_back(apunte_);
  if (suyo.adeudos == 0)
    suyo.primero = indice;
  else
    e_.apuntes_[suyo.ultimo].siguiente = indice;
  suyo.ultimo = indice;
  const std::uint64_t importe = ImporteDe(adeudo_.de(C::Adeudo).bytes);
  ++suyo.adeudos;
  suyo.importe += importe;
  ++e_.resumen_.adeudos;
  e_.resumen_.importe += importe;
}

std::size_t Exportacion::Examen::grupo() {
  const std::string_view tipo = traduccion_.valor(Grado::Bloque, Forma::TipoAdeudo);
  const std::string_view categoria = traduccion_.valor(Grado::Bloque, Forma::Codigo);
  // Casi siempre es el del adeudo anterior.
  if (ultimoGrupo_ < e_.grupos_.size()) {
    const Grupo& g = e_.grupos_[ultimoGrupo_];
    if (g.bloque == bloque_ && g.tipo == tipo && g.categoria == categoria) return ultimoGrupo_;
  }
  const auto [hallado, nuevo] =
      grupos_.emplace(std::tuple{bloque_, std::string(tipo), std::string(categoria)}, e_.grupos_.size());
  if (nuevo) {
    Grupo grupo;
    grupo.bloque = bloque_;
    grupo.tipo = tipo;
    grupo.categoria = categoria;
    e_.grupos_.push_back(std::move(grupo));
    acreedores_.emplace(
        Recortar(LeerCampo(e_.bloques_[bloque_].cabecera.bytes, remesa::kIdentificadorAcreedor)));
  }
  return ultimoGrupo_ = hallado->second;
}

void Exportacion::Examen::omitir() {
  ++e_.resumen_.omitidos;
  const std::string_view importe = LeerCampo(adeudo_.de(C::Adeudo).bytes, remesa::kImporteAdeudo);
  if (remesa::SonCifras(importe)) e_.resumen_.importeOmitido += ImporteDe(adeudo_.de(C::Adeudo).bytes);
}

void Exportacion::Examen::anotarRemesa(N codigo, std::uint64_t cuenta, std::string valor,
                                       std::string cambio) {
  Nota nota{codigo, Alcance::Remesa, fuente_};
  nota.valor = std::move(valor);
  nota.cambio = std::move(cambio);
  nota.cuenta = cuenta;
  recibir_(std::move(nota));
}

void Exportacion::Examen::terminar() {
  ResumenExportacion& r = e_.resumen_;
  fuente_ = 0;
  resumir();
  const std::uint64_t caben = e_.opciones_.cada == 0 ? r.adeudos : e_.opciones_.cada;
  r.mensajes = r.adeudos == 0 ? 0 : (r.adeudos + caben - 1) / caben;
  r.bloques = contarBloques();
  if (r.adeudos == 0 && !remesaMala_) anotarRemesa(N::SinAdeudos, r.omitidos);
  if (r.mensajes > kMaxMensajes)
    anotarRemesa(N::DemasiadosMensajes, r.mensajes, {}, std::to_string(kMaxMensajes));
  r.salvable = !remesaMala_;
  r.posible = r.salvable && (r.errores == 0 || e_.opciones_.omitir);
}

void Exportacion::Examen::resumir() {
  const Resumidas& resumidas = traduccion_.resumidas();
  if (resumidas.caracteres > 0) {
    std::string antes, despues;
    for (const auto& [uno, otro] : resumidas.ejemplos) {
      antes.append(antes.empty() ? "" : "\n").append(uno);
      despues.append(despues.empty() ? "" : "\n").append(otro);
    }
    anotarRemesa(N::Caracteres, resumidas.caracteres, std::move(antes), std::move(despues));
  }
  if (resumidas.direcciones > 0) anotarRemesa(N::DireccionNoEscrita, resumidas.direcciones);
  if (acreedores_.size() > 1) anotarRemesa(N::VariosAcreedores, acreedores_.size());
}

/// Un grupo que no acaba con su mensaje sigue en el otro, en otro bloque.
std::uint64_t Exportacion::Examen::contarBloques() const {
  const std::uint64_t caben = e_.opciones_.cada;
  std::uint64_t bloques = 0, delante = 0;
  for (const Grupo& grupo : e_.grupos_) {
    bloques += caben == 0 ? 1 : (delante % caben + grupo.adeudos + caben - 1) / caben;
    delante += grupo.adeudos;
  }
  return bloques;
}

}  // namespace iso20022

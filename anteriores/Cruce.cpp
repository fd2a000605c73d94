#include "anteriores/Cruce.h"

#include <algorithm>
#include <map>

#include "anteriores/Relectura.h"
#include "anteriores/Vueltas.h"
#include "comunes/plataforma/Texto.h"
#include "ficheros/Rutas.h"
#include "remesa/ReglasCuentas.h"
#include "remesa/TotalesNorma.h"
#include "remesa/Validez.h"

namespace anteriores {
namespace {

using C = remesa::CodigoHallazgo;
using remesa::Hallazgo;
using remesa::TipoAdeudo;

/// Dos cobros iguales separados menos días son quizá el mismo.
constexpr int kDiasCercanos = 20;
/// De los cobros del mismo mandato e importe se miran los últimos. Un mandato con más no es de nadie (hay
/// programas que ponen a todos el mismo): de sus tipos y sus cuentas no se dice nada.
constexpr std::size_t kMaxIguales = 4096;
/// Lo que se sospecha y aún no se ha vuelto a leer.
constexpr std::size_t kMaxSospechas = 4096;
/// De tantos acreedores se busca desde cuándo hay ficheros.
constexpr std::size_t kMaxAcreedores = 64;

const remesa::Campo& CampoDe(remesa::Posiciones donde) {
  static const std::string adeudo = "03" + std::string(remesa::kVersion1914) + "003";
  return *remesa::CampoEn(adeudo, donde.desde);
}

/// Un adeudo de la remesa que se compara, con lo que hace falta de sus opcionales.
struct AdeudoActual {
  std::string registro, acreedor;
  std::uint64_t numero = 0, fila = 0;
  ClavesAdeudo claves;
  bool conSmnda = false, conCuentaOriginal = false, conMandatoOriginal = false;
};

/// Algo que se dirá si el registro de antes lo confirma.
struct Sospecha {
  Hallazgo hallazgo;
  Entrada antes;
  std::shared_ptr<const AdeudoActual> adeudo;
};

class Cruce {
 public:
  Cruce(const Indice& indice, const remesa::ReceptorHallazgos& recibir, const Seguir& seguir)
      : indice_(indice), recibir_(recibir), relectura_(indice, seguir) {}

  /// Qué remesa es: antes que nada. `gemela`, si puede ser de un XML o venir de otra forma.
  void empezar(const Resumidor& resumidor, const std::filesystem::path& ruta, bool gemela);
  /// Sus registros, otra vez.
  void dar(std::string_view registro, std::uint64_t numero, std::uint64_t fila);
  void terminar();

  ResultadoCruce resultado;

 private:
  using Iguales = std::span<const Entrada>;

  void anotar(Hallazgo&& hallazgo) {
    remesa::EsError(hallazgo.codigo) ? ++resultado.errores : ++resultado.avisos;
    recibir_(std::move(hallazgo));
  }
  bool cuenta(const Entrada& e) const { return !fuera_[e.fichero]; }
  bool viva(const Entrada& e) const { return cuenta(e) && e.vuelta == 0; }
  void mirarFichero();
  void cerrar();
  const Entrada* mirarEnviado(Iguales iguales);
  void mirarCercano(Iguales iguales, const Entrada* enviado);
  void mirarMandato(Iguales suyas);
  void mirarCuenta(Iguales suyas);
  void mirarSinUso();
  const Entrada* masAntiguo(std::uint64_t acreedor);
  void sospechar(C codigo, remesa::Posiciones donde, const Entrada& antes);
  void confirmar();
  bool confirmada(const Sospecha& s, std::string_view registro, std::string_view cabecera) const;

  const Indice& indice_;
  const remesa::ReceptorHallazgos& recibir_;
  Relectura relectura_;
  ResumenRemesa resumen_;
  BloqueActual bloque_;
  std::vector<bool> fuera_;  // los ficheros que son este mismo
  std::string presentador_;
  std::shared_ptr<AdeudoActual> actual_;
  std::vector<Sospecha> sospechas_;
  std::map<std::uint64_t, const Entrada*> antiguos_;
};

std::shared_ptr<remesa::EnviadoAntes> DeFichero(const FicheroAnterior& fichero) {
  return std::make_shared<remesa::EnviadoAntes>(
      remesa::EnviadoAntes{comunes::DesdeRuta(fichero.hallado.ruta).toStdString()});
}

void Cruce::empezar(const Resumidor& resumidor, const std::filesystem::path& ruta, bool gemela) {
  resumen_ = resumidor.resumen();
  presentador_ = resumidor.presentador();
  fuera_.assign(indice_.ficheros().size(), false);
  const FicheroAnterior* copia = nullptr;
  for (std::size_t i = 0; i < fuera_.size(); ++i) {
    const FicheroAnterior& f = indice_.ficheros()[i];
    const bool mismo = f.resumen.registros > 0 && f.resumen.mismoContenido(resumen_);
    // La misma en XML no tiene los mismos registros.
    const bool enXml = (gemela || f.clase == ClaseFichero::Xml) &&
                       f.resumen.identificacion == resumen_.identificacion &&
                       f.resumen.mismosAdeudos(resumen_);
    const bool puedeSer = !ruta.empty() && f.hallado.ruta.filename() == ruta.filename();
    if (!mismo && !enXml && !puedeSer) continue;
    const bool elMismo = !ruta.empty() && ficheros::EsElMismo(f.hallado.ruta, ruta);
    fuera_[i] = mismo || enXml || elMismo;
    if (elMismo)
      resultado.elMismo = f.hallado.ruta;
    else if (fuera_[i] && copia == nullptr)
      copia = &f;
  }
  if (copia != nullptr) {
    Hallazgo hallazgo{C::YaGuardado};
    auto antes = DeFichero(*copia);
    const auto cual = static_cast<std::uint32_t>(copia - indice_.ficheros().data());
    antes->registro = std::max<std::uint64_t>(copia->resumen.presentador, 1);
    if (const auto registro = relectura_.registro(cual, antes->registro)) {
      if (copia->resumen.presentador != 0) antes->fecha = Valor(*registro, remesa::kFechaCreacion);
      hallazgo.antes = std::move(antes);
      anotar(std::move(hallazgo));
    }
  }
  mirarFichero();
}

/// La identificación del fichero no se repite: la del último que la lleve.
void Cruce::mirarFichero() {
  if (resumen_.presentada == 0) return;
  const std::string_view nuestra = Valor(presentador_, remesa::kIdentificacionFichero);
  for (std::size_t i = indice_.ficheros().size(); i-- > 0;) {
    const FicheroAnterior& f = indice_.ficheros()[i];
    if (fuera_[i] || !f.enFecha || f.resumen.presentada != resumen_.presentada) continue;
    const auto registro = relectura_.registro(static_cast<std::uint32_t>(i), f.resumen.presentador);
    if (!registro || Valor(*registro, remesa::kIdentificadorPresentador) !=
                         Valor(presentador_, remesa::kIdentificadorPresentador))
      continue;
    if (HuellaIdentificacion(Valor(*registro, remesa::kIdentificacionFichero)) != resumen_.identificacion)
      continue;
    Hallazgo h{C::IdentificacionUsada};
    h.registro = h.fila = resumen_.presentador;
    h.clase = remesa::ClaseRegistro::Presentador;
    h.donde = remesa::kIdentificacionFichero;
    h.campo = remesa::CampoEn(presentador_, h.donde.desde);
    h.valor = nuestra;
    auto antes = DeFichero(f);
    antes->registro = f.resumen.presentador;
    antes->fecha = Valor(*registro, remesa::kFechaCreacion);
    h.antes = std::move(antes);
    return anotar(std::move(h));
  }
}

void Cruce::dar(std::string_view registro, std::uint64_t numero, std::uint64_t fila) {
  const remesa::ClaseRegistro clase = remesa::Clase(registro);
  if (clase == remesa::ClaseRegistro::Mandato && actual_) {
    actual_->conSmnda |= !Valor(registro, remesa::kEntidadOriginal).empty();
    actual_->conCuentaOriginal |= !Valor(registro, remesa::kCuentaOriginal).empty();
    actual_->conMandatoOriginal |= !Valor(registro, remesa::kMandatoOriginal).empty();
  }
  if (remesa::Codigo(registro) == remesa::CodigoRegistro::Adeudo && clase != remesa::ClaseRegistro::Adeudo)
    return;
  cerrar();
  bloque_.dar(registro, numero);
  if (clase != remesa::ClaseRegistro::Adeudo || bloque_.cabecera.empty()) return;
  const ClavesAdeudo claves = Claves(registro, bloque_);
  if (claves.mandato == 0 || claves.acreedor == 0) return;
  actual_ = std::make_shared<AdeudoActual>();
  actual_->registro = registro;
  actual_->acreedor = remesa::SinSufijo(Valor(bloque_.cabecera, remesa::kIdentificadorAcreedor));
  actual_->numero = numero;
  actual_->fila = fila;
  actual_->claves = claves;
}

void Cruce::terminar() {
  cerrar();
  confirmar();
}

void Cruce::cerrar() {
  if (!actual_) return;
  const Iguales suyas = indice_.delMandato(actual_->claves.acreedor, actual_->claves.mandato);
  const bool demasiadas = suyas.size() > kMaxIguales;
  if (demasiadas || std::ranges::any_of(suyas, [this](const Entrada& e) { return cuenta(e); })) {
    const auto importe = [](const Entrada& e) { return std::uint64_t{e.importe}; };
    const Iguales iguales(std::ranges::lower_bound(suyas, actual_->claves.importe, {}, importe),
                          std::ranges::upper_bound(suyas, actual_->claves.importe, {}, importe));
    mirarCercano(iguales, mirarEnviado(iguales));
    if (!demasiadas) {
      mirarMandato(suyas);
      mirarCuenta(suyas);
    }
  } else {
    mirarSinUso();
  }
  actual_.reset();
  if (sospechas_.size() >= kMaxSospechas) confirmar();
}

/// El último de los iguales que no volvió o, si todos volvieron, el último.
const Entrada* Cruce::mirarEnviado(Iguales iguales) {
  const ClavesAdeudo& c = actual_->claves;
  if (c.referencia == 0) return nullptr;
  const Entrada* enviado = nullptr;
  iguales = iguales.last(std::min(iguales.size(), kMaxIguales));
  for (const Entrada& e : iguales) {
    if (e.referencia != c.referencia || !cuenta(e)) continue;
    if (enviado == nullptr || viva(e) || !viva(*enviado)) enviado = &e;
  }
  if (enviado != nullptr)
    sospechar(viva(*enviado) ? C::YaEnviado : C::YaDevuelto, remesa::kReferenciaAdeudo, *enviado);
  return enviado;
}

void Cruce::mirarCercano(Iguales iguales, const Entrada* enviado) {
  const ClavesAdeudo& c = actual_->claves;
  if (c.dia == 0) return;
  const Entrada* cercano = nullptr;
  const auto desde = std::ranges::lower_bound(iguales, c.dia - kDiasCercanos + 1, {},
                                              [](const Entrada& e) { return static_cast<int>(e.dia); });
  std::size_t mirados = 0;
  for (auto e = desde; e != iguales.end() && e->dia < c.dia + kDiasCercanos && ++mirados <= kMaxIguales;
       ++e) {
    if (e->concepto != c.concepto || !cuenta(*e)) continue;
    if (cercano == nullptr || viva(*e) || !viva(*cercano)) cercano = &*e;
  }
  // Del que ya se ha dicho que es el mismo no se repite, ni de dos que volvieron.
  if (cercano == nullptr || cercano == enviado) return;
  if (viva(*cercano))
    sospechar(C::CobroCercano, remesa::kReferenciaMandato, *cercano);
  else if (enviado == nullptr)
    sospechar(C::YaDevuelto, remesa::kReferenciaMandato, *cercano);
}

/// Lo que los tipos de sus otros adeudos no permiten. Los que volvieron es como si no se hubieran cobrado.
void Cruce::mirarMandato(Iguales suyas) {
  const ClavesAdeudo& c = actual_->claves;
  const auto tipo = [](const Entrada& e) { return static_cast<TipoAdeudo>(e.tipo); };
  const Entrada *unico = nullptr, *ultimo = nullptr, *primero = nullptr;
  for (const Entrada& e : suyas) {
    if (!viva(e)) continue;
    const bool deUno = tipo(e) == TipoAdeudo::OOFF || c.tipo == TipoAdeudo::OOFF;
    if (deUno && (unico == nullptr || e.dia >= unico->dia)) unico = &e;
    if (c.dia == 0 || e.dia > c.dia) continue;
    if (tipo(e) == TipoAdeudo::FNAL && (ultimo == nullptr || e.dia >= ultimo->dia)) ultimo = &e;
    if (tipo(e) != TipoAdeudo::OOFF && (primero == nullptr || e.dia < primero->dia)) primero = &e;
  }
  if (unico != nullptr) sospechar(C::MandatoUnico, remesa::kTipoAdeudo, *unico);
  if (ultimo != nullptr) sospechar(C::TrasUltimo, remesa::kTipoAdeudo, *ultimo);
  if (primero != nullptr && c.tipo == TipoAdeudo::FRST && !actual_->conSmnda)
    sospechar(C::YaHuboPrimero, remesa::kTipoAdeudo, *primero);
}

/// Con la cuenta del último adeudo, y cuánto hace de él. Aunque volviera, se presentó.
void Cruce::mirarCuenta(Iguales suyas) {
  const ClavesAdeudo& c = actual_->claves;
  if (c.dia == 0) return;
  const Entrada* ultimo = nullptr;
  const Entrada* conOtra = nullptr;
  bool conEsta = false;  // alguno del mismo día que conOtra
  for (const Entrada& e : suyas) {
    if (!cuenta(e) || e.dia > c.dia) continue;
    if (ultimo == nullptr || e.dia >= ultimo->dia) ultimo = &e;
    if (e.cuenta == 0 || (conOtra != nullptr && e.dia < conOtra->dia)) continue;
    if (conOtra == nullptr || e.dia > conOtra->dia) conEsta = false;
    conEsta |= e.cuenta == c.cuenta;
    conOtra = &e;
  }
  if (ultimo == nullptr) return;
  if (remesa::Dia(DiaDeNumero(static_cast<std::uint16_t>(ultimo->dia))) + remesa::kVidaMandato <
      DiaDeNumero(c.dia))
    sospechar(C::MandatoSinUso, remesa::kReferenciaMandato, *ultimo);
  const bool explicado = actual_->conSmnda || actual_->conCuentaOriginal;
  if (conOtra != nullptr && !conEsta && c.cuenta != 0 && !explicado)
    sospechar(C::CuentaCambiada, remesa::kCuentaDeudor, *conOtra);
}

/// Firmado hace más de lo que vive un mandato y sin ningún adeudo, aunque los ficheros llegan hasta entonces.
void Cruce::mirarSinUso() {
  const ClavesAdeudo& c = actual_->claves;
  const auto firma = remesa::LeerFecha(remesa::LeerCampo(actual_->registro, remesa::kFechaFirma));
  if (c.dia == 0 || actual_->conMandatoOriginal || !firma) return;
  const remesa::Dia cobro = DiaDeNumero(c.dia);
  if (*firma + remesa::kVidaMandato >= cobro) return;
  const Entrada* antiguo = masAntiguo(c.acreedor);
  if (antiguo == nullptr) return;
  const remesa::Dia desde = DiaDeNumero(static_cast<std::uint16_t>(antiguo->dia));
  if (desde + remesa::kVidaMandato < cobro) sospechar(C::MandatoSinUso, remesa::kFechaFirma, *antiguo);
}

const Entrada* Cruce::masAntiguo(std::uint64_t acreedor) {
  if (const auto sabido = antiguos_.find(acreedor); sabido != antiguos_.end()) return sabido->second;
  if (antiguos_.size() == kMaxAcreedores) return nullptr;
  const Entrada* antiguo = nullptr;
  for (const Entrada& e : indice_.entradas())
    if (e.acreedor == acreedor && cuenta(e) && (antiguo == nullptr || e.dia < antiguo->dia)) antiguo = &e;
  return antiguos_[acreedor] = antiguo;
}

void Cruce::sospechar(C codigo, remesa::Posiciones donde, const Entrada& antes) {
  Hallazgo h{codigo};
  const std::string_view registro = actual_->registro;
  h.registro = actual_->numero;
  h.fila = actual_->fila;
  h.clase = remesa::ClaseRegistro::Adeudo;
  h.donde = donde;
  h.campo = &CampoDe(donde);
  h.valor = Valor(registro, donde);
  h.deudor = Valor(registro, remesa::kNombreDeudor);
  h.referencia = Valor(registro, remesa::kReferenciaAdeudo);
  sospechas_.push_back({std::move(h), antes, actual_});
}

/// Vuelve a leer cada registro, por ficheros, y da los que se confirman, por el orden de la remesa.
void Cruce::confirmar() {
  std::vector<Sospecha*> porFichero;
  porFichero.reserve(sospechas_.size());
  for (Sospecha& s : sospechas_)
    porFichero.push_back(&s);
  std::ranges::stable_sort(porFichero, {},
                           [](const Sospecha* s) { return std::pair(s->antes.fichero, s->antes.registro); });
  for (Sospecha* s : porFichero) {
    const auto registro = relectura_.registro(s->antes.fichero, s->antes.registro);
    const auto cabecera = relectura_.registro(s->antes.fichero, s->antes.cabecera);
    if (!registro || !cabecera || !confirmada(*s, *registro, *cabecera)) continue;
    auto antes = DeFichero(indice_.ficheros()[s->antes.fichero]);
    antes->fecha = Valor(*cabecera, remesa::kFechaCobro);
    antes->registro = s->antes.registro;
    if (s->antes.vuelta != 0) antes->vuelta = TextoVuelta(indice_.vueltas()[s->antes.vuelta - 1]);
    if (s->hallazgo.codigo == C::CuentaCambiada)
      s->hallazgo.esperado = Valor(*registro, remesa::kCuentaDeudor);
    s->hallazgo.antes = std::move(antes);
  }
  for (Sospecha& s : sospechas_)
    if (s.hallazgo.antes) anotar(std::move(s.hallazgo));
  sospechas_.clear();
}

bool Cruce::confirmada(const Sospecha& s, std::string_view registro, std::string_view cabecera) const {
  const std::string_view nuestro = s.adeudo->registro;
  const auto igual = [&](remesa::Posiciones donde) {
    return MismoTexto(Valor(registro, donde), Valor(nuestro, donde));
  };
  if (remesa::SinSufijo(Valor(cabecera, remesa::kIdentificadorAcreedor)) != s.adeudo->acreedor) return false;
  if (s.hallazgo.donde == remesa::kFechaFirma) return true;  // del otro solo importan el acreedor y la fecha
  if (!igual(remesa::kReferenciaMandato)) return false;
  const bool mismoImporte = remesa::ImporteDe(registro) == remesa::ImporteDe(nuestro);
  switch (s.hallazgo.codigo) {
    case C::YaEnviado:
      return mismoImporte && igual(remesa::kReferenciaAdeudo);
    case C::CobroCercano:
      return mismoImporte && igual(remesa::kConcepto);
    case C::YaDevuelto:
      return mismoImporte && igual(s.hallazgo.donde == remesa::kReferenciaAdeudo ? remesa::kReferenciaAdeudo
                                                                                 : remesa::kConcepto);
    case C::CuentaCambiada:
      return remesa::CuentaComparable(Valor(registro, remesa::kCuentaDeudor)) !=
             remesa::CuentaComparable(Valor(nuestro, remesa::kCuentaDeudor));
    default:
      return true;
  }
}

/// `recorrer` da los registros a lo que se le pasa, y se llama dos veces.
template <class Recorrer>
ResultadoCruce Cruzar(const Indice& indice, const std::filesystem::path& ruta, bool gemela,
                      const remesa::ReceptorHallazgos& recibir, const Seguir& seguir,
                      const Recorrer& recorrer) {
  Cruce cruce(indice, recibir, seguir);
  try {
    Resumidor resumidor;
    recorrer([&](std::string_view registro, std::uint64_t numero, std::uint64_t) {
      resumidor.dar(registro, numero);
    });
    cruce.empezar(resumidor, ruta, gemela);
    recorrer([&](std::string_view registro, std::uint64_t numero, std::uint64_t fila) {
      cruce.dar(registro, numero, fila);
    });
    cruce.terminar();
  } catch (const Detenido&) {
    cruce.resultado.completo = false;
  }
  return std::move(cruce.resultado);
}

}  // namespace

ResultadoCruce CruzarFichero(const Indice& indice, const std::filesystem::path& ruta,
                             const remesa::ReceptorHallazgos& recibir, const Seguir& seguir) {
  return Cruzar(indice, ruta, false, recibir, seguir,
                [&](const auto& dar) { RecorrerFichero(ruta, dar, seguir); });
}

ResultadoCruce CruzarLista(const Indice& indice, const remesa::ListaRegistros& lista,
                           const std::filesystem::path& ruta, const remesa::ReceptorHallazgos& recibir,
                           const Seguir& seguir) {
  return Cruzar(indice, ruta, true, recibir, seguir,
                [&](const auto& dar) { RecorrerLista(lista, dar, seguir); });
}

std::optional<std::filesystem::path> GuardadaAntes(const Indice& indice, const remesa::ListaRegistros& lista,
                                                   const Seguir& seguir) try {
  Resumidor resumidor;
  RecorrerLista(
      lista,
      [&](std::string_view registro, std::uint64_t numero, std::uint64_t) {
        resumidor.dar(registro, numero);
      },
      seguir);
  const auto suya = std::ranges::find_if(indice.ficheros(), [&](const FicheroAnterior& f) {
    return f.resumen.mismosAdeudos(resumidor.resumen());
  });
  if (suya == indice.ficheros().end()) return std::nullopt;
  return suya->hallado.ruta;
} catch (const Detenido&) {
  return std::nullopt;
}

}  // namespace anteriores

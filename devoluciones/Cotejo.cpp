#include "devoluciones/Cotejo.h"

#include <algorithm>
#include <utility>

#include "devoluciones/Presentadas.h"
#include "ficheros/ErrorEjecucion.h"
#include "iso20022/LectorXml.h"
#include "remesa/Campos.h"
#include "remesa/CaracteresSEPA.h"
#include "remesa/ReglasCuentas.h"
#include "remesa/TotalesNorma.h"
#include "remesa/Validez.h"

namespace devoluciones {
namespace {

using remesa::LeerCampo;
using remesa::Recortar;

/// Adeudos con la misma clave que se guardan: con más no se puede decidir.
constexpr std::size_t kMaxCandidatos = 64;

// Lo que lleva una clave.
constexpr unsigned kConReferencia = 1, kConMandato = 2, kConImporte = 4;
constexpr unsigned kConTodo = kConReferencia | kConMandato | kConImporte;

/// Con los textos en el juego de SEPA: lo que el banco dice de un XML viene así.
std::string Clave(unsigned mascara, std::string_view referencia, std::string_view mandato,
                  std::int64_t importe) {
  std::string clave(1, static_cast<char>('0' + mascara));
  const auto anadir = [&](std::string_view parte) {
    clave += '\0';
    for (const char c : parte)
      clave += remesa::EquivalenteSEPA(c);
  };
  if ((mascara & kConReferencia) != 0) anadir(referencia);
  if ((mascara & kConMandato) != 0) anadir(mandato);
  if ((mascara & kConImporte) != 0) anadir(std::to_string(importe));
  return clave;
}

std::string_view Valor(std::string_view registro, remesa::Posiciones donde) {
  return Recortar(LeerCampo(registro, donde));
}

std::string_view SinNoDada(std::string_view referencia) {
  return referencia == kSinReferencia ? std::string_view() : referencia;
}

std::string EnSepa(std::string_view texto) {
  return remesa::EquivalenteSEPA(texto);
}

std::string Identificacion(const Dato& fichero) {
  return EnSepa(IdentificacionComparable(fichero.enRegistro()));
}

/// Deja solo los que cumplen, si alguno lo hace.
template <class Cumple>
void Preferir(std::vector<std::size_t>& candidatos, Cumple&& cumple) {
  if (std::ranges::any_of(candidatos, cumple))
    std::erase_if(candidatos, [&](std::size_t i) { return !cumple(i); });
}

}  // namespace

std::string_view IdentificacionComparable(std::string_view identificacion) {
  return identificacion.starts_with("PREFSDD") ? identificacion.substr(3) : identificacion;
}

/// Recibe los registros de una remesa y junta los adeudos que alguna devolución puede ser.
class Cotejo::Lector {
 public:
  Lector(const Cotejo& cotejo, const std::filesystem::path& ruta)
      : cotejo_(cotejo), xml_(iso20022::EmpiezaComoXml(ruta)) {
    if (!cotejo.hayBloques_ || !xml_) return;
    for (const AdeudoDeBloque& a : BloquesXml(ruta))
      deXml_[Clave(kConTodo, SinNoDada(a.referencia), a.mandato, a.importe)].push_back(a.bloque);
  }

  void dar(std::string_view bytes) {
    ++registro_;
    huella_ = remesa::Mezclar(huella_, remesa::Huella(bytes));
    const remesa::ClaseRegistro clase = remesa::Clase(bytes);
    const bool deAdeudo = remesa::Codigo(bytes) == remesa::CodigoRegistro::Adeudo;
    if (!deAdeudo || clase == remesa::ClaseRegistro::Adeudo) acabarAdeudo();
    if (clase == remesa::ClaseRegistro::Presentador) {
      if (presentador_.empty()) presentador_ = bytes;
    } else if (clase == remesa::ClaseRegistro::Acreedor) {
      cabeceras_.emplace_back(bytes);
    } else if (clase == remesa::ClaseRegistro::Adeudo) {
      actual_.registro = registro_;
      actual_.registros.assign(1, std::string(bytes));
    } else if (deAdeudo && !actual_.registros.empty()) {
      actual_.registros.emplace_back(bytes);
    }
  }
  void terminar() { acabarAdeudo(); }

  std::uint64_t huella() const { return huella_; }
  void entregar(Cotejo& cotejo, const std::filesystem::path& ruta);

 private:
  void acabarAdeudo();
  std::string bloqueDe(std::string_view adeudo);
  std::string identificacion() const {
    return EnSepa(IdentificacionComparable(Valor(presentador_, remesa::kIdentificacionFichero)));
  }

  struct Hallado {
    Presentado adeudo;
    std::vector<std::size_t> grupos;
    bool deEntero = false;
  };
  const Cotejo& cotejo_;
  bool xml_;
  std::uint64_t registro_ = 0, huella_ = 0;
  std::string presentador_;
  std::vector<std::string> cabeceras_;
  Presentado actual_;
  std::vector<Hallado> hallados_;
  std::map<std::string, std::size_t> bloques_;
  std::map<std::string, std::deque<std::string>> deXml_;  // los bloques de los adeudos de cada clave
};

/// El suyo en el XML o, en una remesa de texto, el que le toca al pasarla a XML: los de cada cabecera, tipo y
/// categoría van en uno, numerados por orden de aparición detrás de la identificación del mensaje.
std::string Cotejo::Lector::bloqueDe(std::string_view adeudo) {
  if (!deXml_.empty()) {
    const auto suyos =
        deXml_.find(Clave(kConTodo, SinNoDada(Valor(adeudo, remesa::kReferenciaAdeudo)),
                          Valor(adeudo, remesa::kReferenciaMandato), remesa::ImporteDe(adeudo)));
    if (suyos == deXml_.end() || suyos->second.empty()) return {};
    std::string bloque = std::move(suyos->second.front());
    suyos->second.pop_front();
    return bloque;
  }
  constexpr std::size_t kMaxIdentificacion = 35;
  std::string clave(LeerCampo(adeudo, remesa::kTipoYCategoria));
  for (const remesa::Posiciones donde : {remesa::kIdentificadorAcreedor, remesa::kFechaCobro,
                                         remesa::kNombreAcreedor, remesa::kCuentaAcreedor})
    clave.append(1, '\0').append(Valor(cabeceras_.back(), donde));
  const std::size_t numero = bloques_.try_emplace(std::move(clave), bloques_.size() + 1).first->second;
  const std::string sufijo = "-" + std::to_string(numero);
  return identificacion().substr(0, kMaxIdentificacion - sufijo.size()) + sufijo;
}

void Cotejo::Lector::acabarAdeudo() {
  Hallado hallado;
  std::swap(hallado.adeudo.registros, actual_.registros);
  // Sin cabecera no se sabe de quién es: no se puede presentar otra vez.
  if (hallado.adeudo.registros.empty() || cabeceras_.empty()) return;
  const std::string_view registro = hallado.adeudo.registros.front();
  const std::string_view referencia = SinNoDada(Valor(registro, remesa::kReferenciaAdeudo));
  const std::string_view mandato = Valor(registro, remesa::kReferenciaMandato);
  const std::int64_t importe = remesa::ImporteDe(registro);
  for (const unsigned mascara : cotejo_.mascaras_) {
    const auto clave = cotejo_.claves_.find(Clave(mascara, referencia, mandato, importe));
    if (clave != cotejo_.claves_.end()) hallado.grupos.push_back(clave->second);
  }
  hallado.deEntero = cotejo_.enteros_.contains(identificacion());
  if (hallado.grupos.empty() && !hallado.deEntero) return;
  hallado.adeudo.registro = actual_.registro;
  hallado.adeudo.cabecera = static_cast<std::uint32_t>(cabeceras_.size() - 1);
  if (hallado.deEntero) hallado.adeudo.bloque = bloqueDe(registro);
  hallados_.push_back(std::move(hallado));
}

void Cotejo::Lector::entregar(Cotejo& cotejo, const std::filesystem::path& ruta) {
  const auto remesa = static_cast<std::uint32_t>(cotejo.remesas_.size());
  const auto primeraCabecera = static_cast<std::uint32_t>(cotejo.cabeceras_.size());
  cotejo.remesas_.push_back({ruta, presentador_, identificacion(), xml_});
  std::ranges::move(cabeceras_, std::back_inserter(cotejo.cabeceras_));
  for (Hallado& hallado : hallados_) {
    const std::size_t cual = cotejo.presentados_.size();
    hallado.adeudo.remesa = remesa;
    hallado.adeudo.cabecera += primeraCabecera;
    bool guardado = false;
    for (const std::size_t i : hallado.grupos) {
      Grupo& grupo = cotejo.grupos_[i];
      grupo.sobran = grupo.sobran || grupo.candidatos.size() == kMaxCandidatos;
      if (grupo.sobran) continue;
      grupo.candidatos.push_back(cual);
      guardado = true;
    }
    if (hallado.deEntero) cotejo.enteros_.find(identificacion())->second.candidatos.push_back(cual);
    if (guardado || hallado.deEntero) cotejo.presentados_.push_back(std::move(hallado.adeudo));
  }
}

Cotejo::Cotejo(const Lote& lote) : lote_(lote), grupoDe_(lote.size()) {
  for (std::size_t i = 0; i < grupoDe_.size(); ++i) {
    const Devolucion devolucion = lote[i];
    hayBloques_ |= devolucion.alcance == Alcance::Bloque;
    if (devolucion.alcance == Alcance::Adeudo)
      anadirClave(i);
    else if (!devolucion.ficheroOriginal.vacio())
      enteros_[Identificacion(devolucion.ficheroOriginal)];
  }
}

void Cotejo::anadirClave(std::size_t devolucion) {
  const Devolucion d = lote_[devolucion];
  if (d.referencia.vacio() && d.mandato.vacio()) return;
  const unsigned mascara = (d.referencia.presente() ? kConReferencia : 0U) |
                           (d.mandato.vacio() ? 0U : kConMandato) | (d.importe ? kConImporte : 0U);
  mascaras_.insert(mascara);
  const auto [clave, nueva] = claves_.try_emplace(
      Clave(mascara, SinNoDada(d.referencia.enRegistro()), d.mandato.enRegistro(), d.importe.value_or(0)),
      grupos_.size());
  if (nueva) grupos_.emplace_back();
  grupoDe_[devolucion] = clave->second;
}

bool Cotejo::buscarEn(const std::filesystem::path& remesa, const remesa::AvanceLectura& avance) {
  Lector lector(*this, remesa);
  RecorrerRemesa(
      remesa, [&](std::string_view registro) { lector.dar(registro); }, avance);
  lector.terminar();
  if (!leidas_.insert(lector.huella()).second) return false;
  lector.entregar(*this, remesa);
  return true;
}

Cotejo::Carpeta Cotejo::buscarEnCarpeta(const std::filesystem::path& carpeta,
                                        const remesa::AvanceLectura& avance) {
  std::error_code error;
  std::vector<std::filesystem::path> rutas;
  for (std::filesystem::directory_iterator i(carpeta, error), fin; !error && i != fin; i.increment(error)) {
    std::error_code ignorado;
    if (i->is_regular_file(ignorado)) rutas.push_back(i->path());
  }
  if (error) throw ficheros::ErrorEjecucion(error, carpeta);
  std::ranges::sort(rutas);
  Carpeta resultado;
  for (const std::filesystem::path& ruta : rutas) {
    try {
      if (buscarEn(ruta, avance))
        ++resultado.leidas;
      else
        resultado.copias.push_back(ruta);
    } catch (const FicheroAjeno&) {
      continue;
    } catch (const ficheros::ErrorEjecucion& fallo) {
      resultado.fallos.emplace_back(ruta, fallo.texto());
    }
  }
  return resultado;
}

bool Cotejo::esDeSuAcreedor(const Devolucion& devolucion, std::size_t candidato) const {
  if (devolucion.acreedor.vacio()) return true;
  const std::string_view suyo =
      Valor(cabeceras_[presentados_[candidato].cabecera], remesa::kIdentificadorAcreedor);
  return remesa::SinSufijo(suyo) == remesa::SinSufijo(devolucion.acreedor.enRegistro());
}

Cotejo::Hallazgo Cotejo::hallazgo(std::size_t devolucion) const {
  const Devolucion d = lote_[devolucion];
  if (d.alcance != Alcance::Adeudo) return decidirEntero(d);
  return grupoDe_[devolucion] ? decidir(d, grupos_[*grupoDe_[devolucion]]) : Hallazgo();
}

Cotejo::Hallazgo Cotejo::decidir(const Devolucion& d, const Grupo& grupo) const {
  std::vector<std::size_t> quedan = grupo.candidatos;
  std::erase_if(quedan, [&](std::size_t i) { return !esDeSuAcreedor(d, i); });
  const auto cabecera = [&](std::size_t i, remesa::Posiciones donde) {
    return Valor(cabeceras_[presentados_[i].cabecera], donde);
  };
  const std::string fichero = Identificacion(d.ficheroOriginal);
  if (!fichero.empty())
    Preferir(quedan,
             [&](std::size_t i) { return remesas_[presentados_[i].remesa].identificacion == fichero; });
  if (d.fechaCobro && quedan.size() > 1) {
    const std::string fecha = remesa::EscribirFecha(*d.fechaCobro);
    Preferir(quedan, [&](std::size_t i) { return cabecera(i, remesa::kFechaCobro) == fecha; });
  }
  if (d.fechaDevolucion && quedan.size() > 1) {
    // Lo devuelto se había cobrado ya: no es lo que se presentó otra vez después.
    const std::string fecha = remesa::EscribirFecha(*d.fechaDevolucion);
    Preferir(quedan, [&](std::size_t i) { return cabecera(i, remesa::kFechaCobro) <= fecha; });
  }
  if (!d.cuenta.vacio() && quedan.size() > 1) {
    const std::string cuenta = d.cuenta.enRegistro();
    Preferir(quedan, [&](std::size_t i) {
      return Valor(presentados_[i].registros.front(), remesa::kCuentaDeudor) == cuenta;
    });
  }
  if (quedan.size() > 1) quitarCopias(quedan);
  const EstadoCotejo estado = quedan.empty()                        ? EstadoCotejo::NoHallada
                              : quedan.size() == 1 && !grupo.sobran ? EstadoCotejo::Hallada
                                                                    : EstadoCotejo::Ambigua;
  return {estado, std::move(quedan)};
}

Cotejo::Hallazgo Cotejo::decidirEntero(const Devolucion& d) const {
  const auto entero = enteros_.find(Identificacion(d.ficheroOriginal));
  if (entero == enteros_.end()) return {};
  std::vector<std::size_t> suyos = entero->second.candidatos;
  const std::string bloque = EnSepa(d.bloqueOriginal.enRegistro());
  if (d.alcance == Alcance::Bloque)
    std::erase_if(suyos, [&](std::size_t i) { return EnSepa(presentados_[i].bloque) != bloque; });
  if (suyos.empty()) return {};
  quitarOtraForma(suyos);
  const auto deOtra = [&](std::size_t i) {
    return presentados_[i].remesa != presentados_[suyos.front()].remesa;
  };
  const bool ambigua = std::ranges::any_of(suyos, deOtra) || !cuadra(d, suyos);
  return {ambigua ? EstadoCotejo::Ambigua : EstadoCotejo::Hallada, suyos};
}

/// Si son tantos, y suman, como dice el banco; si no, el bloque no es ese.
bool Cotejo::cuadra(const Devolucion& d, std::span<const std::size_t> suyos) const {
  if (d.adeudos && std::cmp_not_equal(SumaAcotada(*d.adeudos, d.aparte), suyos.size())) return false;
  return !d.importe || d.aparte > 0 || *d.importe == sumar(suyos);
}

std::int64_t Cotejo::sumar(std::span<const std::size_t> adeudos) const {
  std::int64_t suma = 0;
  for (const std::size_t i : adeudos)
    suma = SumaAcotada(suma, remesa::ImporteDe(presentados_[i].registros.front()));
  return suma;
}

/// Lo que de un adeudo no cambia al pasar su remesa de texto a XML.
std::string Cotejo::loQueSeConserva(std::size_t presentado) const {
  const Presentado& suyo = presentados_[presentado];
  const std::string_view cabecera = cabeceras_[suyo.cabecera], debe = suyo.registros.front();
  std::string texto = Clave(kConTodo, SinNoDada(Valor(debe, remesa::kReferenciaAdeudo)),
                            Valor(debe, remesa::kReferenciaMandato), remesa::ImporteDe(debe));
  for (const std::string_view parte :
       {remesa::CuentaComparable(Valor(debe, remesa::kCuentaDeudor)), Valor(debe, remesa::kTipoAdeudo),
        Valor(cabecera, remesa::kIdentificadorAcreedor), Valor(cabecera, remesa::kFechaCobro)})
    texto.append(1, '\0').append(parte);
  return texto;
}

bool Cotejo::enOtraForma(std::size_t uno, std::size_t otro) const {
  return remesas_[presentados_[uno].remesa].xml != remesas_[presentados_[otro].remesa].xml &&
         loQueSeConserva(uno) == loQueSeConserva(otro);
}

/// De una remesa que está en texto y en XML, que lleva su identificación, la primera que se leyó.
void Cotejo::quitarOtraForma(std::vector<std::size_t>& deEntero) const {
  const auto deOtra = [&](std::size_t i) {
    return presentados_[i].remesa != presentados_[deEntero.front()].remesa;
  };
  if (std::ranges::none_of(deEntero, deOtra)) return;
  std::map<std::uint32_t, std::multiset<std::string>> remesas;
  for (const std::size_t i : deEntero)
    remesas[presentados_[i].remesa].insert(loQueSeConserva(i));
  const auto& [primera, suyos] = *remesas.begin();
  std::erase_if(deEntero, [&, una = primera, &como = suyos](std::size_t i) {
    const std::uint32_t otra = presentados_[i].remesa;
    return remesas_[otra].xml != remesas_[una].xml && remesas[otra] == como;
  });
}

/// Un adeudo que está en una remesa y en otra hecha con ella, que lleva su identificación, es uno; también
/// si es la misma en XML, que cambia sus textos.
void Cotejo::quitarCopias(std::vector<std::size_t>& candidatos) const {
  const auto esCopia = [&](std::size_t uno, std::size_t otro) {
    const Presentado& a = presentados_[uno];
    const Presentado& b = presentados_[otro];
    if (a.remesa == b.remesa || remesas_[a.remesa].identificacion != remesas_[b.remesa].identificacion)
      return false;
    return enOtraForma(uno, otro) ||
           (a.registros == b.registros && cabeceras_[a.cabecera] == cabeceras_[b.cabecera]);
  };
  std::vector<std::size_t> distintos;
  for (const std::size_t i : candidatos)
    if (std::ranges::none_of(distintos, [&](std::size_t otro) { return esCopia(i, otro); }))
      distintos.push_back(i);
  candidatos = std::move(distintos);
}

Devolucion Cotejo::completada(std::size_t devolucion, const Hallazgo& hallazgo) const {
  Devolucion d = lote_[devolucion];
  if (hallazgo.estado != EstadoCotejo::Hallada) return d;
  if (d.alcance != Alcance::Adeudo && d.aparte == 0) {
    if (!d.adeudos) d.adeudos = std::ssize(hallazgo.adeudos);
    if (!d.importe) d.importe = sumar(hallazgo.adeudos);
  }
  const Presentado& suyo = presentados_[hallazgo.adeudos.front()];
  const auto deOtra = [&](std::size_t i) { return presentados_[i].cabecera != suyo.cabecera; };
  if (std::ranges::any_of(hallazgo.adeudos, deOtra)) return d;
  const std::string_view cabecera = cabeceras_[suyo.cabecera];
  const auto poner = [](Dato& dato, std::string_view registro, remesa::Posiciones donde) {
    if (!dato.presente()) dato = {Valor(registro, donde), false};
  };
  poner(d.acreedor, cabecera, remesa::kIdentificadorAcreedor);
  poner(d.nombreAcreedor, cabecera, remesa::kNombreAcreedor);
  poner(d.cuentaAcreedor, cabecera, remesa::kCuentaAcreedor);
  if (!d.fechaCobro) d.fechaCobro = remesa::LeerFecha(LeerCampo(cabecera, remesa::kFechaCobro));
  if (d.alcance != Alcance::Adeudo) return d;
  const std::string_view debe = suyo.registros.front();
  poner(d.referencia, debe, remesa::kReferenciaAdeudo);
  poner(d.mandato, debe, remesa::kReferenciaMandato);
  poner(d.deudor, debe, remesa::kNombreDeudor);
  poner(d.cuenta, debe, remesa::kCuentaDeudor);
  poner(d.concepto, debe, remesa::kConcepto);
  if (!d.importe) d.importe = remesa::ImporteDe(debe);
  return d;
}

}  // namespace devoluciones

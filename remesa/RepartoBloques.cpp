#include "remesa/RepartoBloques.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <numeric>
#include <tuple>

#include "ficheros/ErrorEjecucion.h"

namespace remesa {
namespace {

static_assert(std::endian::native == std::endian::little, "los enteros se guardan por sus bytes bajos");

/// Un registro corto, como se guardará: con blancos detrás.
template <std::size_t N>
std::array<char, N> CampoGuardado(std::string_view registro, Posiciones donde) {
  std::array<char, N> campo;
  campo.fill(' ');
  const std::string_view leido = LeerCampo(registro, donde);
  std::copy_n(leido.begin(), std::min(leido.size(), N), campo.begin());
  return campo;
}

template <std::size_t N>
std::string_view Vista(const std::array<char, N>& bytes) {
  return {bytes.data(), N};
}

std::uint32_t CuatroBytes(const char* bytes, std::size_t quedan) {
  std::uint32_t valor = 0;
  std::memcpy(&valor, bytes, std::min(quedan, sizeof valor));
  return std::rotl(((valor & 0xFF00FF00) >> 8) | ((valor & 0x00FF00FF) << 8), 16);
}

}  // namespace

std::uint32_t OrdenDeDato(std::string_view registro03) {
  const auto dato = CampoGuardado<kNumeroDato.longitud()>(registro03, kNumeroDato);
  return CuatroBytes(dato.data(), dato.size());
}

void RepartoBloques::empezarFichero() {
  unirSueltos();
  indice_.empezarFichero();
}

void RepartoBloques::dar(std::string_view registro, std::uint64_t posicion) {
  cerrarTramo(posicion);
  const bool habia = indice_.hayPresentador();
  const Numero bloque = indice_.dar(registro);
  switch (Codigo(registro)) {
    case CodigoRegistro::Presentador:
      if (!habia) presentador_ = posicion;
      break;
    case CodigoRegistro::Acreedor:
      if (bloque == cabeceras_.size()) cabeceras_.push_back(posicion);
      enCurso_ = false;
      break;
    case CodigoRegistro::Adeudo: {
      if (bloque == IndiceBloques::kNinguno) break;
      const bool es003 = Clase(registro) == ClaseRegistro::Adeudo;
      if (es003 || !enCurso_)
        anadir(registro, bloque, posicion, !es003);
      else
        alargar(registro);
      abierto_ = true;
      break;
    }
    default:
      break;
  }
}

void RepartoBloques::terminarFichero(std::uint64_t posicion) {
  cerrarTramo(posicion);
  indice_.terminarFichero();
  enCurso_ = false;
}

std::size_t RepartoBloques::adeudos(std::size_t b) const {
  const Numero bloque = orden_[b];
  return finales_[bloque] - (bloque == 0 ? 0 : finales_[bloque - 1]);
}

RepartoBloques::Adeudo RepartoBloques::adeudo(std::size_t b, std::size_t cual) const {
  const Numero bloque = orden_[b];
  const std::size_t puesto = (bloque == 0 ? 0 : finales_[bloque - 1]) + cual;
  const std::uint32_t i = puestos_[puesto].entrada;
  // Se piden uno tras otro, y en la memoria están como llegaron.
  constexpr std::size_t kPasos = 8;
  if (puesto + kPasos < puestos_.size()) __builtin_prefetch(&entrada(puestos_[puesto + kPasos].entrada));
  const Entrada& e = entrada(i);
  const auto suyos = unidos_.empty() ? unidos_.end() : unidos_.find(i);
  return {tramo(e), suyos == unidos_.end() ? std::span<const Tramo>{} : suyos->second, Vista(e.referencia),
          tiene(e, kSuelto), !tiene(e, kDesordenado)};
}

void RepartoBloques::cerrarTramo(std::uint64_t posicion) {
  if (!abierto_) return;
  Entrada& e = entrada(entradas_ - 1);
  ponerLargo(e, posicion - tramo(e).desde);
  abierto_ = false;
}

void RepartoBloques::anadir(std::string_view registro, Numero bloque, std::uint64_t posicion, bool suelto) {
  if (entradas_ == std::numeric_limits<std::uint32_t>::max())
    throw ficheros::ErrorEjecucion(ficheros::kMemoriaInsuficiente);
  if (entradas_ % kPorTrozo == 0) trozos_.push_back(std::make_unique_for_overwrite<Entrada[]>(kPorTrozo));
  if (rachas_.empty() || rachas_.back().bloque != bloque) rachas_.push_back({entradas_, bloque});
  Entrada& e = entrada(entradas_);
  e.referencia = CampoGuardado<kReferencia>(registro, kReferenciaAdeudo);
  std::memcpy(e.desde.data(), &posicion, e.desde.size());
  e.largo = {};
  dato_ = 0;
  if (suelto) {
    marcar(e, kSuelto);
    dato_ = OrdenDeDato(registro);
    sueltos_[entradas_] = dato_;
  }
  ++entradas_;
  enCurso_ = true;
}

void RepartoBloques::alargar(std::string_view registro) {
  Entrada& e = entrada(entradas_ - 1);
  const std::uint32_t dato = OrdenDeDato(registro);
  if (dato < dato_) marcar(e, kDesordenado);
  dato_ = dato;
  if (!tiene(e, kSuelto)) return;
  // Se coloca por el que será su primer registro.
  std::uint32_t& menor = sueltos_[entradas_ - 1];
  if (dato >= menor) return;
  menor = dato;
  e.referencia = CampoGuardado<kReferencia>(registro, kReferenciaAdeudo);
}

// En una remesa ya reunida, los 03 que llegaron sin 003 están detrás de algún otro adeudo de su bloque, y son
// suyos; los que son los primeros del bloque siguen sueltos, juntos.
void RepartoBloques::unirSueltos() {
  if (sueltos_.empty()) return;
  ordenar();
  std::vector<std::pair<std::uint32_t, std::uint32_t>> uniones;
  for (std::size_t b = 0; b < finales_.size(); ++b) {
    const std::uint32_t desde = b == 0 ? 0 : finales_[b - 1];
    std::uint32_t dueno = 0;
    for (std::uint32_t p = desde; p < finales_[b]; ++p) {
      const std::uint32_t i = puestos_[p].entrada;
      if (p == desde || !tiene(entrada(i), kSuelto))
        dueno = i;
      else
        uniones.emplace_back(i, dueno);
    }
  }
  puestos_.clear();
  for (const auto& [suelto, dueno] : uniones)
    unirSuelto(suelto, dueno);
}

void RepartoBloques::unirSuelto(std::uint32_t suelto, std::uint32_t dueno) {
  std::vector<Tramo>& detras = unidos_[dueno];
  detras.push_back(tramo(entrada(suelto)));
  if (const auto suyos = unidos_.extract(suelto); !suyos.empty())
    detras.insert(detras.end(), suyos.mapped().begin(), suyos.mapped().end());
  const auto antes = sueltos_.find(dueno);
  const auto ahora = sueltos_.extract(suelto);
  if (antes != sueltos_.end() && ahora.mapped() < antes->second) {
    antes->second = ahora.mapped();
    entrada(dueno).referencia = entrada(suelto).referencia;
  }
  marcar(entrada(suelto), kUnido);
}

void RepartoBloques::ordenar() {
  const auto hasta = [&](std::size_t r) {
    return r + 1 < rachas_.size() ? rachas_[r + 1].primera : entradas_;
  };
  finales_.assign(indice_.bloques().size(), 0);
  for (std::size_t r = 0; r < rachas_.size(); ++r)
    for (std::uint32_t i = rachas_[r].primera; i < hasta(r); ++i)
      if (!tiene(entrada(i), kUnido)) ++finales_[rachas_[r].bloque];
  // Donde empieza cada uno, que al llenarlos pasa a ser donde acaba.
  std::exclusive_scan(finales_.begin(), finales_.end(), finales_.begin(), std::uint32_t{0});
  const std::vector<std::uint32_t> inicios = finales_;
  puestos_.resize(entradas_);
  for (std::size_t r = 0; r < rachas_.size(); ++r)
    for (std::uint32_t i = rachas_[r].primera; i < hasta(r); ++i)
      if (!tiene(entrada(i), kUnido)) puestos_[finales_[rachas_[r].bloque]++] = {0, 0, i};
  orden_.clear();
  for (Numero b = 0; b < finales_.size(); ++b) {
    if (finales_[b] == inicios[b]) continue;
    orden_.push_back(b);
    ordenarTrozo(std::span(puestos_).subspan(inicios[b], finales_[b] - inicios[b]), 0);
  }
  const auto lugar = [&](Numero b) {
    const IndiceBloques::Bloque& bloque = indice_.bloques()[b];
    return std::tuple(bloque.acreedor, Vista(bloque.fecha), b);
  };
  std::ranges::sort(orden_, {}, lugar);
}

// De ocho en ocho bytes, saltando los que comparten: las referencias suelen empezar todas igual.
void RepartoBloques::ordenarTrozo(std::span<Puesto> puestos, std::size_t desde) {
  if (puestos.size() < 2) return;
  const auto& primera = entrada(puestos.front().entrada).referencia;
  std::size_t comun = kReferencia;
  for (const Puesto& p : puestos) {
    const auto& otra = entrada(p.entrada).referencia;
    const auto fin = primera.begin() + static_cast<std::ptrdiff_t>(comun);
    comun = static_cast<std::size_t>(std::mismatch(primera.begin() + static_cast<std::ptrdiff_t>(desde), fin,
                                                   otra.begin() + static_cast<std::ptrdiff_t>(desde))
                                         .first -
                                     primera.begin());
  }
  if (comun == kReferencia) return;  // todas iguales: siguen como llegaron
  for (Puesto& p : puestos) {
    const char* bytes = entrada(p.entrada).referencia.data() + comun;
    const std::size_t quedan = kReferencia - comun;
    p.alta = CuatroBytes(bytes, quedan);
    p.baja = quedan > 4 ? CuatroBytes(bytes + 4, quedan - 4) : 0;
  }
  if (!std::ranges::is_sorted(puestos)) std::ranges::sort(puestos);
  if (comun + 8 >= kReferencia) return;
  for (std::size_t i = 0, j = 0; i < puestos.size(); i = j) {
    while (j < puestos.size() && puestos[j].alta == puestos[i].alta && puestos[j].baja == puestos[i].baja)
      ++j;
    ordenarTrozo(puestos.subspan(i, j - i), comun + 8);
  }
}

RepartoBloques::Tramo RepartoBloques::tramo(const Entrada& e) const {
  std::uint64_t desde = 0;
  std::uint64_t largo = 0;
  std::memcpy(&desde, e.desde.data(), e.desde.size());
  std::memcpy(&largo, e.largo.data(), e.largo.size());
  constexpr std::uint64_t kMarcas = std::uint64_t{kSuelto | kDesordenado | kUnido} << 32;
  return {desde, desde + (largo & ~kMarcas)};
}

void RepartoBloques::ponerLargo(Entrada& e, std::uint64_t largo) {
  // 137 GB entre un 003 y el último de sus registros no son una remesa.
  if (largo >> 37 != 0) throw ficheros::ErrorEjecucion(ficheros::kDesbordamiento);
  const unsigned char marcas = e.largo.back() & (kSuelto | kDesordenado | kUnido);
  std::memcpy(e.largo.data(), &largo, e.largo.size());
  e.largo.back() |= marcas;
}

}  // namespace remesa

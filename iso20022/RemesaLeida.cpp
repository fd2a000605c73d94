#include "iso20022/RemesaLeida.h"

#include <algorithm>
#include <limits>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/Campos.h"
#include "remesa/Registro.h"

namespace iso20022 {
namespace {

using remesa::EscribirCampo;
using remesa::kLongitudRegistro;
using remesa::LeerCampo;
using remesa::Posiciones;

std::string Vacio(std::string_view codigo) {
  std::string registro(codigo);
  registro.resize(kLongitudRegistro, ' ');
  return registro;
}

void Cifras(std::string& registro, Posiciones donde, std::uint64_t valor) {
  std::string texto = std::to_string(valor);
  const auto ancho = static_cast<std::size_t>(donde.longitud());
  if (texto.size() < ancho) texto.insert(0, ancho - texto.size(), '0');
  EscribirCampo(registro, donde, texto);
}

}  // namespace

std::size_t RemesaLeida::bloque(const std::string& cabecera) {
  const auto [hallado, nuevo] = porCabecera_.emplace(cabecera, bloques_.size());
  if (nuevo) bloques_.emplace_back().cabecera = cabecera;
  return hallado->second;
}

void RemesaLeida::anadirAdeudo(std::size_t bloque, std::string_view registro, std::uint64_t centimos) {
  anadirOpcional(bloque, registro);
  ++bloques_[bloque].adeudos;
  bloques_[bloque].importe += centimos;
  ++adeudos_;
  importe_ += centimos;
}

// En trozos que no se mueven: un solo texto, al crecer, estaría un rato dos veces en memoria.
void RemesaLeida::anadirOpcional(std::size_t bloque, std::string_view registro) {
  constexpr std::size_t kMinimo = 8, kMaximo = 1024;
  Bloque& b = bloques_[bloque];
  if (fichero_) return guardarEnFichero(b, registro);
  if (b.libres == 0) {
    b.libres = std::clamp(static_cast<std::size_t>(b.registros), kMinimo, kMaximo);
    b.trozos.push_back({std::make_shared_for_overwrite<char[]>(b.libres * kLongitudRegistro)});
  }
  Trozo& trozo = b.trozos.back();
  registro.copy(trozo.datos.get() + trozo.registros * kLongitudRegistro, kLongitudRegistro);
  ++trozo.registros;
  --b.libres;
  ++b.registros;
}

void RemesaLeida::guardarEnFichero(Bloque& bloque, std::string_view registro) {
  if (enFichero_ == std::numeric_limits<std::uint32_t>::max())
    throw ficheros::ErrorEjecucion(ficheros::kMemoriaInsuficiente);
  fichero_->escribir(registro);
  std::vector<Racha>& rachas = bloque.rachas;
  if (rachas.empty() || rachas.back().primero + rachas.back().registros != enFichero_)
    rachas.push_back({enFichero_, 0});
  ++rachas.back().registros;
  ++enFichero_;
  ++bloque.registros;
}

std::string_view RemesaLeida::primeraCabecera() const {
  return bloques_.empty() ? std::string_view() : bloques_.front().cabecera;
}

void RemesaLeida::pasar(Bloque& bloque, remesa::ListaRegistros& lista) {
  for (Trozo& trozo : bloque.trozos) {
    std::vector<std::string_view> registros;
    for (std::size_t i = 0; i < trozo.registros; ++i)
      registros.emplace_back(trozo.datos.get() + i * kLongitudRegistro, kLongitudRegistro);
    lista.anadirBloque({std::move(trozo.datos), trozo.registros * kLongitudRegistro}, std::move(registros));
  }
}

void RemesaLeida::pasar(const Bloque& bloque, ficheros::FicheroProvisional& destino) {
  constexpr std::uint32_t kDeUnaVez = 256;
  std::string bytes;
  for (const Racha racha : bloque.rachas)
    for (std::uint32_t i = 0; i < racha.registros; i += kDeUnaVez) {
      bytes.resize(std::min(kDeUnaVez, racha.registros - i) * kLongitudRegistro);
      fichero_->leerEn((std::uintmax_t{racha.primero} + i) * kLongitudRegistro, bytes);
      for (std::string_view quedan = bytes; !quedan.empty(); quedan.remove_prefix(kLongitudRegistro)) {
        destino.escribir(quedan.substr(0, kLongitudRegistro));
        destino.escribir("\r\n");
      }
    }
}

remesa::ListaRegistros RemesaLeida::terminar(std::string_view presentador) {
  remesa::ListaRegistros lista;
  recorrer(
      presentador, [&](std::string_view registro) { lista.anadir(registro); },
      [&](Bloque& bloque) { pasar(bloque, lista); });
  *this = RemesaLeida();
  return lista;
}

void RemesaLeida::terminar(std::string_view presentador, ficheros::FicheroProvisional& destino) {
  recorrer(
      presentador,
      [&](std::string_view registro) {
        destino.escribir(registro);
        destino.escribir("\r\n");
      },
      [&](const Bloque& bloque) { pasar(bloque, destino); });
  *this = RemesaLeida();
}

template <class Registro, class Adeudos>
void RemesaLeida::recorrer(std::string_view presentador, Registro registro, Adeudos adeudos) {
  const auto acreedorDe = [](const Bloque& b) {
    return LeerCampo(b.cabecera, remesa::kIdentificadorAcreedor);
  };
  std::vector<std::string> acreedores;
  std::map<std::string_view, std::vector<Bloque*>> suyos;
  for (Bloque& b : bloques_) {
    auto& deEste = suyos[acreedorDe(b)];
    if (deEste.empty()) acreedores.emplace_back(acreedorDe(b));
    deEste.push_back(&b);
  }
  registro(presentador);
  Suma total{importe_, adeudos_, 2};  // con el 01 y el 99
  for (const std::string& acreedor : acreedores) {
    Suma suma{0, 0, 1};  // con el 05
    for (Bloque* b : suyos[acreedor]) {
      const std::uint64_t registros = b->registros + 2;  // con el 02 y el 04
      registro(b->cabecera);
      adeudos(*b);
      std::string r04 = Vacio("04");
      EscribirCampo(r04, remesa::kAcreedor04, acreedor);
      EscribirCampo(r04, remesa::kFecha04, LeerCampo(b->cabecera, remesa::kFechaCobro));
      Cifras(r04, remesa::kImporte04, b->importe);
      Cifras(r04, remesa::kAdeudos04, b->adeudos);
      Cifras(r04, remesa::kRegistros04, registros);
      registro(r04);
      suma.importe += b->importe;
      suma.adeudos += b->adeudos;
      suma.registros += registros;
    }
    std::string r05 = Vacio("05");
    EscribirCampo(r05, remesa::kAcreedor05, acreedor);
    Cifras(r05, remesa::kImporte05, suma.importe);
    Cifras(r05, remesa::kAdeudos05, suma.adeudos);
    Cifras(r05, remesa::kRegistros05, suma.registros);
    registro(r05);
    total.registros += suma.registros;
  }
  std::string r99 = Vacio("99");
  Cifras(r99, remesa::kImporte99, total.importe);
  Cifras(r99, remesa::kAdeudos99, total.adeudos);
  Cifras(r99, remesa::kRegistros99, total.registros);
  registro(r99);
}

}  // namespace iso20022

#include "consola/UnionBloques.h"

#include <algorithm>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/Campos.h"

namespace consola {

using remesa::RepartoBloques;

namespace {

/// Lo que cabe de una vez en memoria; lo más grande se recorre por trozos.
constexpr std::size_t kVentana = 1 << 16;
constexpr std::size_t kMaximoAbiertos = 64;

bool EsTipo03(std::string_view registro) {
  return remesa::Codigo(registro) == remesa::CodigoRegistro::Adeudo;
}

}  // namespace

FuenteFicheros::Abierto::Abierto(std::size_t cual, const Leido& suyo) : fichero(cual), leido(suyo) {
  if (leido.provisional == nullptr) lectura.emplace(leido.ruta);
  comprobarMarca();
}

void FuenteFicheros::Abierto::leerEn(std::uint64_t donde, std::span<char> destino) {
  if (lectura)
    lectura->leerEn(donde, destino, false);
  else
    leido.provisional->leerEn(donde, destino);
}

void FuenteFicheros::Abierto::comprobarMarca() const {
  if (lectura) lectura->comprobarMarca(leido.marca);
}

void FuenteFicheros::leer(const std::filesystem::path& fichero, const Registros& recibir,
                          const remesa::AvanceLectura& avance) {
  ficheros::LecturaFichero lectura(fichero);
  std::uint64_t total = 0;
  const auto tomar = [&](std::span<char> destino) {
    const std::size_t leidos = lectura.leer(destino);
    total += leidos;
    if (avance) avance(total, lectura.tamano());
    return leidos;
  };
  recorrerEntero(tomar, recibir);
  const ficheros::LecturaFichero::Marca marca = lectura.marca();
  leidos_.push_back({posicion_, marca.tamano, fichero, marca});
  posicion_ += total;
}

void FuenteFicheros::leer(ficheros::FicheroProvisional& fichero, const Registros& recibir) {
  std::uint64_t total = 0;
  const auto tomar = [&](std::span<char> destino) {
    const std::size_t leidos = fichero.leerEn(total, destino);
    total += leidos;
    return leidos;
  };
  recorrerEntero(tomar, recibir);
  leidos_.push_back({posicion_, total, {}, {}, &fichero});
  posicion_ += total;
}

template <class Leer>
void FuenteFicheros::recorrerEntero(Leer leer, const Registros& recibir) {
  lector_.recorrer(
      posicion_, leer,
      [&](std::string_view registro, std::string_view, std::uint64_t posicion) {
        recibir(registro, posicion);
      },
      [] {});
}

std::string_view FuenteFicheros::registro(std::uint64_t posicion) {
  const Leido& leido = abrir(posicion).leido;
  const std::uint64_t fin = leido.inicio + leido.tamano;
  const std::string_view bytes = ver({posicion, std::min(posicion + kRegistroConFin, fin)});
  return bytes.substr(0, bytes.find('\r'));
}

void FuenteFicheros::adeudo(const RepartoBloques::Adeudo& adeudo, const Receptor& recibir) {
  if (adeudo.ordenado && adeudo.detras.empty()) {
    bool primero = true;
    return recorrer(adeudo.donde, [&](std::string_view registro) {
      if (primero) comprobar(adeudo, registro);
      primero = false;
      recibir(registro);
    });
  }
  std::vector<std::string> registros;
  const auto guardar = [&](std::string_view registro) {
    registros.emplace_back(registro.substr(0, remesa::kLongitudRegistro));
  };
  recorrer(adeudo.donde, guardar);
  for (const RepartoBloques::Tramo tramo : adeudo.detras)
    recorrer(tramo, guardar);
  adeudo.ordenar(registros, [](const std::string& registro) { return std::string_view(registro); });
  for (const std::string& registro : registros)
    recibir(registro);
}

void FuenteFicheros::terminar() const {
  for (const Abierto& abierto : abiertos_)
    abierto.comprobarMarca();
}

template <class Recibir>
void FuenteFicheros::recorrer(RepartoBloques::Tramo tramo, Recibir recibir) {
  if (tramo.hasta - tramo.desde > kVentana) {
    Abierto& abierto = abrir(tramo.desde);
    const std::uint64_t inicio = abierto.leido.inicio;
    std::uint64_t siguiente = tramo.desde;
    const auto leer = [&](std::span<char> destino) {
      const std::size_t cuantos = std::min<std::uint64_t>(destino.size(), tramo.hasta - siguiente);
      abierto.leerEn(siguiente - inicio, destino.first(cuantos));
      siguiente += cuantos;
      return cuantos;
    };
    return lector_.recorrer(
        tramo.desde, leer,
        [&](std::string_view registro, std::string_view, std::uint64_t) {
          if (EsTipo03(registro)) recibir(registro);
        },
        [] {});
  }
  std::string_view bytes = ver(tramo);
  while (!bytes.empty()) {
    const std::size_t cr = std::min(bytes.find('\r'), bytes.size());
    const std::string_view registro = bytes.substr(0, cr);
    bytes.remove_prefix(std::min(cr + 1, bytes.size()));
    if (bytes.starts_with('\n')) bytes.remove_prefix(1);
    if (EsTipo03(registro)) recibir(registro);
  }
}

std::string_view FuenteFicheros::ver(RepartoBloques::Tramo tramo) {
  Abierto& abierto = abrir(tramo.desde);
  const std::uint64_t desde = tramo.desde - abierto.leido.inicio;
  const auto largo = static_cast<std::size_t>(tramo.hasta - tramo.desde);
  // Quien pide seguido pedirá lo que sigue; a quien salta, lo que pide y nada más.
  abierto.adelanto = desde == abierto.seguido ? std::min(kVentana, 2 * abierto.adelanto + largo) : 0;
  abierto.seguido = desde + largo;
  if (desde < abierto.desde || desde + largo > abierto.desde + abierto.bytes.size()) {
    abierto.bytes.resize(
        std::min<std::uint64_t>(std::max(largo, abierto.adelanto), abierto.leido.tamano - desde));
    abierto.desde = desde;
    abierto.leerEn(desde, abierto.bytes);
  }
  return std::string_view(abierto.bytes.data(), abierto.bytes.size()).substr(desde - abierto.desde, largo);
}

FuenteFicheros::Abierto& FuenteFicheros::abrir(std::uint64_t posicion) {
  const auto siguiente = std::ranges::upper_bound(leidos_, posicion, {}, &Leido::inicio);
  const auto cual = static_cast<std::size_t>(siguiente - leidos_.begin()) - 1;
  const auto suyo = std::ranges::find(abiertos_, cual, &Abierto::fichero);
  if (suyo != abiertos_.end()) {
    abiertos_.splice(abiertos_.begin(), abiertos_, suyo);
    return abiertos_.front();
  }
  if (abiertos_.size() == kMaximoAbiertos) {
    abiertos_.back().comprobarMarca();
    abiertos_.pop_back();
  }
  return abiertos_.emplace_front(cual, leidos_[cual]);
}

// La hora de la última escritura no tiene tanto detalle que dos seguidas se distingan siempre.
void FuenteFicheros::comprobar(const RepartoBloques::Adeudo& adeudo, std::string_view primero) const {
  const std::string_view referencia = LeerCampo(primero, remesa::kReferenciaAdeudo);
  const bool igual = adeudo.referencia.starts_with(referencia) &&
                     adeudo.referencia.find_first_not_of(' ', referencia.size()) == std::string_view::npos;
  const auto& lectura = abiertos_.front().lectura;
  if (!igual && !adeudo.suelto && lectura) lectura->darPorCambiado();
}

void UnionBloques::leer(const std::filesystem::path& fichero, const remesa::AvanceLectura& avance) {
  leerCon([&](const FuenteFicheros::Registros& recibir) { ficheros_.leer(fichero, recibir, avance); });
}

void UnionBloques::leer(ficheros::FicheroProvisional& fichero) {
  leerCon([&](const FuenteFicheros::Registros& recibir) { ficheros_.leer(fichero, recibir); });
}

template <class Leer>
void UnionBloques::leerCon(Leer leer) {
  remesa::Resumidor resumidor(true, false);
  reparto_.empezarFichero();
  leer([&](std::string_view registro, std::uint64_t posicion) {
    reparto_.dar(registro, posicion);
    resumidor.dar(registro);
  });
  reparto_.terminarFichero(ficheros_.posicion());
  resumen_ = resumidor.resumen();
  observaciones_ = ObservarImportacion(resumen_, reparto_.indice());
}

}  // namespace consola

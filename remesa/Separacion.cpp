#include "remesa/Separacion.h"

#include <algorithm>
#include <map>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/EscrituraConjunta.h"

namespace remesa {
namespace {

namespace fs = std::filesystem;

/// Para un nombre de fichero de cualquier sistema, que en una línea de órdenes no parezca una opción.
std::string ParaNombre(std::string_view bytes) {
  std::string nombre(Recortar(bytes));
  const auto vale = [](char c) {
    return EsCifra(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-';
  };
  std::ranges::replace_if(
      nombre, [&](char c) { return !vale(c); }, '_');
  if (nombre.starts_with('-')) nombre.front() = '_';
  return nombre.empty() ? "_" : nombre;
}

std::string_view FechaDe(const IndiceBloques::Bloque& bloque) {
  return {bloque.fecha.data(), bloque.fecha.size()};
}

/// Bloques enteros, juntos los que dan la misma clave, por orden de clave.
template <class Clave>
std::vector<Parte> Juntar(const RepartoBloques& reparto, Clave clave) {
  std::map<decltype(clave(0)), Parte> partes;
  for (const Rebanada& rebanada : Enteros(reparto))
    partes[clave(rebanada.bloque)].rebanadas.push_back(rebanada);
  std::vector<Parte> lista;
  lista.reserve(partes.size());
  for (auto& [suya, parte] : partes)
    lista.push_back(std::move(parte));
  return lista;
}

std::vector<Parte> CadaTantos(const RepartoBloques& reparto, std::size_t cada) {
  std::vector<Parte> partes;
  std::size_t caben = 0;
  for (std::size_t b = 0; b < reparto.bloques(); ++b) {
    std::size_t desde = 0;
    for (std::size_t a = 0; a < reparto.adeudos(b); ++a) {
      const bool cuenta = !reparto.adeudo(b, a).suelto;
      if (partes.empty() || (cuenta && caben == 0)) {
        if (a > desde) partes.back().rebanadas.push_back({b, desde, a});
        desde = a;
        partes.emplace_back();
        caben = cada;
      }
      if (cuenta) --caben;
    }
    partes.back().rebanadas.push_back({b, desde, reparto.adeudos(b)});
  }
  return partes;
}

std::vector<Parte> SinNombre(const RepartoBloques& reparto, const Separacion& como) {
  switch (como.por) {
    case SepararPor::Acreedor:
      return Juntar(reparto, [&](std::size_t b) { return reparto.bloque(b).acreedor; });
    case SepararPor::Fecha:
      return Juntar(reparto, [&](std::size_t b) { return FechaDe(reparto.bloque(b)); });
    case SepararPor::Cada:
      return CadaTantos(reparto, como.cada);
    case SepararPor::Bloque:
      break;
  }
  return Juntar(reparto, [](std::size_t b) { return b; });
}

/// Los bytes de una parte, sin los opcionales de sus adeudos.
std::size_t BytesDe(const Parte& parte) {
  std::size_t registros = 3;  // 01, 05 y 99
  for (const Rebanada& rebanada : parte.rebanadas)
    registros += 2 + rebanada.hasta - rebanada.desde;  // con el 02 y el 04
  return registros * kLongitudRegistro;
}

}  // namespace

std::vector<Parte> Separar(const RepartoBloques& reparto, const Separacion& como) {
  std::vector<Parte> partes = SinNombre(reparto, como);
  const std::vector<std::string> acreedores = reparto.indice().identificadores();
  for (std::size_t i = 0; i < partes.size(); ++i) {
    const IndiceBloques::Bloque& primero = reparto.bloque(partes[i].rebanadas.front().bloque);
    partes[i].nombre = ParaNombre(acreedores[primero.acreedor]) + '_' + ParaNombre(FechaDe(primero)) + '_' +
                       std::to_string(i + 1) + ".Q19";
  }
  return partes;
}

bool EscribirPartes(const RepartoBloques& reparto, const std::vector<Parte>& partes, FuenteRegistros& fuente,
                    const fs::path& carpeta, const Separacion& como, Momento ahora,
                    const std::function<void()>& comprobar, const AvanceSeparacion& avance) {
  struct Detenida {};
  std::size_t total = 0;
  for (const Parte& parte : partes)
    total += BytesDe(parte);
  std::error_code error;
  const bool nueva = fs::create_directory(carpeta, error);
  if (error) throw ficheros::ErrorEjecucion(error, carpeta);
  try {
    std::size_t anteriores = 0;
    ficheros::EscrituraConjunta escritura(como.sustituir);
    for (std::size_t i = 0; i < partes.size(); ++i) {
      ficheros::EscrituraSegura& fichero = escritura.anadir(carpeta / partes[i].nombre);
      const std::size_t suyos = BytesDe(partes[i]);
      std::size_t escritos = 0;
      EscribirBloques(reparto, partes[i].rebanadas, fuente, Renovacion{ahora, static_cast<int>(i)},
                      [&](std::string_view bytes) {
                        fichero.escribir(bytes);
                        escritos += bytes.size();
                        if (avance && !avance(anteriores + std::min(escritos, suyos), total))
                          throw Detenida();
                      });
      fichero.volcar();
      anteriores += suyos;
    }
    if (comprobar) comprobar();
    escritura.confirmar();
  } catch (...) {
    if (nueva) fs::remove(carpeta, error);
    try {
      throw;
    } catch (const Detenida&) {
      return false;
    }
  }
  return true;
}

}  // namespace remesa

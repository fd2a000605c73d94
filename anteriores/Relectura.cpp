#include "anteriores/Relectura.h"

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Rutas.h"
#include "iso20022/LecturaMensaje.h"
#include "remesa/LineasFichero.h"
#include "remesa/Utf8.h"

namespace anteriores {
namespace {

std::vector<std::uint64_t> BuscarInicios(ficheros::LecturaFichero& lectura) {
  constexpr std::size_t kTrozoInicios = std::size_t{1} << 18;
  std::vector<std::uint64_t> inicios{0};
  std::uint64_t hasta = 0;
  remesa::LineasFichero lineas([&](std::string_view, std::uint64_t longitud, remesa::FinLinea fin) {
    inicios.push_back(hasta += longitud + remesa::LargoFin(fin));
  });
  std::vector<char> bufer(kTrozoInicios);
  for (std::size_t leidos = bufer.size(); leidos == bufer.size();) {
    leidos = lectura.leer(bufer);
    lineas.dar({bufer.data(), leidos});
  }
  lineas.terminar();
  return inicios;
}

}  // namespace

bool Relectura::abrir(std::uint32_t fichero) {
  if (abierto_ && abierto_->fichero == fichero) return true;
  if (perdido_ == fichero) return false;
  abierto_.reset();
  perdido_ = fichero;
  const FicheroAnterior& f = indice_.ficheros()[fichero];
  std::error_code error;
  const auto escrito = ficheros::UltimaEscritura(f.hallado.ruta, error);
  if (error || escrito != f.hallado.escrito) return false;
  Abierto abierto;
  abierto.fichero = fichero;
  if (f.clase == ClaseFichero::Xml) {
    abierto.lista = iso20022::LeerMensaje(f.hallado.ruta, [this](std::uintmax_t, std::uintmax_t) {
                      continuar();
                    }).registros;
    if (abierto.lista.size() != f.resumen.registros) return false;
  } else {
    abierto.lectura = std::make_unique<ficheros::LecturaFichero>(f.hallado.ruta);
    if (abierto.lectura->tamano() != f.hallado.tamano) return false;
    if (f.fin == 0) abierto.inicios = BuscarInicios(*abierto.lectura);
  }
  abierto_ = std::move(abierto);
  perdido_.reset();
  return true;
}

std::string Relectura::leer(std::uint64_t numero) {
  if (!abierto_->lectura) {
    if (numero > abierto_->lista.size()) return {};
    return std::string(abierto_->lista[static_cast<std::size_t>(numero - 1)]);
  }
  const FinUniforme fin = indice_.ficheros()[abierto_->fichero].fin;
  std::uint64_t donde = (numero - 1) * (remesa::kLongitudRegistro + fin);
  std::size_t largo = remesa::kLongitudRegistro;
  const std::vector<std::uint64_t>& inicios = abierto_->inicios;
  if (fin == 0) {
    if (numero >= inicios.size()) return {};
    donde = inicios[static_cast<std::size_t>(numero - 1)];
    largo = static_cast<std::size_t>(std::min<std::uint64_t>(
        inicios[static_cast<std::size_t>(numero)] - donde, remesa::kRegistroUtf8 + 2));
  }
  std::string linea(largo, '\0');
  linea.resize(abierto_->lectura->leerEn(donde, linea));
  if (fin == 0) linea.resize(std::min(linea.size(), linea.find_last_not_of("\r\n") + 1));
  std::string bufer;
  return std::string(ComoRegistro(linea, linea.size(), bufer));
}

std::optional<std::string> Relectura::registro(std::uint32_t fichero, std::uint64_t numero) try {
  continuar();
  if (numero == 0 || !abrir(fichero)) return std::nullopt;
  std::string bytes = leer(numero);
  return bytes.size() == remesa::kLongitudRegistro ? std::optional(std::move(bytes)) : std::nullopt;
} catch (const ficheros::ErrorEjecucion&) {
  abierto_.reset();
  perdido_ = fichero;
  return std::nullopt;
}

}  // namespace anteriores

#include "remesa/Resumen.h"

#include <algorithm>
#include <memory>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Lectura.h"
#include "remesa/Campos.h"
#include "remesa/LineasFichero.h"
#include "remesa/Utf8.h"

namespace remesa {
namespace {

bool Vacia(std::string_view linea) {
  using namespace std::string_view_literals;
  return linea.find_first_not_of(" \t\n\x1A\0"sv) == std::string_view::npos;
}

bool Dice(std::string_view registro, Posiciones donde, std::int64_t valor) {
  return ValorNumerico(LeerCampo(registro, donde)) == static_cast<double>(valor);
}

bool TieneEscrito(std::string_view registro, std::span<const Cambio> cambios) {
  return std::ranges::all_of(cambios, [&](const Cambio& cambio) {
    const std::string_view escrito = LeerCampo(registro, cambio.donde);
    return cambio.texto.starts_with(escrito) || escrito.starts_with(cambio.texto);
  });
}

}  // namespace

void Resumidor::apuntar(Apariciones& hallazgo) const {
  if (hallazgo.cuenta++ == 0) hallazgo.primero = resumen_.registros;
}

void Resumidor::dar(std::string_view registro) {
  if (++resumen_.registros == 1) resumen_.tipo = TipoDe(registro);
  mirarForma(registro);
  const CodigoRegistro codigo = Codigo(registro);
  const ClaseRegistro clase = Clase(registro);
  if (codigo == CodigoRegistro::Adeudo) {
    ++resumen_.registros03;
    resumen_.totalesInteriores = resumen_.deTotales;
  }
  switch (clase) {
    case ClaseRegistro::Adeudo:
      contarAdeudo(registro);
      break;
    case ClaseRegistro::Ultimos:
    case ClaseRegistro::Balanza:
    case ClaseRegistro::Mandato:
      mirarOpcional(registro);
      break;
    case ClaseRegistro::Presentador:
      ++resumen_.cabeceras01;
      break;
    case ClaseRegistro::Acreedor:
      abrirBloque(registro);
      break;
    case ClaseRegistro::TotalesFecha:
    case ClaseRegistro::TotalesAcreedor:
    case ClaseRegistro::TotalesGenerales:
      ++resumen_.deTotales;
      hayAdeudo_ = previoContiguo_ = ultimoEsAdeudo_ = false;
      break;
    case ClaseRegistro::Desconocido:
      if (codigo == CodigoRegistro::Adeudo) break;
      if (Vacia(registro))
        ++resumen_.lineasVacias;
      else
        apuntar(resumen_.descartados);
      break;
  }
  if (!mirarTotales_) return;
  // Una línea de más en blanco no es un registro.
  if (registro.size() >= kLongitudRegistro || !Vacia(registro)) contarEnNorma(registro, clase);
  recontar(registro);
}

void Resumidor::contarEnNorma(std::string_view registro, ClaseRegistro clase) {
  for (const TotalDebido& debido : norma_.dar(registro, clase))
    if (!Dice(registro, debido.donde, debido.valor)) resumen_.totalesSegunNorma = false;
}

void Resumidor::mirarForma(std::string_view registro) {
  if (mirarBytes_ && registro.find('\n') != std::string_view::npos) apuntar(resumen_.conLF);
  if (mirarBytes_ && TieneAltos(registro) && mirarUtf8(registro)) return;
  if (registro.size() == kLongitudRegistro) return;
  if (registro.size() > kLongitudRegistro)
    apuntar(resumen_.largos);
  else if (!Vacia(registro))
    apuntar(resumen_.cortos);
}

/// true si está en UTF-8 y mide lo que debe, en caracteres.
bool Resumidor::mirarUtf8(std::string_view registro) {
  RegistroUtf8 leido;
  if (!LeerUtf8(registro, registro.size(), leido)) return false;
  if (resumen_.enUtf8.cuenta == 0) resumen_.palabraUtf8 = leido.palabra;
  apuntar(resumen_.enUtf8);
  return leido.longitud == kLongitudRegistro;
}

void Resumidor::contarAdeudo(std::string_view registro) {
  ++resumen_.adeudos;
  resumen_.importe += ImporteDe(registro);
  previoContiguo_ = ultimoEsAdeudo_;
  if (previoContiguo_) std::swap(referencias_, referenciasPrevias_);
  referencias_ = LeerCampo(registro, kReferencias);
  hayAdeudo_ = ultimoEsAdeudo_ = true;
}

// Un opcional repite las referencias de su adeudo. Si el registro anterior a ese adeudo era otro con las
// mismas, entre el original y sus opcionales se insertó una copia (cambiada o no después).
void Resumidor::mirarOpcional(std::string_view registro) {
  ultimoEsAdeudo_ = false;
  const std::string_view suyas = LeerCampo(registro, kReferencias);
  if (previoContiguo_ && suyas == referenciasPrevias_)
    apuntar(resumen_.copiasIntercaladas);
  else if (!hayAdeudo_ || suyas != referencias_)
    apuntar(resumen_.opcionalesSueltos);
}

void Resumidor::abrirBloque(std::string_view registro) {
  if (++resumen_.cabeceras02 == 1) resumen_.nombreAcreedor = Recortar(LeerCampo(registro, kNombreAcreedor));
  hayAdeudo_ = previoContiguo_ = ultimoEsAdeudo_ = false;
  resumen_.ultimoBloque = {std::string(Recortar(LeerCampo(registro, kIdentificadorAcreedor))),
                           std::string(Recortar(LeerCampo(registro, kFechaCobro))),
                           std::string(Recortar(LeerCampo(registro, kCuentaAcreedor)))};
  std::vector<Bloque02>& bloques = resumen_.bloques;
  if (bloques.size() < Resumen::kMaxBloques &&
      std::ranges::find(bloques, resumen_.ultimoBloque) == bloques.end())
    bloques.push_back(resumen_.ultimoBloque);
}

void Resumidor::recontar(std::string_view registro) {
  if (resumen_.errorRecalculo != 0) return;
  try {
    if (!TieneEscrito(registro, recuento_.contar(registro))) apuntar(resumen_.totalesDistintos);
  } catch (const ficheros::ErrorEjecucion& error) {
    resumen_.errorRecalculo = error.numero();
    resumen_.registroError = resumen_.registros;
  }
}

Resumen Resumir(const ListaRegistros& lista, bool mirarBytes) {
  Resumidor resumidor(mirarBytes);
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    resumidor.dar(lista[i]);
  }
  return resumidor.resumen();
}

Resumen ResumirFichero(const std::filesystem::path& ruta, const AvanceLectura& avance) {
  constexpr std::size_t kTrozo = std::size_t{1} << 20;
  ficheros::LecturaFichero lectura(ruta);
  Resumidor resumidor;
  LineasFichero lineas([&](std::string_view bytes, std::uint64_t, FinLinea) { resumidor.dar(bytes); },
                       Fines::SoloCR);
  const auto bufer = std::make_unique_for_overwrite<char[]>(kTrozo);
  std::uintmax_t total = 0;
  while (const std::size_t leidos = lectura.leer({bufer.get(), kTrozo})) {
    lineas.dar({bufer.get(), leidos});
    if (avance) avance(total += leidos, lectura.tamano());
  }
  lineas.terminar();
  return resumidor.resumen();
}

void RecalcularYResumir(ListaRegistros& lista, Resumen& resumen) {
  Resumidor resumidor;
  try {
    RecalcularTotales(lista, [&](std::string_view registro) { resumidor.dar(registro); });
  } catch (const ficheros::ErrorEjecucion&) {
    resumen = Resumir(lista);
    throw;
  }
  resumen = resumidor.resumen();
}

}  // namespace remesa

#include <algorithm>
#include <cmath>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/Campos.h"
#include "remesa/Observaciones.h"

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

void Resumidor::Suma::sumar(const Suma& otra) {
  registros += otra.registros;
  importe += otra.importe;
  adeudos += otra.adeudos;
}

void Resumidor::apuntar(Apariciones& hallazgo) const {
  if (hallazgo.cuenta++ == 0) hallazgo.primero = resumen_.registros;
}

void Resumidor::dar(std::string_view registro) {
  ++resumen_.registros;
  mirarForma(registro);
  if (LeerCampo(registro, kCodigo) == "03") ++resumen_.registros03;
  const ClaseRegistro clase = Clase(registro);
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
      ++fichero_.registros;
      break;
    case ClaseRegistro::Acreedor:
      abrirBloque(registro);
      break;
    case ClaseRegistro::TotalesFecha:
    case ClaseRegistro::TotalesAcreedor:
    case ClaseRegistro::TotalesGenerales:
      mirarTotales(registro, clase);
      break;
    case ClaseRegistro::Desconocido:
      if (LeerCampo(registro, kCodigo) == "03")
        ++bloque_.registros;
      else if (Vacia(registro))
        ++resumen_.lineasVacias;
      else
        apuntar(resumen_.descartados);
      break;
  }
  recontar(registro);
}

void Resumidor::mirarForma(std::string_view registro) {
  if (mirarLF_ && registro.find('\n') != std::string_view::npos) apuntar(resumen_.conLF);
  if (registro.size() == kLongitudRegistro) return;
  if (registro.size() > kLongitudRegistro)
    apuntar(resumen_.largos);
  else if (!Vacia(registro))
    apuntar(resumen_.cortos);
}

void Resumidor::contarAdeudo(std::string_view registro) {
  const auto importe =
      static_cast<std::int64_t>(std::nearbyint(ValorNumerico(LeerCampo(registro, kImporteAdeudo))));
  bloque_.sumar({1, importe, 1});
  ++resumen_.adeudos;
  resumen_.importe += importe;
  previoContiguo_ = ultimoEsAdeudo_;
  if (previoContiguo_) std::swap(referencias_, referenciasPrevias_);
  referencias_ = LeerCampo(registro, kReferencias);
  hayAdeudo_ = ultimoEsAdeudo_ = true;
}

// Un opcional repite las referencias de su adeudo. Si el registro anterior a ese adeudo era otro con las
// mismas, entre el original y sus opcionales se insertó una copia (cambiada o no después).
void Resumidor::mirarOpcional(std::string_view registro) {
  ++bloque_.registros;
  ultimoEsAdeudo_ = false;
  const std::string_view suyas = LeerCampo(registro, kReferencias);
  if (previoContiguo_ && suyas == referenciasPrevias_)
    apuntar(resumen_.copiasIntercaladas);
  else if (!hayAdeudo_ || suyas != referencias_)
    apuntar(resumen_.opcionalesSueltos);
}

void Resumidor::abrirBloque(std::string_view registro) {
  ++resumen_.cabeceras02;
  bloque_ = {1, 0, 0};
  hayAdeudo_ = previoContiguo_ = ultimoEsAdeudo_ = false;
  resumen_.ultimoBloque = {std::string(Recortar(LeerCampo(registro, kIdentificadorAcreedor))),
                           std::string(Recortar(LeerCampo(registro, kFechaCobro)))};
  std::vector<Bloque02>& bloques = resumen_.bloques;
  if (bloques.size() < Resumen::kMaxBloques &&
      std::ranges::find(bloques, resumen_.ultimoBloque) == bloques.end())
    bloques.push_back(resumen_.ultimoBloque);
}

void Resumidor::mirarTotales(std::string_view registro, ClaseRegistro clase) {
  ++resumen_.deTotales;
  hayAdeudo_ = previoContiguo_ = ultimoEsAdeudo_ = false;
  const auto comparar = [&](const Suma& suma, Posiciones importe, Posiciones adeudos, Posiciones registros) {
    if (!Dice(registro, importe, suma.importe) || !Dice(registro, adeudos, suma.adeudos) ||
        !Dice(registro, registros, suma.registros))
      resumen_.totalesSegunNorma = false;
  };
  if (clase == ClaseRegistro::TotalesFecha) {
    ++bloque_.registros;
    comparar(bloque_, kImporte04, kAdeudos04, kRegistros04);
    acreedor_.sumar(bloque_);
    bloque_ = {};
  } else if (clase == ClaseRegistro::TotalesAcreedor) {
    ++acreedor_.registros;
    comparar(acreedor_, kImporte05, kAdeudos05, kRegistros05);
    fichero_.sumar(acreedor_);
    acreedor_ = {};
  } else {
    ++fichero_.registros;
    comparar(fichero_, kImporte99, kAdeudos99, kRegistros99);
  }
}

void Resumidor::recontar(std::string_view registro) {
  if (resumen_.errorRecalculo != 0) return;
  try {
    if (!TieneEscrito(registro, recuento_.contar(registro))) apuntar(resumen_.totalesDistintos);
  } catch (const ficheros::ErrorEjecucion& error) {
    resumen_.errorRecalculo = error.numero();
  }
}

Resumen Resumir(const ListaRegistros& lista, bool mirarLF) {
  Resumidor resumidor(mirarLF);
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    resumidor.dar(lista[i]);
  }
  return resumidor.resumen();
}

}  // namespace remesa

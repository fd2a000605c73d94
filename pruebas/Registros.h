#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/Campos.h"
#include "remesa/ListaRegistros.h"

// Registros para las pruebas del núcleo.

namespace pruebas {

inline std::string Registro(
    std::string_view cabeza,
    std::initializer_list<std::pair<remesa::Posiciones, std::string_view>> campos = {},
    std::size_t largo = remesa::kLongitudRegistro) {
  std::string registro(cabeza);
  registro.resize(largo, ' ');
  for (const auto& [donde, texto] : campos)
    remesa::EscribirCampo(registro, donde, texto);
  return registro;
}

inline std::string Presentador() {
  return Registro("0119143001");
}
inline std::string Acreedor(std::string_view acreedor, std::string_view fecha) {
  return Registro("0219143002", {{remesa::kIdentificadorAcreedor, acreedor}, {remesa::kFechaCobro, fecha}});
}
inline std::string Adeudo(std::string_view referencia, std::string_view importe) {
  return Registro("0319143003", {{remesa::kReferenciaAdeudo, referencia}, {remesa::kImporteAdeudo, importe}});
}
inline std::string Opcional(std::string_view dato, std::string_view referencia) {
  return Registro("0319143" + std::string(dato), {{remesa::kReferenciaAdeudo, referencia}});
}
inline std::string Total(std::string_view codigo) {
  return Registro(codigo);
}

inline remesa::ListaRegistros Lista(const std::vector<std::string>& registros) {
  remesa::ListaRegistros lista;
  for (const std::string& registro : registros)
    lista.anadir(registro);
  return lista;
}

inline std::vector<std::string> Bytes(const remesa::ListaRegistros& lista) {
  return {lista.begin(), lista.end()};
}

/// Número del error que lanza `accion`; 0 si no lanza.
template <typename Accion>
int NumeroError(Accion&& accion) {
  try {
    accion();
  } catch (const ficheros::ErrorEjecucion& error) {
    return error.numero();
  }
  return 0;
}

}  // namespace pruebas

#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "ficheros/ErrorEjecucion.h"
#include "remesa/Campos.h"
#include "remesa/ListaRegistros.h"

// Registros y ficheros para las pruebas del núcleo.

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

/// Carpeta nueva que desaparece con la prueba.
class Carpeta : public ::testing::Test {
 protected:
  void SetUp() override {
    do
      carpeta_ =
          std::filesystem::temp_directory_path() / ("remesa-" + std::to_string(std::random_device()()));
    while (!std::filesystem::create_directory(carpeta_));
  }
  void TearDown() override {
    std::error_code ignorado;
    std::filesystem::permissions(carpeta_, std::filesystem::perms::owner_all, ignorado);
    std::filesystem::remove_all(carpeta_, ignorado);
  }
  std::filesystem::path escribir(const std::string& nombre, std::string_view bytes) const {
    std::ofstream(carpeta_ / nombre, std::ios::binary) << bytes;
    return carpeta_ / nombre;
  }
  static std::string leer(const std::filesystem::path& ruta) {
    std::ifstream fichero(ruta, std::ios::binary);
    return {std::istreambuf_iterator<char>(fichero), {}};
  }
  std::vector<std::string> nombres() const {
    std::vector<std::string> lista;
    for (const auto& entrada : std::filesystem::directory_iterator(carpeta_))
      lista.push_back(entrada.path().filename().string());
    std::sort(lista.begin(), lista.end());
    return lista;
  }
  std::filesystem::path carpeta_;
};

}  // namespace pruebas

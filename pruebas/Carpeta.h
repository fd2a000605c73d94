#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace pruebas {

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
    // En UTF-8, también donde el sistema tiene otra manera de leer un nombre de `char`.
    const std::filesystem::path ruta = carpeta_ / std::u8string(nombre.begin(), nombre.end());
    std::ofstream(ruta, std::ios::binary) << bytes;
    return ruta;
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

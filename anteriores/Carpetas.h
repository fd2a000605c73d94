#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace anteriores {

/// Se pregunta a menudo, quizá desde varios hilos; con false, se deja lo que se hace.
using Seguir = std::function<bool()>;

struct FicheroHallado {
  std::filesystem::path ruta;
  std::uintmax_t tamano = 0;  ///< Bytes.
  std::int64_t escrito = 0;   ///< Cuándo, en la unidad del sistema: solo sirve para compararlo.
};

/// Algo que no se ha tomado y por qué, en UTF-8, en minúscula y sin punto.
struct Omitido {
  std::filesystem::path ruta;
  std::string causa;
};

struct Hallados {
  std::vector<FicheroHallado> ficheros;  ///< Por orden de su ruta.
  std::vector<Omitido> omitidos;         ///< Enlaces que salen de las carpetas y lo que no se puede mirar.
  std::vector<Omitido> carpetas;         ///< De las pedidas, las que no están o no se dejan leer.
  bool completo = true;                  ///< false si se dejó.
};

/// Los ficheros corrientes de las carpetas y de las que tengan dentro, cada uno una vez. De un enlace se mira
/// adónde va y no se sigue: si es dentro de ellas, ya se llega por su nombre. No lanza nada.
Hallados RecorrerCarpetas(std::span<const std::filesystem::path> carpetas, const Seguir& seguir);

}  // namespace anteriores

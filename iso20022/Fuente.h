#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "ficheros/Lectura.h"
#include "remesa/LineasFichero.h"
#include "remesa/ListaRegistros.h"

namespace iso20022 {

/// Una línea de una remesa.
struct Linea {
  std::string_view bytes;      ///< Si es más larga que un registro, al menos lo que este ocupa.
  std::uint64_t longitud = 0;  ///< La de la línea entera.
  remesa::FinLinea fin = remesa::FinLinea::Ninguno;
  std::uint64_t fila = 0;   ///< El registro que la contiene, desde 1: uno que lleve LF son varias líneas.
  std::uint64_t sitio = 0;  ///< Con qué volver a leerla; menos de 2^48.
};

/// Recibe lo hecho y el total, en la unidad que sea; con false, se deja.
using Avance = std::function<bool(std::uintmax_t hecho, std::uintmax_t total)>;

/// De dónde salen los registros de una remesa: se recorren una vez en orden y luego se vuelve a unos u otros.
/// Todo lanza ErrorEjecucion, también si el fichero cambia mientras tanto.
class Fuente {
 public:
  Fuente() = default;
  Fuente(const Fuente&) = delete;
  Fuente& operator=(const Fuente&) = delete;
  virtual ~Fuente() = default;

  /// Da a `recibir` todas las líneas, con cualquier fin de línea, mientras devuelva true; false si se detuvo.
  virtual bool recorrer(const std::function<bool(const Linea&)>& recibir, const Avance& avance) = 0;
  /// Da a `recibir` las `cuantas` líneas que siguen a `sitio`, incluida la suya. Valen hasta que vuelve.
  virtual void leer(std::uint64_t sitio, std::size_t cuantas,
                    const std::function<void(std::string_view bytes)>& recibir) = 0;
};

/// Un fichero de texto, que se lee por trozos. Cerca de lo último leído no se vuelve al disco.
class FuenteFichero final : public Fuente {
 public:
  explicit FuenteFichero(const std::filesystem::path& ruta);
  bool recorrer(const std::function<bool(const Linea&)>& recibir, const Avance& avance) override;
  void leer(std::uint64_t sitio, std::size_t cuantas,
            const std::function<void(std::string_view bytes)>& recibir) override;

 private:
  /// Bytes del fichero desde `sitio`, hasta `largo`; menos si se acaba el fichero o lo que hay a mano.
  std::string_view ventana(std::uint64_t sitio, std::size_t largo);

  ficheros::LecturaFichero lectura_;
  std::vector<char> bufer_;
  std::uint64_t desde_ = 0;  // el trozo del fichero que hay en el búfer
  std::size_t lleno_ = 0;
  std::size_t pedir_ = 0;
};

/// Una lista en memoria, que ha de vivir mientras esto. Los registros que lleven LF se toman línea a línea.
class FuenteLista final : public Fuente {
 public:
  explicit FuenteLista(const remesa::ListaRegistros& lista);
  bool recorrer(const std::function<bool(const Linea&)>& recibir, const Avance& avance) override;
  void leer(std::uint64_t sitio, std::size_t cuantas,
            const std::function<void(std::string_view bytes)>& recibir) override;

 private:
  struct Parte {
    std::string_view bytes;
    std::uint64_t fila;
    bool conLF;
  };
  const remesa::ListaRegistros& lista_;
  std::vector<Parte> partes_;  // vacío si ninguno lleva LF
};

}  // namespace iso20022

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "remesa/Resumen.h"

namespace remesa {

/// Lo que de las cabeceras de un fichero hay que contar al operador al conservar los bloques.
struct AvisosBloques {
  std::size_t sinDueno = 0;   ///< Primer "03" sin un "02" delante en su fichero, desde 1; 0 si ninguno.
  std::size_t nuevos = 0;     ///< Bloques con adeudos que no estaban.
  Apariciones presentadores;  ///< "01" de otro presentador que el que se queda; del primero:
  std::string presentador, otroPresentador;  ///< el que se queda y el suyo: nombre o, sin él, identificador.
  Apariciones distintas;  ///< "02" de un bloque que ya está, con otro nombre o dirección; de la primera:
  std::string acreedor, fecha;  ///< los de su bloque
  bool otroNombre = false;      ///< Si cambia el nombre, y no solo la dirección,
  std::string nombre;           ///< el que se pierde.
  Apariciones incorrectas;      ///< "02" de otra longitud, sin identificador o con una fecha que no existe.
};

/// De quién es cada adeudo: a qué bloque va cada registro de unos ficheros que llegan en orden. La clave de
/// un bloque es el acreedor, la fecha de cobro y la cuenta de su "02", sin los blancos del final; una
/// cabecera incorrecta solo lo comparte con otra de los mismos bytes. La primera cabecera de cada bloque es
/// la que se queda. De los registros no guarda más que eso.
class IndiceBloques {
 public:
  using Numero = std::uint32_t;  ///< Un bloque o un acreedor, por orden de aparición, desde 0.
  static constexpr Numero kNinguno = ~Numero{0};

  struct Bloque {
    Numero acreedor;
    std::array<char, 8> fecha;  ///< Como en la cabecera, con sus blancos.
    std::uint64_t registros03 = 0;
    std::uint64_t nombre, direccion;  // huellas
  };

  void empezarFichero();
  /// El bloque a que va un "02" o un "03", que con un "02" puede ser nuevo; kNinguno si el registro no va a
  /// ninguno. Los números de registro empiezan en 1 con cada fichero.
  Numero dar(std::string_view registro);
  /// Olvida los bloques que en el fichero quedaron sin adeudos, como si no hubieran aparecido: no están en
  /// la remesa a la que se une el siguiente.
  void terminarFichero();

  const AvisosBloques& avisos() const noexcept { return avisos_; }
  bool hayPresentador() const noexcept { return hayPresentador_; }
  /// También los olvidados, que están sin registros.
  const std::vector<Bloque>& bloques() const noexcept { return bloques_; }
  /// Con adeudos, los que quedan; y sus acreedores distintos.
  std::size_t vivos() const noexcept { return claves_.size(); }
  std::size_t acreedores() const noexcept { return acreedores_.size(); }
  /// El identificador de cada acreedor, por su número; "" de los olvidados.
  std::vector<std::string> identificadores() const;

 private:
  struct Acreedor {
    Numero numero;
    std::size_t bloques;
  };
  using Claves = std::unordered_map<std::string, Numero>;

  Numero abrir(std::string_view cabecera);
  void comparar(const Bloque& bloque, std::string_view cabecera);
  void presentar(std::string_view registro);
  void apuntar(Apariciones& que) const;

  Claves claves_;
  std::unordered_map<std::string, Acreedor> acreedores_;
  std::vector<Bloque> bloques_;
  std::vector<std::pair<const std::string*, const std::string*>> nuevas_;  // clave y acreedor, del fichero
  AvisosBloques avisos_;
  std::string presentador_;
  std::size_t registro_ = 0;
  Numero enCurso_ = kNinguno;
  Numero siguienteAcreedor_ = 0;
  bool hayPresentador_ = false;
};

/// El identificador de acreedor de un "02", como se guarda y sin los blancos del final.
std::string AcreedorDe(std::string_view cabecera);

}  // namespace remesa

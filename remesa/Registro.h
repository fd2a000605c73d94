#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace remesa {

/// Bytes de un registro del Cuaderno 19.14.
inline constexpr std::size_t kLongitudRegistro = 600;

/// Posiciones de un campo dentro del registro: contadas desde 1, ambas incluidas.
struct Posiciones {
  int desde;
  int hasta;
  constexpr int longitud() const { return hasta - desde + 1; }
  constexpr bool operator==(const Posiciones&) const = default;
};

/// El trozo del registro que ocupa el campo. Un registro corto da lo que tenga, quizá nada.
std::string_view LeerCampo(std::string_view registro, Posiciones donde);

constexpr bool EsCifra(char c) {
  return c >= '0' && c <= '9';
}

/// El texto sin los blancos (solo espacios) de los lados.
std::string_view Recortar(std::string_view texto);

/// Solo blancos, o la marca de fin de fichero de otros sistemas. Si es más corta que un registro, una línea
/// que sobra.
bool EnBlanco(std::string_view bytes);

/// Escribe `texto` sobre las posiciones del campo sin alargar el registro: lo que cae fuera se pierde y un
/// texto vacío no cambia nada. Lanza ErrorEjecucion 5 si el campo empieza más allá del final.
void EscribirCampo(std::string& registro, Posiciones donde, std::string_view texto);

/// Valor en decimal con ceros a la izquierda, los `ancho` caracteres de la derecha.
std::string Ceros(std::int32_t valor, int ancho);

/// El valor con ceros a la izquierda hasta `ancho`; entero si no cabe en él.
std::string CifrasDe(std::int64_t valor, int ancho);

/// AAAAMMDD como DD/MM/AAAA, sin comprobar las cifras.
std::string FechaQ19(std::string_view fecha);

/// Deja el registro como se guarda: cortado o completado con blancos a 600 bytes.
void AjustarLongitud(std::string& registro);

/// El registro como se guarda. Si ya mide 600 bytes, él mismo; si no, `bufer`, donde se rehace.
std::string_view ComoSeGuarda(std::string_view registro, std::string& bufer);

/// Lectura benévola: blancos (espacio o TAB), un signo, cifras y un punto; se detiene en el primer carácter
/// que no siga y da 0 si no leyó nada.
double ValorNumerico(std::string_view texto);

}  // namespace remesa

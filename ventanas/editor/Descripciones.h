#pragma once

#include <QString>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace editor {

/// Campos que caben en la ventana: los demás de una sección no se leen.
inline constexpr int kCamposMaximos = 50;

/// Ayuda de un campo: qué se comprueba al dejarlo y qué se muestra junto a él.
enum class Ayuda { Ninguna, Fecha, Iban, Euros, Numero };

/// Una línea de campo de los ajustes.
struct CampoDescrito {
  QString rotulo;
  QString posicion;  ///< "Desde 11 - Bytes 35"
  int longitud = 0;  ///< bytes; 0 si no se entiende
  int desde = 0;     ///< posición desde 1; 0 si no se entiende
  bool editable = true;
  QString descriptor;  ///< vacío si la clase no es "A" ni "N"
  QString relleno;     ///< "I", "D", "C"; con otra cosa, el valor va al registro tal como se escribió
  bool opcional = false;
  Ayuda ayuda = Ayuda::Ninguna;
  QString explicacion;

  bool operator==(const CampoDescrito&) const = default;
};

struct Descripcion {
  QString seccion;
  QString titulo;
  std::vector<CampoDescrito> campos;  ///< ninguno si no hay tal sección

  bool operator==(const Descripcion&) const = default;
};

/// Sección que describe un registro: su código y, en los "03", el número de dato (8 a 10 con `tipo` 19, 11 a
/// 13 con 34; con otro tipo, nada).
QString SeccionDe(std::string_view registro, int tipo);

/// Número de campos que declara la sección, de 0 a kCamposMaximos.
int NumeroCampos(const QString& fichero, const QString& seccion);

CampoDescrito LeerCampo(const QString& linea);
Descripcion LeerDescripcion(const QString& fichero, const QString& seccion);

/// Los caracteres del campo en el registro completado o cortado a 600. Vacío si el campo cae fuera.
QString ValorCampo(std::string_view registro, const CampoDescrito& campo);

/// Texto tecleado como bytes del registro: en su forma compuesta y reducido al juego de SEPA, un byte por
/// carácter. Lo que no está en Windows-1252 pasa a "0", como todo lo ajeno al juego.
std::string BytesSEPA(const QString& texto);

/// Bytes con que el texto de un campo va al registro: reducido a SEPA y rellenado.
std::string BytesCampo(const CampoDescrito& campo, const QString& texto);

/// Lo mismo, salvo que el campo que se leyó en blanco (`original`) y sigue en blanco conserva sus bytes: un
/// campo de cifras por el que solo se pasa no queda a ceros.
std::string BytesCampo(const CampoDescrito& campo, const QString& texto, const QString& original);

/// El registro: los campos uno tras otro, sin mirar dónde empiezan. `textos` y `originales`, uno por campo.
std::string EscribirRegistro(std::span<const CampoDescrito> campos, std::span<const QString> textos,
                             std::span<const QString> originales = {});

}  // namespace editor

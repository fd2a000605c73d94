#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace remesa {

/// Solo cifras, y alguna.
bool SonCifras(std::string_view texto);

/// Código de país de dos letras de ISO 3166 (y XK, que usa el IBAN).
bool EsPais(std::string_view texto);

/// Forma de un BIC (ISO 9362): cuatro caracteres de la entidad, país, dos más y, quizá, tres de la oficina.
bool EsBic(std::string_view texto);

/// Una cuenta nacional de 20 cifras. Sus dígitos de control los mira ControlCcc.
bool EsCcc(std::string_view texto);

/// Qué le pasa a un IBAN o a un identificador.
struct Control {
  bool correcto = false;
  /// Los dígitos de control que irían con lo demás; vacío si es la forma lo que falla.
  std::string digitos = {};
};

/// Qué le pasa a un IBAN; si son los dígitos de control, lo demás está bien.
enum class DefectoIban : std::uint8_t { Ninguno, Pais, Longitud, Forma, Digitos };

/// Según ISO 13616: país, dígitos de control y lo que su país pone detrás, en mayúsculas y sin blancos.
DefectoIban DefectoDeIban(std::string_view texto);

Control ComprobarIban(std::string_view texto);

/// Identificador de acreedor (AT-02): un país que exista, dígitos de control, sufijo de tres y número fiscal,
/// hasta 35; los españoles son de 16 y su sufijo, de cifras. Desde la posición 8, y solo desde ella, los
/// blancos y los signos no cuentan.
Control ComprobarIdentificador(std::string_view texto);

/// El identificador de un acreedor sin su sufijo: con él o con otro, el mandato es el mismo (su referencia
/// solo es única para el acreedor, y el sufijo es de su contrato con el banco).
std::string SinSufijo(std::string_view identificador);

}  // namespace remesa

#pragma once

#include <string>
#include <string_view>

namespace remesa {

/// Solo cifras, y alguna.
bool SonCifras(std::string_view texto);

/// Código de país de dos letras de ISO 3166 (y XK, que usa el IBAN).
bool EsPais(std::string_view texto);

/// Forma de un BIC (ISO 9362): cuatro caracteres de la entidad, país, dos más y, quizá, tres de la oficina.
bool EsBic(std::string_view texto);

/// Una cuenta nacional de 20 cifras. Sus dígitos de control no se miran.
bool EsCcc(std::string_view texto);

/// Qué le pasa a un IBAN o a un identificador.
struct Control {
  bool correcto = false;
  /// Los dígitos de control que irían con lo demás; vacío si es la forma lo que falla.
  std::string digitos = {};
};

/// Cuenta en forma de IBAN (ISO 13616): país, dígitos de control y de 5 a 30 letras mayúsculas o cifras más;
/// las españolas son de 24. Sin blancos.
Control ComprobarIban(std::string_view texto);

/// Identificador de acreedor (AT-02): país, dígitos de control, sufijo de tres y número fiscal, hasta 35; los
/// españoles son de 16 y su sufijo, de cifras. Blancos y signos no cuentan.
Control ComprobarIdentificador(std::string_view texto);

}  // namespace remesa

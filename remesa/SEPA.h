#pragma once

#include <string>
#include <string_view>

namespace remesa {

/// Forma impresa de una cuenta: grupos de cuatro separados por un blanco, con "IBAN " delante salvo que
/// `sinPrefijo`. Un texto en blanco da "".
std::string FormatoIBAN(std::string_view iban, bool sinPrefijo);

/// Dígitos de control (ISO 13616, módulo 97 de ISO 7064). No recorta, no pasa a mayúsculas, no mira el país.
bool IBANValido(std::string_view iban);

/// Cifras que representan un carácter en el control: la cifra misma, A = 10 … Z = 35, cualquier otro 9.
std::string ValorIBAN(std::string_view caracter);

/// Resto entre 97 de un número decimal largo. Lanza ErrorEjecucion 13 si algo no es cifra.
int Modulo97(std::string_view cifras);

/// Dígitos de control (ISO 7064, módulo 97-10) de `cuerpo` seguido de `pais`, las letras A = 10 … Z = 35: los
/// de un IBAN por su cuenta nacional y los de un identificador de acreedor por su número fiscal. Dos cifras.
std::string DigitosControl(std::string_view cuerpo, std::string_view pais);

/// Índice del primer byte (Windows-1252), desde el de índice `desde`, que no está en el juego de caracteres
/// de SEPA, o el primero que sí con `fuera` en false; el tamaño del texto si no hay ninguno.
std::size_t BuscarCaracter(std::string_view texto, std::size_t desde, bool fuera = true);

/// Texto reducido al juego de caracteres de SEPA (Windows-1252): Ñ y Ç pierden su signo, lo demás que no esté
/// en el juego pasa a "0". La longitud no cambia.
std::string TextoSEPA(std::string_view texto);

}  // namespace remesa

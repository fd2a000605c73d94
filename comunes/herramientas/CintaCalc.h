#pragma once

#include <QString>
#include <optional>

#include "comunes/herramientas/Sumadora.h"

namespace comunes {
class Rejilla;
}

namespace herramientas {

/// El número con los signos del usuario, grupos y al menos esos decimales; más, si los tiene.
QString TextoNumero(Millonesimas valor, int decimales);
/// Lo que se está tecleando ("1234.5"), con los signos del usuario.
QString TextoTecleado(const std::string& tecleado);
/// Como TextoNumero, sin grupos: lo que se lleva a otro programa.
QString TextoCopia(Millonesimas valor, int decimales);
/// Un número escrito con los signos del usuario, o con punto decimal donde no puede ser de grupo; lo que pasa
/// de seis decimales se redondea. Sin valor si no es un número o no cabe.
std::optional<Millonesimas> LeerCopia(const QString& texto);

/// Tras esta línea se deja un blanco.
bool CierraCuenta(const Sumadora::Linea& linea);
/// La cinta para pegarla en una hoja: importe, tabulador y signo en cada línea.
QString CopiaCinta(const std::vector<Sumadora::Linea>& cinta);
/// La cinta para imprimirla.
void RejillaCinta(comunes::Rejilla& rejilla, const std::vector<Sumadora::Linea>& cinta);

}  // namespace herramientas

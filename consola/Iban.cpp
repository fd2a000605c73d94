#include <CLI/CLI.hpp>
#include <memory>

#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Terminal.h"
#include "remesa/SEPA.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

/// Lo tecleado, como va en un registro: mayúsculas, sin blancos y sin la palabra IBAN delante.
std::string Cuenta(const std::string& texto) {
  QString cuenta;
  for (const QChar c : QString::fromStdString(texto))
    if (!c.isSpace()) cuenta += c;
  cuenta = cuenta.toUpper();
  if (cuenta.startsWith(u"IBAN"_s)) cuenta.remove(0, 4);
  return comunes::AWindows1252(cuenta);
}

Salida Comprobar(const std::vector<std::string>& textos) {
  Salida salida = Salida::Hecho;
  for (const std::string& texto : textos) {
    const std::string cuenta = Cuenta(texto);
    const bool valido = remesa::IBANValido(cuenta);
    if (!valido) salida = Salida::Fallo;
    const QString impreso = comunes::DesdeWindows1252(remesa::FormatoIBAN(cuenta, false));
    const bool dicho = Decir(u"%1: %2"_s.arg(Mostrable(impreso.isEmpty() ? u"(vacío)"_s : impreso),
                                             valido ? u"correcto"_s : u"dígitos de control incorrectos"_s));
    if (!dicho) salida = Salida::Fallo;
  }
  return salida;
}

}  // namespace

void OrdenIban(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("iban", "Comprueba los dígitos de control de cuentas IBAN");
  auto textos = std::make_shared<std::vector<std::string>>();
  orden->add_option("TEXTO", *textos, "Cuentas; los blancos y la palabra IBAN delante no cuentan")
      ->required();
  orden->footer("Sale con 1 si alguna no es correcta.");
  orden->callback([textos, &accion] { accion = [textos] { return Comprobar(*textos); }; });
}

}  // namespace consola

#include <CLI/CLI.hpp>
#include <memory>

#include "comunes/plataforma/Texto.h"
#include "consola/Ordenes.h"
#include "consola/Terminal.h"
#include "remesa/PaisesSEPA.h"
#include "remesa/SEPA.h"
#include "remesa/Validez.h"
#include "ventanas/principal/TextosComprobacion.h"

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

/// "correcto", o qué está mal y cómo sería.
QString Veredicto(const std::string& cuenta) {
  const std::string_view pais = std::string_view(cuenta).substr(0, 2);
  std::string forma;
  if (remesa::EsPaisConIban(pais)) principal::AnadirFormaIban(forma, pais);
  switch (remesa::DefectoDeIban(cuenta)) {
    case remesa::DefectoIban::Ninguno:
      return u"correcto"_s;
    case remesa::DefectoIban::Digitos:
      return u"dígitos de control incorrectos: con lo demás así serían %1"_s.arg(
          QString::fromStdString(remesa::ComprobarIban(cuenta).digitos));
    case remesa::DefectoIban::Pais:
      return u"ningún país tiene IBAN que empiece así"_s;
    case remesa::DefectoIban::Longitud:
      return u"tiene %1 posiciones. Los de su país, %2"_s.arg(cuenta.size())
          .arg(QString::fromStdString(forma));
    case remesa::DefectoIban::Forma:
      break;
  }
  return u"no tiene la forma de los de su país, %1"_s.arg(QString::fromStdString(forma));
}

Salida Comprobar(const std::vector<std::string>& textos) {
  Salida salida = Salida::Hecho;
  for (const std::string& texto : textos) {
    const std::string cuenta = Cuenta(texto);
    if (!remesa::ComprobarIban(cuenta).correcto) salida = Salida::Fallo;
    const QString impreso = comunes::DesdeWindows1252(remesa::FormatoIBAN(cuenta, false));
    const bool dicho =
        Decir(u"%1: %2"_s.arg(Mostrable(impreso.isEmpty() ? u"(vacío)"_s : impreso), Veredicto(cuenta)));
    if (!dicho) salida = Salida::Fallo;
  }
  return salida;
}

}  // namespace

void OrdenIban(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("iban", "Comprueba la forma y los dígitos de control de cuentas IBAN");
  auto textos = std::make_shared<std::vector<std::string>>();
  orden->add_option("TEXTO", *textos, "Cuentas. Los blancos y la palabra IBAN delante no cuentan")
      ->required();
  orden->footer("Sale con 1 si alguna no es correcta.");
  orden->callback([textos, &accion] { accion = [textos] { return Comprobar(*textos); }; });
}

}  // namespace consola

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

#include "comunes/campos/Identificadores.h"
#include "consola/Ordenes.h"
#include "consola/Terminal.h"

namespace consola {

using namespace Qt::StringLiterals;

namespace {

bool EsCifra(QChar c) {
  return c >= u'0' && c <= u'9';
}

/// Pone su letra a los que acaban en cifra o en "?"; los que ya la traen quedan como están.
Salida Completar(const std::vector<std::string>& textos) {
  Salida salida = Salida::Hecho;
  for (const std::string& texto : textos) {
    QString nif = QString::fromStdString(texto).trimmed();
    const bool sinLetra = nif.endsWith(u'?') || nif.isEmpty() || EsCifra(nif.back());
    if (sinLetra) {
      // El número se suele escribir en grupos, y la letra es la de todo él.
      nif.removeIf([](QChar c) { return c.isSpace() || c == u'.'; });
      if (nif.endsWith(u'?')) nif.chop(1);
      if (std::all_of(nif.begin(), nif.end(), EsCifra)) comunes::NifLetter(nif += u'?');
    }
    if (!Decir(Mostrable(nif))) salida = Salida::Fallo;
    if (sinLetra && (nif.isEmpty() || !nif.back().isLetter())) {
      Avisar(u"%1: no tiene número del que sacar la letra"_s.arg(Mostrable(QString::fromStdString(texto))));
      salida = Salida::Fallo;
    }
  }
  return salida;
}

}  // namespace

void OrdenNif(CLI::App& q19, Accion& accion) {
  CLI::App* orden = q19.add_subcommand("nif", "Pone su letra a números de NIF");
  auto textos = std::make_shared<std::vector<std::string>>();
  orden->add_option("TEXTO", *textos, "Números, con o sin «?» al final")->required();
  orden->footer("Sale con 1 si alguno no tiene número.");
  orden->callback([textos, &accion] { accion = [textos] { return Completar(*textos); }; });
}

}  // namespace consola

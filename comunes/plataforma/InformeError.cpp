#include "comunes/plataforma/InformeError.h"

#include <QApplication>
#include <QMessageBox>
#include <filesystem>
#include <new>

#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ficheros/ErrorEjecucion.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

void informar(const ficheros::ErrorEjecucion& error) {
  InformarError(error.numero(), QString::fromStdString(error.texto()), DesdeRuta(error.fichero()));
}

}  // namespace

void InformarError(int numero, const QString& texto, const QString& fichero) {
  static bool informando = false;
  QString mensaje = u"Error %1: "_s.arg(numero) + texto;
  if (!fichero.isEmpty()) mensaje += u'\n' + fichero;
  if (informando) {
    qWarning("%s", qUtf8Printable(mensaje));
    return;
  }
  informando = true;
  QMessageBox caja(QMessageBox::Critical, QApplication::applicationDisplayName(), QString(), QMessageBox::Ok,
                   VentanaActiva());
  caja.setObjectName(u"InformeError"_s);
  caja.setTextFormat(Qt::PlainText);
  caja.setText(ConMarcasEscritas(mensaje));
  caja.exec();
  informando = false;
}

void InformarError(const std::exception& error) {
  if (const auto* propio = dynamic_cast<const ficheros::ErrorEjecucion*>(&error)) {
    informar(*propio);
  } else if (const auto* fichero = dynamic_cast<const std::filesystem::filesystem_error*>(&error)) {
    informar(ficheros::ErrorEjecucion(fichero->code(), fichero->path1()));
  } else if (dynamic_cast<const std::bad_alloc*>(&error)) {
    InformarError(ficheros::kMemoriaInsuficiente, u"Memoria insuficiente"_s);
  } else {
    InformarError(ficheros::kErrorInterno, u"Error interno"_s, QString::fromLocal8Bit(error.what()));
  }
}

}  // namespace comunes

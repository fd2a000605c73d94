#include <QIcon>
#include <memory>

#include "app/LineaOrdenes.h"
#include "comunes/plataforma/Aplicacion.h"
#include "comunes/plataforma/Sistema.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace {

using namespace Qt::StringLiterals;

QIcon iconoAplicacion() {
  QIcon icono;
  for (const int lado : {16, 24, 32, 48, 64, 128, 256})
    icono.addFile(u":/iconos/unirq19-%1.png"_s.arg(lado));
  return icono;
}

}  // namespace

int main(int argc, char** argv) {
  comunes::PrepararProceso("UnirQ19");
  comunes::Aplicacion aplicacion(argc, argv);
  // Sin applicationDisplayName: Qt lo añadiría al título de cada ventana.
  QCoreApplication::setApplicationName(u"UnirQ19"_s);
  QCoreApplication::setApplicationVersion(QString::fromLatin1(VERSION_PROGRAMA));
  QGuiApplication::setDesktopFileName(u"unirq19"_s);
  QGuiApplication::setWindowIcon(iconoAplicacion());

  std::unique_ptr<principal::frmUnirQ19> ventana;
  const bool abierta = comunes::Aplicacion::Proteger([&] {
    ventana = std::make_unique<principal::frmUnirQ19>(LineaOrdenes());
    ventana->show();
  });
  return abierta ? QCoreApplication::exec() : 1;
}

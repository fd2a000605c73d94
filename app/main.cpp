#include <QIcon>
#include <memory>

#include "app/LineaOrdenes.h"
#include "comunes/plataforma/Aplicacion.h"
#include "comunes/plataforma/Proceso.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace {

QIcon iconoAplicacion() {
  QIcon icono;
  for (const int lado : {16, 24, 32, 48, 64, 128, 256})
    icono.addFile(QStringLiteral(":/iconos/unirq19-%1.png").arg(lado));
  return icono;
}

}  // namespace

int main(int argc, char** argv) {
  comunes::PrepararProceso();
  comunes::Aplicacion aplicacion(argc, argv);
  // Sin applicationDisplayName: Qt lo añadiría al título de cada ventana.
  QCoreApplication::setApplicationName(QStringLiteral("UnirQ19"));
  QCoreApplication::setApplicationVersion(QStringLiteral(VERSION_PROGRAMA));
  QGuiApplication::setDesktopFileName(QStringLiteral("unirq19"));
  QGuiApplication::setWindowIcon(iconoAplicacion());

  std::unique_ptr<principal::frmUnirQ19> ventana;
  const bool abierta = comunes::Aplicacion::Proteger([&] {
    ventana = std::make_unique<principal::frmUnirQ19>(LineaOrdenes());
    ventana->show();
  });
  return abierta ? QCoreApplication::exec() : 1;
}

#include "comunes/herramientas/Presenta.h"

#include <QGuiApplication>
#include <QIcon>

#include "comunes/dialogos/MiniHelp.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_Presenta.h"

namespace herramientas {

Presenta::Presenta(const QString& licencia, QWidget* padre)
    : QDialog(padre, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      ui_(std::make_unique<Ui::Presenta>()) {
  ui_->setupUi(this);
  ui_->Icono->setPixmap(QGuiApplication::windowIcon().pixmap(QSize(64, 64), devicePixelRatioF()));
  const QString nombre = QCoreApplication::applicationName();
  setWindowTitle(tr("Acerca de %1").arg(nombre));
  ui_->Nombre->setText(nombre);
  ui_->Version->setText(tr("Versión %1").arg(QCoreApplication::applicationVersion()));
  ui_->Toolkit->setText(tr("Hecho con Qt %1").arg(QLatin1String(qVersion())));
  comunes::FuentesVentana(*this);
  adjustSize();
  comunes::DisponerVentana(*this);
  connect(ui_->cmdLicencia, &QPushButton::clicked, this, [this, licencia] {
    comunes::MiniHelp texto(this);
    texto.Cargar(licencia);
    texto.exec();
  });
  connect(ui_->cmdCerrar, &QPushButton::clicked, this, &QDialog::accept);
}

Presenta::~Presenta() = default;

}  // namespace herramientas

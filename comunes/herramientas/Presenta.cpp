#include "comunes/herramientas/Presenta.h"

#include <QGuiApplication>
#include <QIcon>

#include "comunes/dialogos/MiniHelp.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_Presenta.h"

namespace herramientas {

using namespace Qt::StringLiterals;

Presenta::Presenta(const QString& licencia, QWidget* padre)
    : QDialog(padre, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      ui_(std::make_unique<Ui::Presenta>()) {
  ui_->setupUi(this);
  ui_->Icono->setPixmap(QGuiApplication::windowIcon().pixmap(QSize(64, 64), devicePixelRatioF()));
  const QString nombre = QCoreApplication::applicationName();
  setWindowTitle(u"Acerca de %1"_s.arg(nombre));
  ui_->Nombre->setText(nombre);
  ui_->Version->setText(u"Versión %1"_s.arg(QCoreApplication::applicationVersion()));
  ui_->Toolkit->setText(u"Hecho con Qt %1"_s.arg(QLatin1String(qVersion())));
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

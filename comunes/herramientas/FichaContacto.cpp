#include "comunes/herramientas/FichaContacto.h"

#include <QKeyEvent>

#include "comunes/campos/CajaDescrita.h"
#include "comunes/campos/Tecleo.h"
#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_FichaContacto.h"

namespace herramientas {

using namespace Qt::StringLiterals;

FichaContacto::FichaContacto(const Contacto& contacto, Guardar guardar, QWidget* padre)
    : QDialog(padre),
      ui_(std::make_unique<Ui::FichaContacto>()),
      contacto_(contacto),
      guardar_(std::move(guardar)) {
  ui_->setupUi(this);
  cajas_ = {ui_->Nombre, ui_->Telefono, ui_->Fax, ui_->Correo};
  comunes::FuentesVentana(*this);
  for (std::size_t i = 0; i < cajas_.size(); ++i) {
    comunes::Describir(cajas_[i]);
    comunes::PonerTexto(cajas_[i], contacto.datos[i]);
    cajas_[i]->installEventFilter(this);
  }
  connect(ui_->cmdAceptar, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
  adjustSize();
  comunes::DisponerVentana(*this);
}

FichaContacto::~FichaContacto() = default;

void FichaContacto::accept() {
  Contacto tecleado = contacto_;
  for (std::size_t i = 0; i < cajas_.size(); ++i)
    tecleado.datos[i] = EnUnaLinea(cajas_[i]->text());
  if (tecleado.datos[kNombre].isEmpty()) {
    comunes::Avisar(u"Falta el nombre del contacto"_s, this);
    ui_->Nombre->setFocus();
    return;
  }
  if (guardar_(tecleado)) QDialog::accept();
}

// En una caja descrita, "+" pone el valor por defecto; aquí no lo hay, y es parte de un teléfono ("+34") o un
// correo.
bool FichaContacto::eventFilter(QObject* objeto, QEvent* evento) {
  auto* caja = qobject_cast<QLineEdit*>(objeto);
  if (!caja || evento->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(evento)->text() != u"+"_s)
    return QDialog::eventFilter(objeto, evento);
  caja->insert(u"+"_s);
  return true;
}

}  // namespace herramientas

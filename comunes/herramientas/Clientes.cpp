#include "comunes/herramientas/Clientes.h"

#include "comunes/dialogos/VistaRejilla.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"
#include "ui_Clientes.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

QString TextoEstado(EstadoCliente estado) {
  switch (estado) {
    case EstadoCliente::Nuevo:
      return u"Nuevo"_s;
    case EstadoCliente::Repetido:
      return u"Repetido"_s;
    case EstadoCliente::SinNombre:
      return u"Sin nombre"_s;
    case EstadoCliente::Sobran:
      return u"Sobran datos"_s;
  }
  return {};
}

QString Resumen(const ImportacionClientes& importacion) {
  struct Parte {
    EstadoCliente estado;
    QString uno;
    QString varios;
  };
  const Parte partes[] = {
      {EstadoCliente::Repetido, u"1 repetido (ya está con el mismo nombre y número)"_s,
       u"%1 repetidos (ya están con el mismo nombre y número)"_s},
      {EstadoCliente::SinNombre, u"1 sin nombre"_s, u"%1 sin nombre"_s},
      {EstadoCliente::Sobran, u"1 línea con más datos que columnas"_s,
       u"%1 líneas con más datos que columnas"_s},
  };
  const int nuevos = importacion.cuantos(EstadoCliente::Nuevo);
  QString texto = nuevos == 1 ? u"Se añadirá 1 contacto."_s : u"Se añadirán %1 contactos."_s.arg(nuevos);
  QStringList fuera;
  for (const Parte& parte : partes)
    if (const int cuantos = importacion.cuantos(parte.estado); cuantos > 0)
      fuera += cuantos == 1 ? parte.uno : parte.varios.arg(cuantos);
  if (!fuera.isEmpty()) texto += u" No se añadirán: "_s + fuera.join(u", "_s) + u'.';
  return texto;
}

}  // namespace

Clientes::Clientes(const ImportacionClientes& importacion, const QString& fichero, QWidget* padre)
    : QDialog(padre), ui_(std::make_unique<Ui::Clientes>()), modelo_(rejilla_) {
  ui_->setupUi(this);
  comunes::FuentesVentana(*this);
  ui_->Fichero->setText(fichero);
  ui_->Resumen->setText(Resumen(importacion));
  const comunes::SinRedibujo quieta(rejilla_);
  comunes::PrepararRejilla(rejilla_, u"<Estado#14;<Nombre#34;<Teléfono#18;<Fax#18;<eMail o Código#25"_s);
  rejilla_.PonerRows(rejilla_.FixedRows() + static_cast<int>(importacion.clientes.size()));
  int fila = rejilla_.FixedRows();
  for (const Cliente& cliente : importacion.clientes) {
    int columna = 0;
    comunes::PonerCelda(rejilla_, fila, columna++, TextoEstado(cliente.estado));
    for (const QString& dato : cliente.contacto.datos)
      comunes::PonerCelda(rejilla_, fila, columna++, dato);
    ++fila;
  }
  comunes::PrepararVistaRejilla(*ui_->VisorClientes, modelo_);
  ui_->cmdAceptar->setEnabled(importacion.cuantos(EstadoCliente::Nuevo) > 0);
  connect(ui_->cmdAceptar, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
  ui_->VisorClientes->setFocus();
  comunes::DisponerVentana(*this);
}

Clientes::~Clientes() = default;

}  // namespace herramientas

#include "comunes/impresion/VentanaImpresora.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPointer>
#include <QPrinter>
#include <QPrinterInfo>

#include "comunes/dialogos/MyBox.h"
#include "comunes/impresion/ImagenImpresora.h"
#include "comunes/impresion/Trabajo.h"
#include "comunes/impresion/VistaPrevia.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_Impresora.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr int kLadoImagen = 32;

QPointer<Impresora> abierta;

QString orientacion(bool horizontal) {
  return horizontal ? u"Horizontal"_s : u"Vertical"_s;
}

}  // namespace

Impresora::Impresora(const PeticionImpresora& peticion)
    : QDialog(peticion.padre), peticion_(peticion), ui_(std::make_unique<::Ui::Impresora>()) {
  ui_->setupUi(this);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  abierta = this;

  const AjustesImpresora& ajustes = AjustesDeImpresora();
  horizontal_ = ajustes.orientacion == "Horizontal"_L1;
  ui_->Copias->setRange(1, kCopiasMaximas);
  ui_->Copias->setValue(ajustes.copias);
  ui_->cmdVistaPrevia->setVisible(static_cast<bool>(peticion_.dibujar));

  connect(ui_->Etiqueta, &QAbstractButton::clicked, this, &Impresora::cambiarVista);
  connect(ui_->Imagen, &QAbstractButton::clicked, this, &Impresora::cambiarVista);
  connect(ui_->ModoPapel, &QAbstractButton::clicked, this, &Impresora::girarPapel);
  connect(ui_->cmdGirar, &QAbstractButton::clicked, this, &Impresora::girarPapel);
  connect(ui_->cmdPropiedades, &QAbstractButton::clicked, this, &Impresora::propiedades);
  connect(ui_->cmdVistaPrevia, &QAbstractButton::clicked, this, &Impresora::vistaPrevia);
  connect(ui_->cmdAceptar, &QAbstractButton::clicked, this, &Impresora::accept);
  connect(ui_->cmdCancelar, &QAbstractButton::clicked, this, &Impresora::reject);
  connect(ui_->ListaImpresoras, &QListWidget::itemSelectionChanged, this, &Impresora::comprobarAncho);
  connect(ui_->ListaImpresoras, &QListWidget::itemDoubleClicked, this, &Impresora::accept);

  llenar(false);
  mostrarOrientacion();
  if (ajustes.recordada.isEmpty()) {
    seleccionar(NombreImpresoraActual());
  } else {
    const QString recordada = ajustes.recordada.toLower();
    for (int i = 0; i < ui_->ListaImpresoras->count(); ++i) {
      if (ui_->ListaImpresoras->item(i)->text().toLower().startsWith(recordada)) {
        ui_->ListaImpresoras->setCurrentRow(i);
        break;
      }
    }
  }
  FuentesVentana(*this);
  DisponerVentana(*this);
  ui_->ListaImpresoras->setFocus();
}

Impresora::~Impresora() = default;

bool Impresora::pidePDF() const {
  return ui_->Etiqueta->text().startsWith(u"Imp"_s);
}

void Impresora::llenar(bool soloPDF) {
  QStringList nombres = NombresDeImpresoras();
  nombres.append(kDocumentoPDF);
  if (soloPDF) nombres = nombres.filter(u"PDF"_s, Qt::CaseInsensitive);
  ui_->ListaImpresoras->clear();
  ui_->ListaImpresoras->addItems(nombres);
  ui_->ListaImpresoras->setCurrentRow(-1);
  ui_->Etiqueta->setText(soloPDF ? u"PDF"_s : u"Impresoras (%1)"_s.arg(nombres.size()));
  ui_->Imagen->setIcon(ImagenImpresora(soloPDF));
  ui_->Imagen->setIconSize({kLadoImagen, kLadoImagen});
}

void Impresora::cambiarVista() {
  llenar(pidePDF());
  seleccionar(NombreImpresoraActual());
}

void Impresora::seleccionar(const QString& nombre) {
  const auto hallados = ui_->ListaImpresoras->findItems(nombre, Qt::MatchExactly);
  if (!hallados.isEmpty()) ui_->ListaImpresoras->setCurrentItem(hallados.first());
  comprobarAncho();
}

QString Impresora::seleccionada() const {
  const auto elegidas = ui_->ListaImpresoras->selectedItems();
  return elegidas.isEmpty() ? QString() : elegidas.first()->text();
}

void Impresora::mostrarOrientacion() {
  ui_->ModoPapel->setText(horizontal_ ? orientacion(false) : u"H&orizontal"_s);
  ui_->ModoPapel->setShortcut(Qt::ALT | Qt::Key_O);  // «Vertical» no tiene esa letra
  ui_->Papel->setText(u"Papel "_s + orientacion(horizontal_));
  comprobarAncho();
}

void Impresora::girarPapel() {
  horizontal_ = !horizontal_;
  mostrarOrientacion();
}

// Solo el ancho: lo que no cabe a lo ancho se quedaría fuera del papel.
void Impresora::comprobarAncho() {
  const QString nombre = seleccionada();
  ui_->Copias->setEnabled(nombre != kDocumentoPDF);
  bool cabe = true;
  bool cabeGirado = false;
  if (peticion_.anchoTabla > 0 && !nombre.isEmpty()) {
    // La página se gira aquí y no en la impresora: la que no lo admita lo dirá al activarla.
    QPageLayout pagina = CrearImpresora(nombre, QPageLayout::Portrait, 1)->pageLayout();
    const auto caben = [&](bool horizontal) {
      pagina.setOrientation(horizontal ? QPageLayout::Landscape : QPageLayout::Portrait);
      return peticion_.anchoTabla <= ZonaImprimible(pagina).width();
    };
    cabe = caben(horizontal_);
    cabeGirado = caben(!horizontal_);
  }
  ui_->Aviso->setVisible(!cabe);
  ui_->cmdGirar->setVisible(!cabe && cabeGirado);
  ui_->Aviso->setText(u"En papel %1 no caben todas las columnas: las de la derecha no se imprimirían."_s.arg(
      orientacion(horizontal_).toLower()));
}

void Impresora::propiedades() {
  const QString nombre = seleccionada();
  if (nombre.isEmpty()) {
    Avisar(u"Elija primero una impresora de la lista."_s, this);
    return;
  }
  if (nombre != kDocumentoPDF && ShowPrinterProperties(winId(), nombre) != 0) return;
  QStringList datos{u"Impresora: "_s + nombre};
  if (nombre == kDocumentoPDF) {
    datos << u"Escribe el listado en un fichero PDF que se elige al imprimir."_s;
  } else {
    const QPrinterInfo info = QPrinterInfo::printerInfo(nombre);
    datos << u"Modelo: "_s + info.makeAndModel() << u"Lugar: "_s + info.location()
          << u"Descripción: "_s + info.description();
  }
  const auto impresora = CrearImpresora(nombre, QPageLayout::Portrait, 1);
  datos << u"Papel: "_s + impresora->pageLayout().pageSize().name();
  // En los mensajes el punto y coma es un cambio de línea; el de un nombre no lo es.
  for (QString& dato : datos)
    dato.replace(u';', u',');
  MyMsgBox(datos.join(u';'), u"Propiedades"_s, kIconoAviso, 1, 1, -1, -1, this);
}

void Impresora::vistaPrevia() {
  const QString nombre = seleccionada().isEmpty() ? NombreImpresoraActual() : seleccionada();
  const auto impresora =
      CrearImpresora(nombre, horizontal_ ? QPageLayout::Landscape : QPageLayout::Portrait, 1);
  MostrarVistaPrevia(*impresora, peticion_.dibujar, this);
}

void Impresora::accept() {
  const QString nombre = seleccionada();
  if (nombre.isEmpty()) {
    Avisar(u"Elija una impresora de la lista."_s, this);
    ui_->ListaImpresoras->setFocus();
    return;
  }
  AjustesImpresora& ajustes = AjustesDeImpresora();
  ajustes.elegida = nombre;
  ajustes.recordada = nombre;
  ajustes.orientacion = orientacion(horizontal_);
  ajustes.copias = ui_->Copias->value();
  QDialog::accept();
}

void Impresora::reject() {
  AjustesDeImpresora().cancelada = true;
  QDialog::reject();
}

void ProponerApaisado() {
  if (abierta) {
    abierta->girarPapel();
    return;
  }
  QString& ajuste = AjustesDeImpresora().orientacion;
  ajuste = orientacion(ajuste != "Horizontal"_L1);
}

}  // namespace comunes

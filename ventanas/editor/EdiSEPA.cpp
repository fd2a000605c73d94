#include "ventanas/editor/EdiSEPA.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QStyle>
#include <algorithm>

#include "comunes/campos/CajaDescrita.h"
#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Iconos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "remesa/Registro.h"
#include "ui_EdiSEPA.h"
#include "ventanas/editor/FilaCampo.h"

namespace editor {

using namespace Qt::StringLiterals;

EdiSEPA::EdiSEPA(ListaAcumulado& lista, int tipo, QWidget* propietario)
    : QDialog(propietario), ui_(std::make_unique<Ui::EdiSEPA>()), lista_(lista), tipo_(tipo) {
  ui_->setupUi(this);
  ui_->cmdAnterior->setIcon(comunes::Icono(comunes::Pictograma::Anterior));
  ui_->cmdSiguiente->setIcon(comunes::Icono(comunes::Pictograma::Siguiente));
  ui_->cmdAceptar->setIcon(comunes::Icono(comunes::Pictograma::Aceptar));
  ui_->cmdSalir->setIcon(comunes::Icono(comunes::Pictograma::Descartar));
  const int lado = style()->pixelMetric(QStyle::PM_LargeIconSize);
  ui_->MarcoPerdidos->hide();
  ui_->IconoAviso->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(lado, lado));

  QWidget* anterior = nullptr;
  for (int i = 1; i <= kCamposMaximos; ++i) {
    auto* fila = new FilaCampo(i, *ui_->Campos, this);
    filas_.push_back(fila);
    if (anterior) setTabOrder(anterior, fila->Caja());
    setTabOrder(fila->Caja(), fila->Quitar());
    anterior = fila->Quitar();
  }
  for (QWidget* boton : std::initializer_list<QWidget*>{ui_->Recuperar, ui_->cmdAnterior, ui_->cmdSiguiente,
                                                        ui_->cmdAceptar, ui_->cmdSalir}) {
    setTabOrder(anterior, boton);
    anterior = boton;
  }
  comunes::FuentesVentana(*this);
  QFont titulo = ui_->cpo0->font();
  titulo.setPointSizeF(titulo.pointSizeF() * 1.3);
  titulo.setBold(true);
  ui_->cpo0->setFont(titulo);
  // Tres líneas: lo que ocupa la explicación más larga, para que la ventana no baile.
  ui_->Ayuda->setMinimumHeight(3 * ui_->Ayuda->fontMetrics().lineSpacing());
  conectar();
  cargar();
  // De partida, todos los campos que quepan en la pantalla sin desplazarlos.
  const int marco = 2 * ui_->Desplazable->frameWidth();
  resize(width(), std::max(height(), layout()->sizeHint().height() - ui_->Desplazable->sizeHint().height() +
                                         ui_->Formulario->sizeHint().height() + marco));
  comunes::DisponerVentana(*this);
  enfocarPosicion(lista.posicion);
}

EdiSEPA::~EdiSEPA() {
  // Antes que sus controles: una caja que muere con el foco dentro avisa de la salida cuando los demás ya no
  // están.
  qDeleteAll(filas_);
}

void EdiSEPA::conectar() {
  for (FilaCampo* fila : filas_) {
    connect(fila, &FilaCampo::haEntrado, this, &EdiSEPA::entrarEn);
    connect(fila, &FilaCampo::haSalido, this, &EdiSEPA::anotarSalida);
    connect(fila, &FilaCampo::pedida, this, &EdiSEPA::pedir);
  }
  const auto anterior = [this] { mover(-1); };
  const auto siguiente = [this] { mover(1); };
  connect(ui_->cmdAnterior, &QPushButton::clicked, this, anterior);
  connect(ui_->cmdSiguiente, &QPushButton::clicked, this, siguiente);
  connect(ui_->Recuperar, &QPushButton::clicked, this, &EdiSEPA::recuperar);
  connect(ui_->cmdAceptar, &QPushButton::clicked, this, &EdiSEPA::aceptar);
  connect(ui_->cmdSalir, &QPushButton::clicked, this, &EdiSEPA::reject);
  const auto tecla = [this](const QKeySequence& teclas, auto orden) {
    connect(new QShortcut(teclas, this), &QShortcut::activated, this, orden);
  };
  tecla(Qt::CTRL | Qt::Key_PageUp, anterior);
  tecla(Qt::CTRL | Qt::Key_PageDown, siguiente);
  tecla(Qt::Key_F4, [this] {
    if (FilaCampo* fila = filaConFoco()) pedir(fila);
  });

  mensajes_.setSingleShot(true);
  connect(&mensajes_, &QTimer::timeout, this, [this] {
    // Con un botón del ratón a medio pulsar, la caja se quedaría con su suelta y la pulsación se perdería.
    constexpr int kEsperaMs = 20;
    if (QGuiApplication::mouseButtons() == Qt::NoButton)
      mostrarErroneas();
    else
      mensajes_.start(kEsperaMs);
  });
}

void EdiSEPA::cargar() {
  const std::string_view registro = lista_.registros[static_cast<std::size_t>(lista_.actual)];
  Descripcion nueva = LeerDescripcion(comunes::RutaAjustes, SeccionDe(registro, tipo_));
  setUpdatesEnabled(false);
  preparar(std::move(nueva));
  for (std::size_t i = 0; i < descripcion_.campos.size(); ++i)
    filas_[i]->Poner(ValorCampo(registro, descripcion_.campos[i]));
  setWindowTitle(u"Edición del registro %1 de %2"_s.arg(
      comunes::FormatoNumero(lista_.actual + 1, 0),
      comunes::FormatoNumero(static_cast<double>(lista_.registros.size()), 0)));
  mostrarAviso();
  setUpdatesEnabled(true);
  if (!lista_.hallazgos) return;
  lista_.hallazgos(lista_.actual, [this, editor = QPointer<EdiSEPA>(this)](const auto& hallazgos) {
    if (editor) mostrarHallazgos(hallazgos);
  });
}

void EdiSEPA::mostrarHallazgos(const std::vector<HallazgoCampo>& hallazgos) {
  for (std::size_t i = 0; i < descripcion_.campos.size(); ++i) {
    const CampoDescrito& campo = descripcion_.campos[i];
    std::vector<HallazgoCampo> suyos;
    std::ranges::copy_if(hallazgos, std::back_inserter(suyos), [&](const HallazgoCampo& h) {
      return h.desde >= campo.desde && h.desde < campo.desde + campo.longitud;
    });
    filas_[i]->PonerHallazgos(suyos);
  }
  // Lo que aparece encima del campo en que se está no lo saca de la vista.
  ui_->Formulario->layout()->activate();
  if (FilaCampo* fila = filaConFoco()) entrarEn(fila);
}

void EdiSEPA::preparar(Descripcion nueva) {
  if (nueva == descripcion_) return;
  descripcion_ = std::move(nueva);
  ui_->cpo0->setText(descripcion_.titulo);
  ui_->cpo0->setVisible(!descripcion_.titulo.isEmpty());
  const std::size_t usados = descripcion_.campos.size();
  for (std::size_t i = 0; i < filas_.size(); ++i)
    i < usados ? filas_[i]->Preparar(descripcion_.campos[i]) : filas_[i]->Ocultar();
  const bool usables = std::any_of(filas_.begin(), filas_.end(), [](FilaCampo* f) { return f->Usable(); });
  ui_->Ayuda->setText(usables || usados == 0 ? QString()
                                             : u"Este registro no tiene campos que se puedan cambiar."_s);
  ui_->Desplazable->ensureVisible(0, 0);
}

void EdiSEPA::mostrarAviso() {
  QString aviso;
  if (descripcion_.campos.empty()) {
    aviso =
        u"El registro de tipo «%1» no tiene descripción en Tarvo.INI y no se puede mostrar por campos. "
        u"Con «Aceptar» quedaría vacío. Pulse «Salir» para dejarlo como está."_s.arg(
            comunes::SinControles(descripcion_.seccion.trimmed()));
  } else {
    const auto longitud = EscribirRegistro(descripcion_.campos, textos(), originales()).size();
    if (longitud != remesa::kLongitudRegistro)
      aviso =
          u"Los campos de la descripción «%1» de Tarvo.INI suman %2 posiciones y no %3: «Aceptar» "
          u"cambiaría "
          u"la longitud del registro."_s.arg(descripcion_.seccion)
              .arg(longitud)
              .arg(remesa::kLongitudRegistro);
  }
  ui_->Aviso->setText(aviso);
  ui_->MarcoAviso->setVisible(!aviso.isEmpty());
}

std::vector<QString> EdiSEPA::textos() const {
  std::vector<QString> valores;
  for (std::size_t i = 0; i < descripcion_.campos.size(); ++i)
    valores.push_back(filas_[i]->Texto());
  return valores;
}

std::vector<QString> EdiSEPA::originales() const {
  std::vector<QString> valores;
  for (std::size_t i = 0; i < descripcion_.campos.size(); ++i)
    valores.push_back(filas_[i]->Original());
  return valores;
}

void EdiSEPA::entrarEn(FilaCampo* fila) {
  constexpr int kMargen = 48;
  ui_->Ayuda->setText(fila->Campo().explicacion);
  // ensureWidgetVisible se conforma con ver el cursor, y el borde de la caja puede quedar fuera.
  const QWidget* caja = fila->Caja();
  if (caja->visibleRegion().boundingRect() == caja->rect()) return;
  const QRect sitio(caja->mapTo(ui_->Formulario, QPoint(0, 0)), caja->size());
  ui_->Desplazable->ensureVisible(sitio.left(), sitio.center().y(), 0, sitio.height() / 2 + kMargen);
}

void EdiSEPA::anotarSalida(FilaCampo* fila) {
  if (fila->Correcto() || std::count(erroneas_.begin(), erroneas_.end(), fila) > 0) return;
  erroneas_.push_back(fila);
  mensajes_.start(0);
}

bool EdiSEPA::mostrarErroneas() {
  mensajes_.stop();
  const auto dejadas = std::exchange(erroneas_, {});
  bool intactas = true;
  for (FilaCampo* fila : dejadas) {
    intactas = intactas && !fila->Cambiado();
    comunes::Avisar(
        u"¡ Los datos en este campo son incorrectos.!;;Se restaura el dato original del registro."_s);
    fila->Restaurar();
  }
  return intactas;
}

bool EdiSEPA::dejarCampo() {
  comunes::DejarCampo(this);
  return mostrarErroneas();
}

FilaCampo* EdiSEPA::filaConFoco() const {
  const auto hallada = std::find_if(filas_.begin(), filas_.end(),
                                    [this](FilaCampo* fila) { return fila->Caja() == focusWidget(); });
  return hallada == filas_.end() ? nullptr : *hallada;
}

void EdiSEPA::enfocarPrimero() {
  const auto primera =
      std::find_if(filas_.begin(), filas_.end(), [](FilaCampo* fila) { return fila->Usable(); });
  if (primera != filas_.end()) (*primera)->Caja()->setFocus(Qt::OtherFocusReason);
}

void EdiSEPA::enfocarPosicion(int posicion) {
  for (FilaCampo* fila : filas_) {
    const int desde = fila->Campo().desde;
    if (!fila->Usable() || posicion < desde || posicion >= desde + fila->Campo().longitud) continue;
    fila->Caja()->setFocus(Qt::OtherFocusReason);
    return;
  }
  enfocarPrimero();
}

void EdiSEPA::pedir(FilaCampo* fila) {
  if (filaConFoco() != fila) {
    fila->Caja()->setFocus(Qt::OtherFocusReason);
    mostrarErroneas();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  }
  fila->Pedir();
}

void EdiSEPA::mover(int paso) {
  dejarCampo();
  const int destino = lista_.actual + paso;
  if (destino < 0 || destino >= static_cast<int>(lista_.registros.size())) {
    enfocarPrimero();
    comunes::EntrarCampo(this);
    return;
  }
  irA(destino);
}

void EdiSEPA::irA(int destino) {
  apuntarPerdido();
  FilaCampo* enfocada = filaConFoco();
  // Con el foco fuera de los campos, que el de ahora desaparezca no lleva a entrar en otro a medio cargar.
  if (enfocada) setFocus(Qt::OtherFocusReason);
  // Al cerrarse el mensaje se vuelve a entrar en el campo, y se acaba de salir: ya está dicho.
  mensajes_.stop();
  erroneas_.clear();
  lista_.actual = destino;
  if (lista_.movido) lista_.movido(destino);
  cargar();
  mostrarPerdidos();
  if (!enfocada) return;
  if (enfocada->Usable())
    enfocada->Caja()->setFocus(Qt::OtherFocusReason);
  else
    enfocarPrimero();
}

void EdiSEPA::aceptar() {
  if (!dejarCampo()) {
    comunes::EntrarCampo(this);
    return;
  }
  const int campos = NumeroCampos(comunes::RutaAjustes, descripcion_.seccion);
  if (campos != static_cast<int>(descripcion_.campos.size())) {
    comunes::Avisar(
        u"La descripción de este registro ha cambiado en Tarvo.INI mientras se editaba."
        u";;El registro queda como estaba."_s);
    return;
  }
  const auto indice = static_cast<std::size_t>(lista_.actual);
  if (lista_.cambiando) lista_.cambiando();
  lista_.registros.sustituir(indice, EscribirRegistro(descripcion_.campos, textos(), originales()));
  sustituido_ = true;
  std::erase_if(perdidos_, [this](const Perdido& p) { return p.indice == lista_.actual; });
  if (lista_.cambiado) lista_.cambiado(lista_.actual);
  accept();
}

void EdiSEPA::done(int resultado) {
  mensajes_.stop();
  erroneas_.clear();
  if (resultado == Rejected) apuntarPerdido();
  if (!perdidos_.empty() && lista_.aviso) lista_.aviso(frasePerdidos() + u" y se han perdido."_s);
  perdidos_.clear();
  QDialog::done(resultado);
}

void EdiSEPA::apuntarPerdido() {
  QString primero;
  int cambiados = 0;
  for (std::size_t i = 0; i < descripcion_.campos.size(); ++i)
    if (filas_[i]->Cambiado() && cambiados++ == 0) primero = filas_[i]->Campo().rotulo;
  if (cambiados == 0) return;
  QString campos = u"«%1»"_s.arg(primero);
  if (cambiados == 2) campos += u" y otro campo"_s;
  if (cambiados > 2) campos += u" y otros %1 campos"_s.arg(cambiados - 1);
  std::erase_if(perdidos_, [this](const Perdido& p) { return p.indice == lista_.actual; });
  perdidos_.push_back({lista_.actual, textos(), campos});
}

/// "Registro 3: los cambios en «Importe» no se aceptaron", y de cuántos otros.
QString EdiSEPA::frasePerdidos() const {
  const Perdido& ultimo = perdidos_.back();
  QString registro = u"Registro "_s + comunes::FormatoNumero(ultimo.indice + 1, 0);
  if (perdidos_.size() == 2) registro += u" (y otro)"_s;
  if (perdidos_.size() > 2) registro += u" (y otros %1)"_s.arg(perdidos_.size() - 1);
  return u"%1: los cambios en %2 no se aceptaron"_s.arg(registro, ultimo.campos);
}

void EdiSEPA::mostrarPerdidos() {
  const QString frase = perdidos_.empty() ? QString() : frasePerdidos() + u'.';
  ui_->MarcoPerdidos->setVisible(!frase.isEmpty());
  if (ui_->Perdidos->text() == frase) return;
  ui_->Perdidos->setText(frase);
  if (frase.isEmpty()) return;
  QAccessibleEvent anuncio(ui_->Perdidos, QAccessible::Alert);
  QAccessible::updateAccessibility(&anuncio);
}

void EdiSEPA::recuperar() {
  // Con el mensaje que eso pueda sacar, el editor puede haberse cerrado.
  dejarCampo();
  if (perdidos_.empty()) return;
  const Perdido perdido = std::move(perdidos_.back());
  perdidos_.pop_back();
  perdido.indice == lista_.actual ? apuntarPerdido() : irA(perdido.indice);
  for (std::size_t i = 0; i < perdido.textos.size() && i < descripcion_.campos.size(); ++i)
    filas_[i]->Escribir(perdido.textos[i]);
  mostrarPerdidos();
  enfocarPrimero();
}

void EdiSEPA::keyPressEvent(QKeyEvent* evento) {
  auto* boton = qobject_cast<QPushButton*>(focusWidget());
  const bool intro = evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter;
  if (intro && boton) return boton->click();
  if (intro) return evento->accept();
  QDialog::keyPressEvent(evento);
}

void EdiSEPA::changeEvent(QEvent* evento) {
  if (evento->type() == QEvent::PaletteChange)
    for (FilaCampo* fila : filas_)
      fila->PonerColores();
  QDialog::changeEvent(evento);
}

}  // namespace editor

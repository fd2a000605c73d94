#include "ventanas/editor/FilaCampo.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "comunes/campos/CajaDescrita.h"
#include "comunes/campos/Teclas.h"
#include "comunes/campos/Tecleo.h"
#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Enlace.h"
#include "comunes/plataforma/Ventanas.h"
#include "ventanas/editor/Ayudas.h"
#include "ventanas/editor/IconoAyuda.h"
#include "ventanas/editor/NotasCampo.h"
#include "ventanas/editor/Peticion.h"

namespace editor {

using namespace Qt::StringLiterals;

namespace {

// Las cajas más largas no pasan de este ancho, ni bajan de este otro si la ventana es estrecha.
constexpr int kCaracteresMaximos = 70;
constexpr int kCaracteresMinimos = 20;

QLabel* etiqueta(const char* nombre, int indice, QWidget* padre) {
  auto* nueva = new QLabel(padre);
  nueva->setObjectName(QLatin1String(nombre) + QString::number(indice));
  nueva->setTextFormat(Qt::PlainText);
  return nueva;
}

/// Una línea sin clase no tiene descriptor: su caja toma texto libre, que puede ser más largo que el campo.
QString descriptorCaja(const CampoDescrito& campo) {
  return campo.descriptor.isEmpty() ? u"L(32767) A() T()"_s : campo.descriptor;
}

}  // namespace

FilaCampo::FilaCampo(int indice, QGridLayout& rejilla, QObject* padre) : QObject(padre) {
  QWidget* formulario = rejilla.parentWidget();
  rotulo_ = etiqueta("eti", indice, formulario);
  opcional_ = etiqueta("opc", indice, formulario);
  observacion_ = etiqueta("obs", indice, formulario);
  observacion_->setWordWrap(true);
  senal_ = etiqueta("sen", indice, formulario);
  quitar_ = new comunes::Enlace(formulario);
  quitar_->setObjectName(u"quitar%1"_s.arg(indice));
  quitar_->setText(u"Quitar acentos"_s);

  caja_ = new QLineEdit(formulario);
  caja_->setObjectName(u"cpo%1"_s.arg(indice));
  QFont fija = caja_->font();
  fija.setFamilies({u"Courier New"_s});
  fija.setStyleHint(QFont::Monospace);
  caja_->setFont(fija);
  comunes::PonerDescriptor(caja_, u"(FF)"_s);

  ayuda_ = new QToolButton(formulario);
  ayuda_->setObjectName(u"edi%1"_s.arg(indice));
  ayuda_->setAutoRaise(true);
  ayuda_->setFocusPolicy(Qt::NoFocus);
  ayuda_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);

  auto* linea = new QHBoxLayout;
  linea->addWidget(caja_, 100);
  linea->addSpacing(4);
  linea->addWidget(opcional_);
  linea->addWidget(ayuda_);
  linea->addStretch(1);
  const int fila = 2 * (indice - 1);
  rejilla.addWidget(rotulo_, fila, 0);
  rejilla.addLayout(linea, fila, 1);
  auto* debajo = new QHBoxLayout;
  debajo->setSpacing(10);
  debajo->addWidget(quitar_, 0, Qt::AlignTop);
  debajo->addWidget(senal_, 0, Qt::AlignTop);
  debajo->addWidget(observacion_, 1);
  rejilla.addLayout(debajo, fila + 1, 1);
  Ocultar();

  // Fuera de la pulsación: una ayuda técnica que pulsa espera a que acabe, y la caja que se abre es modal.
  // Por qué no se escribió una tecla deja de importar en cuanto se escribe otra.
  connect(caja_, &QLineEdit::textChanged, this, [this] {
    if (!comunes::Tecleo().reescribiendo && std::exchange(dicho_, false)) refrescar();
  });
  connect(quitar_, &QPushButton::clicked, this, &FilaCampo::quitarAcentos);
  connect(
      ayuda_, &QToolButton::clicked, this, [this] { emit pedida(this); }, Qt::QueuedConnection);
}

void FilaCampo::Preparar(const CampoDescrito& campo) {
  campo_ = campo;
  ocultada_ = false;
  rotulo_->setText(campo.rotulo);
  rotulo_->setToolTip(comunes::TextoLiteral(campo.posicion));
  opcional_->setText(campo.opcional ? u"OP"_s : QString());
  opcional_->setToolTip(campo.opcional ? u"Campo opcional"_s : QString());
  caja_->setEnabled(campo.editable);
  caja_->setPalette(QPalette());
  if (campo.relleno == "I"_L1) caja_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  if (campo.relleno == "D"_L1 || campo.relleno == "C"_L1)
    caja_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  ajustarAncho();
  auto* descrita = comunes::Describir(caja_, descriptorCaja(campo));
  connect(descrita, &comunes::CajaDescrita::haEntrado, this, &FilaCampo::alEntrar, Qt::UniqueConnection);
  connect(descrita, &comunes::CajaDescrita::haSalido, this, &FilaCampo::alSalir, Qt::UniqueConnection);
  connect(descrita, &comunes::CajaDescrita::rechazada, this, &FilaCampo::decir, Qt::UniqueConnection);

  pide_ = campo.editable && campo.ayuda != Ayuda::Ninguna;
  ayuda_->setToolTip(pide_ ? u"Escribir el valor (F4)"_s : QString());
  // En un campo que no se cambia la ayuda solo enseña el valor.
  ayuda_->setEnabled(pide_);
  PonerColores();
  for (QWidget* control :
       {static_cast<QWidget*>(rotulo_), static_cast<QWidget*>(caja_), static_cast<QWidget*>(opcional_)})
    control->setVisible(true);
  ayuda_->setVisible(campo.ayuda != Ayuda::Ninguna);
}

comunes::Pictograma FilaCampo::nivelVisto() const {
  return conHallazgos_ && conError_ ? comunes::Pictograma::Error : comunes::Pictograma::Aviso;
}

void FilaCampo::PonerColores() {
  const QPalette general = rotulo_->palette();
  ayuda_->setIcon(pide_ ? IconoAyuda(general.color(QPalette::WindowText)) : QIcon());
  QPalette aviso = general;
  const auto nivel = nivelVisto();
  aviso.setColor(QPalette::WindowText, comunes::ColorDeIcono(nivel, general));
  observacion_->setPalette(aviso);
  if (conHallazgos_) {
    const int lado = senal_->fontMetrics().height();
    senal_->setPixmap(comunes::Icono(nivel).pixmap({lado, lado}, senal_->devicePixelRatioF()));
  }
  // Un campo que no se cambia se lee igual de bien; lo distingue el fondo.
  QPalette fija = general;
  for (const auto papel : {QPalette::Text, QPalette::ButtonText})
    fija.setColor(QPalette::Disabled, papel, general.color(QPalette::Active, QPalette::WindowText));
  if (!caja_->isEnabled()) caja_->setPalette(fija);
  ayuda_->setPalette(fija);
}

void FilaCampo::ajustarAncho() {
  const auto ancho = [this](int caracteres) {
    QStyleOptionFrame opcion;
    opcion.initFrom(caja_);
    constexpr int kHolgura = 10;
    const QSize texto(caja_->fontMetrics().horizontalAdvance(QString(caracteres, u'M')) + kHolgura, 1);
    return caja_->style()->sizeFromContents(QStyle::CT_LineEdit, &opcion, texto, caja_).width();
  };
  const int caracteres = std::clamp(campo_.longitud, 2, kCaracteresMaximos);
  caja_->setMinimumWidth(ancho(std::min(caracteres, kCaracteresMinimos)));
  caja_->setMaximumWidth(ancho(caracteres));
}

void FilaCampo::Poner(const QString& valor) {
  original_ = valor;
  rechazo_.clear();
  hallazgos_.clear();
  comunes::PonerTexto(caja_, valor);
  caja_->setCursorPosition(0);
  refrescar();
}

void FilaCampo::Ocultar() {
  ocultada_ = true;
  opcional_->clear();
  for (QWidget* control :
       {static_cast<QWidget*>(rotulo_), static_cast<QWidget*>(caja_), static_cast<QWidget*>(opcional_),
        static_cast<QWidget*>(ayuda_), static_cast<QWidget*>(senal_), static_cast<QWidget*>(observacion_),
        static_cast<QWidget*>(quitar_)})
    control->setVisible(false);
}

QString FilaCampo::Texto() const {
  return caja_->text();
}

bool FilaCampo::Usable() const {
  return !ocultada_ && campo_.editable;
}

bool FilaCampo::Correcto() const {
  return DatoCorrecto(campo_.ayuda, Texto());
}

QWidget* FilaCampo::Quitar() const {
  return quitar_;
}

bool FilaCampo::Cambiado() const {
  return BytesCampo(campo_, Texto(), original_) != BytesCampo(campo_, original_, original_);
}

void FilaCampo::Escribir(const QString& texto) {
  comunes::PonerTexto(caja_, texto);
  refrescar();
}

void FilaCampo::quitarAcentos() {
  if (quitar_->hasFocus()) caja_->setFocus(Qt::OtherFocusReason);
  Escribir(FormaLegible(campo_, Texto()));
}

void FilaCampo::Restaurar() {
  const QString dato = Texto().trimmed();
  Poner(original_);
  rechazo_ = dato.isEmpty() ? u"Se rechazó dejarlo en blanco."_s
                            : u"Se rechazó «%1»: %2."_s.arg(dato, PorQueNoVale(campo_.ayuda, dato));
  refrescar();
  // Si el foco ha vuelto ya, tras el mensaje, lo primero que se teclee lo sustituye.
  const auto* descrita = comunes::CajaDescrita::De(caja_);
  if (!descrita || !descrita->dentro()) return;
  comunes::PonerTexto(caja_, comunes::FormaEdicion(caja_));
  caja_->selectAll();
}

void FilaCampo::Pedir() {
  if (ocultada_ || !pide_) return;
  const QString respuesta =
      comunes::MyInputBox(campo_.rotulo, {}, 4, DescriptorPeticion(campo_.ayuda, campo_.longitud),
                          ValorPeticion(campo_, Texto()), -1, -1, nullptr, {}, GuiaDe(campo_));
  const auto valor = ConvertirRespuesta(campo_.ayuda, campo_.longitud, respuesta);
  if (!valor) return;
  comunes::PonerTexto(caja_, *valor);
  if (caja_->hasFocus()) return comunes::PressTab();
  // La ventana aún no ha recuperado la activación tras la caja: un Tab encolado llegaría a quien tenga el
  // foco entonces, así que se mueve ya al control siguiente.
  caja_->window()->activateWindow();
  QWidget* siguiente = caja_;
  do
    siguiente = siguiente->nextInFocusChain();
  while (siguiente != caja_ &&
         !((siguiente->focusPolicy() & Qt::TabFocus) && siguiente->isVisible() && siguiente->isEnabled()));
  siguiente->setFocus(Qt::TabFocusReason);
}

void FilaCampo::PonerHallazgos(const std::vector<HallazgoCampo>& hallazgos) {
  QStringList textos;
  for (const HallazgoCampo& hallazgo : hallazgos)
    textos += hallazgo.texto;
  conError_ = std::ranges::any_of(hallazgos, &HallazgoCampo::error);
  hallazgos_ = textos.join(u'\n');
  if (!dicho_) refrescar();
}

void FilaCampo::alEntrar() {
  emit haEntrado(this);
}

void FilaCampo::alSalir() {
  refrescar();
  emit haSalido(this);
}

void FilaCampo::decir(const QString& motivo) {
  dicho_ = true;
  observacion_->setText(motivo);
  observacion_->setVisible(!ocultada_);
  accesible();
}

void FilaCampo::refrescar() {
  const QString texto = Texto();
  ayuda_->setText(comunes::SinMnemonico(Interpretar(campo_.ayuda, texto)));
  QStringList avisos;
  if (!rechazo_.isEmpty() && !Cambiado()) avisos << rechazo_;
  if (const QString observacion = Observacion(campo_, texto, original_); !observacion.isEmpty())
    avisos << observacion;
  const bool antes = std::exchange(conHallazgos_, !ocultada_ && !hallazgos_.isEmpty() && !Cambiado());
  QString todo = avisos.join(u' ');
  if (conHallazgos_) todo = todo.isEmpty() ? hallazgos_ : hallazgos_ + u'\n' + todo;
  observacion_->setText(todo);
  observacion_->setVisible(!ocultada_ && !todo.isEmpty());
  senal_->setVisible(conHallazgos_);
  if (conHallazgos_ || antes) PonerColores();
  quitar_->setVisible(Usable() &&
                      FormaLegible(campo_, texto) != texto.normalized(QString::NormalizationForm_C));
  accesible();
}

void FilaCampo::accesible() {
  caja_->setAccessibleName(campo_.rotulo);
  QStringList partes{campo_.explicacion, observacion_->text()};
  partes.removeAll(QString());
  caja_->setAccessibleDescription(partes.join(u' '));
  ayuda_->setAccessibleName(campo_.rotulo + u": "_s + ayuda_->text());
}

}  // namespace editor

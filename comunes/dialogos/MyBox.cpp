#include "comunes/dialogos/MyBox.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QWindow>
#include <algorithm>

#include "comunes/campos/CajaDescrita.h"
#include "comunes/campos/Tecleo.h"
#include "comunes/dialogos/ColocarCaja.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/ModeloRejilla.h"
#include "comunes/rejilla/Rejilla.h"
#include "ui_MyBox.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

struct RespuestaCaja {
  const char16_t* texto;
  ResultadoCaja codigo;
};

constexpr RespuestaCaja kRespuestas[] = {
    {u"Aceptar", kAceptar}, {u"Cancelar", kCancelar},
    {u"Abortar", kAbortar}, {u"Reintentar", kReintentar},
    {u"Ignorar", kIgnorar}, {u"Si", kSi},
    {u"No", kNo},
};

/// Los textos de cada juego, de la ranura 2 a la 0; vacío, oculta.
const QString kJuegos[][3] = {
    {{}, {}, u"&Aceptar"_s},
    {{}, u"&Aceptar"_s, u"&Cancelar"_s},
    {{}, u"&Si"_s, u"&No"_s},
    {u"&Si"_s, u"&No"_s, u"&Cancelar"_s},
    {u"A&bortar"_s, u"&Reintentar"_s, u"&Ignorar"_s},
    {{}, u"&Reintentar"_s, u"&Cancelar"_s},
};

constexpr int kMargenVentana = 40;  // barra de título y bordes, que no se conocen hasta enseñar la caja
constexpr int kAnchoMensaje = 460;  // píxeles: unas 70 letras por línea

bool pulsando = false;

/// El texto de un botón sin la marca de su tecla.
QString Rotulo(const QPushButton* boton) {
  return boton->text().remove(u'&');
}

}  // namespace

MyBox::MyBox(QWidget* padre)
    : QDialog(padre, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowCloseButtonHint),
      ui_(std::make_unique<Ui::MyBox>()) {
  ui_->setupUi(this);
  botones_ = {ui_->Boton0, ui_->Boton1, ui_->Boton2};
  for (QPushButton* boton : botones_) {
    boton->setAccessibleName(Rotulo(boton));
    connect(boton, &QPushButton::clicked, this, [this, boton] { Pulsar(boton); });
  }
  const std::initializer_list<QWidget*> campos = {
      ui_->Ayuda,   ui_->CampoTexto, ui_->CampoHasta, ui_->etiDesde, ui_->etiHasta, ui_->cbxTabla,
      ui_->RGBText, ui_->VisorMini,  ui_->Resultado,  ui_->Ejemplo,  ui_->Motivo};
  for (QWidget* campo : campos) {
    campo->hide();
  }
  connect(ui_->RGBText, &QToolButton::clicked, this, &MyBox::CambiarColor, Qt::QueuedConnection);
  FuentesVentana(*this);
}

MyBox::~MyBox() = default;

void MyBox::PonerTitulo(const QString& titulo, int icono) {
  setWindowTitle(titulo);
  setAccessibleName(titulo);
  ui_->Imagen->PonerIcono(icono);
  ui_->Imagen->setVisible(icono > 0);
}

void MyBox::PonerMensaje(const QString& texto) {
  const QString mensaje = TextoCaja(texto);
  ui_->Mensaje->setText(mensaje);
  ui_->Mensaje->setAccessibleName(mensaje);
  if (accessibleName().isEmpty()) setAccessibleName(mensaje.simplified());
  setAccessibleDescription(mensaje);
}

std::vector<QPushButton*> MyBox::BotonesVisibles() const {
  std::vector<QPushButton*> visibles;
  std::copy_if(botones_.rbegin(), botones_.rend(), std::back_inserter(visibles),
               [](const QPushButton* b) { return !b->isHidden(); });
  return visibles;
}

void MyBox::PonerBotones(int juego, int defecto) {
  ranuraCancelar_ = -1;
  if (juego >= 1 && juego <= static_cast<int>(std::size(kJuegos))) {
    for (int ranura = 0; ranura < 3; ++ranura) {
      const QString& texto = kJuegos[juego - 1][2 - ranura];
      // También el de las ocultas: las ayudas técnicas buscan los botones por su rótulo.
      Boton(ranura)->setText(texto);
      Boton(ranura)->setVisible(!texto.isEmpty());
      Boton(ranura)->setAccessibleName(Rotulo(Boton(ranura)));
      if (Rotulo(Boton(ranura)) == u"Cancelar") ranuraCancelar_ = ranura;
    }
  }
  // `defecto` cuenta desde el primero; lo que no es ningún otro es el último.
  const auto visibles = BotonesVisibles();
  const auto ultimo = visibles.size() - 1;
  const auto elegido =
      defecto >= 1 ? std::min<std::size_t>(static_cast<std::size_t>(defecto) - 1, ultimo) : ultimo;
  visibles[elegido]->setDefault(true);
  OrdenarFoco({visibles[elegido]});
}

/// Los controles que van delante en el orden del tabulador; los demás conservan el suyo. El primero toma el
/// foco.
void MyBox::OrdenarFoco(const std::vector<QWidget*>& primeros) {
  std::vector<QWidget*> orden = primeros;
  for (QPushButton* boton : BotonesVisibles()) {
    if (boton->isDefault()) orden.push_back(boton);
  }
  for (QPushButton* boton : BotonesVisibles()) {
    orden.push_back(boton);
  }
  orden.push_back(ui_->Ayuda);
  std::vector<QWidget*> puestos;
  for (QWidget* control : orden) {
    if (std::find(puestos.begin(), puestos.end(), control) != puestos.end()) continue;
    if (!puestos.empty()) setTabOrder(puestos.back(), control);
    puestos.push_back(control);
  }
  primeros.front()->setFocus();
}

QScreen* MyBox::Pantalla(const QWidget* sobre) const {
  if (sobre != nullptr) return sobre->screen();
  if (parentWidget() != nullptr) return parentWidget()->screen();
  return QGuiApplication::primaryScreen();
}

void MyBox::AjustarMensaje(int anchoLibre, int altoLibre) {
  const int maximo = std::min(kAnchoMensaje, anchoLibre);
  QLabel* mensaje = ui_->Mensaje;
  // El texto accesible es el que se dio; en el que se ve se pueden partir las palabras enormes.
  mensaje->setText(PartirPalabras(mensaje->accessibleName(), mensaje->fontMetrics(), maximo));
  const QRect medida = mensaje->fontMetrics().boundingRect(
      QRect(0, 0, maximo, 0), Qt::AlignLeft | Qt::TextWordWrap | Qt::TextExpandTabs, mensaje->text());
  const int ancho = std::min(medida.width() + 4, maximo);
  const int alto = std::max({mensaje->heightForWidth(ancho), medida.height(), ui_->Imagen->height()});
  const bool desplaza = alto > altoLibre;
  const int barra = desplaza ? ui_->MarcoMensaje->verticalScrollBar()->sizeHint().width() + 4 : 0;
  ui_->MarcoMensaje->setFixedSize(ancho + barra, desplaza ? altoLibre : alto);
}

void MyBox::Colocar(float Top, float Left, QWidget* Sobre) {
  const QScreen* pantalla = Pantalla(Sobre);
  const QRect libre = pantalla->availableGeometry();
  if (!ui_->MarcoMensaje->isHidden()) {
    ui_->MarcoMensaje->setFixedSize(0, 0);
    layout()->activate();
    const QSize resto = layout()->totalMinimumSize();
    AjustarMensaje(libre.width() - ui_->Imagen->width() - 80,
                   libre.height() - kMargenVentana - std::max(0, resto.height() - ui_->Imagen->height()));
  }
  layout()->activate();
  const QSize tamano = layout()->totalSizeHint().boundedTo(libre.size() - QSize(0, kMargenVentana));
  if (ui_->VisorMini->isHidden()) {
    setFixedSize(tamano);
  } else {
    ui_->VisorMini->setMinimumSize(200, 80);
    layout()->activate();  // hasta entonces la ventana no baja del mínimo anterior
    resize(tamano);
  }
  QRect sobre;
  if (Sobre != nullptr) {
    sobre =
        Sobre->isWindow() ? Sobre->frameGeometry() : QRect(Sobre->mapToGlobal(QPoint(0, 0)), Sobre->size());
  }
  move(EsquinaCaja(tamano, Top, Left, sobre, pantalla->geometry(), libre.adjusted(0, 0, 0, -kMargenVentana)));
}

void MyBox::Pulsar(QPushButton* boton) {
  if (pulsando || resultado_ != 0) return;
  pulsando = true;
  boton->setDown(false);
  pulsando = false;
  const QString rotulo = Rotulo(boton);
  const auto* respuesta = std::find_if(std::begin(kRespuestas), std::end(kRespuestas),
                                       [&](const RespuestaCaja& r) { return rotulo == r.texto; });
  const int codigo = respuesta != std::end(kRespuestas) ? respuesta->codigo : 0;
  if (codigo == kAceptar) DejarCampo(this);
  if (codigo == kAceptar && Objetado()) {
    // Lo que aún se ve se vuelve a pedir tal como se escribió; una fecha que no existe ya no se ve.
    ui_->CampoTexto->setFocus();
    EntrarCampo(this);
    if (!ui_->CampoTexto->text().isEmpty()) PonerTexto(ui_->CampoTexto, escrito_);
    ui_->CampoTexto->selectAll();
    Objetado();
    return;
  }
  segundoTexto_.clear();
  if (!ui_->CampoHasta->isHidden()) {
    if (codigo == kAceptar && !DesdeHastaOk()) return EntrarCampo(this);
    segundoTexto_ = ui_->CampoHasta->text();
  }
  // Un intervalo rechazado no deja rastro; en la rejilla, sin campo, queda el texto de su fila.
  if (!ui_->CampoTexto->text().isEmpty()) texto_ = ui_->CampoTexto->text();
  if (!ui_->cbxTabla->isHidden()) texto_ = ui_->cbxTabla->currentText();
  resultado_ = codigo;
  ui_->Ayuda->hide();
  done(resultado_);
}

/// Cerrar la caja cancela o niega, o acepta si no hay otra salida; nunca responde que se siga adelante.
QPushButton* MyBox::BotonDeCierre() const {
  const auto visibles = BotonesVisibles();
  for (const char16_t* rotulo : {u"Cancelar", u"No"}) {
    for (QPushButton* boton : visibles) {
      if (Rotulo(boton) == rotulo) return boton;
    }
  }
  return visibles.size() == 1 ? visibles.front() : nullptr;
}

void MyBox::reject() {
  QPushButton* boton = BotonDeCierre();
  if (!boton) return;
  if (rejilla_) texto_.clear();  // cerrar no elige
  boton->click();
}

bool MyBox::eventFilter(QObject* objeto, QEvent* suceso) {
  if (suceso->type() == QEvent::KeyPress) {
    auto* tecla = static_cast<QKeyEvent*>(suceso);
    if (objeto == ui_->CampoTexto) return FiltrarEscape(tecla);
    if (objeto == ui_->VisorMini && (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter)) {
      AceptarFila(ui_->VisorMini->currentIndex());
      return true;
    }
  }
  return QDialog::eventFilter(objeto, suceso);
}

void MyBox::closeEvent(QCloseEvent* suceso) {
  reject();
  suceso->setAccepted(!isVisible());
}

void MyBox::showEvent(QShowEvent* suceso) {
  // Con el título vacío algunas plataformas enseñarían el nombre del programa.
  if (windowTitle().isEmpty() && windowHandle() != nullptr) windowHandle()->setTitle(u" "_s);
  QAccessibleEvent aviso(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&aviso);
  QDialog::showEvent(suceso);
}

void MyBox::keyPressEvent(QKeyEvent* suceso) {
  QScrollBar* barra = ui_->MarcoMensaje->verticalScrollBar();
  if (suceso->key() == Qt::Key_PageDown) {
    barra->triggerAction(QAbstractSlider::SliderPageStepAdd);
  } else if (suceso->key() == Qt::Key_PageUp) {
    barra->triggerAction(QAbstractSlider::SliderPageStepSub);
  } else {
    QDialog::keyPressEvent(suceso);
  }
}

void MyBox::mousePressEvent(QMouseEvent* suceso) {
  agarrada_ = suceso->button() == Qt::LeftButton;
  agarre_ = suceso->globalPosition().toPoint() - pos();
}

void MyBox::mouseMoveEvent(QMouseEvent* suceso) {
  if (!agarrada_ || !(suceso->buttons() & Qt::LeftButton)) return;
  const QPoint destino = suceso->globalPosition().toPoint() - agarre_;
  if ((destino - pos()).manhattanLength() < QApplication::startDragDistance()) return;
  // El sistema la mueve hasta que se suelte: pedírselo otra vez la dejaría pegada al ratón.
  agarrada_ = windowHandle() == nullptr || !windowHandle()->startSystemMove();
  if (agarrada_) move(destino);
}

}  // namespace comunes

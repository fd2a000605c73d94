#include "comunes/herramientas/MiCalc.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QScrollBar>

#include "comunes/dialogos/MyBox.h"
#include "comunes/herramientas/CintaCalc.h"
#include "comunes/impresion/ImprimirListado.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/Rejilla.h"
#include "ui_MiCalc.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

using Fallo = Sumadora::Fallo;
using Orden = Sumadora::Orden;

QString TextoFallo(Fallo fallo, const Sumadora& maquina) {
  switch (fallo) {
    case Fallo::Ninguno:
      break;
    case Fallo::Desbordamiento:
      return u"Desbordamiento: no caben más de %1 cifras"_s.arg(kMaxEnteras);
    case Fallo::DivisionPorCero:
      return u"No se puede dividir por cero"_s;
    case Fallo::FaltaNumero:
      return u"Falta el segundo número"_s;
    case Fallo::NumeroSuelto:
      return maquina.pendiente() == Orden::Igual ? u"Falta + o − tras el número"_s
                                                 : u"Falta = tras el número"_s;
    case Fallo::SinBase:
      return u"No hay suma de la que sacar el porcentaje"_s;
    case Fallo::NoCabe:
      return u"No caben más cifras"_s;
  }
  return {};
}

/// La tecla de la máquina que corresponde a la del teclado; 0, ninguna.
char TeclaDe(const QKeyEvent& suceso) {
  const bool control = (suceso.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
  switch (suceso.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return control ? 'T' : 'I';
    case Qt::Key_Escape:
    case Qt::Key_Delete:
      return 'C';
    case Qt::Key_Backspace:
      return '<';
    case Qt::Key_F9:
      return 'n';
    default:
      break;
  }
  if ((suceso.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier)) != 0 || suceso.text().size() != 1)
    return 0;
  const char tecla = suceso.text().toUpper().front().toLatin1();
  if (tecla == ',') return '.';
  if (tecla == 'X') return '*';
  if (tecla == ':') return '/';
  return tecla != 0 && std::string_view("0123456789.+-*/=%STC").find(tecla) != std::string_view::npos ? tecla
                                                                                                      : 0;
}

}  // namespace

MiCalc::MiCalc(QWidget* padre) : QWidget(padre, Qt::Window), ui_(std::make_unique<Ui::MiCalc>()) {
  ui_->setupUi(this);
  setProperty("Ayuda", u"la-calculadora"_s);
  comunes::FuentesVentana(*this);
  ui_->Visor->setBackgroundRole(QPalette::Base);
  ui_->Visor->setForegroundRole(QPalette::Text);
  ui_->Visor->setAutoFillBackground(true);
  ui_->teclaDecimal->setText(comunes::SignoDecimal());
  for (int decimales = 2; decimales <= kMaxDecimales; ++decimales)
    ui_->Decimales->addItem(QString::number(decimales));
  // En una pantalla estrecha o muy ampliada no caben el visor y la cinta con su letra.
  if (constexpr int kAnchoHolgado = 720; screen()->availableGeometry().width() < kAnchoHolgado) {
    QFont letra = ui_->Visor->font();
    letra.setPointSize(15);
    ui_->Visor->setFont(letra);
  }
  // Los dos anchos son los del número más largo.
  const QString maximo = TextoNumero(-999'999'999'999'999'999, kMaxDecimales);
  ui_->Visor->setMinimumWidth(ui_->Visor->fontMetrics().horizontalAdvance(maximo) + 2 * ui_->Visor->margin() +
                              2 * ui_->Visor->frameWidth() + 4);
  ui_->Cinta->setMinimumWidth(ui_->Cinta->fontMetrics().horizontalAdvance(QString(maximo.size() + 4, u'0')) +
                              2 * ui_->Cinta->frameWidth() + margenCinta() +
                              ui_->Cinta->verticalScrollBar()->sizeHint().width());
  conectar();
  mostrar();
  ui_->Visor->setFocus();
  comunes::DisponerVentana(*this);
}

MiCalc::~MiCalc() = default;

void MiCalc::conectar() {
  const auto botones = findChildren<QPushButton*>();
  for (QPushButton* boton : botones) {
    const QByteArray teclas = boton->property("Tecla").toString().toLatin1();
    if (teclas.isEmpty()) continue;
    connect(boton, &QPushButton::clicked, this, [this, teclas] {
      for (const char tecla : teclas)
        pulsar(tecla);
    });
  }
  connect(ui_->Decimales, &QComboBox::activated, this, [this](int indice) {
    const Fallo fallo = maquina_.ponerDecimales(indice + 2);
    ultima_ = 0;
    mostrar(fallo);
    ui_->Visor->setFocus();
  });
  connect(ui_->cmdCopiar, &QPushButton::clicked, this, &MiCalc::copiar);
  connect(ui_->cmdCopiarCinta, &QPushButton::clicked, this, [this] {
    QGuiApplication::clipboard()->setText(CopiaCinta(maquina_.cinta()));
    decir(u"Cinta copiada"_s);
  });
  connect(ui_->cmdImprimir, &QPushButton::clicked, this, &MiCalc::imprimir);
  connect(ui_->cmdCintaNueva, &QPushButton::clicked, this, &MiCalc::cintaNueva);
  connect(ui_->AbrirListado, &QPushButton::clicked, this, [this] {
    const QString fallo = comunes::AbrirDocumento(documento_);
    if (!fallo.isEmpty()) decir(fallo);
  });
}

void MiCalc::keyPressEvent(QKeyEvent* suceso) {
  if (suceso->matches(QKeySequence::Copy)) return copiar();
  if (suceso->matches(QKeySequence::Paste)) return pegar();
  const char tecla = TeclaDe(*suceso);
  if (tecla == 0) return QWidget::keyPressEvent(suceso);
  pulsar(tecla);
}

void MiCalc::changeEvent(QEvent* suceso) {
  QWidget::changeEvent(suceso);
  if (suceso->type() != QEvent::PaletteChange || enCinta_ == 0) return;
  enCinta_ = 0;
  mostrarCinta();
}

void MiCalc::pulsar(char tecla) {
  const bool doble = tecla == ultima_ && (tecla == '/' || tecla == '*');
  if (doble) {
    maquina_ = antes_;
    enCinta_ = 0;  // la cinta vuelve atrás
    tecla = tecla == '/' ? '%' : 'C';
    ultima_ = 0;
  } else {
    antes_ = maquina_;
    ultima_ = tecla;
  }
  const Fallo fallo = ejecutar(tecla);
  if (fallo != Fallo::Ninguno) {
    QApplication::beep();
    ultima_ = 0;
  }
  mostrar(fallo);
}

Fallo MiCalc::ejecutar(char tecla) {
  switch (tecla) {
    case '+':
      return maquina_.orden(Orden::Mas);
    case '-':
      return maquina_.orden(Orden::Menos);
    case '*':
      return maquina_.orden(Orden::Por);
    case '/':
      return maquina_.orden(Orden::Entre);
    case '=':
      return maquina_.orden(Orden::Igual);
    case '%':
      return maquina_.orden(Orden::Porcentaje);
    case 'S':
      return maquina_.orden(Orden::Subtotal);
    case 'T':
      return maquina_.orden(Orden::Total);
    case 'n':
      return maquina_.orden(Orden::Signo);
    case 'C':
      return maquina_.orden(Orden::Borrar);
    case 'I':
      return maquina_.intro();
    case '<':
      maquina_.retroceder();
      return Fallo::Ninguno;
    default:
      return maquina_.teclear(tecla);
  }
}

void MiCalc::mostrar(Fallo fallo) {
  const int decimales = maquina_.decimales();
  ui_->Visor->setText(maquina_.tecleado().empty() ? TextoNumero(maquina_.valor(), decimales)
                                                  : TextoTecleado(maquina_.tecleado()));
  const bool espera = maquina_.pendiente() != Orden::Igual;
  ui_->Pendiente->setText(espera ? TextoNumero(maquina_.primero(), decimales) + u" "_s +
                                       QChar(maquina_.pendiente() == Orden::Por ? u'×' : u'÷')
                                 : QString());
  const int partidas = maquina_.partidas();
  ui_->Suma->setText(u"Suma %1 (%2)"_s.arg(TextoNumero(maquina_.suma(), decimales),
                                           partidas == 1 ? u"1 partida"_s : u"%1 partidas"_s.arg(partidas)));
  ui_->Decimales->setCurrentIndex(decimales - 2);
  decir(TextoFallo(fallo, maquina_));
  mostrarCinta();
}

void MiCalc::decir(const QString& texto, const QString& documento) {
  ui_->Aviso->setText(texto);
  ui_->Aviso->setToolTip(comunes::TextoLiteral(texto));
  documento_ = documento;
  ui_->AbrirListado->setVisible(!documento.isEmpty());
}

void MiCalc::mostrarCinta() {
  const auto& cinta = maquina_.cinta();
  if (cinta.size() < enCinta_) enCinta_ = 0;
  if (enCinta_ == 0) ui_->Cinta->clear();
  for (; enCinta_ < cinta.size(); ++enCinta_)
    escribirLinea(cinta[enCinta_]);
  ui_->Cinta->verticalScrollBar()->setValue(ui_->Cinta->verticalScrollBar()->maximum());
  const bool hay = !cinta.empty();
  for (QPushButton* boton : {ui_->cmdImprimir, ui_->cmdCopiarCinta, ui_->cmdCintaNueva})
    boton->setEnabled(hay);
}

int MiCalc::margenCinta() const {
  return qRound(2 * ui_->Cinta->document()->documentMargin());
}

void MiCalc::escribirLinea(const Sumadora::Linea& linea) {
  const bool rojo = (linea.valor < 0) != (linea.signo == u'−');
  const bool oscuro = palette().color(QPalette::Base).lightness() < 128;
  QTextCharFormat formato;
  formato.setForeground(rojo ? QColor(oscuro ? 0xFF9090 : 0xB00000) : palette().color(QPalette::Text));
  if (linea.signo == Sumadora::kTotal) formato.setFontWeight(QFont::Bold);
  // Una caja de texto sin formato no sabe alinear a la derecha.
  const int libre = ui_->Cinta->viewport()->width() - margenCinta();
  const int columnas = libre / std::max(ui_->Cinta->fontMetrics().horizontalAdvance(u'0'), 1);
  QString texto = TextoNumero(linea.valor, linea.decimales).rightJustified(columnas - 3) + u' ' +
                  QChar(linea.signo) + u'\n';
  if (CierraCuenta(linea)) texto += u'\n';
  QTextCursor cursor(ui_->Cinta->document());
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(texto, formato);
}

void MiCalc::copiar() {
  if (ui_->Cinta->hasFocus() && ui_->Cinta->textCursor().hasSelection()) return ui_->Cinta->copy();
  const QString texto = TextoCopia(maquina_.valor(), maquina_.decimales());
  QGuiApplication::clipboard()->setText(texto);
  decir(u"Copiado %1"_s.arg(texto));
}

void MiCalc::pegar() {
  const auto valor = LeerCopia(QGuiApplication::clipboard()->text());
  if (!valor) return decir(u"Lo copiado no es un número"_s);
  ultima_ = 0;
  mostrar(maquina_.poner(*valor));
}

void MiCalc::imprimir() {
  comunes::Rejilla visor(u"VisorCinta"_s);
  RejillaCinta(visor, maquina_.cinta());
  const QString titulo = u"Cinta de la calculadora"_s;
  comunes::ListadoImprimible listado;
  listado.padre = this;
  for (int columna = 0; columna < visor.Cols(); ++columna)
    listado.anchoTabla += visor.ColWidth(columna);
  listado.rotulos = [&] { return comunes::RotulosListado{titulo, titulo, u"Cinta"_s}; };
  listado.imprimir = [&](comunes::TrabajoImpresion& trabajo, const comunes::AvanceImpresion& avance) {
    return comunes::ImprimirRejilla(trabajo, visor, titulo, false, {}, true, -1, -1, false, true, {}, avance);
  };
  const comunes::FinListado fin = comunes::ImprimirListado(listado);
  decir(fin.mensaje, fin.documento);
}

void MiCalc::cintaNueva() {
  if (!comunes::Confirmar(u" ¿ Confirma que desea empezar una cinta nueva ?;;La suma vuelve a cero. "_s, 2,
                          this))
    return;
  maquina_.cintaNueva();
  ultima_ = 0;
  mostrar();
  ui_->Visor->setFocus();
}

}  // namespace herramientas

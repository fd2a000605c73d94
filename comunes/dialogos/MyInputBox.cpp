#include <QAccessible>
#include <QFileInfo>
#include <QKeyEvent>
#include <QProxyStyle>
#include <QPushButton>

#include "comunes/campos/CajaDescrita.h"
#include "comunes/campos/Etiquetas.h"
#include "comunes/campos/Formato.h"
#include "comunes/campos/Tecleo.h"
#include "comunes/dialogos/CajaPropia.h"
#include "comunes/dialogos/ListaCaja.h"
#include "comunes/dialogos/MiniHelp.h"
#include "comunes/dialogos/SelectorColor.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_MyBox.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr int kAnchoCampo = 260;  // píxeles
constexpr int kAnchoExtremo = 130;
constexpr QChar kUneIntervalo(0x0192);  // "ƒ"
const QString kIntervalo = u"(/)"_s;
const QString kLista = u"TABLA"_s;
const QString kSecreto = u"(PWD)"_s;
const QString kColor = u"(RGB)"_s;

/// Lo secreto se enseña con asteriscos y no con el signo de cada escritorio.
class EstiloAsteriscos : public QProxyStyle {
 public:
  int styleHint(StyleHint cual, const QStyleOption* opcion, const QWidget* control,
                QStyleHintReturn* mas) const override {
    return cual == SH_LineEdit_PasswordCharacter ? '*' : QProxyStyle::styleHint(cual, opcion, control, mas);
  }
};

std::optional<QDate> Fecha(const QString& texto) {
  const QString edicion = UnformatValue(texto, u"T(F) A(D) L(10)"_s);
  const auto fecha = LeerFecha(edicion);
  return fecha ? fecha : CompletarFecha(edicion.trimmed());
}

}  // namespace

bool ValidandoCampo = false;

void MyBox::DescribirCampo(QLineEdit* campo, const QString& tipo, const QString& texto) {
  CajaDescrita* caja = Describir(campo, tipo);
  connect(caja, &CajaDescrita::vaASalir, this, [] { ValidandoCampo = true; });
  connect(caja, &CajaDescrita::haSalido, this, [] { ValidandoCampo = false; });
  PonerTexto(campo, texto);
  campo->installEventFilter(this);
  campo->show();
}

void MyBox::PonerValor(const QString& tipo, const QString& defecto) {
  DescribirCampo(ui_->CampoTexto, tipo, defecto);
  ui_->CampoTexto->setAccessibleName(ui_->Mensaje->accessibleName());
  ui_->CampoTexto->setMinimumWidth(kAnchoCampo);
  OrdenarFoco({ui_->CampoTexto, ui_->RGBText});
  if (tipo.contains(kColor)) MostrarColor(ColorDeNumero(static_cast<int>(Val(defecto))));
}

void MyBox::PonerIntervalo(const QString& tipo, const QString& defecto) {
  QString desde;
  QString hasta;
  if (const auto corte = defecto.indexOf(kUneIntervalo); corte >= 0) {
    desde = defecto.first(corte);
    hasta = defecto.sliced(corte + 1);
  }
  DescribirCampo(ui_->CampoTexto, tipo, desde.isNull() ? desde : FormatValue(desde, tipo));
  DescribirCampo(ui_->CampoHasta, tipo, hasta.isNull() ? hasta : FormatValue(hasta, tipo));
  ui_->CampoTexto->setMinimumWidth(kAnchoExtremo);
  ui_->CampoHasta->setMinimumWidth(kAnchoExtremo);
  ui_->etiDesde->show();
  ui_->etiHasta->show();
  OrdenarFoco({ui_->CampoTexto, ui_->CampoHasta});
}

void MyBox::PonerLista(const QString& defecto) {
  ui_->cbxTabla->setAccessibleName(ui_->Mensaje->accessibleName());
  ui_->cbxTabla->setMinimumWidth(kAnchoCampo);
  ui_->cbxTabla->addItems(ElementosLista(defecto));
  ui_->cbxTabla->setCurrentIndex(ui_->cbxTabla->count() > 0 ? 0 : -1);
  ui_->cbxTabla->show();
}

void MyBox::PonerSecreto() {
  auto* estilo = new EstiloAsteriscos;
  estilo->setParent(this);
  ui_->CampoTexto->setStyle(estilo);
  ui_->CampoTexto->setEchoMode(QLineEdit::Password);
}

void MyBox::PonerTema(const QString& tema) {
  ui_->Ayuda->setVisible(!tema.isEmpty() && QFileInfo::exists(tema));
  // Fuera de la pulsación: una ayuda técnica que pulsa espera a que acabe, y la ventana es modal.
  connect(
      ui_->Ayuda, &QToolButton::clicked, this,
      [this, tema] {
        MiniHelp ayuda(this);
        ayuda.Cargar(tema);
        ayuda.exec();
      },
      Qt::QueuedConnection);
}

void MyBox::MostrarColor(const QColor& color) {
  color_ = color;
  QPixmap muestra(ui_->RGBText->iconSize() * devicePixelRatioF());
  muestra.setDevicePixelRatio(devicePixelRatioF());
  muestra.fill(color);
  ui_->RGBText->setIcon(muestra);
  ui_->RGBText->show();
}

void MyBox::CambiarColor() {
  QColor elegido;
  try {
    elegido = ElegirColor(color_, this);
  } catch (const std::exception&) {
    return;
  }
  if (!elegido.isValid()) return;
  MostrarColor(elegido);
  PonerTexto(ui_->CampoTexto, QString::number(NumeroDeColor(elegido)));
}

bool MyBox::DesdeHastaOk() const {
  const QString desde = ui_->CampoTexto->text();
  const QString hasta = ui_->CampoHasta->text();
  if (desde.trimmed().isEmpty() || hasta.trimmed().isEmpty()) return true;
  const QString letra = GetTag(Descriptor(ui_->CampoTexto), u"T"_s).value_or(QString());
  if (letra == u"F") {
    const auto primera = Fecha(desde);
    const auto segunda = Fecha(hasta);
    return primera && segunda && *segunda >= *primera;
  }
  if (letra == u"D") return Val(hasta) >= Val(desde);
  if (letra == u"N" || letra == u"n") {
    return Val(UnformatValue(hasta, Descriptor(ui_->CampoHasta))) >=
           Val(UnformatValue(desde, Descriptor(ui_->CampoTexto)));
  }
  return desde <= hasta;
}

void MyBox::PonerGuia(const GuiaPeticion& guia) {
  guia_ = guia;
  ui_->Ejemplo->setText(guia.ejemplo);
  ui_->Ejemplo->setVisible(!guia.ejemplo.isEmpty());
  ui_->Resultado->setVisible(static_cast<bool>(guia.resultado));
  // Con su sitio desde el principio: la caja no cambia de tamaño mientras se escribe.
  ui_->Motivo->setMinimumHeight(2 * ui_->Motivo->fontMetrics().lineSpacing());
  QPalette colores = ui_->Motivo->palette();
  colores.setColor(QPalette::WindowText, ColorAviso(colores));
  ui_->Motivo->setPalette(colores);
  ui_->Motivo->show();
  connect(ui_->CampoTexto, &QLineEdit::textChanged, this, &MyBox::MostrarResultado);
  // Lo que se rechazó deja de importar en cuanto algo se escribe.
  connect(ui_->CampoTexto, &QLineEdit::textChanged, this, [this] {
    if (!Tecleo().reescribiendo) DecirMotivo({});
  });
  const CajaDescrita* caja = CajaDescrita::De(ui_->CampoTexto);
  connect(caja, &CajaDescrita::rechazada, this, &MyBox::DecirMotivo);
  connect(caja, &CajaDescrita::vaASalir, this, [this] { escrito_ = ui_->CampoTexto->text(); });
  connect(caja, &CajaDescrita::haSalido, this, [this] { Objetado(); });
  escrito_ = FormaEdicion(ui_->CampoTexto);
  MostrarResultado();
}

void MyBox::DecirMotivo(const QString& motivo) {
  if (ui_->Motivo->text() == motivo) return;
  ui_->Motivo->setText(motivo);
  ui_->CampoTexto->setAccessibleDescription(QStringList{guia_.ejemplo, motivo}.join(u' ').trimmed());
  if (motivo.isEmpty()) return;
  QAccessibleEvent anuncio(ui_->Motivo, QAccessible::Alert);
  QAccessible::updateAccessibility(&anuncio);
}

void MyBox::MostrarResultado() {
  if (guia_.resultado) ui_->Resultado->setText(guia_.resultado(FormaEdicion(ui_->CampoTexto)));
}

bool MyBox::Objetado() {
  const QString objecion = guia_.objecion ? guia_.objecion(escrito_) : QString();
  if (!objecion.isEmpty()) DecirMotivo(objecion);
  return !objecion.isEmpty();
}

bool MyBox::FiltrarEscape(QKeyEvent* tecla) {
  if (tecla->key() != Qt::Key_Escape) return false;
  if (ranuraCancelar_ >= 0) {
    Boton(ranuraCancelar_)->click();
  } else {
    char32_t caracter = 27;
    TagKeyPress(ui_->CampoTexto, caracter);
  }
  return true;
}

QString MyInputBox(const QString& Texto, const QString& Titulo, int Icono, const QString& Tipo,
                   const QString& Defecto, float Top, float Left, QWidget* Sobre, const QString& Tema,
                   const GuiaPeticion& Guia) {
  CajaPropia caja(Sobre);
  caja->PonerTitulo(Titulo, Icono);
  caja->PonerMensaje(Texto);
  caja->PonerTema(Tema);
  caja->PonerBotones(2, 1);
  const bool lista = Tipo == kLista;
  const bool intervalo = Tipo.endsWith(kIntervalo);
  if (lista) {
    caja->PonerLista(Defecto);
  } else if (intervalo) {
    caja->PonerIntervalo(Tipo, Defecto);
  } else {
    caja->PonerValor(Tipo, Defecto);
    if (!Guia.ejemplo.isEmpty()) caja->PonerGuia(Guia);
  }
  if (Tipo.contains(kSecreto)) caja->PonerSecreto();
  caja->Colocar(Top, Left, Sobre);
  if (caja.Preguntar() != kAceptar) return {};
  if (lista) return caja->Texto();
  const QString desde = UnformatValue(caja->Texto(), Tipo);
  return intervalo ? desde + kUneIntervalo + UnformatValue(caja->SegundoTexto(), Tipo) : desde;
}

}  // namespace comunes

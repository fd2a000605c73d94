#include "comunes/campos/Tecleo.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPalette>
#include <QScopedValueRollback>
#include <QVariant>

#include "comunes/campos/Blancos.h"
#include "comunes/campos/Etiquetas.h"
#include "comunes/campos/Filtro.h"
#include "comunes/campos/Formato.h"
#include "comunes/campos/Teclas.h"
#include "comunes/plataforma/Formatos.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr char kTag[] = "Tag";
// La paleta propia de la caja mientras tiene el fondo de foco, y si se pintaba el fondo.
constexpr char kPaleta[] = "PaletaSinFoco";
constexpr char kRelleno[] = "RellenoSinFoco";
constexpr int kFondoFoco = 0xFFFFC0;  // azul, verde y rojo: un cian pálido

QColor desdeBgr(int bgr) {
  return {bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF};
}

int haciaBgr(const QColor& color) {
  return color.red() | color.green() << 8 | color.blue() << 16;
}

QPalette::ColorRole papelDelFondo(const QWidget* caja) {
  return qobject_cast<const QCheckBox*>(caja) ? caja->backgroundRole() : QPalette::Base;
}

void ponerFondoDeFoco(QWidget* caja) {
  if (!caja->property(kPaleta).isValid()) {
    caja->setProperty(kPaleta, caja->palette());
    caja->setProperty(kRelleno, caja->autoFillBackground());
    const int fondo = haciaBgr(caja->palette().color(papelDelFondo(caja)));
    PonerDescriptor(caja, SetTag(Descriptor(caja), u"P"_s, QString::number(fondo)));
  }
  QPalette paleta = caja->palette();
  const QColor fondo = desdeBgr(kFondoFoco);
  // El texto es negro también en un escritorio oscuro: el fondo es claro en todos.
  if (qobject_cast<QCheckBox*>(caja)) {
    paleta.setColor(papelDelFondo(caja), fondo);
    for (const auto papel : {QPalette::WindowText, QPalette::ButtonText})
      paleta.setColor(papel, Qt::black);
    caja->setAutoFillBackground(true);
  } else {
    for (const auto papel : {QPalette::Base, QPalette::Button})
      paleta.setColor(papel, fondo);
    for (const auto papel : {QPalette::Text, QPalette::ButtonText})
      paleta.setColor(papel, Qt::black);
  }
  caja->setPalette(paleta);
}

void quitarFondoDeFoco(QWidget* caja, const QString& guardado) {
  const QVariant anterior = caja->property(kPaleta);
  QPalette paleta = anterior.isValid() ? anterior.value<QPalette>() : caja->palette();
  // Si P es el color que se guardó, la paleta vuelve a ser la misma, con lo que herede.
  const int bgr = static_cast<int>(Val(guardado));
  if (bgr != haciaBgr(paleta.color(papelDelFondo(caja)))) paleta.setColor(papelDelFondo(caja), desdeBgr(bgr));
  caja->setPalette(paleta);
  if (anterior.isValid()) caja->setAutoFillBackground(caja->property(kRelleno).toBool());
  caja->setProperty(kPaleta, {});
  caja->setProperty(kRelleno, {});
}

void reescribir(QLineEdit* linea, const QString& texto) {
  const QScopedValueRollback marca(Tecleo().reescribiendo, true);
  PonerTexto(linea, texto);
}

void ponerDefecto(QWidget* caja) {
  const auto defecto = GetTag(Descriptor(caja), u"+"_s);
  if (!defecto) return;
  if (auto* linea = qobject_cast<QLineEdit*>(caja)) {
    // Como una escritura más, para que se pueda deshacer.
    const QScopedValueRollback libre(Tecleo().sinFiltrar, true);
    linea->selectAll();
    linea->insert(*defecto);
  } else if (auto* casilla = qobject_cast<QCheckBox*>(caja)) {
    const double valor = Val(*defecto);
    if (valor == 0 || valor == 1) casilla->setChecked(valor == 1);
    if (valor == 2) casilla->setCheckState(Qt::PartiallyChecked);
  } else if (auto* lista = qobject_cast<QComboBox*>(caja); lista && !lista->isEditable()) {
    const QString buscado = SinBlancos(*defecto);
    for (int i = 0; i < lista->count(); ++i) {
      if (SinBlancos(lista->itemText(i)) != buscado) continue;
      lista->setCurrentIndex(i);
      break;
    }
  }
}

}  // namespace

EstadoTecleo& Tecleo() {
  static EstadoTecleo estado;
  return estado;
}

QString Descriptor(const QWidget* caja) {
  return caja->property(kTag).toString();
}

void PonerDescriptor(QWidget* caja, const QString& descriptor) {
  caja->setProperty(kTag, descriptor);
}

void PonerTexto(QWidget* caja, const QString& texto) {
  const QScopedValueRollback libre(Tecleo().sinFiltrar, true);
  if (auto* linea = qobject_cast<QLineEdit*>(caja)) linea->setText(texto);
}

void TagKeyPress(QWidget* caja, char32_t& tecla) {
  constexpr char32_t kRetroceso = 8;
  constexpr char32_t kIntro = 13;
  if (tecla == kRetroceso) return;
  if (tecla == kIntro || tecla == U'+') {
    if (tecla == U'+') ponerDefecto(caja);
    tecla = 0;
    PressTab(caja);
    return;
  }
  const auto* linea = qobject_cast<QLineEdit*>(caja);
  if (!linea) return;
  const Filtro filtro(Descriptor(caja));
  const QString texto = linea->text();
  const bool seleccionado = linea->hasSelectedText();
  const EstadoCaja estado{texto, seleccionado ? linea->selectionStart() : linea->cursorPosition(),
                          linea->selectedText().size()};
  tecla = filtro.Tecla(estado, tecla);
  if (tecla == 0 || seleccionado) return;
  const qsizetype resultado = texto.size() + (QChar::requiresSurrogates(tecla) ? 2 : 1);
  if (resultado > filtro.longitud()) tecla = 0;
  if (resultado >= filtro.longitud()) PressTab(caja);
}

QString FormaEdicion(const QLineEdit* linea) {
  return SinBlancos(UnformatValue(linea->text(), Descriptor(linea)));
}

void DarFormato(QLineEdit* linea) {
  QString valor = linea->text();
  reescribir(linea, FormatValue(valor, Descriptor(linea)));
}

void TagGotFocus(QWidget* caja) {
  ponerFondoDeFoco(caja);
  if (auto* linea = qobject_cast<QLineEdit*>(caja)) {
    reescribir(linea, FormaEdicion(linea));
    linea->selectAll();
  }
}

void TagLostFocus(QWidget* caja) {
  const QString fondo = GetTag(Descriptor(caja), u"P"_s).value_or(QString());
  if (!fondo.isEmpty()) quitarFondoDeFoco(caja, fondo);
  if (auto* linea = qobject_cast<QLineEdit*>(caja)) DarFormato(linea);
  if (!Tecleo().noRecordarCaja) Tecleo().ultimaCaja = caja;
}

}  // namespace comunes

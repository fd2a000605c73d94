#include "comunes/campos/Teclas.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <array>

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

struct Equivalencia {
  int codigo;
  Qt::Key tecla;
};
// Los códigos virtuales que no coinciden con el de Qt ni van en serie.
constexpr std::array<Equivalencia, 20> kTeclas{
    {{8, Qt::Key_Backspace}, {9, Qt::Key_Tab},       {13, Qt::Key_Return}, {16, Qt::Key_Shift},
     {17, Qt::Key_Control},  {18, Qt::Key_Alt},      {27, Qt::Key_Escape}, {32, Qt::Key_Space},
     {33, Qt::Key_PageUp},   {34, Qt::Key_PageDown}, {35, Qt::Key_End},    {36, Qt::Key_Home},
     {37, Qt::Key_Left},     {38, Qt::Key_Up},       {39, Qt::Key_Right},  {40, Qt::Key_Down},
     {45, Qt::Key_Insert},   {46, Qt::Key_Delete},   {107, Qt::Key_Plus},  {109, Qt::Key_Minus}}};

int teclaDe(int codigo) {
  if ((codigo >= '0' && codigo <= '9') || (codigo >= 'A' && codigo <= 'Z')) return codigo;
  if (codigo >= 96 && codigo <= 105) return Qt::Key_0 + codigo - 96;
  if (codigo >= 112 && codigo <= 135) return Qt::Key_F1 + codigo - 112;
  for (const auto& e : kTeclas)
    if (e.codigo == codigo) return e.tecla;
  return 0;
}

QString textoDe(int tecla, Qt::KeyboardModifiers modificadores) {
  if (modificadores & (Qt::ControlModifier | Qt::AltModifier)) return {};
  if (tecla == Qt::Key_Return) return u"\r"_s;
  if (tecla == Qt::Key_Backspace) return u"\b"_s;
  if (tecla < Qt::Key_Space || tecla > Qt::Key_Z) return {};
  const QString letra = QChar(static_cast<char16_t>(tecla));
  return (modificadores & Qt::ShiftModifier) ? letra : letra.toLower();
}

}  // namespace

void PressTab(QWidget* sinFoco) {
  PressKey(9, {}, sinFoco);
}

void PressKey(int tecla, const QString& modificador, QWidget* sinFoco) {
  QWidget* foco = QApplication::focusWidget();
  if (!foco) foco = sinFoco;
  int clave = teclaDe(tecla);
  if (!foco || clave == 0) return;
  int sujeta = 0;
  Qt::KeyboardModifiers con = Qt::NoModifier;
  if (modificador == "S"_L1) {
    sujeta = Qt::Key_Shift;
    con = Qt::ShiftModifier;
    if (clave == Qt::Key_Tab) clave = Qt::Key_Backtab;
  } else if (modificador == "C"_L1) {
    sujeta = Qt::Key_Control;
    con = Qt::ControlModifier;
  } else if (modificador == "A"_L1) {
    sujeta = Qt::Key_Alt;
    con = Qt::AltModifier;
  }
  const auto encolar = [foco](QEvent::Type tipo, int k, Qt::KeyboardModifiers m) {
    QCoreApplication::postEvent(foco, new QKeyEvent(tipo, k, m, textoDe(k, m)));
  };
  if (sujeta != 0) encolar(QEvent::KeyPress, sujeta, Qt::NoModifier);
  encolar(QEvent::KeyPress, clave, con);
  encolar(QEvent::KeyRelease, clave, con);
  if (sujeta != 0) encolar(QEvent::KeyRelease, sujeta, con);
}

}  // namespace comunes

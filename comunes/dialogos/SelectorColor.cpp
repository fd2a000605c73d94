#include "comunes/dialogos/SelectorColor.h"

#include <QColorDialog>
#include <utility>

namespace comunes {
namespace {

SelectorColor& Actual() {
  static SelectorColor selector = [](const QColor& inicial, QWidget* padre) {
    return QColorDialog::getColor(inicial, padre);
  };
  return selector;
}

}  // namespace

int NumeroDeColor(const QColor& color) {
  return color.red() | color.green() << 8 | color.blue() << 16;
}

QColor ColorDeNumero(int numero) {
  return {numero & 0xFF, numero >> 8 & 0xFF, numero >> 16 & 0xFF};
}

QColor ElegirColor(const QColor& inicial, QWidget* padre) {
  return Actual()(inicial, padre);
}

SelectorColor PonerSelectorColor(SelectorColor nuevo) {
  return std::exchange(Actual(), std::move(nuevo));
}

}  // namespace comunes

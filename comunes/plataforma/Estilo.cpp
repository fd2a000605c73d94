#include "comunes/plataforma/Estilo.h"

#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>
#include <QWidget>

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr int kOscuro = 128;  // la mitad de la luz de un color

class EstiloLegible : public QProxyStyle {
 public:
  using QProxyStyle::polish;

  /// Lo que aconseja una caja vacía se queda casi negro en algunos escritorios oscuros.
  void polish(QPalette& paleta) override {
    QProxyStyle::polish(paleta);
    if (paleta.color(QPalette::Base).lightness() >= kOscuro) return;
    for (const auto grupo : {QPalette::Active, QPalette::Inactive}) {
      QColor color = paleta.color(grupo, QPalette::Text);
      color.setAlphaF(0.7F);
      paleta.setColor(grupo, QPalette::PlaceholderText, color);
    }
  }

  /// El botón que vacía una caja no tiene nombre para las ayudas técnicas.
  void polish(QWidget* control) override {
    QProxyStyle::polish(control);
    if (control->inherits("QLineEditIconButton") && control->accessibleName().isEmpty())
      control->setAccessibleName(u"Borrar lo escrito"_s);
  }

  /// Un menú más alto que la pantalla se desplaza: en dos columnas, la segunda se saldría por un lado.
  int styleHint(StyleHint cual, const QStyleOption* opcion, const QWidget* control,
                QStyleHintReturn* mas) const override {
    return cual == SH_Menu_Scrollable ? 1 : QProxyStyle::styleHint(cual, opcion, control, mas);
  }

  /// El color propio de un título se pensó para un fondo claro.
  void drawControl(ControlElement cual, const QStyleOption* opcion, QPainter* pintor,
                   const QWidget* control) const override {
    const auto* titulo = qstyleoption_cast<const QStyleOptionHeader*>(opcion);
    const QColor color = opcion->palette.color(QPalette::ButtonText);
    if (cual != CE_HeaderLabel || titulo == nullptr || qGray(color.rgb()) >= kOscuro ||
        opcion->palette.color(QPalette::Window).lightness() >= kOscuro)
      return QProxyStyle::drawControl(cual, opcion, pintor, control);
    QStyleOptionHeader claro = *titulo;
    claro.palette.setColor(QPalette::ButtonText, QColor::fromHsl(color.hslHue(), color.hslSaturation(), 185));
    QProxyStyle::drawControl(cual, &claro, pintor, control);
  }

  void drawPrimitive(PrimitiveElement cual, const QStyleOption* opcion, QPainter* pintor,
                     const QWidget* control) const override {
    QProxyStyle::drawPrimitive(cual, opcion, pintor, control);
    const bool redondo = cual == PE_IndicatorRadioButton;
    if ((cual != PE_IndicatorCheckBox && !redondo) ||
        opcion->palette.color(QPalette::Window).lightness() >= kOscuro)
      return;
    // El borde de una casilla o de un botón redondo es más oscuro que el fondo, también sobre uno oscuro.
    QColor borde = opcion->palette.color(QPalette::WindowText);
    borde.setAlphaF(0.7F);
    pintor->save();
    pintor->setPen(borde);
    pintor->setBrush(Qt::NoBrush);
    pintor->setRenderHint(QPainter::Antialiasing, redondo);
    const QRect contorno = opcion->rect.adjusted(0, 0, -1, -1);
    redondo ? pintor->drawEllipse(contorno) : pintor->drawRect(contorno);
    pintor->restore();
  }
};

}  // namespace

QStyle* CrearEstilo() {
  return new EstiloLegible;
}

}  // namespace comunes

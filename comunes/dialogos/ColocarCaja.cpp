#include "comunes/dialogos/ColocarCaja.h"

#include <QFontMetrics>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <cmath>

#include "comunes/plataforma/Texto.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr float kTwipsPorPixel = 15;
constexpr float kCentrar = -1;
constexpr QChar kEspacioNulo(0x200B);

int Pixeles(float twips) {
  if (!std::isfinite(twips)) return 0;
  return qRound(std::clamp(twips / kTwipsPorPixel, -1e6F, 1e6F));
}

/// Origen de un tramo `largo` dentro de [inicio, inicio + hueco); lo que no cabe sobra por el final.
int Encajar(int origen, int largo, int inicio, int hueco) {
  return std::max(inicio, std::min(origen, inicio + hueco - largo));
}

QString Partible(const QString& palabra) {
  QString salida;
  QTextBoundaryFinder limites(QTextBoundaryFinder::Grapheme, palabra);
  qsizetype desde = 0;
  for (auto hasta = limites.toNextBoundary(); hasta > 0; hasta = limites.toNextBoundary()) {
    if (desde > 0) salida += kEspacioNulo;
    salida += QStringView(palabra).sliced(desde, hasta - desde);
    desde = hasta;
  }
  return salida;
}

}  // namespace

QPoint EsquinaCaja(QSize caja, float Top, float Left, const QRect& sobre, const QRect& pantalla,
                   const QRect& libre) {
  QPoint esquina(Pixeles(Left), Pixeles(Top));
  if (sobre.isValid()) {
    esquina.setX(sobre.x() + (sobre.width() - caja.width()) / 2);
    esquina.setY(sobre.y() + (sobre.height() - caja.height()) / 2);
  } else {
    if (Left == kCentrar) esquina.setX(pantalla.x() + (pantalla.width() - caja.width()) / 2);
    if (Top == kCentrar) esquina.setY(pantalla.y() + (pantalla.height() - caja.height()) / 2);
  }
  return {Encajar(esquina.x(), caja.width(), libre.x(), libre.width()),
          Encajar(esquina.y(), caja.height(), libre.y(), libre.height())};
}

QString TextoCaja(const QString& texto) {
  QString salida = ConMarcasEscritas(texto);
  return salida.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n').replace(u';', u'\n');
}

QString PartirPalabras(const QString& texto, const QFontMetrics& medidas, int ancho) {
  QString salida;
  QString palabra;
  const auto cerrar = [&] {
    // Una palabra de pocos caracteres cabe siempre: no se mide.
    salida += palabra.size() > 8 && medidas.horizontalAdvance(palabra) > ancho ? Partible(palabra) : palabra;
    palabra.clear();
  };
  for (const QChar c : texto) {
    if (!c.isSpace()) {
      palabra += c;
      continue;
    }
    cerrar();
    salida += c;
  }
  cerrar();
  return salida;
}

}  // namespace comunes

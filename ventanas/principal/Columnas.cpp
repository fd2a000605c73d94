#include "ventanas/principal/Columnas.h"

#include <QFontMetricsF>
#include <algorithm>

#include "comunes/plataforma/Texto.h"
#include "ventanas/principal/TextoVisible.h"

namespace principal {

using namespace Qt::StringLiterals;

Columnas::Columnas(const QFont& fuente) : fuente_(QRawFont::fromFont(fuente)) {
  const QFontMetricsF medidas(fuente);
  ancho_ = std::max(4, qRound(medidas.horizontalAdvance(u'0')));
  alto_ = qCeil(medidas.height()) + 4;
  base_ = 2 + qRound(medidas.ascent());
  const QList<quint32> blanco = fuente_.glyphIndexesForString(u" "_s);
  for (int byte = 0; byte < 256; ++byte) {
    const char bytes[] = {static_cast<char>(byte)};
    const QList<quint32> glifo =
        EsVisible(static_cast<unsigned char>(byte))
            ? fuente_.glyphIndexesForString(comunes::DesdeWindows1252(std::string_view(bytes, 1)))
            : blanco;
    glifos_[static_cast<std::size_t>(byte)] = glifo.isEmpty() ? 0 : glifo.first();
  }
}

void Columnas::ponerUltima(std::size_t ultima) {
  ultima_ = static_cast<int>(std::clamp<std::size_t>(ultima, remesa::kLongitudRegistro, kMaxima));
}

int Columnas::posicionEn(int x) const {
  if (x < kMargen) return 0;
  const int posicion = (x - kMargen) / ancho_ + 1;
  return posicion <= ultima_ ? posicion : 0;
}

}  // namespace principal

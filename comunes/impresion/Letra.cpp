#include "comunes/impresion/Letra.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

// Fuera de todo espacio de nombres: así lo pide la macro de los recursos de una biblioteca estática.
static void cargarRecursos() {
  Q_INIT_RESOURCE(letras);
}

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

/// Cuerpo con que se mide: las unidades en que está dibujada la letra.
constexpr int kCuerpo = 2048;
constexpr float kSinMedir = -1;
constexpr float kNoEsta = -2;

/// Añade la letra a las de la aplicación, una vez, y da el nombre de su familia.
const QString& familia() {
  static const QString nombre = [] {
    cargarRecursos();
    QFontDatabase::addApplicationFont(u":/letras/LiberationSans-Bold.ttf"_s);
    const int id = QFontDatabase::addApplicationFont(u":/letras/LiberationSans-Regular.ttf"_s);
    const QStringList familias = QFontDatabase::applicationFontFamilies(id);
    return familias.isEmpty() ? u"Liberation Sans"_s : familias.first();
  }();
  return nombre;
}

}  // namespace

Letra::Letra(bool negrita)
    : negrita_(negrita),
      cruda_(QRawFont::fromFont(Fuente(kCuerpo))),
      ascenso_(cruda_.ascent() / kCuerpo),
      descenso_(cruda_.descent() / kCuerpo),
      avances_(0x10000, kSinMedir) {}

QFont Letra::Fuente(int tamano) const {
  QFont fuente(familia());
  fuente.setPixelSize(tamano);
  fuente.setBold(negrita_);
  fuente.setKerning(false);
  fuente.setHintingPreference(QFont::PreferNoHinting);
  return fuente;
}

double Letra::avance(QChar caracter) const {
  float& medido = avances_[caracter.unicode()];
  if (medido == kSinMedir) {
    const auto glifos = cruda_.glyphIndexesForString(QString(caracter));
    const bool esta = glifos.size() == 1 && glifos[0] != 0;
    medido =
        esta ? static_cast<float>(
                   cruda_.advancesForGlyphIndexes(glifos, QRawFont::UseDesignMetrics).first().x() / kCuerpo)
             : kNoEsta;
  }
  return medido;
}

double Letra::Ancho(const QString& texto, int tamano) const {
  double ancho = 0;
  for (const QChar caracter : texto) {
    const double suyo = avance(caracter);
    // Lo que la letra no tiene sale en otra, que solo el toolkit sabe cuál es.
    if (suyo < 0) return QFontMetricsF(Fuente(tamano)).horizontalAdvance(texto);
    ancho += suyo;
  }
  return ancho * tamano;
}

QString Letra::Recortar(const QString& texto, int tamano, double ancho) const {
  QString corto = texto;
  while (!corto.isEmpty() && Ancho(corto, tamano) > ancho) {
    const bool pareja = corto.size() > 1 && corto.back().isLowSurrogate();
    corto.chop(pareja ? 2 : 1);
  }
  return corto;
}

int Letra::Encoger(const QString& texto, int tamano, double ancho) const {
  const double suyo = Ancho(texto, tamano);
  if (suyo <= ancho) return tamano;
  return std::max(1, static_cast<int>(std::floor(tamano * ancho / suyo)));
}

}  // namespace comunes

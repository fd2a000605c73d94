// Las líneas libres que siguen a la tabla.
#include <algorithm>

#include "comunes/impresion/Listado.h"

namespace comunes {

namespace {

constexpr double kSeparacion = 40;
constexpr double kTope = 1134;

/// Solo blancos: un tabulador al final separa una etiqueta de su valor vacío.
QString sinBlancos(QString texto) {
  while (texto.startsWith(u' '))
    texto.remove(0, 1);
  while (texto.endsWith(u' '))
    texto.chop(1);
  return texto;
}

/// Corta `texto` en líneas de `ancho`, por un blanco si lo hay.
QStringList doblar(const QString& texto, const Letra& letra, double ancho) {
  QStringList lineas;
  QString resto = texto;
  while (letra.Ancho(resto, kTamano) > ancho) {
    QString linea = letra.Recortar(resto, kTamano, ancho);
    // Ni un carácter cabe: se pone uno y se sigue.
    if (linea.isEmpty()) linea = resto.left(1);
    const auto blanco = resto.lastIndexOf(u' ', linea.size());
    if (blanco > 0) linea = resto.left(blanco);
    lineas << linea;
    resto = sinBlancos(resto.mid(linea.size()));
  }
  return lineas << resto;
}

}  // namespace

std::vector<Listado::LineaBloque> Listado::partir(const QString& lineas) const {
  const double final = std::max(impresora_.ScaleWidth() - kMargen, kMargen + kTope + kTope);
  const double sangria = kMargen + kTope;
  std::vector<LineaBloque> trozos;
  for (const QString& pieza : lineas.split(u';')) {
    double x = kMargen;
    bool nueva = true;
    QString texto = sinBlancos(pieza);
    if (const auto tab = texto.indexOf(u'\t'); tab >= 0) {
      const QStringList etiqueta = doblar(texto.left(tab), normal_, final - x);
      for (const QString& linea : etiqueta)
        trozos.push_back({x, linea, true});
      x = std::max(sangria, x + normal_.Ancho(etiqueta.last() + u' ', kTamano));
      // Tras una etiqueta que no le deja sitio, el valor va debajo.
      nueva = final - x < kTope;
      if (nueva) x = sangria;
      texto = texto.mid(tab + 1).replace(u'\t', u' ');
    }
    for (const QString& linea : doblar(texto, normal_, final - x)) {
      trozos.push_back({x, linea, nueva});
      nueva = true;
    }
  }
  return trozos;
}

double Listado::altoBloque(const std::vector<LineaBloque>& trozos) const {
  const auto cuantas = std::count_if(trozos.begin(), trozos.end(), [](const auto& t) { return t.nueva; });
  return kSeparacion + normal_.Alto(kTamano) * static_cast<double>(cuantas);
}

bool Listado::seccion(const SeccionListado& seccion) {
  cabeza_.titulo = seccion.titulo;
  const double alto = altoBloque(partir(seccion.lineas)) + altoTitulos() + 2 * kAltoFila;
  if (!porSecciones_) {
    porSecciones_ = true;
    total_ = rejilla_.Rows() - rejilla_.FixedRows();
    if (avance_ && !avance_(0, total_, 1)) return false;
    if (impresora_.Empezada()) impresora_.NuevaPagina();
    cabeza(false);
  } else if (seccion.otraPagina || !cabe(alto)) {
    if (!pagina(false)) return false;
  } else {
    y_ += kAltoFila;
  }
  if (!bloque(seccion.lineas)) return false;
  y_ += kSeparacion;
  titulos();
  yTrasCabeza_ = y_;
  return filas(seccion.desde, seccion.hasta);
}

bool Listado::bloque(const QString& lineas) {
  if (lineas.isEmpty()) return true;
  const std::vector<LineaBloque> trozos = partir(lineas);
  const double alto = normal_.Alto(kTamano);
  const double total = altoBloque(trozos);
  // Entero en una página si cabe en alguna.
  const bool cabeEnUna = yTrasCabeza_ + total + kMargen / 2 <= impresora_.ScaleHeight();
  if (!cabe(total) && cabeEnUna && !pagina()) return false;
  y_ += kSeparacion;
  double yLinea = y_;
  for (const LineaBloque& trozo : trozos) {
    if (trozo.nueva) {
      if (!cabe(alto) && y_ > yTrasCabeza_ && !pagina()) return false;
      yLinea = y_;
      y_ += alto;
    }
    impresora_.Texto(trozo.x, yLinea, trozo.texto, normal_, kTamano);
  }
  return true;
}

}  // namespace comunes

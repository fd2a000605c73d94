#include "comunes/impresion/Listado.h"

#include <algorithm>

#include "comunes/plataforma/Formatos.h"
#include "comunes/rejilla/Color.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr double kLineaCabeza = 40;
constexpr double kLineaSubtitulo = 240;
/// El cuerpo de la cabeza es 1,2 veces mayor.
constexpr int kTamanoCabeza = kTamano * 12 / 10;
/// Aire entre el borde de una celda y su texto, y entre el título y lo que tiene a los lados.
constexpr double kAireCelda = 30;
constexpr double kAireTitulo = 120;
/// Los colores del papel no dependen del escritorio: en uno oscuro saldría blanco sobre blanco.
const QColor kFondoTitulos(224, 224, 224);

}  // namespace

Listado::Listado(TrabajoImpresion& impresora, const Rejilla& rejilla, Cabeza cabeza, bool marco, bool ajustar,
                 AvanceImpresion avance)
    : impresora_(impresora),
      rejilla_(rejilla),
      cabeza_(std::move(cabeza)),
      marco_(marco),
      avance_(std::move(avance)) {
  double ancho = 0;
  for (int c = 0; c < rejilla.Cols(); ++c) {
    const double suyo = rejilla.ColWidth(c);
    if (ajustar && ancho + suyo > impresora.ScaleWidth()) break;
    if (suyo > 0) columnas_.push_back({c, ancho, suyo});
    ancho += suyo;
  }
  const double izquierda = std::max((impresora.ScaleWidth() - ancho) / 2, 0.0);
  for (Columna& columna : columnas_)
    columna.izquierda += izquierda;
}

bool Listado::cabe(double alto) const {
  return y_ + alto + kMargen / 2 <= impresora_.ScaleHeight();
}

bool Listado::empezar() {
  if (avance_ && !avance_(0, total_, 1)) return false;
  // Lo que otra impresión dejara en la página no se pisa.
  if (impresora_.Empezada()) impresora_.NuevaPagina();
  cabeza();
  return true;
}

bool Listado::pagina(bool conTitulos) {
  if (avance_ && !avance_(hechas_, total_, impresora_.Pagina() + 1)) return false;
  impresora_.NuevaPagina();
  cabeza(conTitulos);
  return true;
}

void Listado::cabeza(bool conTitulos) {
  const double ancho = impresora_.ScaleWidth();
  const auto medir = [&](const QString& texto) { return normal_.Ancho(texto, kTamanoCabeza); };
  const QString numero = u"Página %1"_s.arg(impresora_.Pagina());
  const double xNumero = ancho - medir(numero);
  double finFecha = 0;
  if (cabeza_.conFecha) {
    const QString fecha = u"Fecha "_s + FormatoFecha(FechaActual(), ModoFecha::Numerica);
    impresora_.Texto(kMargen, kLineaCabeza, fecha, normal_, kTamanoCabeza);
    finFecha = kMargen + medir(fecha);
  }
  // Centrado en la página, cabe lo que deja el más ancho de los dos lados.
  const double lado = std::max(finFecha, ancho - xNumero) + kAireTitulo;
  const int tamano = normal_.Encoger(cabeza_.titulo, kTamanoCabeza, std::max(ancho - 2 * lado, 1.0));
  const double xTitulo = (ancho - normal_.Ancho(cabeza_.titulo, tamano)) / 2;
  const double bajada = normal_.Ascenso(kTamanoCabeza) - normal_.Ascenso(tamano);
  impresora_.Texto(xTitulo, kLineaCabeza + bajada, cabeza_.titulo, normal_, tamano);
  impresora_.Texto(xNumero, kLineaCabeza, numero, normal_, kTamanoCabeza);

  QString subtitulo = cabeza_.subtitulo;
  const bool izquierda = subtitulo.startsWith(u'<');
  const bool derecha = subtitulo.startsWith(u'>');
  if (izquierda || derecha) subtitulo.remove(0, 1);
  const double sobra = ancho - medir(subtitulo);
  impresora_.Texto(izquierda ? kMargen
                   : derecha ? sobra
                             : sobra / 2,
                   kLineaSubtitulo, subtitulo, normal_, kTamanoCabeza);

  y_ = kMargen;
  if (conTitulos) titulos();
  yTrasCabeza_ = y_;
}

double Listado::altoTitulos() const {
  return rejilla_.FixedRows() < 1 ? 0 : std::max(rejilla_.RowHeight(0), kAltoFila);
}

void Listado::titulos() {
  const double alto = altoTitulos();
  if (alto == 0) return;
  for (const Columna& columna : columnas_)
    celda(0, columna, alto, true);
  y_ += alto;
}

bool Listado::filas(int desde, int hasta) {
  if (!porSecciones_) total_ = std::max(hasta - desde + 1, 0);
  for (int f = desde; f <= hasta; ++f, ++hechas_) {
    if (avance_ && !avance_(hechas_, total_, impresora_.Pagina())) return false;
    if (rejilla_.RowHeight(f) < 1) continue;
    // Una fila más alta que la página se imprime igual: saltar otra vez no le haría sitio.
    if (!cabe(rejilla_.RowHeight(f)) && y_ > yTrasCabeza_ && !pagina()) return false;
    fila(f);
  }
  return true;
}

void Listado::fila(int fila) {
  const double alto = rejilla_.RowHeight(fila);
  for (const Columna& columna : columnas_)
    celda(fila, columna, alto, false);
  y_ += alto;
}

void Listado::celda(int fila, const Columna& columna, double alto, bool titulo) {
  const EstiloCelda estilo = rejilla_.Estilo(fila, columna.numero);
  if (marco_) {
    const QRectF caja(columna.izquierda, y_, columna.ancho, alto);
    if (estilo.BackColor >= 0) {
      impresora_.Rectangulo(caja, ColorDe(estilo.BackColor), titulo ? Qt::black : QColor());
    } else if (titulo) {
      impresora_.Rectangulo(caja, kFondoTitulos, Qt::black);
    }
  }
  const QString& entero = rejilla_.TextMatrix(fila, columna.numero);
  if (entero.isEmpty()) return;

  if (estilo.Negrita && !negrita_) negrita_.emplace(true);
  const Letra& letra = estilo.Negrita ? *negrita_ : normal_;
  const int alineacion = titulo                   ? rejilla_.FixedAlignment(columna.numero)
                         : estilo.Alineacion != 0 ? estilo.Alineacion
                                                  : rejilla_.ColAlignment(columna.numero);
  int tamano = kTamano;
  QString texto = entero;
  double ancho = letra.Ancho(texto, tamano);
  // Antes de cortar cede el aire; lo que ni así cabe, y se corta, no toca la columna de al lado.
  const double aire = ancho > columna.ancho ? kAireCelda : std::min((columna.ancho - ancho) / 2, kAireCelda);
  const double hueco = columna.ancho - 2 * aire;
  if (ancho > hueco) {
    // Una cifra cortada sería otra cantidad.
    const bool importe = alineacion == kDerecha && !titulo && NumeroEntero(texto, signos_).has_value();
    if (importe) {
      tamano = letra.Encoger(texto, tamano, hueco);
    } else {
      texto = letra.Recortar(texto, tamano, hueco);
    }
    ancho = letra.Ancho(texto, tamano);
  }
  double x = columna.izquierda + aire;
  if (alineacion == kCentro) x += (hueco - ancho) / 2;
  if (alineacion == kDerecha) x += hueco - ancho;
  const QColor color = marco_ && estilo.ForeColor >= 0 ? ColorDe(estilo.ForeColor) : QColor(Qt::black);
  impresora_.Texto(x, y_ + std::max(alto - letra.Alto(tamano), 0.0) / 2, texto, letra, tamano, color);
}

}  // namespace comunes

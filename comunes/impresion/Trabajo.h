#pragma once

#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QSizeF>

#include "comunes/impresion/Letra.h"

namespace comunes {

inline constexpr double kTwipsPunto = 20;

/// Ancho y alto, en twips, de la zona en que se puede imprimir una página.
QSizeF ZonaImprimible(const QPageLayout& pagina);

/// Un trabajo de impresión abierto sobre un dispositivo de páginas (impresora, PDF o vista previa). Mide en
/// twips desde la esquina de la zona imprimible. Si se destruye sin terminar, el dispositivo se queda con lo
/// dibujado y quien lo abrió decide. Un fallo del dispositivo lanza ficheros::ErrorEjecucion 482.
class TrabajoImpresion {
 public:
  /// `dispositivo` vive más que el trabajo.
  explicit TrabajoImpresion(QPagedPaintDevice& dispositivo);
  TrabajoImpresion(const TrabajoImpresion&) = delete;
  TrabajoImpresion& operator=(const TrabajoImpresion&) = delete;

  double ScaleWidth() const { return zona_.width(); }
  double ScaleHeight() const { return zona_.height(); }
  /// La página en curso tiene ya algo dibujado.
  bool Empezada() const { return empezada_; }
  /// Número de la página en curso, desde 1.
  int Pagina() const { return pagina_; }

  void NuevaPagina();
  /// Acaba el documento; no añade ninguna página.
  void Terminar();

  /// Dibuja `texto` con su esquina superior izquierda en (x, y).
  void Texto(double x, double y, const QString& texto, const Letra& letra, int tamano,
             const QColor& color = Qt::black);
  /// Rectángulo relleno; con `borde` válido, también su contorno.
  void Rectangulo(const QRectF& rectangulo, const QColor& fondo, const QColor& borde = {});

 private:
  void colocarColor(const QColor& color);

  QPagedPaintDevice& dispositivo_;
  QPainter pintor_;
  QSizeF zona_;
  bool empezada_ = false;
  int pagina_ = 1;
  // Cambiar de letra o de color cuesta más que escribir: solo se hace cuando toca.
  const Letra* letra_ = nullptr;
  int tamano_ = 0;
  QColor color_;
};

}  // namespace comunes

#pragma once

#include <optional>
#include <vector>

#include "comunes/impresion/ImprimirRejilla.h"
#include "comunes/rejilla/Importe.h"

namespace comunes {

/// Margen de un centímetro y cuerpo de 8 puntos, en twips.
inline constexpr double kMargen = 567;
inline constexpr int kTamano = 160;

/// Un listado mientras se imprime: dónde va cada columna y por dónde va la página. Medidas en twips.
class Listado {
 public:
  struct Cabeza {
    QString titulo;
    QString subtitulo;
    bool conFecha;
  };

  Listado(TrabajoImpresion& impresora, const Rejilla& rejilla, Cabeza cabeza, bool marco, bool ajustar,
          AvanceImpresion avance);

  /// Cabeza de página y títulos. Las tres devuelven false si se pidió parar.
  bool empezar();
  bool filas(int desde, int hasta);
  bool bloque(const QString& lineas);
  /// En vez de las otras: la cabecera de una parte y sus filas. La primera empieza la página.
  bool seccion(const SeccionListado& seccion);

 private:
  struct Columna {
    int numero;
    double izquierda;
    double ancho;
  };
  struct LineaBloque {
    double x;
    QString texto;
    bool nueva;  ///< empieza una línea; si no, sigue en la anterior
  };

  void cabeza(bool conTitulos = true);
  void titulos();
  void fila(int fila);
  void celda(int fila, const Columna& columna, double alto, bool titulo);
  bool pagina(bool conTitulos = true);
  double altoTitulos() const;
  double altoBloque(const std::vector<LineaBloque>& trozos) const;
  bool cabe(double alto) const;
  std::vector<LineaBloque> partir(const QString& lineas) const;

  TrabajoImpresion& impresora_;
  const Rejilla& rejilla_;
  Cabeza cabeza_;
  bool marco_;
  AvanceImpresion avance_;
  Letra normal_{false};
  std::optional<Letra> negrita_;
  SignosNumero signos_ = SignosNumero::DelUsuario();
  std::vector<Columna> columnas_;
  double y_ = 0;
  double yTrasCabeza_ = 0;
  int hechas_ = 0;
  int total_ = 0;
  bool porSecciones_ = false;
};

}  // namespace comunes

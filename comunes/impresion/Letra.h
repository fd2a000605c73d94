#pragma once

#include <QFont>
#include <QRawFont>
#include <QString>
#include <vector>

namespace comunes {

/// La letra de los listados, Liberation Sans, que va dentro del programa. Mide en twips y sin ajustar pares
/// de letras, para que las cifras queden en columna. Pide una QGuiApplication.
class Letra {
 public:
  explicit Letra(bool negrita);

  /// Fuente de `tamano` twips de cuerpo, para un pintor que trabaja en twips.
  QFont Fuente(int tamano) const;
  double Ancho(const QString& texto, int tamano) const;
  /// Altura de una línea y distancia de su borde superior a la base de las letras.
  double Alto(int tamano) const { return (ascenso_ + descenso_) * tamano; }
  double Ascenso(int tamano) const { return ascenso_ * tamano; }

  /// Lo que cabe de `texto` en `ancho`, quitando caracteres por la derecha.
  QString Recortar(const QString& texto, int tamano, double ancho) const;
  /// El mayor tamaño hasta `tamano` con que `texto` cabe en `ancho`; al menos 1.
  int Encoger(const QString& texto, int tamano, double ancho) const;

 private:
  double avance(QChar caracter) const;

  bool negrita_;
  QRawFont cruda_;
  double ascenso_ = 0;
  double descenso_ = 0;
  // Por unidad de cuerpo; -1, sin medir; -2, la letra no lo tiene.
  mutable std::vector<float> avances_;
};

}  // namespace comunes

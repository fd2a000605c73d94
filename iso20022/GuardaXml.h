#pragma once

#include <QByteArray>
#include <cstddef>
#include <string>

namespace iso20022 {

/// Mira los bytes de un XML antes que quien lo lee, que tiene en memoria cada texto y cada marca enteros y no
/// les pone tope. Los deja pasar hasta la última marca acabada, y lanza FalloXml, con la línea, si
/// hay una definición de tipo (con las entidades que traería), un texto o una marca de más de kMaximo bytes,
/// o elementos dentro de otros hasta más de kMaxProfundidad.
class GuardaXml {
 public:
  static constexpr std::size_t kMaximo = std::size_t{64} << 10;
  static constexpr int kMaxProfundidad = 64;

  /// Añade bytes en UTF-8 y da los que ya se pueden leer, quizá ninguno.
  QByteArray dar(const QByteArray& bytes);
  /// Lo que quede, acabado o no: no hay más.
  QByteArray terminar();

 private:
  /// Fin de la marca que empieza en `desde`; npos si aún no está.
  std::size_t finMarca(std::size_t desde);
  std::size_t finEtiqueta(std::size_t desde);
  void comprobarLargo(std::size_t desde, std::size_t hasta) const;
  [[noreturn]] void fallar(const std::string& causa, std::size_t donde) const;
  QByteArray entregar(std::size_t hasta);

  std::string pendiente_;
  std::size_t lineas_ = 0;  // las acabadas en lo ya entregado
  int profundidad_ = 0;
};

/// "línea 3: no es…"
std::string ConLinea(std::size_t linea, const std::string& causa);

}  // namespace iso20022

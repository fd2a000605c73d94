#pragma once

#include <QString>
#include <optional>

namespace comunes {

/// Lo que hay en la caja cuando llega un carácter. Posiciones desde 0; sin selección, `cursor` es donde se
/// escribe.
struct EstadoCaja {
  QString texto;
  qsizetype cursor = 0;
  qsizetype seleccion = 0;
};

/// Lo que un descriptor deja escribir. Leerlo avisa si faltan T o L, y L vale entonces 0.
class Filtro {
 public:
  explicit Filtro(const QString& descriptor);

  /// El carácter que se escribe por `tecla`, o 0 si se rechaza. No mira la longitud.
  char32_t Tecla(const EstadoCaja& caja, char32_t tecla) const;

  /// Lo que se escribe por un texto que llega de una vez (pegado, soltado, método de entrada), cortado en L.
  /// Un número no se corta, que sería otro: si no cabe no se escribe nada, y no hay valor.
  std::optional<QString> Texto(const EstadoCaja& caja, const QString& texto) const;

  /// Por qué no se escribe `tecla`, en una frase; "" si se escribe, o si el tipo no rechaza nada.
  QString Motivo(const EstadoCaja& caja, char32_t tecla) const;
  /// Por qué no cabe un número más largo.
  QString MotivoLongitud() const;

  /// true si la caja es de un número y `texto` es uno con separadores de grupo ("1.234,50").
  bool EsNumeroConGrupos(const QString& texto) const;

  qsizetype longitud() const { return longitud_; }

 private:
  char32_t numero(const EstadoCaja& caja, char32_t c) const;
  QString motivoNumero(const EstadoCaja& caja, char32_t c) const;
  bool esTipo(const char* letras) const;

  QString tipo_;
  int decimales_ = 0;
  qsizetype longitud_ = 0;
};

}  // namespace comunes

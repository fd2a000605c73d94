#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace herramientas {

/// Importe en coma fija, con seis decimales.
using Millonesimas = std::int64_t;
inline constexpr int kMaxDecimales = 6;
inline constexpr int kMaxEnteras = 12;

/// Máquina de sumar con cinta, sin ventana. El número que se ve es el tecleado o el de la última orden, y lo
/// toma la orden siguiente: repetir + repite el sumando. × y ÷ esperan otro número y los cierran =, %, + o −.
/// Lo que se suma y lo que resulta se redondea a los decimales de la máquina, la mitad hacia fuera del cero;
/// los factores conservan los suyos. Una orden que falla no cambia nada ni sale en la cinta.
class Sumadora {
 public:
  enum class Orden { Mas, Menos, Por, Entre, Igual, Porcentaje, Subtotal, Total, Signo, Borrar };
  enum class Fallo {
    Ninguno,
    Desbordamiento,   ///< más de 12 cifras enteras
    DivisionPorCero,  ///< se olvida el divisor; el dividendo sigue esperando
    FaltaNumero,      ///< × o ÷ sin el segundo
    NumeroSuelto,     ///< un total, un subtotal o = con un número que nadie ha recogido
    SinBase,          ///< % sin suma ni × o ÷ del que sacarlo
    NoCabe,           ///< una cifra de más en lo tecleado
  };

  /// Signos de la cinta que no son el de su tecla.
  static constexpr char16_t kSubtotal = u'◊';
  static constexpr char16_t kTotal = u'*';
  static constexpr char16_t kResultado = u'R';  ///< de = o %
  static constexpr char16_t kBorrado = u'C';    ///< con la suma que se deja
  static constexpr char16_t kRedondeo = u'≈';   ///< diferencia al pedir menos decimales
  struct Linea {
    Millonesimas valor;
    int decimales;
    char16_t signo;
  };

  /// '0' a '9' o '.'; la primera tras una orden empieza otro número.
  Fallo teclear(char tecla);
  /// Quita lo último tecleado.
  void retroceder();
  /// Un número entero, como si se tecleara.
  Fallo poner(Millonesimas valor);

  /// % sin × ni ÷ es el tanto por ciento de la suma. Subtotal y total ponen la suma a la vista; el total la
  /// deja en cero. Borrar quita lo tecleado y, sin ello, × o ÷ y, sin ellos, la suma.
  Fallo orden(Orden orden);
  /// La tecla Intro: = si espera × o ÷; si no, subtotal y, repetida, total.
  Fallo intro();

  /// De 2 a 6. Con menos, la suma y el número a la vista se redondean.
  Fallo ponerDecimales(int decimales);
  void cintaNueva();

  int decimales() const { return decimales_; }
  /// Lo tecleado, con punto decimal; vacío si lo que se ve es de una orden.
  const std::string& tecleado() const { return tecleado_; }
  Millonesimas valor() const;
  Millonesimas suma() const { return suma_; }
  /// Números sumados y restados desde el último total.
  int partidas() const { return partidas_; }
  /// Por o Entre si esperan el segundo número; si no, Igual.
  Orden pendiente() const { return pendiente_; }
  Millonesimas primero() const { return primero_; }
  const std::vector<Linea>& cinta() const { return cinta_; }

 private:
  Fallo sumar(bool resta);
  Fallo encadenar(Orden orden);
  Fallo cerrar(bool porcentaje);
  Fallo recoger(bool total);
  void borrar();
  void apuntar(Millonesimas valor, char16_t signo) { cinta_.push_back({valor, decimales_, signo}); }
  void apuntarFactor(Millonesimas valor, char16_t signo);
  void mostrar(Millonesimas valor, bool operando);
  Fallo dividirPorCero();

  std::string tecleado_;
  Millonesimas valor_ = 0;
  bool operando_ = false;  ///< lo que se ve puede ser el segundo de × o ÷
  Millonesimas suma_ = 0;
  int partidas_ = 0;
  int decimales_ = 2;
  Orden pendiente_ = Orden::Igual;
  Millonesimas primero_ = 0;
  bool trasSubtotal_ = false;
  std::vector<Linea> cinta_;
};

}  // namespace herramientas

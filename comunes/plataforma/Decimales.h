#pragma once

#include <QString>
#include <optional>
#include <string>

namespace comunes {

/// Un número decimal como sus cifras: exacto con cualquier número de ellas.
struct Cifras {
  bool negativo = false;
  std::string enteras;  ///< vacías, cero
  std::string decimales;

  bool vacias() const { return enteras.empty() && decimales.empty(); }
};

/// Qué se entiende por un número. Lo que cada sitio admite es distinto; cómo se lee, no.
struct ReglasDecimal {
  enum class Grupos {
    Sueltos,       ///< el signo de grupo, donde sea, tras alguna cifra
    DeTres,        ///< tres cifras exactas en cada grupo y de una a tres delante
    DeTresSinCero  ///< además, lo de delante no empieza por cero: si no, el signo no separa grupos
  };

  QStringView signos;  ///< los que valen delante: de "+", "-" y "−"
  QStringView decimal;
  QStringView grupo = {};  ///< vacío, no hay
  Grupos grupos = Grupos::Sueltos;
};

/// Lo que se ha leído del principio de un texto.
struct DecimalLeido {
  Cifras cifras;
  bool conGrupos = false;
  bool conDecimal = false;  ///< estaba el signo decimal, con cifras detrás o sin ellas
  QStringView cola;         ///< lo que sigue, que ya no es del número
};

/// Lee el número por el que empieza `texto`, sin blancos delante. No falla: sin número no hay cifras.
DecimalLeido LeerDecimal(QStringView texto, const ReglasDecimal& reglas);

/// Sin los blancos y tabuladores de delante.
QStringView SinBlancosDelante(QStringView texto);

/// El binario más cercano; sin valor si no cabe. Sin cifras no es un número.
std::optional<double> ValorDe(const Cifras& cifras);

/// Con `decimales` cifras decimales, la mitad hacia fuera del cero, y sin ceros delante; lo que queda en
/// cero, sin signo.
Cifras Redondear(Cifras cifras, int decimales);

/// Signo, parte entera en grupos de tres y decimales; lo que está vacío no se escribe.
QString ComponerDecimal(const Cifras& cifras, QStringView decimal, QStringView grupo);

}  // namespace comunes

#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "remesa/ListaRegistros.h"
#include "remesa/Registro.h"

namespace remesa {

/// Contadores del recálculo de totales; importe en céntimos. Son de 32 bits con signo, como los del sistema.
struct Totales {
  std::int32_t registros = 0;
  std::int32_t importe = 0;
  std::int32_t adeudos = 0;
};

/// ¿Entra el registro en la acumulación? "01" y "02" solo en la primera importación; "03" y los de totales,
/// siempre; los demás códigos, nunca.
bool EntraEnImportacion(std::string_view registro, bool primera);

/// Lo que un registro de totales recibe en unas posiciones.
struct Cambio {
  Posiciones donde;
  std::string texto;
};

/// Escribe los cambios en su registro (que no se alarga).
void Aplicar(std::string& registro, std::span<const Cambio> cambios);

/// El recálculo de totales, registro a registro y en orden. Los contadores corren sin ponerse a cero entre
/// bloques.
class Recuento {
 public:
  /// Cuenta el registro y da lo que hay que escribir en él (vale hasta el siguiente); nada si no es de
  /// totales. Lanza ErrorEjecucion 6 si un contador no cabe en 32 bits y 5 si el registro de totales no
  /// alcanza sus posiciones.
  std::span<const Cambio> contar(std::string_view registro);
  const Totales& totales() const noexcept { return totales_; }
  /// Descuenta los registros de totales contados hasta ahora, como si no estuvieran.
  void quitarTotales();

 private:
  void sumarRegistro(bool deTotales);
  void sumarImporte(std::string_view registro);
  void cambiar(std::string_view registro, Posiciones donde, std::string texto);

  Totales totales_;
  std::int32_t deTotales_ = 0;
  std::string fecha_;
  std::vector<Cambio> cambios_;
};

enum class Destino { Quitar, Conservar, Reescribir };

/// Una sucesión de importaciones con su recálculo tras cada una, registro a registro: lo que la ventana hace
/// sobre sus listas, aplicable a un flujo. Da el mismo resultado y lanza los mismos errores.
class ReglasImportacion {
 public:
  /// Antes de los registros de cada fichero. En los que no son el último los registros de totales se cuentan
  /// y se comprueban, pero se quitan (los quitaría la importación siguiente).
  void empezarFichero(bool ultimo);
  /// Qué hacer con el registro siguiente. Con `Reescribir`, `cambios()` dice qué posiciones. Lanza como
  /// Recuento.
  Destino dar(std::string_view registro);
  std::span<const Cambio> cambios() const noexcept { return cambios_; }
  const Totales& totales() const noexcept { return recuento_.totales(); }

 private:
  Recuento recuento_;
  std::span<const Cambio> cambios_;
  bool primera_ = true;
  bool ultimo_ = false;
  bool quedanRegistros_ = false;   // "01", "02" o "03" en la acumulación
  bool totalesEnFichero_ = false;  // el último fichero dejó registros de totales
};

/// Añade a `acumulado` los registros de `previo` según las reglas de la importación (quita antes los totales
/// que hubiera; "01" y "02" solo si `acumulado` estaba vacío; otros códigos se descartan). No recalcula.
void Importar(ListaRegistros& acumulado, const ListaRegistros& previo);

/// Quita todo registro "04", "05" y "99", esté donde esté.
void QuitarTotales(ListaRegistros& acumulado);

/// Reescribe los registros de totales con contadores corridos. Lanza ErrorEjecucion 6 si un contador no cabe
/// en 32 bits y 5 si un registro de totales no alcanza sus posiciones; lo ya reescrito se conserva.
/// `alPasar` recibe cada registro como queda: quien tenga que recorrerlos aprovecha el mismo recorrido.
Totales RecalcularTotales(ListaRegistros& acumulado,
                          const std::function<void(std::string_view registro)>& alPasar = {});

}  // namespace remesa

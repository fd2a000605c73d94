#pragma once

#include <QHash>
#include <QObject>
#include <QUndoStack>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "remesa/IndiceBloques.h"
#include "remesa/ListaRegistros.h"
#include "ventanas/principal/VistaRegistros.h"

namespace principal {

/// La acumulación tal como está en un momento. Los registros no se copian: su lista, con 16 bytes de cada
/// uno, mantiene vivos sus bloques.
struct EstadoAcumulacion {
  remesa::ListaRegistros lista;
  QString importados;                         ///< FicherosImportados
  QHash<QString, QString> rutas;              ///< De la ruta en mayúsculas a la ruta.
  std::vector<VistaRegistros::Tramo> tramos;  ///< La selección.
  int actual = -1;
  bool bloques = false;                         ///< «Conservar acreedores y fechas».
  std::optional<remesa::Resumen> resumen;       ///< Sin él, hay que contar la lista al volver.
  std::optional<remesa::IndiceBloques> indice;  ///< Igual, y solo si se conservan los bloques.

  /// Bytes que ocupa, sin los de los registros.
  std::size_t memoria() const noexcept;
};

/// Los pasos que se pueden deshacer y rehacer. Un paso tiene un solo estado: mientras se puede deshacer, el
/// de antes de darlo; deshecho, el de después. Deshacer y rehacer lo cambian por el que haya, así que no
/// copian nada.
///
/// Los pasos ocupan a lo más `tope` bytes, y otros tantos los registros que solo ellos mantienen vivos: si no
/// caben se va el más antiguo. El último que vació la remesa no cuenta ni se va; cuando se van los que le
/// siguen, deshacerlo los deshace también. Y lo último que se hizo se puede deshacer siempre, ocupe lo que
/// ocupe.
class Historia : public QObject {
  Q_OBJECT

 public:
  static constexpr std::size_t kTope = std::size_t{200} << 20;

  /// Pone el estado que se le da y deja ahí el que había. Si lanza, los dos siguen donde estaban.
  using Intercambiar = std::function<void(EstadoAcumulacion&)>;

  Historia(Intercambiar intercambiar, QObject* padre, std::size_t tope = kTope);
  ~Historia() override;

  /// La orden `que` ("eliminar 3 adeudos") llevó la acumulación de `antes` a `ahora`. `otras`: listas que
  /// mantienen vivos sus registros por su cuenta.
  void apuntar(const QString& que, EstadoAcumulacion antes, const remesa::ListaRegistros& ahora,
               std::span<const remesa::ListaRegistros* const> otras);
  /// Lo que se desharía o se reharía; "" si nada.
  QString porDeshacer() const { return pila_.undoText(); }
  QString porRehacer() const { return pila_.redoText(); }
  void deshacer() { pila_.undo(); }
  void rehacer() { pila_.redo(); }

  struct Ocupacion {
    std::size_t pasos = 0;      ///< Cuántos.
    std::size_t propia = 0;     ///< Bytes de los pasos.
    std::size_t registros = 0;  ///< Bytes de registros que solo ellos mantienen vivos.
  };
  /// De lo que cuenta para el tope. `vivas`: las listas que no dependen de los pasos.
  Ocupacion ocupacion(std::span<const remesa::ListaRegistros* const> vivas) const;

 signals:
  /// Es otro lo que se desharía o se reharía.
  void cambio();

 private:
  struct Paso;
  class Orden;

  /// El último que vació la remesa; nulo si ninguno.
  const Paso* vaciado() const;
  void recortar(std::span<const remesa::ListaRegistros* const> vivas);

  Intercambiar intercambiar_;
  QUndoStack pila_{this};
  std::size_t tope_;
  std::vector<std::shared_ptr<Paso>> pasos_;  // los de la pila, del más antiguo al último
};

}  // namespace principal

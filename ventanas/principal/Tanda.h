#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "remesa/IndiceBloques.h"
#include "remesa/ListaRegistros.h"
#include "remesa/Observaciones.h"
#include "remesa/Resumen.h"

namespace principal {

/// Una remesa de las que se importan de una vez.
struct RemesaDeTanda {
  QString ruta;
  remesa::ListaRegistros lista;
  remesa::Resumen resumen;
  QString mezcla;  ///< De qué son sus adeudos, si se mezclan con otros: como TextoMezcla.
};

/// Varios ficheros que se importan de una vez, en su orden. Se leen antes de importar ninguno, para decir lo
/// que se perdería; los que no valen, y los ya importados, se apartan con su razón.
class Tanda {
 public:
  /// `indice`, el de la acumulación si se conservan los bloques.
  Tanda(remesa::Resumen acumulado, std::optional<remesa::IndiceBloques> indice);

  /// Ya importado.
  void repetir(const QString& ruta);
  void apartar(const QString& ruta, const QString& porque);
  /// `perdidas`, lo que un XML dice y sus registros no tienen.
  void tomar(const QString& ruta, remesa::ListaRegistros lista, const QStringList& perdidas);

  std::vector<RemesaDeTanda>& tomadas() { return tomadas_; }
  /// Lo que se perdería o cambiaría, con el nombre del fichero delante.
  const QStringList& observado() const { return observado_; }
  /// Una línea con lo importado, lo apartado y lo que ya estaba. Céntimos.
  QString resultado(std::size_t ficheros, std::size_t adeudos, std::int64_t importe) const;

 private:
  std::vector<remesa::Observacion> observar(const remesa::Resumen& resumen,
                                            const remesa::ListaRegistros& lista);

  remesa::Resumen acumulado_;
  std::optional<remesa::IndiceBloques> indice_;
  std::vector<RemesaDeTanda> tomadas_;
  QStringList observado_, apartados_, repetidos_;
};

}  // namespace principal

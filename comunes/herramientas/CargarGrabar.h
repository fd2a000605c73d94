#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <string>

class QWidget;

namespace herramientas {

/// Bytes que un editor llega a cargar: más sería otra clase de fichero.
inline constexpr qint64 kMaximoTexto = 256 * 1024 * 1024;

/// Lo que cambia de un editor a otro al cargar y grabar su fichero.
struct Contenido {
  QString titulo;                                      ///< de la petición de la ruta
  QWidget* caja;                                       ///< lo que se edita: la petición sale en su esquina
  std::function<bool(const QByteArray& bytes)> poner;  ///< recibe todo lo leído; false si no se quiere
  std::function<std::string()> bytes;                  ///< da todo lo que se escribe
};

/// `Accion`: "CARGAR", "GRABAR" (pregunta antes de sustituir un fichero) o "REGRABAR" (no pregunta); otra no
/// hace nada. Sin `Ruta` la pide y, si sirvió, la deja puesta. Un fichero que falta se carga vacío; se graba
/// todo o nada. Devuelve false si no se hizo nada. Lanza ficheros::ErrorEjecucion.
bool CargarGrabar(const QString& Accion, QString& Ruta, const Contenido& contenido);

/// Pregunta si abrir `texto` cuando tardaría: con una línea enorme, o con millones de ellas. true si no hay
/// que preguntar o se contesta que sí.
bool QuiereAbrir(const QString& texto);

}  // namespace herramientas

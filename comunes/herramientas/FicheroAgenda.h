#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "comunes/herramientas/Agenda.h"

namespace herramientas {

/// Ruta de la agenda del usuario: "Telefonos.csv" en su carpeta de datos.
QString RutaAgenda();

/// La agenda en su fichero, que pueden tener abierto varios programas a la vez. Lanza
/// ficheros::ErrorEjecucion; 321 si el fichero no es una agenda, que entonces no se toca.
class FicheroAgenda {
 public:
  explicit FicheroAgenda(QString ruta);

  const QString& ruta() const { return ruta_; }
  const Agenda& agenda() const { return agenda_; }

  /// Lee el fichero si ha cambiado; true si era así. Uno que no existe es una agenda vacía.
  bool releer();

  /// Con los demás programas esperando, lee el fichero, le hace `cambio` y lo guarda entero o no lo guarda.
  /// La carpeta se crea si falta. Error 70 si otro programa no lo suelta en cinco segundos.
  void cambiar(const std::function<void(Agenda&)>& cambio);

 private:
  QString ruta_;
  QByteArray bytes_;
  Agenda agenda_;
};

}  // namespace herramientas

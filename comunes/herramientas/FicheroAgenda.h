#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

#include "comunes/herramientas/Agenda.h"
#include "ficheros/ErrorEjecucion.h"

namespace herramientas {

/// Ruta de la agenda del usuario: "Telefonos.csv" en su carpeta de datos.
QString RutaAgenda();

/// Otro programa tiene la agenda y no se ha querido, o podido, esperar más.
class AgendaOcupada : public ficheros::ErrorEjecucion {
 public:
  AgendaOcupada(const std::filesystem::path& ruta, QString quien);
  /// Quién la tiene, para el operador: "ana, en el equipo PC1 (proceso 123)" u "otro programa".
  const QString& quien() const { return quien_; }

 private:
  QString quien_;
};

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
  /// La carpeta se crea si falta. Mientras otro lo tenga llama a `esperar` con quién es, lo que se lleva
  /// esperado y lo más que se espera (ms). Lanza AgendaOcupada si pasan cinco segundos o `esperar` devuelve
  /// false.
  using Espera = std::function<bool(const QString& quien, qint64 llevado, qint64 maximo)>;
  void cambiar(const std::function<void(Agenda&)>& cambio, const Espera& esperar = {});

 private:
  QString ruta_;
  QByteArray bytes_;
  Agenda agenda_;
};

}  // namespace herramientas

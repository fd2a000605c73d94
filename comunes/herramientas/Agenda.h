#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace herramientas {

enum DatoContacto { kNombre, kTelefono, kFax, kCorreo, kDatosContacto };

/// Títulos de los datos, en su orden; el último es "eMail o Código".
extern const std::array<QString, kDatosContacto> kTitulosContacto;

struct Contacto {
  QString clave;  ///< lo distingue de los demás mientras exista
  std::array<QString, kDatosContacto> datos;
  QStringList otros;  ///< lo de las columnas que el fichero tenga de más
};

struct Agenda {
  QStringList otrasColumnas;
  std::vector<Contacto> contactos;

  Contacto* buscar(const QString& clave);
};

/// Un texto de fuera en una sola línea, sin blancos de más.
QString EnUnaLinea(const QString& texto);
/// Minúsculas y sin tildes, para comparar; la ñ sigue siendo ñ.
QString Plegar(const QString& texto);
/// Lo que dos contactos iguales tienen igual: nombre plegado y cifras del teléfono (o del fax, sin él), sin
/// el prefijo de España.
QString IdentidadContacto(const Contacto& contacto);
/// Si cada palabra de `buscado` está en algún dato; las que son cifras, también en los números sin sus
/// blancos. Sin palabras, siempre.
bool Coincide(const Contacto& contacto, const QString& buscado);

/// Clave que no tendrá otro contacto.
QString ClaveNueva();

/// Agenda de los bytes de su fichero: CSV con títulos en la primera línea. A las filas sin clave, o con una
/// repetida, les da una que depende solo de lo que llevan. Sin bytes, una agenda vacía; sin valor, no es una
/// agenda.
std::optional<Agenda> LeerAgenda(const QByteArray& bytes);
/// UTF-8 con marca, ";" y CR LF, que las hojas de cálculo españolas abren tal cual.
QByteArray EscribirAgenda(const Agenda& agenda);

/// Lo que el operador hace con un contacto: sin `antes` lo añade y sin `despues` lo quita. `antes` es como lo
/// veía.
struct CambioContacto {
  std::optional<Contacto> antes;
  std::optional<Contacto> despues;
};
enum class FinCambio {
  Hecho,
  Mezclado,     ///< otro programa había cambiado otros datos: quedan los de los dos
  Conservados,  ///< había cambiado los mismos: quedan los dos contactos
  Recuperado,   ///< lo había quitado: vuelve con lo nuevo
  NoQuitado,    ///< lo había cambiado: se queda
};
/// Hace el cambio sobre la agenda de ahora, que puede no ser la que veía el operador. No pierde nada de
/// nadie.
FinCambio Aplicar(Agenda& agenda, const CambioContacto& cambio);

}  // namespace herramientas

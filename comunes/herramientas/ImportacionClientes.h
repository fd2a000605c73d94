#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "comunes/herramientas/Agenda.h"

namespace herramientas {

enum class EstadoCliente {
  Nuevo,
  Repetido,  ///< ya está en la agenda, o antes en el fichero, con el mismo nombre y número
  SinNombre,
  Sobran,  ///< su línea tiene más datos que columnas: no se sabe cuál es cuál
};
struct Cliente {
  Contacto contacto;
  EstadoCliente estado = EstadoCliente::Nuevo;
};

struct ImportacionClientes {
  QString fallo;  ///< por qué no se puede importar, para el operador; vacío si se puede
  std::vector<Cliente> clientes;

  int cuantos(EstadoCliente estado) const;
};

/// Clientes de un fichero CSV cuya primera línea nombra en cualquier orden las columnas Código, Nombre,
/// Teléfono, Fax y eMail; solo Nombre ha de estar. UTF-8 o Windows-1252; separa ";" o ",", lo que más
/// columnas reconozca. El eMail o, sin él, el Código es el último dato del contacto.
ImportacionClientes LeerClientes(const QByteArray& bytes, const Agenda& agenda);

/// Añade los nuevos que sigan sin estar en la agenda; devuelve cuántos.
int AnadirClientes(Agenda& agenda, const ImportacionClientes& importacion);

}  // namespace herramientas

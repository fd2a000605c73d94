#include "comunes/herramientas/ListaContactos.h"

#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Orden.h"

namespace herramientas {

using namespace Qt::StringLiterals;

void ListarContactos(comunes::Rejilla& rejilla, const Agenda& agenda, const QString& buscado, int columna,
                     bool marcar) {
  const comunes::SinRedibujo quieta(rejilla);
  comunes::PrepararRejilla(rejilla, u"#0;Nombre#34;Teléfono#18;Fax#18;eMail o Código#25"_s);
  int fila = rejilla.FixedRows();
  for (const Contacto& contacto : agenda.contactos) {
    if (!Coincide(contacto, buscado)) continue;
    comunes::PonerCelda(rejilla, fila, kColumnaClave, contacto.clave);
    for (int i = 0; i < kDatosContacto; ++i)
      comunes::PonerCelda(rejilla, fila, kColumnaClave + 1 + i, contacto.datos[static_cast<std::size_t>(i)]);
    ++fila;
  }
  rejilla.PonerRows(fila);
  constexpr int kColumnaNombre = kColumnaClave + 1 + kNombre;
  if (columna != kColumnaNombre) comunes::OrdenarColumna(rejilla, kColumnaNombre);
  comunes::OrdenarColumna(rejilla, columna, marcar);
}

}  // namespace herramientas

#include "ventanas/editor/Peticion.h"

#include "comunes/campos/Formato.h"
#include "ventanas/editor/Ayudas.h"

namespace editor {

using namespace Qt::StringLiterals;

namespace {

/// Lo que la petición contestará si se acepta lo escrito.
QString respuesta(const CampoDescrito& campo, QString escrito) {
  const QString descriptor = DescriptorPeticion(campo.ayuda, campo.longitud);
  return comunes::UnformatValue(comunes::FormatValue(escrito, descriptor), descriptor);
}

bool cabe(const CampoDescrito& campo, const QString& escrito) {
  return campo.ayuda != Ayuda::Euros || respuesta(campo, escrito).remove(u'.').size() <= campo.longitud;
}

QString resultado(const CampoDescrito& campo, const QString& escrito) {
  const auto valor = ConvertirRespuesta(campo.ayuda, campo.longitud, respuesta(campo, escrito));
  const QString sera = valor && cabe(campo, escrito) ? Interpretar(campo.ayuda, *valor) : QString();
  if (sera.isEmpty()) return {};
  return u"= "_s + sera + (campo.ayuda == Ayuda::Euros ? u" €"_s : QString());
}

QString objecion(const CampoDescrito& campo, const QString& escrito) {
  const QString dato = escrito.trimmed();
  if (dato.isEmpty()) return {};
  if (!cabe(campo, dato)) {
    return u"«%1» no cabe: el importe mayor es %2 €."_s.arg(
        dato, Interpretar(campo.ayuda, QString(campo.longitud, u'9')));
  }
  if (campo.ayuda != Ayuda::Fecha) return {};
  const auto fecha = ConvertirRespuesta(campo.ayuda, campo.longitud, respuesta(campo, dato));
  if (!fecha) return u"La fecha «%1» no existe."_s.arg(dato);
  if (DatoCorrecto(campo.ayuda, *fecha)) return {};
  return u"La fecha «%1» no vale: %2."_s.arg(dato, PorQueNoVale(campo.ayuda, *fecha));
}

}  // namespace

QString ValorPeticion(const CampoDescrito& campo, const QString& texto) {
  if (campo.ayuda != Ayuda::Fecha && campo.ayuda != Ayuda::Euros) return {};
  return DatoCorrecto(campo.ayuda, texto) ? Interpretar(campo.ayuda, texto) : QString();
}

comunes::GuiaPeticion GuiaDe(const CampoDescrito& campo) {
  if (campo.ayuda != Ayuda::Fecha && campo.ayuda != Ayuda::Euros) return {};
  return {campo.ayuda == Ayuda::Fecha ? u"Por ejemplo, 05/03/2026: día, mes y año."_s
                                      : u"Por ejemplo, 1234.50: los miles, sin punto."_s,
          [campo](const QString& escrito) { return resultado(campo, escrito); },
          [campo](const QString& escrito) { return objecion(campo, escrito); }};
}

}  // namespace editor

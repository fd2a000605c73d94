#include "ventanas/principal/TomarRemesa.h"

#include <algorithm>

#include "comunes/plataforma/Texto.h"
#include "devoluciones/Lote.h"
#include "ficheros/ErrorEjecucion.h"
#include "iso20022/LectorXml.h"
#include "iso20022/LecturaMensaje.h"
#include "iso20022/Textos.h"

namespace principal {

using namespace Qt::StringLiterals;

QString PorQueNoSeToma(const QString& ruta) {
  const std::filesystem::path fichero = comunes::ARuta(ruta);
  if (devoluciones::EsDeDevoluciones(fichero)) return u"trae devoluciones y se ve en Devoluciones"_s;
  if (iso20022::EmpiezaComoXml(fichero)) return {};
  switch (remesa::ComprobarCabeza(fichero)) {
    case remesa::Cabeza::Q19:
      return {};
    case remesa::Cabeza::VersionAnterior:
      return u"es del Cuaderno 19 antiguo"_s;
    case remesa::Cabeza::Desconocida:
      break;
  }
  return u"no es una remesa del Cuaderno 19.14"_s;
}

bool TraeDevoluciones(const QString& ruta) {
  try {
    return devoluciones::EsDeDevoluciones(comunes::ARuta(ruta));
  } catch (const ficheros::ErrorEjecucion&) {
    return false;
  }
}

RemesaTomada LeerRemesa(const QString& ruta, const remesa::AvanceLectura& avance) {
  const std::filesystem::path fichero = comunes::ARuta(ruta);
  RemesaTomada tomada;
  if (!iso20022::EmpiezaComoXml(fichero)) {
    tomada.lista = remesa::LeerFichero(fichero, avance);
    return tomada;
  }
  iso20022::MensajeLeido mensaje = iso20022::LeerMensaje(fichero, avance);
  tomada.lista = std::move(mensaje.registros);
  tomada.perdidas = iso20022::ResumirAvisos(mensaje.avisos);
  tomada.rechazo = mensaje.rechazo;
  return tomada;
}

QString EnCaja(const QStringList& frases) {
  constexpr qsizetype kCaben = 8;
  QStringList lineas;
  for (QString frase : frases.first(std::min(kCaben, frases.size())))
    lineas << comunes::SinControles(frase.replace(u';', u','));
  if (frases.size() > kCaben) lineas << u"… y %1 más."_s.arg(frases.size() - kCaben);
  return lineas.join(u';');
}

}  // namespace principal

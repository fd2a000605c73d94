#include "comunes/herramientas/LineasAjustes.h"

#include <QFileInfo>

#include "comunes/plataforma/IniFiles.h"

namespace herramientas {

using namespace Qt::StringLiterals;

QStringList LineasAjustes(const QString& ruta) {
  if (QFileInfo(ruta).fileName().compare(QFileInfo(comunes::RutaAjustes).fileName(), Qt::CaseInsensitive) !=
      0)
    return {};
  return {
      u"[Comunes]"_s,
      u"OrigenQ19="_s,
      u"ExtensionQ19="_s,
      u"DestinoQ19="_s,
      u"AnterioresQ19="_s,
      u"SoloAdeudosQ19="_s,
      u"BloquesQ19="_s,
      u"VistaQ19="_s,
      u"ClientesZor="_s,
      u"[Entidades]"_s,
      u"[01]"_s,
      u"[02]"_s,
      u"[03003]"_s,
      u"[03004]"_s,
      u"[03005]"_s,
      u"[03006]"_s,
      u"[04]"_s,
      u"[05]"_s,
      u"[99]"_s,
      u"Titulo="_s,
      u"Campos="_s,
      u"; rótulo;longitud;posición;N si no se cambia;clase A o N;relleno I, D o C;OP;ayuda;notas;explicación"_s,
      u"1=Texto;35;1;S;A;I;;;;"_s,
      u"1=Texto opcional;35;1;S;A;I;OP;;;"_s,
      u"1=Cifras;8;1;S;N;C;;;;"_s,
      u"1=Número;8;1;S;N;C;;NUMERO;;"_s,
      u"1=Fecha;8;1;S;N;C;;FECHA;;"_s,
      u"1=Importe;11;1;S;N;C;;EUROS;;"_s,
      u"1=Cuenta;34;1;S;A;I;;IBAN;;"_s,
      u"1=Libre;10;1;N;A;I;;;;"_s};
}

}  // namespace herramientas

#include "comunes/herramientas/LineasAjustes.h"

#include <QFileInfo>

#include "comunes/plataforma/IniFiles.h"

namespace herramientas {

QStringList LineasAjustes(const QString& ruta) {
  if (QFileInfo(ruta).fileName().compare(QFileInfo(comunes::RutaAjustes).fileName(), Qt::CaseInsensitive) !=
      0)
    return {};
  return {
      "[Comunes]",
      "OrigenQ19=",
      "ExtensionQ19=",
      "DestinoQ19=",
      "ClientesZor=",
      "[01]",
      "[02]",
      "[03003]",
      "[03004]",
      "[03005]",
      "[03006]",
      "[04]",
      "[05]",
      "[99]",
      "Titulo=",
      "Campos=",
      "; rótulo;longitud;posición;N si no se cambia;clase A o N;relleno I, D o C;OP;ayuda;notas;explicación",
      "1=Texto;35;1;S;A;I;;;;",
      "1=Texto opcional;35;1;S;A;I;OP;;;",
      "1=Cifras;8;1;S;N;C;;;;",
      "1=Número;8;1;S;N;C;;NUMERO;;",
      "1=Fecha;8;1;S;N;C;;FECHA;;",
      "1=Importe;11;1;S;N;C;;EUROS;;",
      "1=Cuenta;34;1;S;A;I;;IBAN;;",
      "1=Libre;10;1;N;A;I;;;;"};
}

}  // namespace herramientas

#include "consola/Ajustes.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <memory>

#include "comunes/plataforma/IniFiles.h"
#include "iso20022/Entidades.h"

namespace consola {

using namespace Qt::StringLiterals;

bool BuscarAjustes() {
  // La carpeta del programa solo se sabe con una aplicación creada.
  std::unique_ptr<QCoreApplication> aplicacion;
  if (!QCoreApplication::instance()) {
    static int argumentos = 1;
    static char nombre[] = "q19";
    static char* lista[] = {nombre, nullptr};
    aplicacion = std::make_unique<QCoreApplication>(argumentos, lista);
  }
  comunes::RutaAjustes = QCoreApplication::applicationDirPath() + u"/Tarvo.INI"_s;
  return QFileInfo(comunes::RutaAjustes).isFile();
}

std::function<std::string(std::string_view entidad)> BicsDeAjustes() {
  BuscarAjustes();
  return iso20022::BicsDe(comunes::RutaAjustes);
}

}  // namespace consola

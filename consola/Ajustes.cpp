#include "consola/Ajustes.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <map>
#include <memory>

#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"

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
  return [hay = BuscarAjustes(),
          leidos = std::make_shared<std::map<std::string, std::string>>()](std::string_view entidad) {
    const auto [hallado, nueva] = leidos->try_emplace(std::string(entidad));
    if (nueva && hay)
      hallado->second = comunes::AWindows1252(
          comunes::ReadINI(comunes::RutaAjustes, u"Entidades"_s, QString::fromStdString(hallado->first), {})
              .trimmed());
    return hallado->second;
  };
}

}  // namespace consola

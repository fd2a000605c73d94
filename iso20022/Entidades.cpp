#include "iso20022/Entidades.h"

#include <map>
#include <memory>

#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"

namespace iso20022 {

using namespace Qt::StringLiterals;

std::function<std::string(std::string_view entidad)> BicsDe(const QString& ajustes) {
  return [ajustes,
          leidos = std::make_shared<std::map<std::string, std::string>>()](std::string_view entidad) {
    const auto [hallado, nueva] = leidos->try_emplace(std::string(entidad));
    if (nueva)
      hallado->second = comunes::AWindows1252(
          comunes::ReadINI(ajustes, u"Entidades"_s, QString::fromStdString(hallado->first), {}).trimmed());
    return hallado->second;
  };
}

}  // namespace iso20022

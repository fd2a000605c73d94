#pragma once

#include <QStringView>
#include <string>

namespace iso20022 {

/// Un texto de XML como bytes de Windows-1252, sin los blancos de los lados. Los finales de línea y demás
/// controles pasan a blancos; lo que la página no tiene, a la misma letra sin sus signos o a "?". Da false si
/// algo de dentro no es lo que era.
bool ABytes(QStringView texto, std::string& bytes);

}  // namespace iso20022

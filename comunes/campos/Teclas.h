#pragma once

#include <QString>

namespace comunes {

/// Encola Tab para el control que tiene el foco.
void PressTab();

/// Encola una tecla para el control que tiene el foco. `tecla`: código virtual de Windows (9 Tab, 13 Intro,
/// 33 RePág, 65 "A", 112 F1…). `modificador`: "S" Mayús, "C" Control, "A" Alt, "" ninguno. Un código sin
/// tecla conocida no hace nada.
void PressKey(int tecla, const QString& modificador);

}  // namespace comunes

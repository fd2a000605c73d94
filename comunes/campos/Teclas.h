#pragma once

#include <QString>

class QWidget;

namespace comunes {

/// Encola Tab para el control que tiene el foco o, si ninguno lo tiene porque la ventana no ha recuperado aún
/// la activación tras un mensaje, para `sinFoco`.
void PressTab(QWidget* sinFoco = nullptr);

/// Encola una tecla para el mismo control que PressTab. `tecla`: código virtual de Windows (9 Tab, 13 Intro,
/// 33 RePág, 65 "A", 112 F1…). `modificador`: "S" Mayús, "C" Control, "A" Alt, "" ninguno. Un código sin
/// tecla conocida no hace nada.
void PressKey(int tecla, const QString& modificador, QWidget* sinFoco = nullptr);

}  // namespace comunes

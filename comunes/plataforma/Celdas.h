#pragma once

#include <QString>
#include <QStringList>

namespace comunes {

/// El texto de una celda que viene de fuera, de modo que una hoja de cálculo no lo tome por una fórmula: con
/// un apóstrofo delante si empieza como una.
QString SinFormula(QString valor);

/// Las celdas, separadas por tabuladores, para pegarlas en una hoja de cálculo; sin fin de línea. Las que
/// llevan comillas van entre ellas, y ninguna debe llevar tabuladores ni cambios de línea.
QString FilaTabulada(const QStringList& celdas);

}  // namespace comunes

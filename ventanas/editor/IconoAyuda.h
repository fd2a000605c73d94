#pragma once

#include <QColor>
#include <QIcon>

namespace editor {

/// Lápiz dibujado en ese color, para 100 %, 150 % y 200 %.
QIcon IconoAyuda(const QColor& color);

}  // namespace editor

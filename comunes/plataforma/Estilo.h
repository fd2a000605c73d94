#pragma once

class QStyle;

namespace comunes {

/// El estilo del escritorio, con lo que en uno oscuro no se distinguiría del fondo. Es de quien lo pide.
QStyle* CrearEstilo();

}  // namespace comunes

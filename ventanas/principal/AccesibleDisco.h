#pragma once

namespace principal {

/// Hace que la lista de unidades se presente a las ayudas técnicas con su nombre ("Disco") y la unidad como
/// valor: por su cuenta, el cuadro combinado de Qt da en Linux la unidad como nombre. Basta llamarla una vez.
void PrepararAccesibilidadDisco();

}  // namespace principal

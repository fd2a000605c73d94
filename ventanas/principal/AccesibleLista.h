#pragma once

namespace principal {

/// Presenta a las ayudas técnicas las listas de la ventana (carpetas, ficheros y registros) con lo que la
/// interfaz de Qt no da: tomar el foco, pulsar una fila como con un clic (o doble clic, donde eso es lo que
/// hace algo) y filas que no pasan de lo que se ve. Basta llamarla una vez.
void PrepararAccesibilidadListas();

}  // namespace principal

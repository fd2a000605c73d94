#pragma once

#include <QString>
#include <QStringList>

#include "comunes/rejilla/Importe.h"
#include "comunes/rejilla/Rejilla.h"

namespace comunes {

/// Construye las columnas según la especificación: campos separados por ";" o "|", cada uno
/// [<>]Título[#caracteres][=>]. Deja la fila de títulos y una fila vacía.
void PrepararRejilla(Rejilla& rejilla, const QString& especificacion);

/// Prepara una columna con un campo de la especificación y escribe su título en `fila`.
void DefinirColumna(Rejilla& rejilla, int fila, int columna, const QString& campo);

/// Escribe una celda; la rejilla crece si hace falta. Con `acumular`, suma al importe que hubiera y lo guarda
/// con `formato` (0 queda vacía).
void PonerCelda(Rejilla& rejilla, int fila, int columna, const QString& valor, bool acumular = false,
                const QString& formato = kFormatoImporte);

/// Inserta una fila vacía antes de `indice`.
void InsertarFila(Rejilla& rejilla, int indice);
void QuitarFila(Rejilla& rejilla, int fila);

/// Columna cuyo texto en `fila` es exactamente `titulo`; "#3" es la columna 3 sin buscar. Si no está, avisa y
/// devuelve 0; con `silencio`, devuelve -1.
int BuscarColumna(const Rejilla& rejilla, const QString& titulo, bool silencio = false, int fila = 0);

/// Escribe una celda con estilo y deja en ella la celda actual. Texto vacío, color -1, negrita distinta de 0
/// y 1 y letra distinta de "I", "C" y "D" no cambian lo suyo.
void EscribirCelda(Rejilla& rejilla, int fila, int columna, const QString& texto, int colorTexto = -1,
                   int colorFondo = -1, const QString& letra = {}, int negrita = -1);

/// Suma de las filas visibles y no insertadas de `desdeFila` a `hastaFila`, como "#,##0.00" (0 da "" salvo
/// con `ceros`). Con `columnaFiltro` distinta de -1, solo las filas con `valorFiltro` en ella. Lanza
/// ErrorEjecucion 6 si no cabe en 64 bits con cuatro decimales.
QString SumarColumna(const Rejilla& rejilla, int columna, int desdeFila, int hastaFila,
                     int columnaFiltro = -1, const QString& valorFiltro = {}, bool ceros = false);

/// Oculta las columnas tituladas `titulos`; con `mostrarTodas`, antes devuelve a todas su ancho.
void OcultarColumnas(Rejilla& rejilla, bool mostrarTodas, const QStringList& titulos);

}  // namespace comunes

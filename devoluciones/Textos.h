#pragma once

#include <QString>
#include <QStringList>

#include "devoluciones/Recuento.h"
#include "devoluciones/RemesaNueva.h"

// Todo lo que se dice de las devoluciones, que comparten la ventana y la consola. Es texto sin marcas, con
// datos de los ficheros tal como vienen.

namespace devoluciones {

/// "adeudos devueltos (Cuaderno 19.14)", "rechazos en XML (pain.002)"…
QString TextoForma(Forma forma);

/// Por qué no se cobró, en palabras; de un código desconocido, el código, y sin él, "sin motivo".
QString TextoMotivo(const Dato& motivo);
/// Qué hacer; vacío si el código no está en la tabla.
QString TextoConsejo(const Dato& motivo);

/// A quién: el nombre del deudor o, de un bloque entero, cuál es y cuántos adeudos tiene.
QString TextoQuien(const Devolucion& devolucion);
/// "No había saldo" con su código, lo que añade el banco y qué hacer, en frases.
QString TextoPorQue(const Devolucion& devolucion);
/// La cuenta en grupos de cuatro.
QString TextoIban(const Dato& cuenta);
/// DD/MM/AAAA; vacío si no se sabe.
QString TextoDia(const std::optional<remesa::Dia>& dia);
/// Céntimos con los signos del usuario; vacío si no se sabe.
QString TextoImporte(const std::optional<std::int64_t>& importe);

/// Un aviso de un fichero de esa forma, en una frase o dos.
QString TextoAviso(const AvisoLectura& aviso, Forma forma);

/// Dónde está su adeudo, dónde puede estar o que no está.
QString TextoCotejo(const Cotejo& cotejo, const Cotejo::Hallazgo& hallazgo);

/// Por qué una devolución elegida se queda fuera de la remesa nueva.
QString TextoFuera(const Fuera& fuera);

/// "12 adeudos, 512,30 €"; de un bloque entero que no dice cuántos son, "1 bloque entero".
QString TextoCuenta(const Cuenta& cuenta);
/// "AM04 No había saldo: 3 adeudos, 120,00 €"
QString TextoGrupoMotivo(const Grupo& grupo);
/// El acreedor y lo suyo.
QString TextoGrupoAcreedor(const Grupo& grupo);

/// Los títulos de las columnas de una lista de devoluciones y sus valores, en su orden. Con un cotejo, lo que
/// la devolución no trae es lo de su adeudo, y una columna dice dónde está.
QStringList TitulosColumnas();
QStringList ValoresColumnas(const Lote& lote, const Cotejo* cotejo, std::size_t devolucion);

/// Una fila para una hoja de cálculo en español: separada por ";" y acabada en CR LF.
QString LineaCsv(const QStringList& valores);

}  // namespace devoluciones

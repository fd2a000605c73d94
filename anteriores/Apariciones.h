#pragma once

#include <QString>

#include "anteriores/LecturaAnterior.h"
#include "remesa/Calendario.h"

namespace anteriores {

/// Un adeudo que está en un fichero de antes, o que volvió.
struct Aparicion {
  std::filesystem::path ruta;
  std::uint64_t registro = 0;  ///< O la línea, en un XML de devoluciones. Desde 1.
  QString clase;               ///< El tipo del adeudo (RCUR…), "devuelto" o "rechazado".
  bool vuelta = false;
  bool enLinea = false;                   ///< `registro` es una línea.
  std::optional<remesa::Dia> fecha = {};  ///< De cobro, o de devolución.
  std::optional<std::int64_t> importe = {};
  QString deudor = {}, cuenta = {}, mandato = {}, referencia = {}, concepto = {}, acreedor = {};
  QString motivo = {};  ///< El código y qué es; vacío en un adeudo.
};

/// Lo que se busca: lo que tenga todo lo que no esté vacío. Los textos, bytes de registro.
struct Filtro {
  std::string mandato, referencia;
  std::string cuenta;           ///< En cualquiera de sus formas, sin blancos.
  std::string nombre;           ///< Parte de él, con acentos y mayúsculas o sin ellos.
  std::string acreedor = {};    ///< Sin su sufijo.
  bool mandatoOCuenta = false;  ///< Basta el mandato o la cuenta.
};

/// Busca en ficheros, y da lo hallado por fecha; lo que no la tiene, delante. Una devolución que no trae lo
/// que se busca también aparece si es de un adeudo hallado. Lo que no se puede leer va a `omitidos`, si se
/// da.
std::vector<Aparicion> BuscarApariciones(
    std::span<const FicheroHallado> ficheros, const Filtro& filtro,
    const std::function<bool(std::uintmax_t leidos, std::uintmax_t total)>& avance,
    std::vector<Omitido>* omitidos);

/// Para una lista: fecha, qué es, importe, motivo, concepto, deudor, referencia, mandato, cuenta, fichero,
/// registro y acreedor.
QStringList ValoresAparicion(const Aparicion& aparicion);

}  // namespace anteriores

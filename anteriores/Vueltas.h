#pragma once

#include "anteriores/Indice.h"
#include "devoluciones/Lote.h"

namespace anteriores {

/// Un fichero de devoluciones. Lanza NoSeToma si está dañado o es de otra cosa, Detenido y ErrorEjecucion.
devoluciones::Lote LeerLote(const std::filesystem::path& ruta, const Seguir& seguir);

/// Lo que se rechaza antes del cobro.
bool EsDeRechazos(devoluciones::Forma forma);

/// Las de un fichero de devoluciones, que será el `fichero`. Lanza NoSeToma, Detenido y ErrorEjecucion.
std::vector<Vuelta> LeerVueltas(const std::filesystem::path& ruta, std::uint32_t fichero,
                                const Seguir& seguir);

/// Pone en cada adeudo la vuelta que es suya. Se busca por lo que ella trae y nunca en otro acreedor; si
/// caben adeudos de dos fechas no se elige. `entradas`, en el orden de Indice::delMandato.
void Asociar(std::span<Entrada> entradas, std::span<const Vuelta> vueltas,
             std::span<const FicheroAnterior> ficheros);

/// "devuelto el 03/12/2026, motivo AM04 («No había saldo»)", en UTF-8.
std::string TextoVuelta(const Vuelta& vuelta);

}  // namespace anteriores

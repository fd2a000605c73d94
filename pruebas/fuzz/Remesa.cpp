// Carga, fusión, totales y guardado. La entrada: un byte, que da el búfer del flujo, y los ficheros en su
// forma breve, separados por 1C.
#include <algorithm>

#include "Objetivo.h"
#include "consola/UnionBloques.h"
#include "consola/UnionFlujo.h"
#include "pruebas/Registros.h"
#include "remesa/Adeudos.h"
#include "remesa/BloquesListas.h"
#include "remesa/Fichero.h"
#include "remesa/Guardado.h"
#include "remesa/Validez.h"

using namespace fuzz;
using pruebas::Bytes;
using pruebas::NumeroError;
using namespace remesa;

namespace {

constexpr char kSeparador = '\x1C';
constexpr std::size_t kMaxFicheros = 5;

using Registros = std::vector<std::string>;

/// Todos los "03", en orden: lo que ninguna operación puede perder, repetir ni mover.
template <class Lista>
Registros Deudores(const Lista& lista) {
  Registros deudores;
  for (const std::string_view registro : lista)
    if (registro.starts_with("03")) deudores.emplace_back(registro);
  return deudores;
}

bool Igual(const Observacion& a, const Observacion& b) {
  return a.clase == b.clase && a.cuenta == b.cuenta && a.primero == b.primero && a.importe == b.importe &&
         a.antes == b.antes && a.ahora == b.ahora;
}

/// Las de los totales: las de los opcionales dependen de en qué fichero estuvo cada uno.
std::vector<Observacion> DeTotales(std::vector<Observacion> observaciones) {
  std::erase_if(observaciones, [](const Observacion& observacion) {
    return observacion.clase == ClaseObservacion::CopiaIntercalada ||
           observacion.clase == ClaseObservacion::OpcionalesSueltos;
  });
  return observaciones;
}

void MirarTotales(ListaRegistros lista, const Totales& totales) {
  const Registros antes = Bytes(lista);
  std::int64_t importe = 0;
  std::int32_t adeudos = 0;
  std::int32_t registros = 0;
  bool deCifras = true;
  for (const std::string& registro : antes) {
    if (!registro.starts_with("01")) ++registros;
    if (!registro.starts_with("03") || LeerCampo(registro, kNumeroDato) != "003") continue;
    ++adeudos;
    const std::string_view cifras = LeerCampo(registro, kImporteAdeudo);
    deCifras = deCifras && SonCifras(cifras);
    if (deCifras) importe += std::stoll(std::string(cifras));
  }
  Exigir(totales.adeudos == adeudos, "los totales cuentan los adeudos");
  Exigir(totales.registros == registros, "los totales cuentan los registros");
  if (deCifras) Exigir(totales.importe == importe, "los totales suman los importes");
  RecalcularTotales(lista);
  Exigir(Bytes(lista) == antes, "un segundo recálculo no cambia nada");
}

void MirarCopia(ListaRegistros lista, std::size_t desde) {
  const Registros antes = Bytes(lista);
  for (std::size_t i = desde; i < lista.size(); ++i) {
    if (!InsertarCopia(lista, i)) continue;
    NumeroError([&] { RecalcularTotales(lista); });  // con la copia puede no caber el importe
    Exigir(Deudores(lista).size() == Deudores(antes).size() + 1, "insertar añade un adeudo");
    const std::size_t copia = i + 1;
    Exigir(EliminarAdeudos(lista, {&copia, 1}) == 1, "se elimina la copia");
    RecalcularTotales(lista);
    Exigir(Bytes(lista) == antes, "insertar y eliminar la copia devuelve los bytes");
    return;
  }
}

/// Lo que no entra en un bloque es lo único que impide reunirlas.
void MirarBloques(const std::vector<std::filesystem::path>& rutas, std::size_t bufer) {
  ListaRegistros lista;
  Registros deudores;
  consola::UnionBloques lectura(bufer);
  for (const auto& ruta : rutas) {
    const ListaRegistros previo = LeerFichero(ruta);
    const bool sinDueno = ReunirBloques(lista, previo).impide.has_value();
    lectura.leer(ruta);
    Exigir(sinDueno == (lectura.reparto().indice().avisos().sinDueno != 0), "a los dos les falta el dueño");
    if (sinDueno) return;
    std::ranges::move(Deudores(previo), std::back_inserter(deudores));
  }
  lectura.reparto().ordenar();
  std::string porFlujo;
  EscribirBloques(lectura.reparto(), Enteros(lectura.reparto()), lectura.fuente(), {},
                  [&](std::string_view bytes) { porFlujo += bytes; });
  const auto salida = Ruta("salida");
  GuardarRemesa(salida, lista);
  Exigir(Leer(salida) == porFlujo, "por bloques, el flujo escribe lo mismo que las listas");
  Registros salen = Deudores(lista);
  std::ranges::sort(salen);
  std::ranges::sort(deudores);
  Exigir(salen == deudores, "los bloques conservan los adeudos");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  Entrada entrada(datos, largo);
  const std::uint8_t sorteo = entrada.byte();
  std::vector<std::filesystem::path> rutas;
  Registros deudores;
  ListaRegistros acumulado;
  Totales totales;
  Resumen seguido;
  int error = 0;
  do {
    const std::string bytes = Desplegar(entrada.hasta(kSeparador));
    const auto ruta = Ruta("entrada" + std::to_string(rutas.size()));
    Escribir(ruta, bytes);
    rutas.push_back(ruta);
    const Registros lineas = Lineas(bytes);
    const ListaRegistros previo = LeerFichero(ruta);
    Exigir(Bytes(previo) == lineas, "cada línea es un registro");
    if (error != 0) continue;
    std::ranges::move(Deudores(lineas), std::back_inserter(deudores));
    seguido = TrasImportar(seguido, Resumir(previo, true));
    Importar(acumulado, previo);
    error = NumeroError([&] { totales = RecalcularTotales(acumulado); });
    Exigir(Deudores(acumulado) == deudores, "la fusión conserva los adeudos y su orden");
  } while (!entrada.resto().empty() && rutas.size() < kMaxFicheros);

  MirarBloques(rutas, consola::LectorRegistros::kBuferMinimo + sorteo);

  const auto salida = Ruta("salida");
  std::vector<Observacion> observaciones;
  const int errorFlujo = NumeroError([&] {
    ficheros::EscrituraSegura escritura(salida);
    consola::UnionFlujo flujo(escritura, consola::LectorRegistros::kBuferMinimo + sorteo);
    for (const auto& ruta : rutas)
      flujo.unir(ruta, &ruta == &rutas.back());
    observaciones = flujo.observacionesFinales();
    escritura.confirmar();
  });
  Exigir(errorFlujo == error, "el flujo falla como las listas");
  if (error != 0) return 0;

  const std::string porFlujo = Leer(salida);
  GuardarRemesa(salida, acumulado);
  Exigir(Leer(salida) == porFlujo, "el flujo escribe lo mismo que las listas");
  Exigir(std::ranges::equal(LeerFichero(salida), acumulado, {}, {}, Ajustado),
         "guardar y cargar da los registros, cortados o completados");
  const auto llevadas = ObservarAcumulado(seguido);
  Exigir(std::ranges::equal(observaciones, llevadas, Igual), "el flujo observa lo mismo");
  Exigir(
      std::ranges::equal(DeTotales(llevadas), DeTotales(ObservarAcumulado(Resumir(acumulado, true))), Igual),
      "las observaciones se llevan de una importación a otra");
  MirarTotales(acumulado, totales);
  MirarCopia(acumulado, sorteo % 8);
  return 0;
}

// La comprobación de un fichero, en su forma breve tras un byte que da los trozos en que se corta.
#include <algorithm>

#include "Objetivo.h"
#include "comunes/plataforma/Formatos.h"
#include "remesa/Comprobacion.h"
#include "remesa/Fichero.h"
#include "remesa/Guardado.h"
#include "remesa/LineasFichero.h"
#include "ventanas/principal/TextosComprobacion.h"

using namespace fuzz;
using namespace remesa;

namespace {

constexpr Dia kHoy{std::chrono::year(2026), std::chrono::month(11), std::chrono::day(25)};

struct Comprobado {
  ResultadoComprobacion resultado;
  std::vector<Hallazgo> hallazgos;
};

template <class Comprobacion>
Comprobado Recoger(Comprobacion&& comprobacion) {
  Comprobado comprobado;
  comprobado.resultado =
      comprobacion([&](Hallazgo&& hallazgo) { comprobado.hallazgos.push_back(std::move(hallazgo)); });
  return comprobado;
}

Comprobado EnFichero(const std::filesystem::path& ruta) {
  return Recoger([&](const ReceptorHallazgos& recibir) { return ComprobarFichero(ruta, kHoy, recibir); });
}

Comprobado EnLista(const ListaRegistros& lista, bool comoGuardada) {
  return Recoger(
      [&](const ReceptorHallazgos& recibir) { return ComprobarLista(lista, kHoy, recibir, comoGuardada); });
}

void MirarHallazgos(const Comprobado& comprobado) {
  std::uint64_t errores = 0;
  for (const Hallazgo& h : comprobado.hallazgos) {
    errores += EsError(h.codigo);
    Exigir(EsError(h.codigo) == TextoCodigo(h.codigo).starts_with('E'), "la letra del código dice el nivel");
    Exigir(h.registro <= comprobado.resultado.registros, "el registro existe");
    Exigir(h.fila <= h.registro, "la fila no pasa del registro");
    // Las que sobran en un registro largo pasan de la última.
    const bool dentro =
        h.donde.hasta <= static_cast<int>(kLongitudRegistro) || h.codigo == CodigoHallazgo::Longitud;
    Exigir(
        h.donde.desde == 0 ? h.donde.hasta == 0 : h.registro > 0 && h.donde.desde <= h.donde.hasta && dentro,
        "las posiciones son de un registro");
    Exigir(h.campo == nullptr ||
               (h.campo->donde.desde <= h.donde.desde && h.donde.hasta <= h.campo->donde.hasta),
           "las posiciones son del campo");
    Exigir(!principal::TextoHallazgo(h).isEmpty() && !principal::TextoEsperado(h).isEmpty(),
           "cada hallazgo se explica");
    principal::TextoValor(h);
  }
  Exigir(errores == comprobado.resultado.errores &&
             comprobado.hallazgos.size() == errores + comprobado.resultado.avisos,
         "se cuentan todos los hallazgos");
}

/// Lo que se dice de los registros, sin lo que es del fichero.
bool LoMismo(const Comprobado& a, const Comprobado& b) {
  const auto deRegistros = [](const Comprobado& comprobado) {
    std::vector<Hallazgo> lista;
    std::ranges::copy_if(comprobado.hallazgos, std::back_inserter(lista),
                         [](const Hallazgo& h) { return h.registro > 0; });
    return lista;
  };
  return std::ranges::equal(deRegistros(a), deRegistros(b), [](const Hallazgo& x, const Hallazgo& y) {
    return x.codigo == y.codigo && x.registro == y.registro && x.donde == y.donde && x.campo == y.campo &&
           x.valor == y.valor && x.esperado == y.esperado && x.otro == y.otro && x.deudor == y.deudor &&
           x.referencia == y.referencia;
  });
}

/// Cortadas en trozos, las líneas son las mismas, y con sus fines dan otra vez el fichero.
void MirarLineas(std::string_view bytes, std::size_t trozo) {
  std::string rehecho;
  bool largas = false;
  LineasFichero lineas([&](std::string_view linea, std::uint64_t longitud, FinLinea fin) {
    largas = largas || longitud > kLongitudRegistro;
    Exigir(linea.substr(0, kLongitudRegistro).size() == std::min<std::uint64_t>(longitud, kLongitudRegistro),
           "de una línea se da al menos un registro");
    rehecho += linea;
    rehecho += fin == FinLinea::CRLF ? "\r\n" : fin == FinLinea::CR ? "\r" : fin == FinLinea::LF ? "\n" : "";
  });
  for (std::size_t i = 0; i < bytes.size(); i += trozo)
    lineas.dar(bytes.substr(i, trozo));
  lineas.terminar();
  Exigir(largas || rehecho == bytes, "las líneas y sus fines dan el fichero");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static const bool enEspanol = [] {
    comunes::PonerLocaleUsuario(QLocale(QLocale::Spanish, QLocale::Spain));
    return true;
  }();
  Exigir(enEspanol, "hay locale");
  Entrada entrada(datos, largo);
  const std::size_t trozo = std::size_t{1} + entrada.byte();
  const std::string bytes = Desplegar(entrada.resto());
  MirarLineas(bytes, trozo);

  const auto ruta = Ruta("remesa");
  Escribir(ruta, bytes);
  const Comprobado fichero = EnFichero(ruta);
  MirarHallazgos(fichero);

  // La lista no se salta la marca de orden de bytes, ni sabe si a un LF final lo sigue una línea vacía.
  const ListaRegistros lista = LeerFichero(ruta);
  const auto acabaEnLF = [](std::string_view registro) { return registro.ends_with('\n'); };
  const bool dudoso = bytes.find("\n\r") != std::string::npos && std::ranges::any_of(lista, acabaEnLF);
  const auto mismosEnLista = EnLista(lista, false);
  const bool marca =
      bytes.starts_with("\xEF\xBB\xBF") || bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
  Exigir(marca || dudoso || LoMismo(fichero, mismosEnLista),
         "en la lista se encuentra lo mismo que en el fichero");

  const auto guardada = Ruta("guardada");
  GuardarRemesa(guardada, lista);
  const Comprobado trasGuardar = EnFichero(guardada);
  MirarHallazgos(trasGuardar);
  Exigir(marca || LoMismo(trasGuardar, EnLista(lista, true)), "en lo guardado se encuentra lo anunciado");
  return 0;
}

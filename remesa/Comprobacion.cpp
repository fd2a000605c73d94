#include "remesa/Comprobacion.h"

#include <array>
#include <memory>

#include "ficheros/Lectura.h"
#include "remesa/LineasFichero.h"
#include "remesa/ReglasComprobacion.h"

namespace remesa {
namespace {

using C = CodigoHallazgo;
using namespace std::string_view_literals;

constexpr std::size_t kBytesPorTrozo = std::size_t{1} << 20;

ResultadoComprobacion Resultado(const Anotador& anotador, bool completa) {
  return {anotador.numero(), anotador.errores(), anotador.avisos(), completa};
}

/// Cuántas líneas acaban de cada modo, y la primera.
class FinesDeLinea {
 public:
  void contar(FinLinea fin) {
    ++lineas_;
    Cuenta& cuenta = cuentas_[static_cast<std::size_t>(fin)];
    if (cuenta.lineas++ == 0) cuenta.primera = lineas_;
  }

  void anotar(Anotador& anotador) const {
    const Cuenta &crlf = de(FinLinea::CRLF), &cr = de(FinLinea::CR), &lf = de(FinLinea::LF);
    anotarLF(anotador);
    const int distintos = (crlf.lineas > 0) + (cr.lineas > 0) + (lf.lineas > 0);
    if (distintos > 1)
      anotador.fichero(C::FinesMezclados, "CRLF " + std::to_string(crlf.lineas) + " CR " +
                                              std::to_string(cr.lineas) + " LF " + std::to_string(lf.lineas));
    else if (cr.lineas > 0)
      anotador.fichero(C::SoloCR, std::to_string(cr.lineas));
    if (de(FinLinea::Ninguno).lineas > 0) anotador.fichero(C::SinUltimoFin);
  }

  /// Los únicos que quedan en una lista: la lectura no los toma por fines.
  void anotarLF(Anotador& anotador) const {
    const Cuenta& lf = de(FinLinea::LF);
    if (lf.lineas > 0) anotador.fichero(C::SoloLF, std::to_string(lf.lineas), {}, lf.primera);
  }

 private:
  struct Cuenta {
    std::uint64_t lineas = 0;
    std::uint64_t primera = 0;
  };
  const Cuenta& de(FinLinea fin) const { return cuentas_[static_cast<std::size_t>(fin)]; }

  std::array<Cuenta, 4> cuentas_;
  std::uint64_t lineas_ = 0;
};

/// La marca de orden de bytes con que empieza; "" si no la hay.
std::string_view Marca(std::string_view principio) {
  for (const std::string_view marca : {"\xEF\xBB\xBF"sv, "\xFF\xFE"sv, "\xFE\xFF"sv})
    if (principio.starts_with(marca)) return marca;
  return {};
}

}  // namespace

ResultadoComprobacion ComprobarFichero(const std::filesystem::path& ruta, Dia hoy,
                                       const ReceptorHallazgos& recibir, const AvanceComprobacion& avance) {
  ficheros::LecturaFichero lectura(ruta);
  ReglasComprobacion comprobador(hoy, recibir);
  FinesDeLinea fines;
  std::uint64_t fila = 1;
  LineasFichero lineas([&](std::string_view bytes, std::uint64_t longitud, FinLinea fin) {
    comprobador.dar(bytes, longitud, fila);
    fines.contar(fin);
    if (fin != FinLinea::LF) ++fila;
  });
  const auto bufer = std::make_unique_for_overwrite<char[]>(kBytesPorTrozo);
  std::uintmax_t leidos = 0;
  for (bool fin = false; !fin && !comprobador.ajeno();) {
    const std::size_t trozo = lectura.leer({bufer.get(), kBytesPorTrozo});
    fin = trozo < kBytesPorTrozo;
    std::string_view bytes(bufer.get(), trozo);
    if (leidos == 0)
      if (const std::string_view marca = Marca(bytes); !marca.empty()) {
        comprobador.marca(marca);
        bytes.remove_prefix(marca.size());
      }
    leidos += trozo;
    lineas.dar(bytes);
    if (avance && !avance(leidos, lectura.tamano())) return Resultado(comprobador.anotador(), false);
  }
  lineas.terminar();
  comprobador.terminar();
  if (!comprobador.ajeno()) fines.anotar(comprobador.anotador());
  return Resultado(comprobador.anotador(), true);
}

ResultadoComprobacion ComprobarLista(const ListaRegistros& lista, Dia hoy, const ReceptorHallazgos& recibir,
                                     bool comoGuardada, const AvanceComprobacion& avance) {
  constexpr std::size_t kCadaAvance = 256;  // menos de un milisegundo: se puede esperar a que se detenga
  ReglasComprobacion comprobador(hoy, recibir);
  FinesDeLinea fines;
  const FinLinea ultimo = comoGuardada ? FinLinea::CRLF : FinLinea::Ninguno;
  std::uint64_t fila = 0;
  const auto dar = [&](std::string_view bytes, std::uint64_t longitud, FinLinea fin) {
    comprobador.dar(bytes, longitud, fila);
    fines.contar(fin);
  };
  LineasFichero lineas(dar);
  std::string rehecho;
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    std::string_view registro = lista[i];
    if (comoGuardada) registro = ComoSeGuarda(registro, rehecho);
    fila = i + 1;
    if (registro.find('\n') == std::string_view::npos) {
      dar(registro, registro.size(), ultimo);
    } else {
      lineas.dar(registro);
      if (comoGuardada) lineas.dar("\r\n");
      lineas.terminar();
    }
    if (avance && (i + 1) % kCadaAvance == 0 && !avance(i + 1, lista.size()))
      return Resultado(comprobador.anotador(), false);
  }
  comprobador.terminar();
  if (!comprobador.ajeno())
    comoGuardada ? fines.anotar(comprobador.anotador()) : fines.anotarLF(comprobador.anotador());
  return Resultado(comprobador.anotador(), true);
}

}  // namespace remesa

#include "devoluciones/Presentadas.h"

#include <vector>

#include "devoluciones/Lote.h"
#include "ficheros/Lectura.h"
#include "iso20022/LectorXml.h"
#include "remesa/LineasFichero.h"

namespace devoluciones {
namespace {

constexpr std::size_t kTrozoRemesa = std::size_t{1} << 20;

void RecorrerTexto(const std::filesystem::path& ruta, const std::function<void(std::string_view)>& recibir,
                   const remesa::AvanceLectura& avance) {
  ficheros::LecturaFichero lectura(ruta);
  remesa::LineasFichero lineas(
      [&](std::string_view bytes, std::uint64_t, remesa::FinLinea) { recibir(bytes); });
  std::vector<char> bufer(kTrozoRemesa);
  std::string_view trozo(bufer.data(), lectura.leer(bufer));
  const remesa::TipoFichero tipo = remesa::TipoDe(trozo);
  if (tipo != remesa::TipoFichero::Presentacion) throw FicheroAjeno{std::string(remesa::NombreTipo(tipo))};
  for (std::uintmax_t leidos = 0; !trozo.empty(); trozo = {bufer.data(), lectura.leer(bufer)}) {
    lineas.dar(trozo);
    if (avance) avance(leidos += trozo.size(), lectura.tamano());
  }
  lineas.terminar();
}

}  // namespace

void RecorrerRemesa(const std::filesystem::path& ruta, const std::function<void(std::string_view)>& recibir,
                    const remesa::AvanceLectura& avance) {
  if (iso20022::EmpiezaComoXml(ruta)) throw FicheroAjeno{"un XML"};
  RecorrerTexto(ruta, recibir, avance);
}

}  // namespace devoluciones

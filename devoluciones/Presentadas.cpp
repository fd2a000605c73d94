#include "devoluciones/Presentadas.h"

#include <utility>
#include <vector>

#include "comunes/plataforma/Texto.h"
#include "devoluciones/LectorXmlDevoluciones.h"
#include "ficheros/Lectura.h"
#include "iso20022/LectorXml.h"
#include "iso20022/LecturaMensaje.h"
#include "remesa/LineasFichero.h"
#include "remesa/Registro.h"
#include "remesa/Utf8.h"

namespace devoluciones {
namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t kTrozoRemesa = std::size_t{1} << 20;

void RecorrerTexto(const std::filesystem::path& ruta, const std::function<void(std::string_view)>& recibir,
                   const remesa::AvanceLectura& avance) {
  ficheros::LecturaFichero lectura(ruta);
  remesa::LineasFichero lineas([&](std::string_view bytes, std::uint64_t longitud, remesa::FinLinea) {
    remesa::RegistroUtf8 leido;
    const bool utf8 = longitud > remesa::kLongitudRegistro && LeerUtf8(bytes, longitud, leido);
    recibir(utf8 && !leido.bytes.empty() ? leido.bytes : bytes);
  });
  std::vector<char> bufer(kTrozoRemesa);
  std::string_view trozo(bufer.data(), lectura.leer(bufer));
  const remesa::TipoFichero tipo = remesa::TipoDe(trozo);
  if (tipo != remesa::TipoFichero::Presentacion) throw AjenoDe(tipo, u"una remesa del Cuaderno 19.14"_s);
  for (std::uintmax_t leidos = 0; !trozo.empty(); trozo = {bufer.data(), lectura.leer(bufer)}) {
    lineas.dar(trozo);
    if (avance) avance(leidos += trozo.size(), lectura.tamano());
  }
  lineas.terminar();
}

void RecorrerXml(const std::filesystem::path& ruta, const std::function<void(std::string_view)>& recibir,
                 const remesa::AvanceLectura& avance) {
  iso20022::MensajeLeido mensaje = iso20022::LeerMensaje(ruta, avance);
  if (!mensaje.rechazo.isEmpty()) {
    mensaje.rechazo.front() = mensaje.rechazo.front().toLower();
    throw FicheroAjeno{mensaje.rechazo};
  }
  for (const std::string_view registro : mensaje.registros)
    recibir(registro);
}

}  // namespace

void RecorrerRemesa(const std::filesystem::path& ruta, const std::function<void(std::string_view)>& recibir,
                    const remesa::AvanceLectura& avance) {
  iso20022::EmpiezaComoXml(ruta) ? RecorrerXml(ruta, recibir, avance) : RecorrerTexto(ruta, recibir, avance);
}

std::vector<AdeudoDeBloque> BloquesXml(const std::filesystem::path& ruta) {
  constexpr QStringView kBloque = u"PmtInf", kOperacion = u"DrctDbtTxInf";
  std::vector<AdeudoDeBloque> adeudos;
  if (!iso20022::EmpiezaComoXml(ruta)) return adeudos;
  iso20022::LectorXml xml(ruta);
  QString bloque;
  AdeudoDeBloque actual;
  for (auto suceso = xml.siguiente(); suceso != iso20022::LectorXml::Suceso::Fin; suceso = xml.siguiente()) {
    const QStringView nombre = xml.nombre();
    if (suceso == iso20022::LectorXml::Suceso::Abre) {
      if (nombre == kBloque) bloque.clear();
      if (nombre == kOperacion) actual = {};
      continue;
    }
    const QString texto = xml.texto().trimmed();
    if (nombre == u"PmtInfId") {
      bloque = texto;
    } else if (nombre == u"EndToEndId") {
      actual.referencia = comunes::AWindows1252(texto);
    } else if (nombre == u"MndtId") {
      actual.mandato = comunes::AWindows1252(texto);
    } else if (nombre == u"InstdAmt") {
      actual.importe = LeerCentimos(texto).value_or(0);
    } else if (nombre == kOperacion) {
      actual.bloque = comunes::AWindows1252(bloque);
      adeudos.push_back(std::exchange(actual, {}));
    }
  }
  return adeudos;
}

}  // namespace devoluciones

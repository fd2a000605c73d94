// De XML a registros y de registros a XML. La entrada: un byte, que da las opciones, y un mensaje o, si su
// bit más bajo está puesto, una remesa en su forma breve.
#include <algorithm>

#include "Objetivo.h"
#include "ficheros/ErrorEjecucion.h"
#include "iso20022/Exportacion.h"
#include "iso20022/LecturaMensaje.h"
#include "iso20022/Valores.h"
#include "remesa/Comprobacion.h"

using namespace fuzz;
using namespace iso20022;

namespace {

OpcionesExportacion Opciones(std::uint8_t byte) {
  OpcionesExportacion o;
  o.version = byte & 2 ? Version::V02 : Version::V08;
  o.direcciones = byte & 4 ? Direcciones::Todas : byte & 8 ? Direcciones::Ninguna : Direcciones::Necesarias;
  o.detalle = (byte & 16) != 0;
  o.compacto = (byte & 32) != 0;
  o.omitir = true;
  return o;
}

struct Exportado {
  ResumenExportacion resumen;
  std::string mensaje;  // "" si no se puede
};

Exportado Exportar(std::unique_ptr<Fuente> fuente, const OpcionesExportacion& opciones) {
  std::vector<std::unique_ptr<Fuente>> fuentes;
  fuentes.push_back(std::move(fuente));
  Exportacion exportacion(std::move(fuentes), opciones);
  std::uint64_t errores = 0;
  Exportado e;
  e.resumen = *exportacion.examinar([&](Nota&& nota) { errores += EsError(nota.codigo); });
  Exigir(e.resumen.errores == errores, "los errores del resumen son los que se dan");
  Exigir(errores > 0 || e.resumen.posible, "sin errores se puede escribir");
  if (!e.resumen.posible) return e;
  exportacion.escribir(Ruta("salida.xml"));
  e.mensaje = Leer(Ruta("salida.xml"));
  return e;
}

/// El mensaje, que ha escrito el programa, lleva lo que dice.
remesa::ListaRegistros LeerPropio(const std::string& mensaje, const ResumenExportacion& resumen,
                                  bool entreEmpresas) {
  Escribir(Ruta("propio.xml"), mensaje);
  MensajeLeido leido = LeerMensaje(Ruta("propio.xml"));
  if (!leido.rechazo.isEmpty()) {
    Exigir(entreEmpresas, "solo se rechazan los adeudos entre empresas");
    return {};
  }
  std::uint64_t adeudos = 0, importe = 0;
  for (const std::string_view registro : leido.registros)
    if (registro.starts_with("0319143003")) {
      ++adeudos;
      importe += ImporteDe(registro);
    }
  Exigir(adeudos == resumen.adeudos && importe == resumen.importe,
         "el mensaje lleva los adeudos y la suma que se dijo");
  Exigir(leido.avisos.empty(), "lo escrito cabe en los registros");
  return std::move(leido.registros);
}

void DeRemesa(const OpcionesExportacion& opciones, std::string_view breve) {
  const std::string bytes = Desplegar(breve);
  Escribir(Ruta("remesa"), bytes);
  const Exportado e = Exportar(std::make_unique<FuenteFichero>(Ruta("remesa")), opciones);
  std::uint64_t adeudos = 0;
  FuenteFichero(Ruta("remesa"))
      .recorrer(
          [&](const Linea& linea) {
            adeudos += remesa::Clase(linea.bytes) == remesa::ClaseRegistro::Adeudo;
            return true;
          },
          {});
  if (e.resumen.adeudos + e.resumen.omitidos > 0)
    Exigir(e.resumen.adeudos + e.resumen.omitidos == adeudos, "cada adeudo se escribe o se dice que no");
  if (!e.mensaje.empty())
    LeerPropio(e.mensaje, e.resumen, e.mensaje.find("<Cd>B2B</Cd>") != std::string::npos);
}

void DeMensaje(const OpcionesExportacion& opciones, std::string_view mensaje) {
  Escribir(Ruta("mensaje"), mensaje);
  MensajeLeido leido;
  try {
    leido = LeerMensaje(Ruta("mensaje"));
  } catch (const ficheros::ErrorEjecucion& error) {
    return Exigir(error.numero() == ficheros::kFormatoNoValido, "lo que no se lee es por su formato");
  }
  if (!leido.rechazo.isEmpty()) return Exigir(leido.registros.empty(), "lo que se rechaza no da registros");
  for (const std::string_view registro : leido.registros)
    Exigir(registro.size() == remesa::kLongitudRegistro &&
               registro.find_first_of("\r\n") == std::string_view::npos,
           "los registros miden 600 y son de una línea");
  remesa::ComprobarLista(leido.registros, remesa::Dia{}, [](remesa::Hallazgo&& h) {
    const std::string_view codigo = TextoCodigo(h.codigo);
    Exigir(codigo != "E403" && codigo != "E404" && codigo != "E405" && codigo != "E204" && codigo != "E205",
           "los registros están en orden y los totales son los de la norma");
  });
  const Exportado uno = Exportar(std::make_unique<FuenteLista>(leido.registros), opciones);
  if (uno.mensaje.empty()) return;
  // Los bloques quedan por acreedores a la primera; desde entonces, nada cambia.
  const auto vuelto = LeerPropio(uno.mensaje, uno.resumen, false);
  const Exportado dos = Exportar(std::make_unique<FuenteLista>(vuelto), opciones);
  Exigir(!dos.mensaje.empty(), "lo escrito se puede volver a escribir");
  const auto otra = LeerPropio(dos.mensaje, dos.resumen, false);
  Exigir(Exportar(std::make_unique<FuenteLista>(otra), opciones).mensaje == dos.mensaje,
         "ida y vuelta dan lo mismo");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  fuzz::Entrada entrada(datos, largo);
  const std::uint8_t byte = entrada.byte();
  (byte & 1 ? DeRemesa : DeMensaje)(Opciones(byte), entrada.resto());
  return 0;
}

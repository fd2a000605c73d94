#include <charconv>

#include "devoluciones/Lectores.h"
#include "remesa/Campos.h"
#include "remesa/TotalesNorma.h"
#include "remesa/Utf8.h"
#include "remesa/Validez.h"

namespace devoluciones {
namespace {

using remesa::ClaseRegistro;
using remesa::LeerCampo;

/// Un registro de rechazos o de devoluciones y su clase: la del de presentación que tiene los mismos campos.
struct Codigo {
  ClaseRegistro clase = ClaseRegistro::Desconocido;
  bool devuelto = false;  ///< 21 a 25; los rechazos son 11 a 15.
};

Codigo LeerCodigo(std::string_view registro) {
  const std::string_view codigo = LeerCampo(registro, remesa::kCodigo);
  if (codigo == "99") return {ClaseRegistro::TotalesGenerales};
  if (codigo.size() < 2 || (codigo[0] != '1' && codigo[0] != '2')) return {};
  const bool devuelto = codigo[0] == '2';
  switch (codigo[1]) {
    case '1':
      return {ClaseRegistro::Presentador, devuelto};
    case '2':
      return {ClaseRegistro::Acreedor, devuelto};
    case '3':
      return {ClaseRegistro::Adeudo, devuelto};
    case '4':
      return {ClaseRegistro::TotalesFecha, devuelto};
    case '5':
      return {ClaseRegistro::TotalesAcreedor, devuelto};
    default:
      return {};
  }
}

/// Sin valor si no son todas cifras, o falta alguna.
std::optional<std::int64_t> LeerNumero(std::string_view registro, remesa::Posiciones donde) {
  const std::string_view cifras = LeerCampo(registro, donde);
  if (cifras.size() != static_cast<std::size_t>(donde.longitud()) || !remesa::SonCifras(cifras)) return {};
  std::int64_t numero = 0;
  std::from_chars(cifras.data(), cifras.data() + cifras.size(), numero);
  return numero;
}

/// Ausente si el registro acaba antes de que empiece el campo: pueden faltarle los blancos del final.
Dato DatoDe(std::string_view registro, remesa::Posiciones donde) {
  if (registro.size() < static_cast<std::size_t>(donde.desde)) return {};
  return {remesa::Recortar(LeerCampo(registro, donde)), false};
}

/// Ausente si el registro acaba antes que el campo: un trozo de una referencia es otra.
Dato ReferenciaDe(std::string_view registro, remesa::Posiciones donde) {
  return registro.size() < static_cast<std::size_t>(donde.hasta) ? Dato() : DatoDe(registro, donde);
}

bool EstaEnBlanco(std::string_view linea) {
  return linea.find_first_not_of(" \t\x1A") == std::string_view::npos;
}

class LectorPlano {
 public:
  explicit LectorPlano(Lote& lote) : lote_(lote) {}

  void linea(std::string_view bytes);
  void terminar();

 private:
  void mirarOrden(const Codigo& codigo);
  void empezar(std::string_view bytes);
  void abrirBloque(std::string_view bytes, bool devuelto);
  void adeudo(std::string_view bytes);
  void comparar(ClaseAviso clase, std::string_view bytes, const remesa::TotalDebido& debido);
  Lote& lote_;
  remesa::TotalesNorma totales_;
  std::uint64_t registro_ = 0;
  std::optional<bool> devuelto_;
  bool cerrado_ = false;  // el último registro fue el 99
  bool acabado_ = false;  // lo fue el último que es de estos ficheros
};

void LectorPlano::linea(std::string_view bytes) {
  if (EstaEnBlanco(bytes)) return;
  ++registro_;
  remesa::RegistroUtf8 leido;
  if (bytes.size() > remesa::kLongitudRegistro && LeerUtf8(bytes, bytes.size(), leido) &&
      !leido.bytes.empty()) {
    lote_.contar(ClaseAviso::EnUtf8, registro_);
    if (leido.longitud <= remesa::kLongitudRegistro) bytes = lote_.conservar(std::move(leido.bytes));
  }
  if (bytes.size() != remesa::kLongitudRegistro) lote_.contar(ClaseAviso::Longitud, registro_);
  const Codigo codigo = LeerCodigo(bytes);
  mirarOrden(codigo);
  switch (codigo.clase) {
    case ClaseRegistro::Presentador:
      empezar(bytes);
      break;
    case ClaseRegistro::Acreedor:
      abrirBloque(bytes, codigo.devuelto);
      break;
    case ClaseRegistro::Adeudo:
      adeudo(bytes);
      break;
    default:
      lote_.quitarCabecera();
      break;
  }
  const auto debidos = totales_.dar(bytes, codigo.clase);
  constexpr ClaseAviso kAvisos[] = {ClaseAviso::TotalImportes, ClaseAviso::TotalAdeudos,
                                    ClaseAviso::TotalRegistros};
  for (std::size_t i = 0; i < debidos.size(); ++i)
    comparar(kAvisos[i], bytes, debidos[i]);
}

void LectorPlano::mirarOrden(const Codigo& codigo) {
  // Detrás de un 99 solo puede venir otro fichero pegado.
  const bool sobra = cerrado_ && codigo.clase != ClaseRegistro::Presentador;
  if (sobra || codigo.clase == ClaseRegistro::Desconocido) lote_.contar(ClaseAviso::CodigoAjeno, registro_);
  if (cerrado_ && !sobra) totales_ = {};
  cerrado_ = codigo.clase == ClaseRegistro::TotalesGenerales;
  if (codigo.clase == ClaseRegistro::Desconocido) return;
  acabado_ = cerrado_;
  if (cerrado_) return;
  if (!devuelto_) devuelto_ = codigo.devuelto;
  if (*devuelto_ != codigo.devuelto) lote_.contar(ClaseAviso::Mezcla, registro_);
}

void LectorPlano::empezar(std::string_view bytes) {
  if (!lote_.fichero().identificacion.presente())
    lote_.fichero().identificacion = DatoDe(bytes, remesa::kIdentificacionFichero);
  lote_.quitarCabecera();
}

void LectorPlano::abrirBloque(std::string_view bytes, bool devuelto) {
  lote_.ponerCabecera(
      {DatoDe(bytes, remesa::kIdentificadorAcreedor), DatoDe(bytes, remesa::kNombreAcreedor),
       DatoDe(bytes, remesa::kCuentaAcreedor), DatoDe(bytes, remesa::kFicheroOriginal),
       remesa::LeerFecha(LeerCampo(bytes, devuelto ? remesa::kFechaDevolucion : remesa::kFechaCobro)), 0});
}

void LectorPlano::adeudo(std::string_view bytes) {
  if (!LeerNumero(bytes, remesa::kImporteAdeudo)) lote_.contar(ClaseAviso::Importe, registro_);
  if (!lote_.hayCabecera()) lote_.contar(ClaseAviso::SinCabecera, registro_);
  lote_.anadirRegistro(bytes, registro_);
}

void LectorPlano::comparar(ClaseAviso clase, std::string_view bytes, const remesa::TotalDebido& debido) {
  const auto dicho = LeerNumero(bytes, debido.donde);
  if (dicho == debido.valor) return;
  const std::string escrito(dicho ? std::string_view() : remesa::Recortar(LeerCampo(bytes, debido.donde)));
  lote_.avisar({clase, 1, registro_, dicho, debido.valor, escrito});
}

void LectorPlano::terminar() {
  if (!acabado_) {
    lote_.fichero().completo = false;
    lote_.avisar({.clase = ClaseAviso::Cortado, .registro = registro_});
  }
  lote_.fichero().forma = devuelto_.value_or(true) ? Forma::Devoluciones : Forma::Rechazos;
}

/// Las líneas que acaban solo en LF llegan juntas en un registro largo.
void DarLineas(LectorPlano& lector, std::string_view registro) {
  if (registro.size() == remesa::kLongitudRegistro) return lector.linea(registro);
  for (std::size_t lf = 0; (lf = registro.find('\n')) != std::string_view::npos;
       registro.remove_prefix(lf + 1))
    lector.linea(registro.substr(0, lf));
  lector.linea(registro);
}

}  // namespace

Devolucion DesdeRegistro(std::string_view registro, const Cabecera* cabecera) {
  const bool devuelto = LeerCodigo(registro).devuelto;
  Devolucion d;
  d.referencia = ReferenciaDe(registro, remesa::kReferenciaAdeudo);
  d.mandato = ReferenciaDe(registro, remesa::kReferenciaMandato);
  d.deudor = DatoDe(registro, remesa::kNombreDeudor);
  d.cuenta = DatoDe(registro, remesa::kCuentaDeudor);
  d.concepto = DatoDe(registro, remesa::kConcepto);
  d.motivo = DatoDe(registro, remesa::kMotivo);
  d.importe = LeerNumero(registro, remesa::kImporteAdeudo);
  if (devuelto) d.fechaCobro = remesa::LeerFecha(LeerCampo(registro, remesa::kFechaCobroOriginal));
  if (cabecera == nullptr) return d;
  d.acreedor = cabecera->acreedor;
  d.nombreAcreedor = cabecera->nombre;
  d.cuentaAcreedor = cabecera->cuenta;
  d.ficheroOriginal = cabecera->ficheroOriginal;
  (devuelto ? d.fechaDevolucion : d.fechaCobro) = cabecera->fecha;
  return d;
}

void LeerPlano(Lote& lote, const std::filesystem::path& ruta, const remesa::AvanceLectura& avance) {
  remesa::ListaRegistros lista = remesa::LeerFichero(ruta, avance);
  LectorPlano lector(lote);
  lote.reservar(lista.size());
  for (const std::string_view registro : lista)
    DarLineas(lector, registro);
  lector.terminar();
  lote.conservar(std::move(lista));
}

}  // namespace devoluciones

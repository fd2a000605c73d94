#include <array>

#include "devoluciones/LectorXmlDevoluciones.h"

namespace devoluciones {
namespace {

constexpr QStringView kNotificacion = u"Ntfctn";
constexpr QStringView kAnotacion = u"Ntfctn/Ntry";
constexpr QStringView kDetalle = u"Ntfctn/Ntry/NtryDtls/TxDtls";
constexpr QStringView kDevuelta = u"Ntfctn/Ntry/NtryDtls/TxDtls/RtrInf";

/// Desde TxDtls.
constexpr std::array kCamposCamt054{
    CampoXml{u"Refs/EndToEndId", &Devolucion::referencia},
    CampoXml{u"Refs/MndtId", &Devolucion::mandato},
    CampoXml{u"RltdPties/Dbtr/Nm", &Devolucion::deudor},
    CampoXml{u"RltdPties/DbtrAcct/Id/IBAN", &Devolucion::cuenta},
    CampoXml{u"RltdPties/DbtrAcct/Id/Othr/Id", &Devolucion::cuenta},
    CampoXml{u"RltdPties/Cdtr/Nm", &Devolucion::nombreAcreedor},
    CampoXml{u"RltdPties/Cdtr/Id/PrvtId/Othr/Id", &Devolucion::acreedor},
    CampoXml{u"RmtInf/Ustrd", &Devolucion::concepto},
};

class Camt054 : public LectorMensaje {
 public:
  explicit Camt054(Lote& lote) : lote_(lote) {}

  void abre(QStringView ruta, std::uint64_t linea) override;
  void valor(QStringView ruta, const QString& texto, const QString& moneda, std::uint64_t linea) override;
  void cierra(QStringView ruta, std::uint64_t linea) override;
  void terminar() override {}

 private:
  struct Operacion {
    Devolucion datos;
    MotivoXml motivo;
    std::optional<std::int64_t> propio, deOperacion, ordenado;  ///< Importes, del que más dice al que menos.
    QString signo;
    bool devuelta = false;  ///< Trae RtrInf.
    std::uint64_t linea = 0;
  };
  struct Anotacion {
    std::optional<std::int64_t> importe;
    QString signo;
    std::optional<remesa::Dia> fecha;
    std::optional<std::int64_t> operaciones;  ///< Las que dice traer.
    std::vector<Operacion> detalles;
    std::uint64_t linea = 0;
  };

  void valorDetalle(QStringView ruta, const QString& texto, const QString& moneda, std::uint64_t linea);
  void valorAnotacion(QStringView ruta, const QString& texto, const QString& moneda, std::uint64_t linea);
  void cerrarAnotacion();
  void listar(Operacion& operacion);
  void compararAnotacion();
  void compararResumen(std::uint64_t linea);

  Lote& lote_;
  QString cuenta_;  // de quien recibe la notificación
  Anotacion anotacion_;
  std::optional<std::int64_t> cargosDichos_, sumaDicha_;
  std::int64_t cargos_ = 0, suma_ = 0;
  bool sumable_ = true;  // todos los cargos tienen importe en euros
};

void Camt054::abre(QStringView ruta, std::uint64_t linea) {
  if (ruta == kNotificacion) {
    cuenta_.clear();
    cargosDichos_.reset();
    sumaDicha_.reset();
    cargos_ = suma_ = 0;
    sumable_ = true;
  } else if (ruta == kAnotacion) {
    anotacion_ = {};
    anotacion_.linea = linea;
  } else if (ruta == kDetalle) {
    anotacion_.detalles.emplace_back().linea = linea;
  } else if (ruta == kDevuelta) {
    anotacion_.detalles.back().devuelta = true;
  }
}

void Camt054::valor(QStringView ruta, const QString& texto, const QString& moneda, std::uint64_t linea) {
  const auto dentroDe = [ruta](QStringView padre) {
    return ruta.size() > padre.size() && ruta.startsWith(padre) && ruta[padre.size()] == u'/';
  };
  if (dentroDe(kDetalle)) return valorDetalle(ruta.sliced(kDetalle.size() + 1), texto, moneda, linea);
  if (dentroDe(kAnotacion)) return valorAnotacion(ruta.sliced(kAnotacion.size() + 1), texto, moneda, linea);
  if (ruta == u"GrpHdr/MsgId")
    lote_.fichero().identificacion = lote_.guardar(texto);
  else if (ruta == u"Ntfctn/Acct/Id/IBAN" || ruta == u"Ntfctn/Acct/Id/Othr/Id")
    cuenta_ = texto;
  else if (ruta == u"Ntfctn/TxsSummry/TtlDbtNtries/NbOfNtries")
    cargosDichos_ = LeerCuenta(texto);
  else if (ruta == u"Ntfctn/TxsSummry/TtlDbtNtries/Sum")
    sumaDicha_ = LeerCentimos(texto);
}

void Camt054::valorAnotacion(QStringView ruta, const QString& texto, const QString& moneda,
                             std::uint64_t linea) {
  if (ruta == u"Amt")
    anotacion_.importe = LeerImporte(lote_, texto, moneda, linea);
  else if (ruta == u"CdtDbtInd")
    anotacion_.signo = texto;
  else if (ruta == u"BookgDt/Dt" || ruta == u"BookgDt/DtTm")
    anotacion_.fecha = LeerDia(texto);
  else if (ruta == u"NtryDtls/Btch/NbOfTxs")
    // Una anotación puede traer varios lotes.
    if (const auto cuantas = LeerCuenta(texto))
      anotacion_.operaciones = SumaAcotada(anotacion_.operaciones.value_or(0), *cuantas);
}

void Camt054::valorDetalle(QStringView ruta, const QString& texto, const QString& moneda,
                           std::uint64_t linea) {
  Operacion& operacion = anotacion_.detalles.back();
  if (PonerCampo(lote_, operacion.datos, kCamposCamt054, ruta, texto)) return;
  if (ruta == u"Amt")
    operacion.propio = LeerImporte(lote_, texto, moneda, linea);
  else if (ruta == u"AmtDtls/TxAmt/Amt")
    operacion.deOperacion = LeerImporte(lote_, texto, moneda, linea);
  else if (ruta == u"AmtDtls/InstdAmt/Amt")
    operacion.ordenado = LeerImporte(lote_, texto, moneda, linea);
  else if (ruta == u"CdtDbtInd")
    operacion.signo = texto;
  else if (ruta == u"RtrInf/Rsn/Cd" || ruta == u"RtrInf/Rsn/Prtry")
    operacion.motivo.codigo = texto;
  else if (ruta == u"RtrInf/AddtlInf")
    operacion.motivo.anadirTexto(texto);
}

void Camt054::cierra(QStringView ruta, std::uint64_t linea) {
  if (ruta == kAnotacion)
    cerrarAnotacion();
  else if (ruta == kNotificacion)
    compararResumen(linea);
}

void Camt054::cerrarAnotacion() {
  if (anotacion_.signo == u"DBIT") {
    ++cargos_;
    suma_ = SumaAcotada(suma_, anotacion_.importe.value_or(0));
    sumable_ = sumable_ && anotacion_.importe;
  }
  compararAnotacion();
  // Una anotación sin detalle no dice de qué es.
  if (anotacion_.detalles.empty()) lote_.contar(ClaseAviso::SinMotivo, anotacion_.linea);
  for (Operacion& operacion : anotacion_.detalles)
    listar(operacion);
}

void Camt054::listar(Operacion& operacion) {
  constexpr QStringView kExito = u"0000";
  if (!operacion.devuelta || operacion.motivo.codigo == kExito)
    return lote_.contar(ClaseAviso::SinMotivo, operacion.linea);
  const QString& signo = operacion.signo.isEmpty() ? anotacion_.signo : operacion.signo;
  if (signo == u"CRDT") return lote_.contar(ClaseAviso::AFavor, operacion.linea);

  Devolucion& datos = operacion.datos;
  datos.importe = operacion.propio        ? operacion.propio
                  : operacion.deOperacion ? operacion.deOperacion
                                          : operacion.ordenado;
  // El importe de la anotación es el de su única operación.
  if (!datos.importe && anotacion_.detalles.size() == 1) datos.importe = anotacion_.importe;
  datos.fechaDevolucion = anotacion_.fecha;
  if (!cuenta_.isEmpty()) datos.cuentaAcreedor = lote_.guardar(cuenta_);
  operacion.motivo.poner(lote_, datos);
  lote_.anadir(datos, operacion.linea);
}

void Camt054::compararAnotacion() {
  const auto detalles = static_cast<std::int64_t>(anotacion_.detalles.size());
  if (detalles == 0) return;
  if (anotacion_.operaciones && anotacion_.operaciones != detalles)
    lote_.avisar({ClaseAviso::TotalAdeudos, 1, anotacion_.linea, anotacion_.operaciones, detalles});
  std::int64_t suma = 0;
  for (const Operacion& operacion : anotacion_.detalles) {
    const auto& importe = operacion.propio ? operacion.propio : operacion.deOperacion;
    const bool otroSigno = !operacion.signo.isEmpty() && operacion.signo != anotacion_.signo;
    if (!importe || otroSigno) return;  // no se puede sumar
    suma = SumaAcotada(suma, *importe);
  }
  const auto& dicho = anotacion_.importe;
  if (dicho && dicho != suma) lote_.avisar({ClaseAviso::TotalImportes, 1, anotacion_.linea, dicho, suma});
}

void Camt054::compararResumen(std::uint64_t linea) {
  if (cargosDichos_ && cargosDichos_ != cargos_)
    lote_.avisar({ClaseAviso::TotalAdeudos, 1, linea, cargosDichos_, cargos_});
  if (sumable_ && sumaDicha_ && sumaDicha_ != suma_)
    lote_.avisar({ClaseAviso::TotalImportes, 1, linea, sumaDicha_, suma_});
}

}  // namespace

std::unique_ptr<LectorMensaje> LectorCamt054(Lote& lote) {
  return std::make_unique<Camt054>(lote);
}

}  // namespace devoluciones

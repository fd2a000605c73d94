#include <array>

#include "devoluciones/LectorXmlDevoluciones.h"

namespace devoluciones {
namespace {

using namespace Qt::StringLiterals;

constexpr QStringView kGrupo = u"OrgnlGrpInfAndSts";
constexpr QStringView kBloque = u"OrgnlPmtInfAndSts";
constexpr QStringView kOperacion = u"OrgnlPmtInfAndSts/TxInfAndSts";
constexpr QStringView kRechazado = u"RJCT";

/// Desde TxInfAndSts.
constexpr std::array kCamposPain002{
    CampoXml{u"OrgnlEndToEndId", &Devolucion::referencia},
    CampoXml{u"OrgnlTxRef/MndtRltdInf/MndtId", &Devolucion::mandato},
    CampoXml{u"OrgnlTxRef/Dbtr/Nm", &Devolucion::deudor},
    CampoXml{u"OrgnlTxRef/DbtrAcct/Id/IBAN", &Devolucion::cuenta},
    CampoXml{u"OrgnlTxRef/DbtrAcct/Id/Othr/Id", &Devolucion::cuenta},
    CampoXml{u"OrgnlTxRef/RmtInf/Ustrd", &Devolucion::concepto},
    CampoXml{u"OrgnlTxRef/CdtrSchmeId/Id/PrvtId/Othr/Id", &Devolucion::acreedor},
    CampoXml{u"OrgnlTxRef/Cdtr/Nm", &Devolucion::nombreAcreedor},
    CampoXml{u"OrgnlTxRef/CdtrAcct/Id/IBAN", &Devolucion::cuentaAcreedor},
};

/// Lo que se dice de un grupo, de un bloque o de una operación.
struct Estado {
  QString estado;
  MotivoXml motivo;
  std::optional<std::int64_t> operaciones, suma;  ///< Las del original.
  std::optional<std::int64_t> rechazadas;         ///< Las que dice haber rechazado.
  QString cuentas, clase;                         ///< Las que se están leyendo, por estado.
};

class Pain002 : public LectorMensaje {
 public:
  explicit Pain002(Lote& lote) : lote_(lote) {}

  void abre(QStringView ruta, std::uint64_t linea) override;
  void valor(QStringView ruta, const QString& texto, const QString& moneda, std::uint64_t linea) override;
  void cierra(QStringView ruta, std::uint64_t linea) override;
  void terminar() override;

 private:
  void valorEstado(Estado& estado, QStringView ruta, const QString& texto, std::uint64_t linea);
  void valorOperacion(QStringView ruta, const QString& texto, const QString& moneda, std::uint64_t linea);
  void cerrarOperacion();
  void cerrarBloque(std::uint64_t linea);
  void compararCuenta(const Estado& estado, std::int64_t halladas, std::uint64_t linea);
  void anadirEntero(Alcance alcance, const Estado& estado, std::int64_t aparte, std::uint64_t linea);
  void ponerOriginal(Devolucion& devolucion);
  bool deTransferencias() const { return claseOriginal_.startsWith(u"pain.001"); }

  Lote& lote_;
  QString mensaje_, original_, claseOriginal_, bloqueOriginal_;
  Estado grupo_, bloque_, operacion_;
  Devolucion leida_;  // la operación en curso
  std::uint64_t linea_ = 0;
  std::int64_t enBloque_ = 0, enGrupo_ = 0;
  bool enteros_ = false;
  std::optional<std::int64_t> enEnteros_ = 0;  // los de bloques enteros; sin valor si alguno no lo dice
};

void Pain002::abre(QStringView ruta, std::uint64_t linea) {
  if (ruta == kBloque) {
    bloque_ = {};
    bloqueOriginal_.clear();
    enBloque_ = 0;
  } else if (ruta == kOperacion) {
    operacion_ = {};
    leida_ = {};
    linea_ = linea;
  }
}

void Pain002::valor(QStringView ruta, const QString& texto, const QString& moneda, std::uint64_t linea) {
  const auto dentroDe = [ruta](QStringView padre) {
    return ruta.size() > padre.size() && ruta.startsWith(padre) && ruta[padre.size()] == u'/';
  };
  if (dentroDe(kOperacion)) return valorOperacion(ruta.sliced(kOperacion.size() + 1), texto, moneda, linea);
  if (ruta == u"GrpHdr/MsgId") {
    mensaje_ = texto;
    lote_.fichero().identificacion = lote_.guardar(texto);
  } else if (ruta == u"OrgnlGrpInfAndSts/OrgnlMsgId") {
    original_ = texto;
  } else if (ruta == u"OrgnlGrpInfAndSts/OrgnlMsgNmId") {
    claseOriginal_ = texto;
  } else if (ruta == u"OrgnlPmtInfAndSts/OrgnlPmtInfId") {
    bloqueOriginal_ = texto;
  } else if (dentroDe(kGrupo)) {
    valorEstado(grupo_, ruta.sliced(kGrupo.size() + 1), texto, linea);
  } else if (dentroDe(kBloque)) {
    valorEstado(bloque_, ruta.sliced(kBloque.size() + 1), texto, linea);
  }
}

void Pain002::valorEstado(Estado& estado, QStringView ruta, const QString& texto, std::uint64_t linea) {
  if (ruta == u"GrpSts" || ruta == u"PmtInfSts" || ruta == u"TxSts") {
    estado.estado = texto;
  } else if (ruta == u"StsRsnInf/Rsn/Cd" || ruta == u"StsRsnInf/Rsn/Prtry") {
    if (estado.motivo.codigo.isEmpty()) estado.motivo.codigo = texto;
  } else if (ruta == u"StsRsnInf/AddtlInf") {
    estado.motivo.anadirTexto(texto);
  } else if (ruta == u"OrgnlNbOfTxs") {
    estado.operaciones = LeerCuenta(texto);
  } else if (ruta == u"OrgnlCtrlSum") {
    estado.suma = LeerCentimos(texto);
    if (!estado.suma) lote_.contar(ClaseAviso::Importe, linea);
  } else if (ruta == u"NbOfTxsPerSts/DtldNbOfTxs") {
    estado.cuentas = texto;
  } else if (ruta == u"NbOfTxsPerSts/DtldSts" && texto == kRechazado) {
    estado.rechazadas = LeerCuenta(estado.cuentas);
  }
}

void Pain002::valorOperacion(QStringView ruta, const QString& texto, const QString& moneda,
                             std::uint64_t linea) {
  if (PonerCampo(lote_, leida_, kCamposPain002, ruta, texto)) return;
  if (ruta == u"OrgnlTxRef/Amt/InstdAmt" || (ruta == u"OrgnlTxRef/IntrBkSttlmAmt" && !leida_.importe))
    leida_.importe = LeerImporte(lote_, texto, moneda, linea);
  else if (ruta == u"OrgnlTxRef/ReqdColltnDt")
    leida_.fechaCobro = LeerDia(texto);
  else
    valorEstado(operacion_, ruta, texto, linea);
}

void Pain002::cierra(QStringView ruta, std::uint64_t linea) {
  if (ruta == kOperacion)
    cerrarOperacion();
  else if (ruta == kBloque)
    cerrarBloque(linea);
}

void Pain002::cerrarOperacion() {
  // Lo que no dice la operación lo dice su bloque o, si no, el grupo.
  QString estado = operacion_.estado;
  MotivoXml motivo = operacion_.motivo;
  for (const Estado* mayor : {&bloque_, &grupo_}) {
    if (estado.isEmpty()) estado = mayor->estado;
    if (motivo.codigo.isEmpty() && motivo.texto.isEmpty()) motivo = mayor->motivo;
  }
  constexpr QStringView kExito = u"0000";
  const bool exito = operacion_.estado.isEmpty() && motivo.codigo == kExito;
  if (deTransferencias()) return lote_.contar(ClaseAviso::DeTransferencias, linea_);
  if (estado != kRechazado || exito) return lote_.contar(ClaseAviso::NoRechazados, linea_);
  motivo.poner(lote_, leida_);
  ponerOriginal(leida_);
  lote_.anadir(leida_, linea_);
  ++enBloque_;
  ++enGrupo_;
}

void Pain002::ponerOriginal(Devolucion& devolucion) {
  // Si son devoluciones, el mensaje que nombra es del banco: empieza por la fecha del cargo.
  if (mensaje_.startsWith(u"DA"))
    devolucion.fechaDevolucion = LeerDia(original_);
  else if (!original_.isEmpty())
    devolucion.ficheroOriginal = lote_.guardar(original_);
  if (!bloqueOriginal_.isEmpty()) devolucion.bloqueOriginal = lote_.guardar(bloqueOriginal_);
}

void Pain002::cerrarBloque(std::uint64_t linea) {
  const QString& estado = bloque_.estado.isEmpty() ? grupo_.estado : bloque_.estado;
  const bool vienenTodas = enBloque_ > 0 && enBloque_ >= bloque_.operaciones.value_or(0);
  if (estado != kRechazado || vienenTodas) return compararCuenta(bloque_, enBloque_, linea);
  if (deTransferencias()) return lote_.contar(ClaseAviso::DeTransferencias, linea);
  anadirEntero(Alcance::Bloque, bloque_, enBloque_, linea);
}

/// Si algunos, `aparte`, vienen en su línea, esta es la de los demás, y no se sabe cuánto suman.
void Pain002::anadirEntero(Alcance alcance, const Estado& estado, std::int64_t aparte, std::uint64_t linea) {
  enteros_ = true;
  Devolucion entero;
  entero.alcance = alcance;
  const bool sinMotivo = estado.motivo.codigo.isEmpty() && estado.motivo.texto.isEmpty();
  (sinMotivo ? grupo_ : estado).motivo.poner(lote_, entero);
  ponerOriginal(entero);
  entero.aparte = aparte;
  if (estado.operaciones) entero.adeudos = *estado.operaciones - aparte;
  if (aparte == 0) entero.importe = estado.suma;
  if (enEnteros_ && entero.adeudos)
    enEnteros_ = SumaAcotada(*enEnteros_, *entero.adeudos);
  else
    enEnteros_.reset();
  lote_.anadir(entero, linea);
}

void Pain002::compararCuenta(const Estado& estado, std::int64_t halladas, std::uint64_t linea) {
  if (!estado.rechazadas || estado.rechazadas == halladas || deTransferencias()) return;
  lote_.avisar({ClaseAviso::TotalAdeudos, 1, linea, estado.rechazadas, halladas});
}

void Pain002::terminar() {
  if (grupo_.estado == kRechazado) {
    const bool ninguno = enGrupo_ == 0 && !enteros_;
    const std::int64_t dichos = SumaAcotada(enGrupo_, enEnteros_.value_or(0));
    // También lo están los que no se dicen uno a uno ni en su bloque.
    const bool faltan = enEnteros_ && grupo_.operaciones.value_or(0) > dichos;
    bloqueOriginal_.clear();
    if (deTransferencias() && ninguno)
      lote_.contar(ClaseAviso::DeTransferencias, 1);
    else if (!deTransferencias() && (ninguno || faltan))
      anadirEntero(Alcance::Mensaje, grupo_, dichos, 1);
  }
  if (!enteros_) compararCuenta(grupo_, enGrupo_, 0);
}

}  // namespace

std::unique_ptr<LectorMensaje> LectorPain002(Lote& lote) {
  return std::make_unique<Pain002>(lote);
}

}  // namespace devoluciones

#include <string>

#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Subtotales.h"
#include "remesa/Campos.h"
#include "ventanas/principal/CamposInforme.h"
#include "ventanas/principal/Informe.h"
#include "ventanas/principal/RecuentoInforme.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

QString TotalConRecibos(const QString& total, const QString& recibos) {
  return total + u" €   ("_s + recibos + u" recibos)"_s;
}

/// El informe según se recorren los registros.
class Redaccion {
 public:
  Redaccion(comunes::Rejilla& visor, bool soloAdeudos)
      : visor_(visor), fila_(visor.FixedRows()), soloAdeudos_(soloAdeudos) {}

  void dar(std::string_view registro) {
    using remesa::CodigoRegistro;
    switch (remesa::Codigo(registro)) {
      case CodigoRegistro::Presentador:
        envio_ = FechaCampo(registro, remesa::kFechaCreacion);
        break;
      case CodigoRegistro::Acreedor:
        abrir(registro);
        break;
      case CodigoRegistro::Adeudo:
        if (!EntraEnInforme(registro, soloAdeudos_)) break;
        if (!abierta_) abrir({});
        AnadirAdeudo(visor_, fila_++, registro);
        break;
      case CodigoRegistro::TotalesFecha:
        total_ = TotalConRecibos(ImporteCampo(registro, remesa::kImporte04),
                                 NumeroCampo(registro, remesa::kAdeudos04));
        break;
      case CodigoRegistro::TotalesGenerales:
        general_ = TotalConRecibos(ImporteCampo(registro, remesa::kImporte99),
                                   NumeroCampo(registro, remesa::kAdeudos99));
        break;
      default:
        break;
    }
  }

  Informe terminar(const QString& fichero, const QString& otros) {
    cerrar();
    informe_.subtitulo = u"Remesa al Cobro"_s;
    informe_.titulo = informe_.secciones.front().titulo;
    informe_.lineas = u";Fichero:\t"_s + fichero + u";Envío:\t"_s + envio_ + u";;Total de la remesa:\t"_s +
                      general_ + u" en %1 bloques"_s.arg(informe_.secciones.size());
    if (!otros.isEmpty()) informe_.lineas += u";;"_s + otros;
    return std::move(informe_);
  }

 private:
  void abrir(std::string_view cabecera) {
    cerrar();
    const std::string acreedor(LeerCampo(cabecera, remesa::kIdentificadorAcreedor));
    comunes::SeccionListado& seccion = informe_.secciones.emplace_back();
    seccion.titulo = TextoCampo(cabecera, remesa::kNombreAcreedor);
    seccion.lineas = u"Emisor:\t"_s + seccion.titulo + u" ("_s +
                     TextoCampo(cabecera, remesa::kIdentificadorAcreedor) + u");Emisión:\t"_s +
                     FechaCampo(cabecera, remesa::kFechaCobro) + u";Cuenta:\t"_s +
                     CuentaCampo(cabecera, remesa::kCuentaAcreedor);
    seccion.desde = fila_;
    seccion.otraPagina = acreedor != acreedor_;
    acreedor_ = acreedor;
    abierta_ = true;
  }

  void cerrar() {
    if (!abierta_) return;
    comunes::SeccionListado& seccion = informe_.secciones.back();
    if (!total_.isEmpty()) seccion.lineas += u";Total:\t"_s + total_;
    if (fila_ > seccion.desde) {
      comunes::FilaTotal(visor_, seccion.desde, u"Total"_s, u"Nombre"_s, u"Importe"_s);
      fila_ = visor_.Rows();
    }
    seccion.hasta = fila_ - 1;
    total_.clear();
    abierta_ = false;
  }

  comunes::Rejilla& visor_;
  int fila_;
  bool soloAdeudos_;
  bool abierta_ = false;
  std::string acreedor_;
  QString envio_, total_, general_;
  Informe informe_;
};

}  // namespace

Informe PrepararInformePorBloques(comunes::Rejilla& visor, const remesa::ListaRegistros& acumulado,
                                  const QString& ficheroActual, bool conReferencia, bool soloAdeudos) {
  const comunes::SinRedibujo sinRedibujo(visor);
  comunes::PrepararRejilla(visor, QString::fromLatin1(kColumnasInforme));
  Redaccion redaccion(visor, soloAdeudos);
  std::string completo;
  for (const std::string_view registro : acumulado)
    redaccion.dar(remesa::ComoSeGuarda(registro, completo));
  if (!conReferencia) comunes::OcultarColumnas(visor, false, {u"Referencia"_s});
  return redaccion.terminar(ficheroActual,
                            soloAdeudos ? QString() : TextoRecuentoInforme(ContarInforme(acumulado)));
}

}  // namespace principal

#include "ventanas/principal/Informe.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "comunes/plataforma/Escala.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Subtotales.h"
#include "remesa/Campos.h"
#include "remesa/Registro.h"
#include "ventanas/principal/CamposInforme.h"
#include "ventanas/principal/RecuentoInforme.h"

namespace principal {

using namespace Qt::StringLiterals;

int AnchoInforme(bool conReferencia) {
  comunes::Rejilla columnas;
  comunes::PrepararRejilla(columnas, QString::fromLatin1(kColumnasInforme));
  if (!conReferencia) comunes::OcultarColumnas(columnas, false, {u"Referencia"_s});
  float ancho = 0;
  for (int c = 0; c < columnas.Cols(); ++c)
    ancho += static_cast<float>(columnas.ColWidth(c)) / comunes::FactorHorizontal();
  return static_cast<int>(std::lrint(ancho));
}

Informe PrepararInforme(comunes::Rejilla& visor, const remesa::ListaRegistros& acumulado,
                        const QString& ficheroActual, bool conReferencia, bool soloAdeudos, bool porBloques) {
  if (porBloques && std::ranges::count(acumulado, remesa::CodigoRegistro::Acreedor, remesa::Codigo) > 1)
    return PrepararInformePorBloques(visor, acumulado, ficheroActual, conReferencia, soloAdeudos);
  Informe informe;
  QString envio;
  QString emision;
  QString cuentaAcreedor;
  QString total;
  QString recibos;

  const comunes::SinRedibujo sinRedibujo(visor);
  comunes::PrepararRejilla(visor, QString::fromLatin1(kColumnasInforme));
  int fila = visor.FixedRows();
  std::string completo;
  for (std::string_view registro : acumulado) {
    registro = remesa::ComoSeGuarda(registro, completo);
    switch (remesa::Codigo(registro)) {
      case remesa::CodigoRegistro::Adeudo:
        if (EntraEnInforme(registro, soloAdeudos)) AnadirAdeudo(visor, fila++, registro);
        break;
      case remesa::CodigoRegistro::Presentador:
        envio = FechaCampo(registro, remesa::kFechaCreacion);
        break;
      case remesa::CodigoRegistro::Acreedor:
        informe.titulo = TextoCampo(registro, remesa::kNombreAcreedor);
        emision = FechaCampo(registro, remesa::kFechaCobro);
        cuentaAcreedor = CuentaCampo(registro, remesa::kCuentaAcreedor);
        break;
      case remesa::CodigoRegistro::TotalesFecha:
        total = ImporteCampo(registro, remesa::kImporte04);
        recibos = NumeroCampo(registro, remesa::kAdeudos04);
        break;
      default:
        break;
    }
  }
  comunes::Subtotales({}, visor, u"Total"_s, u"Nombre"_s, u"NOSORT"_s, {u"Importe"_s});
  if (!conReferencia) comunes::OcultarColumnas(visor, false, {u"Referencia"_s});

  informe.subtitulo = u"Remesa al Cobro"_s;
  informe.lineas = u";Emisor:** "_s + informe.titulo + u";Fichero:** "_s + ficheroActual + u";Envío:  ** "_s +
                   envio + u";Emisión:** "_s + emision + u";Cuenta:** "_s + cuentaAcreedor +
                   u";;Total:** "_s + total + u" €   ("_s + recibos + u" recibos)"_s;
  if (const QString otros = TextoRecuentoInforme(ContarInforme(acumulado)); !soloAdeudos && !otros.isEmpty())
    informe.lineas += u";;"_s + otros;
  informe.lineas.replace(u"**"_s, u"\t"_s);
  return informe;
}

bool ImprimirInforme(comunes::TrabajoImpresion& impresora, comunes::Rejilla& visor, const Informe& informe,
                     const comunes::AvanceImpresion& avance) {
  // Los anchos se guardan y se reponen tal cual: dividir y volver a multiplicar los iría desgastando.
  std::vector<int> anchos;
  for (int c = 0; c < visor.Cols(); ++c) {
    anchos.push_back(visor.ColWidth(c));
    visor.PonerColWidth(c, static_cast<int>(std::lrint(anchos.back() / comunes::FactorHorizontal())));
  }
  const auto reponer = [&] {
    for (int c = 0; c < visor.Cols(); ++c)
      visor.PonerColWidth(c, anchos[static_cast<std::size_t>(c)]);
  };
  try {
    const bool completo =
        informe.secciones.empty()
            ? comunes::ImprimirRejilla(impresora, visor, informe.titulo, true, informe.subtitulo, true, -1,
                                       -1, false, true, informe.lineas, avance)
            : comunes::ImprimirSecciones(impresora, visor, informe.secciones, informe.subtitulo,
                                         informe.lineas, avance);
    reponer();
    visor.PonerVisible(false);
    return completo;
  } catch (...) {
    reponer();
    throw;
  }
}

}  // namespace principal

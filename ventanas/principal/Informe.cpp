#include "ventanas/principal/Informe.h"

#include <charconv>
#include <cmath>
#include <string>

#include "comunes/plataforma/Escala.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Subtotales.h"
#include "remesa/Campos.h"
#include "remesa/Registro.h"
#include "remesa/SEPA.h"
#include "ventanas/principal/RecuentoInforme.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

using remesa::LeerCampo;

constexpr auto kColumnas = "Nombre#25;Importe#8>;IBAN#25=;Concepto#30;Referencia#10<";
constexpr int kCaracteresConcepto = 40;

std::string_view recortado(std::string_view texto) {
  const auto primero = texto.find_first_not_of(' ');
  if (primero == std::string_view::npos) return {};
  return texto.substr(primero, texto.find_last_not_of(' ') - primero + 1);
}

QString texto(std::string_view registro, remesa::Posiciones donde) {
  return comunes::DesdeWindows1252(recortado(LeerCampo(registro, donde)));
}

QString fecha(std::string_view registro, remesa::Posiciones donde) {
  return comunes::DesdeWindows1252(remesa::FechaQ19(LeerCampo(registro, donde)));
}

QString cuenta(std::string_view registro, remesa::Posiciones donde) {
  return comunes::DesdeWindows1252(remesa::FormatoIBAN(recortado(LeerCampo(registro, donde)), false));
}

/// El valor de un campo numérico bien escrito, exacto.
std::optional<qint64> cifras(std::string_view valor) {
  qint64 entero = 0;
  const auto fin = std::from_chars(valor.data(), valor.data() + valor.size(), entero);
  if (fin.ec != std::errc() || fin.ptr != valor.data() + valor.size()) return std::nullopt;
  return entero;
}

/// Céntimos del campo como importe; cero, en blanco.
QString importe(std::string_view registro, remesa::Posiciones donde) {
  const std::string_view valor = recortado(LeerCampo(registro, donde));
  if (const auto centimos = cifras(valor))
    return *centimos == 0 ? QString() : comunes::FormatoCentimos(*centimos);
  const double leido = remesa::ValorNumerico(valor) / 100;
  return leido == 0 ? QString() : comunes::FormatoNumero(leido, 2);
}

QString numero(std::string_view registro, remesa::Posiciones donde) {
  const std::string_view valor = recortado(LeerCampo(registro, donde));
  if (const auto entero = cifras(valor)) return QString::number(*entero);
  return QString::number(remesa::ValorNumerico(valor), 'f', QLocale::FloatingPointShortest);
}

void anadirAdeudo(comunes::Rejilla& visor, int fila, std::string_view registro) {
  const auto concepto = LeerCampo(registro, remesa::kConcepto).substr(0, kCaracteresConcepto);
  int columna = 0;
  for (const QString& celda :
       {texto(registro, remesa::kNombreDeudor), importe(registro, remesa::kImporteAdeudo),
        cuenta(registro, remesa::kCuentaDeudor), comunes::DesdeWindows1252(recortado(concepto)),
        texto(registro, remesa::kReferenciaAdeudo)}) {
    comunes::PonerCelda(visor, fila, columna++, celda);
  }
}

}  // namespace

int AnchoInforme(bool conReferencia) {
  comunes::Rejilla columnas;
  comunes::PrepararRejilla(columnas, QString::fromLatin1(kColumnas));
  if (!conReferencia) comunes::OcultarColumnas(columnas, false, {u"Referencia"_s});
  float ancho = 0;
  for (int c = 0; c < columnas.Cols(); ++c)
    ancho += static_cast<float>(columnas.ColWidth(c)) / comunes::FactorHorizontal();
  return static_cast<int>(std::lrint(ancho));
}

Informe PrepararInforme(comunes::Rejilla& visor, const remesa::ListaRegistros& acumulado,
                        const QString& ficheroActual, bool conReferencia, bool soloAdeudos) {
  Informe informe;
  QString envio;
  QString emision;
  QString cuentaAcreedor;
  QString total;
  QString recibos;

  const comunes::SinRedibujo sinRedibujo(visor);
  comunes::PrepararRejilla(visor, QString::fromLatin1(kColumnas));
  int fila = visor.FixedRows();
  std::string completo;
  for (std::string_view registro : acumulado) {
    registro = remesa::ComoSeGuarda(registro, completo);
    switch (remesa::Codigo(registro)) {
      case remesa::CodigoRegistro::Adeudo:
        if (EntraEnInforme(registro, soloAdeudos)) anadirAdeudo(visor, fila++, registro);
        break;
      case remesa::CodigoRegistro::Presentador:
        envio = fecha(registro, remesa::kFechaCreacion);
        break;
      case remesa::CodigoRegistro::Acreedor:
        informe.titulo = texto(registro, remesa::kNombreAcreedor);
        emision = fecha(registro, remesa::kFechaCobro);
        cuentaAcreedor = cuenta(registro, remesa::kCuentaAcreedor);
        break;
      case remesa::CodigoRegistro::TotalesFecha:
        total = importe(registro, remesa::kImporte04);
        recibos = numero(registro, remesa::kAdeudos04);
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
    const bool completo = comunes::ImprimirRejilla(impresora, visor, informe.titulo, true, informe.subtitulo,
                                                   true, -1, -1, false, true, informe.lineas, avance);
    reponer();
    visor.PonerVisible(false);
    return completo;
  } catch (...) {
    reponer();
    throw;
  }
}

}  // namespace principal

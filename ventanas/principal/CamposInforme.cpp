#include "ventanas/principal/CamposInforme.h"

#include <charconv>
#include <optional>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/rejilla/MiVisor.h"
#include "remesa/Campos.h"
#include "remesa/SEPA.h"

namespace principal {

using namespace Qt::StringLiterals;
using remesa::LeerCampo;

namespace {

constexpr int kCaracteresConcepto = 40;

std::string_view recortado(std::string_view texto) {
  const auto primero = texto.find_first_not_of(' ');
  if (primero == std::string_view::npos) return {};
  return texto.substr(primero, texto.find_last_not_of(' ') - primero + 1);
}

}  // namespace

QString TextoCampo(std::string_view registro, remesa::Posiciones donde) {
  return comunes::DesdeWindows1252(recortado(LeerCampo(registro, donde)));
}

QString FechaCampo(std::string_view registro, remesa::Posiciones donde) {
  return comunes::DesdeWindows1252(remesa::FechaQ19(LeerCampo(registro, donde)));
}

QString CuentaCampo(std::string_view registro, remesa::Posiciones donde) {
  return comunes::DesdeWindows1252(remesa::FormatoIBAN(recortado(LeerCampo(registro, donde)), false));
}

namespace {

/// El valor de un campo numérico bien escrito, exacto.
std::optional<qint64> cifras(std::string_view valor) {
  qint64 entero = 0;
  const auto fin = std::from_chars(valor.data(), valor.data() + valor.size(), entero);
  if (fin.ec != std::errc() || fin.ptr != valor.data() + valor.size()) return std::nullopt;
  return entero;
}

}  // namespace

QString ImporteCampo(std::string_view registro, remesa::Posiciones donde) {
  const std::string_view valor = recortado(LeerCampo(registro, donde));
  if (const auto centimos = cifras(valor))
    return *centimos == 0 ? QString() : comunes::FormatoCentimos(*centimos);
  const double leido = remesa::ValorNumerico(valor) / 100;
  return leido == 0 ? QString() : comunes::FormatoNumero(leido, 2);
}

QString NumeroCampo(std::string_view registro, remesa::Posiciones donde) {
  const std::string_view valor = recortado(LeerCampo(registro, donde));
  if (const auto entero = cifras(valor)) return QString::number(*entero);
  return QString::number(remesa::ValorNumerico(valor), 'f', QLocale::FloatingPointShortest);
}

void AnadirAdeudo(comunes::Rejilla& visor, int fila, std::string_view registro) {
  const auto concepto = LeerCampo(registro, remesa::kConcepto).substr(0, kCaracteresConcepto);
  int columna = 0;
  for (const QString& celda :
       {TextoCampo(registro, remesa::kNombreDeudor), ImporteCampo(registro, remesa::kImporteAdeudo),
        CuentaCampo(registro, remesa::kCuentaDeudor), comunes::DesdeWindows1252(recortado(concepto)),
        TextoCampo(registro, remesa::kReferenciaAdeudo)}) {
    comunes::PonerCelda(visor, fila, columna++, celda);
  }
}

}  // namespace principal

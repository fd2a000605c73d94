#include "ventanas/principal/TextoBuscado.h"

#include <algorithm>

#include "comunes/plataforma/Decimales.h"
#include "comunes/plataforma/Texto.h"

namespace principal {

using namespace Qt::StringLiterals;

std::optional<qint64> ImporteEscrito(const QString& texto) {
  constexpr std::size_t kCifras = 15;  // más no tiene ningún total
  QString limpio = texto.simplified();
  for (const QStringView moneda : {u"€", u"euros", u"EUR"})
    if (limpio.endsWith(moneda, Qt::CaseInsensitive)) {
      limpio = limpio.chopped(moneda.size()).trimmed();
      break;
    }
  using Grupos = comunes::ReglasDecimal::Grupos;
  const std::pair<QStringView, QStringView> signos[] = {{u",", u"."}, {u".", u","}};
  for (const auto& [decimal, grupo] : signos) {
    const auto leido = comunes::LeerDecimal(
        limpio, {.signos = {}, .decimal = decimal, .grupo = grupo, .grupos = Grupos::DeTresSinCero});
    const auto& [negativo, enteras, decimales] = leido.cifras;
    if (!leido.cola.isEmpty() || enteras.empty() || enteras.size() > kCifras || decimales.size() > 2 ||
        (leido.conDecimal && decimales.empty()))
      continue;
    return QString::fromStdString(enteras + decimales)
        .leftJustified(static_cast<qsizetype>(enteras.size()) + 2, u'0')
        .toLongLong();
  }
  return {};
}

remesa::Busqueda BusquedaDe(const QString& texto) {
  QString escrito = texto.normalized(QString::NormalizationForm_C);
  for (QChar& c : escrito)
    if (!comunes::CabeEnWindows1252(c)) {
      const QString partes = QString(c).normalized(QString::NormalizationForm_KD);
      c = comunes::CabeEnWindows1252(partes.left(1)) ? partes.front() : QChar(0x81);
    }
  return remesa::Busqueda(comunes::AWindows1252(escrito), ImporteEscrito(texto));
}

}  // namespace principal

#include "comunes/herramientas/CintaCalc.h"

#include <QRegularExpression>

#include "comunes/campos/Formato.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/rejilla/MiVisor.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t kFraccion = kMaxDecimales;

comunes::Cifras EnCifras(Millonesimas valor) {
  std::string cifras = std::to_string(valor < 0 ? -valor : valor);
  if (cifras.size() < kFraccion) cifras.insert(0, kFraccion - cifras.size(), '0');
  const std::size_t enteras = cifras.size() - kFraccion;
  return {valor < 0, cifras.substr(0, enteras), cifras.substr(enteras)};
}

int DecimalesDe(const comunes::Cifras& cifras, int minimo) {
  const auto ultimo = cifras.decimales.find_last_not_of('0');
  return std::max(minimo, ultimo == std::string::npos ? 0 : static_cast<int>(ultimo) + 1);
}

}  // namespace

QString TextoNumero(Millonesimas valor, int decimales) {
  const comunes::Cifras cifras = EnCifras(valor);
  return comunes::FormatoNumero(cifras, DecimalesDe(cifras, decimales));
}

QString TextoTecleado(const std::string& tecleado) {
  const auto punto = std::min(tecleado.find('.'), tecleado.size());
  const bool negativo = tecleado.front() == '-';
  const std::string enteras = tecleado.substr(negativo ? 1 : 0, punto - (negativo ? 1 : 0));
  QString texto = comunes::FormatoNumero(comunes::Cifras{false, enteras, {}}, 0);
  if (punto < tecleado.size())
    texto += comunes::SignoDecimal() + QString::fromStdString(tecleado.substr(punto + 1));
  return negativo ? u'-' + texto : texto;
}

QString TextoCopia(Millonesimas valor, int decimales) {
  const comunes::Cifras cifras = EnCifras(valor);
  return comunes::FormatoEdicion(cifras, DecimalesDe(cifras, decimales))
      .replace(u'.', comunes::SignoDecimal());
}

std::optional<Millonesimas> LeerCopia(const QString& texto) {
  QString limpio = texto.trimmed();
  if (limpio.endsWith(u'€')) limpio = limpio.chopped(1).trimmed();
  limpio.replace(u'−', u'-');
  QString editable = comunes::UnformatValue(limpio, u"T(N) A(D) L(40) D(6)"_s);
  static const QRegularExpression numero(u"^-?[0-9]*\\.[0-9]{6}$"_s);
  if (!numero.match(editable).hasMatch()) return std::nullopt;
  bool bien = false;
  const Millonesimas valor = editable.remove(u'.').toLongLong(&bien);
  return bien ? std::optional(valor) : std::nullopt;
}

bool CierraCuenta(const Sumadora::Linea& linea) {
  return linea.signo == Sumadora::kTotal || linea.signo == Sumadora::kBorrado;
}

QString CopiaCinta(const std::vector<Sumadora::Linea>& cinta) {
  QString texto;
  for (const Sumadora::Linea& linea : cinta) {
    texto += TextoNumero(linea.valor, linea.decimales) + u'\t' + QChar(linea.signo) + u'\n';
    if (CierraCuenta(linea)) texto += u'\n';
  }
  return texto;
}

void RejillaCinta(comunes::Rejilla& rejilla, const std::vector<Sumadora::Linea>& cinta) {
  comunes::PrepararRejilla(rejilla, u">Importe#24>;Signo#8="_s);
  const comunes::SinRedibujo quieta(rejilla);
  int fila = 0;
  for (const Sumadora::Linea& linea : cinta) {
    comunes::PonerCelda(rejilla, ++fila, 0, TextoNumero(linea.valor, linea.decimales));
    comunes::PonerCelda(rejilla, fila, 1, QChar(linea.signo));
    if (CierraCuenta(linea)) comunes::PonerCelda(rejilla, ++fila, 0, {});
  }
}

}  // namespace herramientas

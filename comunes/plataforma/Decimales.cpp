#include "comunes/plataforma/Decimales.h"

#include <algorithm>
#include <charconv>

namespace comunes {
namespace {

constexpr QChar kMenos = u'-';
constexpr QChar kMenosTipografico = u'\u2212';

bool Salta(QStringView& resto, QStringView que) {
  if (que.isEmpty() || !resto.startsWith(que)) return false;
  resto = resto.sliced(que.size());
  return true;
}

QStringView CifrasDelante(QStringView resto) {
  const auto* fin = std::find_if(resto.begin(), resto.end(), [](QChar c) { return c < u'0' || c > u'9'; });
  return resto.first(fin - resto.begin());
}

void Pasar(QStringView& resto, std::string& destino, QStringView cifras) {
  for (const QChar c : cifras)
    destino += static_cast<char>(c.unicode());
  resto = resto.sliced(cifras.size());
}

/// Pasa los grupos que siguen a las primeras cifras; dice si había alguno.
bool PasarGrupos(QStringView& resto, std::string& enteras, const ReglasDecimal& reglas) {
  using Grupos = ReglasDecimal::Grupos;
  const bool sueltos = reglas.grupos == Grupos::Sueltos;
  if (enteras.empty() || (!sueltos && enteras.size() > 3)) return false;
  if (reglas.grupos == Grupos::DeTresSinCero && enteras.front() == '0') return false;
  bool alguno = false;
  for (QStringView detras = resto; Salta(detras, reglas.grupo); detras = resto) {
    const QStringView cifras = CifrasDelante(detras);
    if (!sueltos && cifras.size() != 3) break;
    resto = detras;
    Pasar(resto, enteras, cifras);
    alguno = true;
  }
  return alguno;
}

/// Suma uno a la última cifra, con las llevadas.
void SumarUno(Cifras& c) {
  for (std::string* parte : {&c.decimales, &c.enteras}) {
    for (std::size_t i = parte->size(); i-- > 0;) {
      char& cifra = (*parte)[i];
      if (cifra != '9') {
        ++cifra;
        return;
      }
      cifra = '0';
    }
  }
  c.enteras.insert(c.enteras.begin(), '1');
}

}  // namespace

DecimalLeido LeerDecimal(QStringView texto, const ReglasDecimal& reglas) {
  DecimalLeido leido;
  QStringView& resto = leido.cola = texto;
  if (!resto.isEmpty() && reglas.signos.contains(resto.front())) {
    leido.cifras.negativo = resto.front() == kMenos || resto.front() == kMenosTipografico;
    resto = resto.sliced(1);
  }
  Pasar(resto, leido.cifras.enteras, CifrasDelante(resto));
  leido.conGrupos = PasarGrupos(resto, leido.cifras.enteras, reglas);
  leido.conDecimal = Salta(resto, reglas.decimal);
  if (leido.conDecimal) Pasar(resto, leido.cifras.decimales, CifrasDelante(resto));
  return leido;
}

QStringView SinBlancosDelante(QStringView texto) {
  while (texto.startsWith(u' ') || texto.startsWith(u'\t'))
    texto = texto.sliced(1);
  return texto;
}

std::optional<double> ValorDe(const Cifras& cifras) {
  const std::string limpio = (cifras.negativo ? "-" : "") + cifras.enteras + '.' + cifras.decimales;
  double valor = 0;
  const auto leido = std::from_chars(limpio.data(), limpio.data() + limpio.size(), valor);
  if (leido.ec != std::errc()) return std::nullopt;
  return valor;
}

Cifras Redondear(Cifras c, int decimales) {
  const auto ancho = static_cast<std::size_t>(std::max(decimales, 0));
  const bool sube = c.decimales.size() > ancho && c.decimales[ancho] >= '5';
  c.decimales.resize(ancho, '0');
  if (sube) SumarUno(c);
  c.enteras.erase(0, std::min(c.enteras.find_first_not_of('0'), c.enteras.size()));
  c.negativo = c.negativo && (!c.enteras.empty() || c.decimales.find_first_not_of('0') != std::string::npos);
  return c;
}

QString ComponerDecimal(const Cifras& cifras, QStringView decimal, QStringView grupo) {
  QString texto;
  if (cifras.negativo) texto += kMenos;
  std::size_t faltan = cifras.enteras.size();
  for (const char cifra : cifras.enteras) {
    texto += QLatin1Char(cifra);
    if (--faltan > 0 && faltan % 3 == 0) texto += grupo;
  }
  if (!cifras.decimales.empty()) (texto += decimal) += QString::fromStdString(cifras.decimales);
  return texto;
}

}  // namespace comunes

#include "ventanas/principal/RegistroEnPalabras.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <span>

#include "comunes/plataforma/Formatos.h"
#include "remesa/Calendario.h"
#include "remesa/SEPA.h"
#include "remesa/Validez.h"
#include "ventanas/principal/TextoVisible.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;
using remesa::LeerCampo;
using remesa::Posiciones;
using remesa::PosicionesDe;
using remesa::ValorCampo;

namespace {

/// Cómo se dice el campo en su celda.
enum class Como : std::uint8_t {
  Solo,
  ConNombre,  ///< "Cobro: 01/12/2026": está en la columna de otra cosa
  Adeudos,    ///< "18 adeudos"
  Registros,  ///< "23 registros"
};

struct Casilla {
  Columna columna;
  Posiciones donde;
  Como como = Como::Solo;
};

namespace tabla = remesa::tabla;
using K = Columna;

constexpr std::array kPresentador{
    Casilla{K::Nombre, remesa::kNombrePresentador},
    Casilla{K::Referencia, remesa::kIdentificadorPresentador},
    Casilla{K::Fecha, remesa::kFechaCreacion, Como::ConNombre},
    Casilla{K::Concepto, remesa::kIdentificacionFichero, Como::ConNombre},
};
constexpr std::array kAcreedor{
    Casilla{K::Nombre, remesa::kNombreAcreedor},
    Casilla{K::Cuenta, remesa::kCuentaAcreedor},
    Casilla{K::Referencia, remesa::kIdentificadorAcreedor},
    Casilla{K::Fecha, remesa::kFechaCobro, Como::ConNombre},
};
// Los devueltos llevan además el motivo, y van primero en la tabla: los demás son los mismos sin él.
constexpr std::array kAdeudoDevuelto{
    Casilla{K::Nombre, remesa::kNombreDeudor},
    Casilla{K::Importe, remesa::kImporteAdeudo},
    Casilla{K::Cuenta, remesa::kCuentaDeudor},
    Casilla{K::Referencia, remesa::kReferenciaAdeudo},
    Casilla{K::Mandato, remesa::kReferenciaMandato},
    Casilla{K::TipoAdeudo, remesa::kTipoAdeudo},
    Casilla{K::Fecha, remesa::kFechaFirma},
    Casilla{K::Concepto, remesa::kConcepto},
    Casilla{K::Concepto, remesa::kMotivo, Como::ConNombre},
};
constexpr std::span<const Casilla> kAdeudo = std::span(kAdeudoDevuelto).first(kAdeudoDevuelto.size() - 1);
constexpr std::array kUltimos{
    Casilla{K::Nombre, remesa::kNombreUltimoAcreedor},
    Casilla{K::Referencia, remesa::kReferenciaAdeudo},
    Casilla{K::Mandato, remesa::kReferenciaMandato},
    Casilla{K::Concepto, remesa::kNombreTitular, Como::ConNombre},
};
constexpr std::array kBalanza{
    Casilla{K::Referencia, remesa::kReferenciaAdeudo},
    Casilla{K::Mandato, remesa::kReferenciaMandato},
    Casilla{K::Concepto, PosicionesDe(tabla::kBalanza, "Clase de pago"), Como::ConNombre},
    Casilla{K::Concepto, PosicionesDe(tabla::kBalanza, "Código estadístico"), Como::ConNombre},
};
constexpr std::array kMandato{
    Casilla{K::Nombre, remesa::kNombreAcreedorOriginal},
    Casilla{K::Cuenta, remesa::kCuentaOriginal},
    Casilla{K::Referencia, remesa::kReferenciaAdeudo},
    Casilla{K::Mandato, remesa::kReferenciaMandato},
    Casilla{K::Concepto, remesa::kMandatoOriginal, Como::ConNombre},
};
constexpr std::array kTotalesFecha{
    Casilla{K::Importe, remesa::kImporte04},
    Casilla{K::Referencia, remesa::kAcreedor04},
    Casilla{K::Fecha, remesa::kFecha04, Como::ConNombre},
    Casilla{K::Concepto, remesa::kAdeudos04, Como::Adeudos},
    Casilla{K::Concepto, remesa::kRegistros04, Como::Registros},
};
constexpr std::array kTotalesAcreedor{
    Casilla{K::Importe, remesa::kImporte05},
    Casilla{K::Referencia, remesa::kAcreedor05},
    Casilla{K::Concepto, remesa::kAdeudos05, Como::Adeudos},
    Casilla{K::Concepto, remesa::kRegistros05, Como::Registros},
};
constexpr std::array kTotalesGenerales{
    Casilla{K::Importe, remesa::kImporte99},
    Casilla{K::Concepto, remesa::kAdeudos99, Como::Adeudos},
    Casilla{K::Concepto, remesa::kRegistros99, Como::Registros},
};

struct DeRetorno {
  std::string_view codigo;
  const char16_t* tipo;
  std::span<const Casilla> casillas;
};

constexpr std::array kDeRetorno{
    DeRetorno{"11", u"Presentador, de rechazos", kPresentador},
    DeRetorno{"12", u"Acreedor, de rechazos", kAcreedor},
    DeRetorno{"13", u"Adeudo rechazado", kAdeudoDevuelto},
    DeRetorno{"14", u"Total de rechazos de la fecha", kTotalesFecha},
    DeRetorno{"15", u"Total de rechazos", kTotalesAcreedor},
    DeRetorno{"21", u"Presentador, de devoluciones", kPresentador},
    DeRetorno{"22", u"Acreedor, de devoluciones", kAcreedor},
    DeRetorno{"23", u"Adeudo devuelto", kAdeudoDevuelto},
    DeRetorno{"24", u"Total de devoluciones de la fecha", kTotalesFecha},
    DeRetorno{"25", u"Total de devoluciones", kTotalesAcreedor},
};

const DeRetorno* Retorno(std::string_view registro) {
  const std::string_view codigo = LeerCampo(registro, remesa::kCodigo);
  const auto suyo = std::ranges::find(kDeRetorno, codigo, &DeRetorno::codigo);
  return suyo == kDeRetorno.end() ? nullptr : &*suyo;
}

std::span<const Casilla> CasillasDe(std::string_view registro) {
  using Clase = remesa::ClaseRegistro;
  switch (remesa::Clase(registro)) {
    case Clase::Presentador:
      return kPresentador;
    case Clase::Acreedor:
      return kAcreedor;
    case Clase::Adeudo:
      return kAdeudo;
    case Clase::Ultimos:
      return kUltimos;
    case Clase::Balanza:
      return kBalanza;
    case Clase::Mandato:
      return kMandato;
    case Clase::TotalesFecha:
      return kTotalesFecha;
    case Clase::TotalesAcreedor:
      return kTotalesAcreedor;
    case Clase::TotalesGenerales:
      return kTotalesGenerales;
    case Clase::Desconocido:
      break;
  }
  const DeRetorno* retorno = Retorno(registro);
  return retorno ? retorno->casillas : std::span<const Casilla>();
}

/// Lo que hay, con los blancos que lo desplazan.
QString TalComoEsta(std::string_view crudo, remesa::TipoCampo tipo) {
  return u'«' + TextoVisible(tipo == remesa::TipoCampo::A ? remesa::Recortar(crudo) : crudo) + u'»';
}

/// Las cifras de un campo numérico entero.
std::optional<qint64> Entero(std::string_view crudo, Posiciones donde) {
  if (static_cast<int>(crudo.size()) != donde.longitud() || !remesa::SonCifras(crudo)) return std::nullopt;
  qint64 entero = 0;
  if (std::from_chars(crudo.data(), crudo.data() + crudo.size(), entero).ec != std::errc())
    return std::nullopt;
  return entero;
}

bool ParecenCuenta(std::string_view texto) {
  return std::ranges::all_of(
      texto, [](char c) { return remesa::EsCifra(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); });
}

QString Valor(std::string_view registro, const remesa::Campo& campo) {
  const std::string_view crudo = LeerCampo(registro, campo.donde);
  const std::string_view recortado = remesa::Recortar(crudo);
  if (recortado.empty()) return {};
  switch (campo.valor) {
    case ValorCampo::Fecha:
      if (!remesa::LeerFecha(crudo)) return TalComoEsta(crudo, campo.tipo);
      return QString::fromStdString(remesa::FechaQ19(crudo));
    case ValorCampo::Importe:
      if (const auto centimos = Entero(crudo, campo.donde)) return comunes::FormatoCentimos(*centimos);
      return TalComoEsta(crudo, campo.tipo);
    case ValorCampo::Cuenta:
      if (!ParecenCuenta(recortado)) return TalComoEsta(crudo, campo.tipo);
      return QString::fromLatin1(remesa::FormatoIBAN(recortado, true));
    default:
      return TextoVisible(recortado);
  }
}

/// "Cobro" por "Fecha de cobro": en una columna de fechas sobra decir que lo es.
QString NombreCorto(const remesa::Campo& campo) {
  QString nombre = QString::fromUtf8(campo.nombre.data(), static_cast<qsizetype>(campo.nombre.size()));
  if (campo.valor != ValorCampo::Fecha) return nombre;
  nombre = nombre.section(u' ', 2, 2);
  return nombre.left(1).toUpper() + nombre.mid(1);
}

QString Cuenta(std::string_view registro, const remesa::Campo& campo, const QString& uno,
               const QString& varios) {
  const std::string_view crudo = LeerCampo(registro, campo.donde);
  if (remesa::Recortar(crudo).empty()) return {};
  if (const auto cuenta = Entero(crudo, campo.donde))
    return TextoCuenta(static_cast<std::size_t>(*cuenta), uno, varios);
  return TalComoEsta(crudo, campo.tipo) + u' ' + varios;
}

QString Decir(std::string_view registro, const Casilla& casilla) {
  const remesa::Campo* campo = remesa::CampoEn(registro, casilla.donde.desde);
  if (campo == nullptr) return {};
  if (casilla.como == Como::Adeudos) return Cuenta(registro, *campo, u"adeudo"_s, u"adeudos"_s);
  if (casilla.como == Como::Registros) return Cuenta(registro, *campo, u"registro"_s, u"registros"_s);
  const QString valor = Valor(registro, *campo);
  return casilla.como == Como::ConNombre && !valor.isEmpty() ? NombreCorto(*campo) + u": "_s + valor : valor;
}

}  // namespace

QString TituloColumna(Columna columna) {
  switch (columna) {
    case Columna::Numero:
      return u"N.º"_s;
    case Columna::Tipo:
      return u"Registro"_s;
    case Columna::Nombre:
      return u"Nombre"_s;
    case Columna::Importe:
      return u"Importe"_s;
    case Columna::Cuenta:
      return u"Cuenta"_s;
    case Columna::Referencia:
      return u"Referencia"_s;
    case Columna::Mandato:
      return u"Mandato"_s;
    case Columna::TipoAdeudo:
      return u"Tipo"_s;
    case Columna::Fecha:
      return u"Firma"_s;
    case Columna::Concepto:
      return u"Concepto"_s;
  }
  return {};
}

QString ExplicacionColumna(Columna columna) {
  switch (columna) {
    case Columna::Numero:
      return u"Número del registro en la lista"_s;
    case Columna::Tipo:
      return u"Qué es el registro"_s;
    case Columna::Nombre:
      return u"El deudor, y en las cabeceras el presentador o el acreedor"_s;
    case Columna::Importe:
      return u"El importe del adeudo, y en los totales su suma, en euros"_s;
    case Columna::Cuenta:
      return u"La cuenta del deudor, y en su cabecera la del acreedor"_s;
    case Columna::Referencia:
      return u"La referencia del adeudo, y en cabeceras y totales el identificador de su presentador o acreedor"_s;
    case Columna::Mandato:
      return u"La referencia única del mandato"_s;
    case Columna::TipoAdeudo:
      return u"El tipo de adeudo: FRST (el primero), RCUR (uno más), OOFF (único) o FNAL (el último)"_s;
    case Columna::Fecha:
      return u"Cuándo se firmó el mandato, y en cabeceras y totales la fecha que dice la celda"_s;
    case Columna::Concepto:
      return u"El concepto del adeudo, y en los totales cuántos adeudos y registros son"_s;
  }
  return {};
}

QString TipoRegistro(std::string_view registro) {
  using Clase = remesa::ClaseRegistro;
  switch (remesa::Clase(registro)) {
    case Clase::Presentador:
      return u"Presentador"_s;
    case Clase::Acreedor:
      return u"Acreedor y fecha"_s;
    case Clase::Adeudo:
      return u"Adeudo"_s;
    case Clase::Ultimos:
      return u"Último acreedor"_s;
    case Clase::Balanza:
      return u"Balanza de pagos"_s;
    case Clase::Mandato:
      return u"Cambio del mandato"_s;
    case Clase::TotalesFecha:
      return u"Total de la fecha"_s;
    case Clase::TotalesAcreedor:
      return u"Total del acreedor"_s;
    case Clase::TotalesGenerales:
      return u"Total general"_s;
    case Clase::Desconocido:
      break;
  }
  const DeRetorno* retorno = Retorno(registro);
  return retorno ? QString::fromUtf16(retorno->tipo) : u"Desconocido"_s;
}

QString TextoCelda(std::string_view registro, std::size_t numero, Columna columna) {
  if (columna == Columna::Numero) return QString::number(numero);
  if (columna == Columna::Tipo) return TipoRegistro(registro);
  QString texto;
  for (const Casilla& casilla : CasillasDe(registro)) {
    if (casilla.columna != columna) continue;
    const QString dicho = Decir(registro, casilla);
    if (!texto.isEmpty() && !dicho.isEmpty()) texto += u" · "_s;
    texto += dicho;
  }
  return texto;
}

QStringList TextosCeldas(std::string_view registro, std::size_t numero) {
  QStringList celdas;
  celdas.reserve(kColumnasRegistro);
  for (int columna = 0; columna < kColumnasRegistro; ++columna)
    celdas << TextoCelda(registro, numero, static_cast<Columna>(columna));
  return celdas;
}

const remesa::Campo* CampoDe(std::string_view registro, Columna columna) {
  if (columna == Columna::Tipo) return remesa::CampoEn(registro, remesa::kCodigo.desde);
  const auto casillas = CasillasDe(registro);
  const auto suya = std::ranges::find(casillas, columna, &Casilla::columna);
  return suya == casillas.end() ? nullptr : remesa::CampoEn(registro, suya->donde.desde);
}

int ColumnaDePosicion(std::string_view registro, int posicion) {
  if (posicion <= remesa::kCodigo.hasta) return static_cast<int>(Columna::Tipo);
  const auto casillas = CasillasDe(registro);
  const auto suya = std::ranges::find_if(casillas, [posicion](const Casilla& casilla) {
    return posicion >= casilla.donde.desde && posicion <= casilla.donde.hasta;
  });
  return suya == casillas.end() ? -1 : static_cast<int>(suya->columna);
}

QString ValorEnPalabras(std::string_view registro, const remesa::Campo& campo) {
  const QString valor = Valor(registro, campo);
  const bool importe = campo.valor == ValorCampo::Importe && !valor.isEmpty() && !valor.startsWith(u'«');
  return importe ? valor + u" €"_s : valor;
}

QString EnPalabras(std::string_view registro) {
  constexpr std::size_t kPrincipio = 60;  // caracteres de un registro que no se sabe qué es
  const auto casillas = CasillasDe(registro);
  if (casillas.empty())
    return u"Registro desconocido · "_s + TextoVisible(remesa::Recortar(registro.substr(0, kPrincipio)));
  const bool adeudo = casillas.data() == kAdeudoDevuelto.data();
  QStringList partes;
  if (!adeudo || Retorno(registro) != nullptr) partes << TipoRegistro(registro);
  for (const Columna columna :
       {Columna::Nombre, Columna::Importe, Columna::Cuenta, Columna::Fecha, Columna::Concepto}) {
    if (adeudo && columna == Columna::Fecha) continue;
    QString parte = TextoCelda(registro, 0, columna);
    if (columna == Columna::Importe && !parte.isEmpty() && !parte.startsWith(u'«')) parte += u" €"_s;
    // Que falte lo principal de un cobro no puede pasar por alto.
    if (adeudo && parte.isEmpty() && columna == Columna::Nombre) parte = u"sin nombre"_s;
    if (adeudo && parte.isEmpty() && columna == Columna::Importe) parte = u"sin importe"_s;
    if (adeudo && parte.isEmpty() && columna == Columna::Cuenta) parte = u"sin cuenta"_s;
    if (!parte.isEmpty()) partes << parte;
  }
  return partes.join(u" · "_s);
}

}  // namespace principal

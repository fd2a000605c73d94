#include "comunes/campos/Filtro.h"

#include <algorithm>

#include "comunes/campos/Etiquetas.h"
#include "comunes/campos/Identificadores.h"
#include "comunes/plataforma/Formatos.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

bool esCifra(char32_t c) {
  return c >= U'0' && c <= U'9';
}

char32_t fecha(const EstadoCaja& caja, char32_t c) {
  if (c == U'-' || c == U'.') c = U'/';
  if (c != U'/') return esCifra(c) ? c : 0;
  const bool sobra = caja.cursor == 0 || caja.texto.endsWith(u'/') || caja.texto.count(u'/') >= 2;
  return sobra ? 0 : c;
}

char32_t hora(const EstadoCaja& caja, char32_t c) {
  if (c == U'/' || c == U'.') c = U':';
  if (c != U':') return esCifra(c) ? c : 0;
  return caja.texto.contains(u':') ? 0 : c;
}

/// El último carácter del NIF con su letra: sin número delante, el último del texto.
char32_t letraNif(const EstadoCaja& caja) {
  QString nif = caja.texto + u'?';
  NifLetter(nif);
  const auto puntos = nif.toUcs4();
  return puntos.isEmpty() ? 0 : puntos.last();
}

/// Un número con grupos de tres bien puestos ("1.234,50", y lo que lleve alrededor: "€ 1.234,50"), en su
/// forma de edición: carácter a carácter, el primer punto sería el decimal y el importe, otro. Con los signos
/// cambiados ("1,234.50") no cabe duda si están los dos. Lo demás queda igual.
QString sinGrupos(const QString& texto) {
  const auto* primera =
      std::find_if(texto.cbegin(), texto.cend(), [](QChar c) { return esCifra(c.unicode()); });
  const QStringView delante(texto.cbegin(), primera);
  const auto leer = [&](const QString& decimal, const QString& grupo, bool exigirDecimal) -> QString {
    const auto [c, conGrupos, conDecimal, cola] = LeerDecimal(
        {primera, texto.cend()},
        {.signos = {}, .decimal = decimal, .grupo = grupo, .grupos = ReglasDecimal::Grupos::DeTres});
    if (!conGrupos || (exigirDecimal && !conDecimal)) return {};
    if (std::ranges::any_of(cola, [](QChar otra) { return esCifra(otra.unicode()); })) return {};
    const std::string numero = c.enteras + (conDecimal ? "." : "") + c.decimales;
    return (delante.contains(u'-') || cola.contains(u'-') ? u"-"_s : QString()) +
           QString::fromStdString(numero);
  };
  QString numero = leer(SignoDecimal(), SignoGrupo(), false);
  if (numero.isNull()) numero = leer(SignoGrupo(), SignoDecimal(), true);
  return numero.isNull() ? texto : numero;
}

}  // namespace

Filtro::Filtro(const QString& descriptor) : tipo_(GetTag(descriptor, u"T"_s).value_or(QString())) {
  QString d = GetTag(descriptor, u"D"_s).value_or(QString());
  if (d.isEmpty() && tipo_.toUpper() == "N"_L1) d = u"2"_s;
  decimales_ = static_cast<int>(std::clamp(Val(d), 0.0, 65535.0));
  const QString l = GetTag(descriptor, u"L"_s).value_or(QString());
  longitud_ = static_cast<qsizetype>(std::clamp(Val(l), 0.0, 65535.0));
}

bool Filtro::esTipo(const char* letras) const {
  return tipo_.size() == 1 && QLatin1String(letras).contains(tipo_[0]);
}

char32_t Filtro::numero(const EstadoCaja& caja, char32_t c) const {
  if (c == U',') c = U'.';
  if (c == U'-') {
    if (caja.cursor != 0 || tipo_ != "N"_L1) return 0;
  } else if (c != U'.' && !esCifra(c)) {
    return 0;
  }
  const qsizetype punto = caja.texto.indexOf(u'.');
  const bool todo = !caja.texto.isEmpty() && caja.seleccion == caja.texto.size();
  if (c == U'.' && punto >= 0 && !todo) return 0;
  if (decimales_ == 0 && tipo_ != "C"_L1) return c == U'.' ? 0 : c;
  if (punto < 0 || todo) return c;
  // Con los decimales completos no entra otro detrás de uno; justo tras el punto, solo si alguno cabe.
  const bool detras = caja.cursor > punto + 1 || (decimales_ == 0 && caja.cursor == punto + 1);
  return detras && caja.texto.size() - punto - 1 >= decimales_ ? 0 : c;
}

char32_t Filtro::Tecla(const EstadoCaja& caja, char32_t tecla) const {
  if (esTipo("NnC")) return numero(caja, tecla);
  if (esTipo("D")) return esCifra(tecla) ? tecla : 0;
  if (esTipo("Ff")) return fecha(caja, tecla);
  if (esTipo("H")) return hora(caja, tecla);
  if (esTipo("X") && tecla == U'?') return letraNif(caja);
  if (esTipo("MXI")) return QChar::toUpper(tecla);
  return tecla;
}

bool Filtro::EsNumeroConGrupos(const QString& texto) const {
  return esTipo("Nn") && sinGrupos(texto) != texto;
}

QString Filtro::motivoNumero(const EstadoCaja& caja, char32_t c) const {
  if (c == U'-') return tipo_ == "N"_L1 ? u"El signo menos va delante."_s : u"No puede ser negativo."_s;
  const bool signo = c == U'.' || c == U',';
  if (!signo && !esCifra(c)) return u"Aquí solo van cifras y el signo decimal."_s;
  if (signo && caja.texto.contains(u'.'))
    return u"Ya hay un signo decimal. Los miles se escriben sin punto."_s;
  if (decimales_ == 0) return u"Va sin decimales."_s;
  return u"Ya tiene %1 decimales. Los miles se escriben sin punto."_s.arg(decimales_);
}

QString Filtro::MotivoLongitud() const {
  return u"No caben más de %1 caracteres."_s.arg(longitud_);
}

QString Filtro::Motivo(const EstadoCaja& caja, char32_t tecla) const {
  if (tecla == U'+' || tecla < U' ') return {};
  if (const char32_t pasa = Tecla(caja, tecla); pasa != 0) {
    const qsizetype unidades = QChar::requiresSurrogates(pasa) ? 2 : 1;
    return caja.seleccion == 0 && caja.texto.size() + unidades > longitud_ ? MotivoLongitud() : QString();
  }
  if (esTipo("NnC")) return motivoNumero(caja, tecla);
  if (esTipo("D")) return u"Aquí solo van cifras."_s;
  if (esTipo("Ff")) return u"La fecha se escribe con cifras y barras: día/mes/año."_s;
  if (esTipo("H")) return u"La hora se escribe con cifras y dos puntos."_s;
  return {};
}

std::optional<QString> Filtro::Texto(const EstadoCaja& caja, const QString& texto) const {
  QString entrante = esTipo("Nn") ? sinGrupos(texto) : texto;
  // Los blancos de la forma impresa de una cuenta no son parte de ella, y cortarían su final.
  if (esTipo("I")) entrante.remove(u' ');
  EstadoCaja estado{caja.texto, caja.cursor, 0};
  estado.texto.remove(caja.cursor, caja.seleccion);
  QString escrito;
  for (const char32_t c : entrante.toUcs4()) {
    // Nadie pregunta aquí por la letra del NIF.
    const char32_t pasa = esTipo("X") && c == U'?' ? c : Tecla(estado, c);
    if (pasa == 0) continue;
    const QString unidades = QString::fromUcs4(&pasa, 1);
    if (estado.texto.size() + unidades.size() > longitud_) {
      if (esTipo("NnCD")) return std::nullopt;
      break;
    }
    estado.texto.insert(estado.cursor, unidades);
    estado.cursor += unidades.size();
    escrito += unidades;
  }
  return escrito;
}

}  // namespace comunes

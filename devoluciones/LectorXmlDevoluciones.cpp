#include "devoluciones/LectorXmlDevoluciones.h"

#include <array>

#include "devoluciones/Lectores.h"
#include "ficheros/ErrorEjecucion.h"
#include "iso20022/LectorXml.h"
#include "iso20022/QueEs.h"

namespace devoluciones {
namespace {

using namespace Qt::StringLiterals;
using iso20022::LectorXml;

constexpr int kFormato = 321;

/// Elementos que solo envuelven, y no en todas las versiones.
bool SoloEnvuelve(QStringView nombre) {
  return nombre == u"Pty" || nombre == u"DrctDbtMndt";
}

/// La ruta del elemento abierto, desde el del mensaje.
class Ruta {
 public:
  void abrir(QStringView nombre) {
    largos_.push_back(texto_.size());
    if (SoloEnvuelve(nombre)) return;
    if (!texto_.isEmpty()) texto_ += u'/';
    texto_ += nombre;
  }
  void cerrar() {
    texto_.truncate(largos_.back());
    largos_.pop_back();
  }
  bool acabada() const { return largos_.empty(); }
  QStringView texto() const { return texto_; }

 private:
  QString texto_;
  std::vector<qsizetype> largos_;
};

struct ClaseMensaje {
  QStringView nombre;
  Forma forma;
  std::unique_ptr<LectorMensaje> (*lector)(Lote&);
};

constexpr std::array kMensajes{ClaseMensaje{u"CstmrPmtStsRpt", Forma::Pain002, LectorPain002},
                               ClaseMensaje{u"BkToCstmrDbtCdtNtfctn", Forma::Camt054, LectorCamt054}};

/// Hasta el elemento de un mensaje de los que se leen. nullptr si no hay ninguno.
const ClaseMensaje* BuscarMensaje(LectorXml& xml) {
  // Delante puede haber sobres, pero no un mensaje entero de otra clase.
  constexpr int kMaxSobres = 5;
  for (;;) {
    const auto suceso = xml.siguiente();
    if (suceso == LectorXml::Suceso::Fin || xml.profundidad() > kMaxSobres) return nullptr;
    if (suceso != LectorXml::Suceso::Abre) continue;
    if (xml.nombre() == u"CstmrDrctDbtInitn")
      throw FicheroAjeno{u"es una remesa de adeudos en XML (pain.008), no un fichero de devoluciones"_s};
    for (const ClaseMensaje& clase : kMensajes)
      if (xml.nombre() == clase.nombre) return &clase;
  }
}

void LeerMensaje(LectorXml& xml, LectorMensaje& lector, const remesa::AvanceLectura& avance) {
  Ruta ruta;
  bool hoja = false;
  QString moneda;
  for (;;) {
    switch (xml.siguiente()) {
      case LectorXml::Suceso::Abre:
        ruta.abrir(xml.nombre());
        moneda = xml.atributo(u"Ccy");
        lector.abre(ruta.texto(), xml.linea());
        hoja = true;
        break;
      case LectorXml::Suceso::Cierra:
        if (ruta.acabada()) return lector.terminar();
        if (hoja) lector.valor(ruta.texto(), xml.texto().trimmed(), moneda, xml.linea());
        lector.cierra(ruta.texto(), xml.linea());
        ruta.cerrar();
        hoja = false;
        if (avance) avance(xml.leidos(), xml.tamano());
        break;
      case LectorXml::Suceso::Fin:
        return lector.terminar();
    }
  }
}

}  // namespace

void LeerXml(Lote& lote, const std::filesystem::path& ruta, const remesa::AvanceLectura& avance) {
  LectorXml xml(ruta);
  const ClaseMensaje* clase = BuscarMensaje(xml);
  if (clase == nullptr)
    throw FicheroAjeno{u"no es un fichero de devoluciones, sino "_s +
                       iso20022::QueEs(xml.raiz(), xml.espacio())};
  lote.fichero().forma = clase->forma;
  const auto lector = clase->lector(lote);
  try {
    LeerMensaje(xml, *lector, avance);
  } catch (const ficheros::ErrorEjecucion& error) {
    if (error.numero() != kFormato) throw;
    // Lo que venía antes del corte se enseña, y se dice que falta.
    lote.fichero().completo = false;
    lote.avisar({.clase = ClaseAviso::Cortado, .registro = xml.linea(), .causa = error.texto()});
  }
}

bool EsMensajeDeDevoluciones(const std::filesystem::path& ruta) try {
  LectorXml xml(ruta);
  return BuscarMensaje(xml) != nullptr;
} catch (const FicheroAjeno&) {
  return false;
} catch (const ficheros::ErrorEjecucion& error) {
  if (error.numero() == kFormato) return false;
  throw;
}

bool PonerCampo(Lote& lote, Devolucion& devolucion, std::span<const CampoXml> campos, QStringView ruta,
                const QString& texto) {
  for (const CampoXml& campo : campos) {
    if (campo.ruta != ruta) continue;
    Dato& dato = devolucion.*campo.dato;
    const bool ninguna = texto == QLatin1StringView(kSinReferencia.data(), kSinReferencia.size());
    if (!dato.presente()) dato = lote.guardar(ninguna ? QStringView() : QStringView(texto));
    return true;
  }
  return false;
}

std::optional<std::int64_t> LeerCuenta(QStringView texto) {
  constexpr qsizetype kMaxCifras = 18;
  if (texto.isEmpty() || texto.size() > kMaxCifras) return {};
  std::int64_t numero = 0;
  for (const QChar c : texto) {
    if (c < u'0' || c > u'9') return {};
    numero = numero * 10 + (c.unicode() - u'0');
  }
  return numero;
}

std::optional<std::int64_t> LeerCentimos(QStringView texto) {
  const qsizetype punto = texto.indexOf(u'.');
  QStringView decimales = punto < 0 ? QStringView() : texto.sliced(punto + 1);
  while (decimales.size() > 2 && decimales.endsWith(u'0'))
    decimales.chop(1);
  if (decimales.size() > 2) return {};
  const QStringView enteros = punto < 0 ? texto : texto.first(punto);
  const QString cifras = (enteros.isEmpty() && !decimales.isEmpty() ? u"0"_s : enteros.toString()) +
                         decimales.toString().leftJustified(2, u'0');
  return enteros.isEmpty() && decimales.isEmpty() ? std::nullopt : LeerCuenta(cifras);
}

std::optional<std::int64_t> LeerImporte(Lote& lote, const QString& texto, const QString& moneda,
                                        std::uint64_t linea) {
  if (!moneda.isEmpty() && moneda != u"EUR") {
    lote.contar(ClaseAviso::Moneda, linea);
    return {};
  }
  const auto centimos = LeerCentimos(texto);
  if (!centimos) lote.contar(ClaseAviso::Importe, linea);
  return centimos;
}

std::optional<remesa::Dia> LeerDia(QStringView texto) {
  constexpr qsizetype kLargo = 10;
  if (texto.size() < kLargo || texto[4] != u'-' || texto[7] != u'-') return {};
  const QString cifras =
      texto.first(4).toString() + texto.sliced(5, 2).toString() + texto.sliced(8, 2).toString();
  return remesa::LeerFecha(cifras.toLatin1().toStdString());
}

void MotivoXml::anadirTexto(const QString& otro) {
  if (!texto.isEmpty()) texto += u' ';
  texto += otro;
}

void MotivoXml::poner(Lote& lote, Devolucion& devolucion) const {
  if (!codigo.isEmpty()) devolucion.motivo = lote.guardar(codigo);
  if (!texto.isEmpty()) devolucion.textoBanco = lote.guardar(texto);
}

}  // namespace devoluciones

#include "iso20022/LecturaMensaje.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

#include "comunes/plataforma/Texto.h"
#include "ficheros/ErrorEjecucion.h"
#include "iso20022/Arbol.h"
#include "iso20022/Composicion.h"
#include "iso20022/LectorXml.h"
#include "iso20022/QueEs.h"
#include "iso20022/TextoLeido.h"
#include "iso20022/Textos.h"
#include "iso20022/Valores.h"
#include "remesa/Calendario.h"

namespace iso20022 {
namespace {

using namespace Qt::StringLiterals;
using Suceso = LectorXml::Suceso;

QString Texto(std::string_view bytes) {
  return comunes::DesdeWindows1252(bytes);
}

bool EsCierto(std::string_view texto) {
  return texto == "true" || texto == "1";
}

bool EsBlanco(QStringView texto) {
  return std::ranges::all_of(texto, [](QChar c) { return c.isSpace(); });
}

/// "2026-12-01", quizá con hora o zona detrás: "20261201". Vacío si no es un día.
std::string FechaCorta(std::string_view iso) {
  constexpr std::size_t kLargo = 10;
  constexpr std::string_view kDetras = "TZ+-";
  if (iso.size() < kLargo || iso[4] != '-' || iso[7] != '-') return {};
  if (iso.size() > kLargo && kDetras.find(iso[kLargo]) == std::string_view::npos) return {};
  const std::string fecha = std::string(iso.substr(0, 4)).append(iso.substr(5, 2)).append(iso.substr(8, 2));
  return remesa::LeerFecha(fecha) ? fecha : std::string();
}

/// La primera de esa forma.
const Entrada& EntradaDe(Grado grado, Forma forma) {
  const auto entradas = Tabla::Unica().entradas(grado);
  return *std::ranges::find(entradas, forma, [](const Entrada& entrada) { return entrada.de->forma; });
}

/// Por qué no se toma el mensaje.
struct Rechazo {
  QString porque;
};

class Lectura {
 public:
  using AlAvisar = std::function<void(AvisoLectura)>;

  Lectura(const std::filesystem::path& ruta, AlAvisar alAvisar, RemesaLeida remesa = RemesaLeida())
      : xml_(ruta), alAvisar_(std::move(alAvisar)), remesa_(std::move(remesa)) {
    for (const Grado grado : {Grado::Mensaje, Grado::Bloque, Grado::Adeudo})
      leidos_.emplace_back(grado);
  }

  /// Por qué no se toma; vacío si se toma.
  QString leer(const remesa::AvanceLectura& avance) try {
    for (std::uintmax_t dichos = 0;;) {
      const Suceso suceso = xml_.siguiente();
      if (suceso == Suceso::Fin) break;
      suceso == Suceso::Abre ? abrir() : cerrar();
      if (avance && xml_.leidos() != dichos) avance(dichos = xml_.leidos(), xml_.tamano());
    }
    comprobarRecuento(Grado::Mensaje, remesa_.adeudos(), remesa_.importe());
    if (remesa_.adeudos() == 0) throw Rechazo{u"El mensaje no trae ningún adeudo"_s};
    return {};
  } catch (const Rechazo& rechazo) {
    return rechazo.porque;
  }
  /// Tras leerlo: su 01, y lo que va detrás.
  std::string presentador() {
    return composicion_.presentador(leidos(Grado::Mensaje), remesa_.primeraCabecera());
  }
  RemesaLeida& remesa() { return remesa_; }

 private:
  // De fuera adentro.
  static constexpr int kDocumento = 1, kMensaje = 2;

  void abrir();
  void comprobarRaiz() const;
  void abrirGrado(Grado grado);
  void cerrar();
  void cerrarGrado(Grado grado);
  void hoja(const Arbol::Nodo* nodo);
  void mirar(const Arbol::Nodo& nodo, std::string& bytes);
  void importe(const Arbol::Nodo& nodo, std::string& bytes);
  void soloVale(const Arbol::Nodo& nodo, std::string_view debido, CodigoAviso codigo);
  void comprobarRecuento(Grado grado, std::uint64_t adeudos, std::uint64_t centimos);
  void comprobarCambio();
  void sinSitio(const QString& valor) { avisar(CodigoAviso::SinSitio, rutaActual(), valor); }
  void quitar(CodigoAviso codigo, const Arbol::Nodo& nodo, const QString& cambio = {});
  QString rutaActual() const;
  void avisar(CodigoAviso codigo, const QString& elemento, const QString& valor, const QString& cambio = {},
              std::size_t linea = 0);
  Leidos& leidos(Grado grado) { return leidos_[static_cast<std::size_t>(grado)]; }

  LectorXml xml_;
  AlAvisar alAvisar_;
  std::vector<Leidos> leidos_;
  std::vector<const Arbol::Nodo*> pila_;  // desde CstmrDrctDbtInitn; nullptr, uno que no está en la tabla
  std::vector<QString> ajenos_;           // los nombres de esos
  QString moneda_;
  std::set<std::string> bancos_;  // de acreedores, ya dichos
  RemesaLeida remesa_;
  std::uint64_t adeudosAntes_ = 0, importeAntes_ = 0;  // del bloque
  std::uint64_t adeudo_ = 0;                           // el que se lee, desde 1
  bool enAdeudo_ = false;
  bool bloqueEmpezado_ = false;  // ya tiene algún adeudo
  bool importeLeido_ = false;    // el del adeudo, valga o no
  Composicion composicion_{[this](CodigoAviso codigo, Grado grado, std::size_t i, std::string_view valor,
                                  std::string_view queda) {
    avisar(codigo, Arbol::Unico().de(grado, i).ruta(), Texto(valor), Texto(queda), leidos(grado).linea(i));
  }};
};

void Lectura::abrir() {
  if (xml_.profundidad() == kDocumento) return comprobarRaiz();
  const Arbol::Nodo* nodo = nullptr;
  if (xml_.profundidad() == kMensaje) {
    nodo = &Arbol::Unico().raiz();
    if (xml_.nombre() != nodo->nombre) throw Rechazo{u"El mensaje no es de adeudos"_s};
  } else {
    if (!EsBlanco(xml_.texto())) sinSitio(xml_.texto());
    if (pila_.back() != nullptr) nodo = pila_.back()->hijo(xml_.nombre());
  }
  pila_.push_back(nodo);
  if (nodo == nullptr)
    ajenos_.push_back(xml_.nombre().toString());
  else if (nodo->abreGrado)
    abrirGrado(nodo->grado);
  else if (nodo->elemento != nullptr && nodo->elemento->de->forma == Forma::Importe)
    moneda_ = xml_.atributo(u"Ccy");
}

void Lectura::comprobarRaiz() const {
  const auto es = [this](Version version) {
    return xml_.espacio() == QLatin1String(Espacio(version).data());
  };
  if (xml_.raiz() != u"Document" || (!es(Version::V02) && !es(Version::V08)))
    throw Rechazo{u"No es un mensaje de adeudos, sino "_s + QueEs(xml_.raiz(), xml_.espacio())};
}

void Lectura::abrirGrado(Grado grado) {
  // Una segunda cabecera no quita la primera: lo suyo está repetido.
  if (grado != Grado::Mensaje) leidos(grado).vaciar();
  if (grado == Grado::Bloque) {
    bloqueEmpezado_ = false;
    adeudosAntes_ = remesa_.adeudos();
    importeAntes_ = remesa_.importe();
  }
  if (grado != Grado::Adeudo) return;
  if (!bloqueEmpezado_) composicion_.empezarBloque(leidos(Grado::Bloque));
  bloqueEmpezado_ = enAdeudo_ = true;
  importeLeido_ = false;
  ++adeudo_;
}

void Lectura::cerrar() {
  if (xml_.profundidad() == kDocumento) return;
  const Arbol::Nodo* nodo = pila_.back();
  if (nodo != nullptr && nodo->elemento != nullptr)
    hoja(nodo);
  else if (!EsBlanco(xml_.texto()))
    sinSitio(xml_.texto());
  if (nodo != nullptr && nodo->abreGrado) cerrarGrado(nodo->grado);
  if (nodo == nullptr) ajenos_.pop_back();
  pila_.pop_back();
}

void Lectura::cerrarGrado(Grado grado) {
  if (grado == Grado::Bloque)
    comprobarRecuento(grado, remesa_.adeudos() - adeudosAntes_, remesa_.importe() - importeAntes_);
  if (grado != Grado::Adeudo) return;
  if (!importeLeido_)
    avisar(CodigoAviso::Importe, Arbol::Unico().de(grado, EntradaDe(grado, Forma::Importe).primero).ruta(),
           {});
  composicion_.adeudo(leidos(grado), remesa_);
  comprobarCambio();
  enAdeudo_ = false;
}

void Lectura::hoja(const Arbol::Nodo* nodo) {
  if (EsBlanco(xml_.texto())) return;
  // Lo de un bloque, detrás de sus adeudos, ya no les llega; el esquema no lo admite.
  if (nodo->grado == Grado::Bloque && bloqueEmpezado_) return sinSitio(xml_.texto());
  if (leidos(nodo->grado).hay(nodo->indice)) {
    if (nodo->segundo == nullptr || leidos(nodo->grado).hay(nodo->segundo->indice))
      return avisar(CodigoAviso::Repetido, nodo->ruta(), xml_.texto());
    nodo = nodo->segundo;
  }
  std::string& bytes = leidos(nodo->grado).poner(nodo->indice, xml_.linea());
  if (!ABytes(xml_.texto(), bytes)) avisar(CodigoAviso::Caracteres, nodo->ruta(), xml_.texto(), Texto(bytes));
  mirar(*nodo, bytes);
}

/// Lo que ya se sabe que no vale, o que no se guarda tal cual.
void Lectura::mirar(const Arbol::Nodo& nodo, std::string& bytes) {
  const Elemento& elemento = *nodo.elemento;
  const auto esParte = [&](auto... partes) {
    return ((elemento.parte == static_cast<std::uint8_t>(partes)) || ...);
  };
  switch (elemento.de->forma) {
    case Forma::Fijo:
      return soloVale(nodo, elemento.de->fijo, CodigoAviso::OtroValor);
    case Forma::Instrumento:
      if (bytes == kEntreEmpresas)
        throw Rechazo{
            u"Lleva adeudos entre empresas (B2B), que no se toman: aquí solo se unen los básicos"_s};
      return soloVale(nodo, kEsquemaBasico, CodigoAviso::OtroValor);
    case Forma::TipoAdeudo:
      if (!EsTipoAdeudo(bytes)) quitar(CodigoAviso::SinSitio, nodo);
      return;
    case Forma::Fecha:
    case Forma::FechaHora:
      if (const std::string fecha = FechaCorta(bytes); fecha.empty())
        quitar(CodigoAviso::Fecha, nodo);
      else
        bytes = fecha;
      return;
    case Forma::Importe:
      importeLeido_ = true;
      return importe(nodo, bytes);
    case Forma::CambioMandato:
      if (!EsCierto(bytes) && bytes != "false" && bytes != "0") quitar(CodigoAviso::SinSitio, nodo);
      return;
    case Forma::EntidadOriginal:
      if (bytes != kCambioDeCuenta) quitar(CodigoAviso::SinSitio, nodo);
      return;
    case Forma::Acreedor:
      if (esParte(ParteAcreedor::Esquema)) soloVale(nodo, kEsquema, CodigoAviso::OtroValor);
      return;
    case Forma::Presentador:
      if (esParte(PartePresentador::EsquemaOrganizacion, PartePresentador::EsquemaPersona))
        soloVale(nodo, kEsquema, CodigoAviso::OtroValor);
      return;
    case Forma::Banco:
      if (esParte(ParteBanco::Otro)) soloVale(nodo, kSinDato, CodigoAviso::SinSitio);
      return;
    case Forma::BancoAcreedor:
      if (esParte(ParteBanco::Otro)) return soloVale(nodo, kSinDato, CodigoAviso::SinSitio);
      if (bancos_.insert(bytes).second) quitar(CodigoAviso::SinSitio, nodo);
      return;
    default:
      return;
  }
}

// Un importe que no se entiende no se inventa: queda en cero, que la comprobación y el banco rechazan.
void Lectura::importe(const Arbol::Nodo& nodo, std::string& bytes) {
  const auto centimos = Centimos(bytes);
  const auto ancho = static_cast<std::size_t>(nodo.elemento->de->donde.longitud());
  std::string cifras = std::to_string(centimos.value_or(0));
  if (moneda_ == u"EUR" && centimos && cifras.size() <= ancho) {
    bytes = cifras.insert(0, ancho - cifras.size(), '0');
    return;
  }
  avisar(CodigoAviso::Importe, nodo.ruta(), Texto(bytes) + u' ' + moneda_, u"0.00"_s);
  leidos(nodo.grado).quitar(nodo.indice);
}

void Lectura::soloVale(const Arbol::Nodo& nodo, std::string_view debido, CodigoAviso codigo) {
  if (leidos(nodo.grado)[nodo.indice] != debido) quitar(codigo, nodo, Texto(debido));
}

void Lectura::quitar(CodigoAviso codigo, const Arbol::Nodo& nodo, const QString& cambio) {
  avisar(codigo, nodo.ruta(), xml_.texto(), cambio);
  leidos(nodo.grado).quitar(nodo.indice);
}

void Lectura::comprobarRecuento(Grado grado, std::uint64_t adeudos, std::uint64_t centimos) {
  for (const Entrada& entrada : Tabla::Unica().entradas(grado)) {
    const bool suma = entrada.de->forma == Forma::Suma;
    if ((entrada.de->forma != Forma::Cuantos && !suma) || !leidos(grado).hay(entrada.primero)) continue;
    const std::string_view dicho = leidos(grado)[entrada.primero];
    // Un número de adeudos es, leído así, cien veces él.
    if (Centimos(dicho) == (suma ? centimos : adeudos * 100)) continue;
    const std::string real = suma ? EscribirImporte(centimos) : std::to_string(adeudos);
    avisar(CodigoAviso::Recuento, Arbol::Unico().de(grado, entrada.primero).ruta(), Texto(dicho), Texto(real),
           leidos(grado).linea(entrada.primero));
  }
}

// Lo que dice de si el mandato ha cambiado y los cambios que trae. Estos valen siempre.
void Lectura::comprobarCambio() {
  const std::size_t indice = EntradaDe(Grado::Adeudo, Forma::CambioMandato).primero;
  const Leidos& adeudo = leidos(Grado::Adeudo);
  if (!adeudo.hay(indice) || EsCierto(adeudo[indice]) == composicion_.hayCambio()) return;
  if (EsCierto(adeudo[indice])) return avisar(CodigoAviso::CambioVacio, rutaActual(), {});
  avisar(CodigoAviso::OtroValor, Arbol::Unico().de(Grado::Adeudo, indice).ruta(), Texto(adeudo[indice]),
         u"true"_s, adeudo.linea(indice));
}

QString Lectura::rutaActual() const {
  QString ruta;
  for (const Arbol::Nodo* nodo : pila_)
    if (nodo != nullptr) ruta = nodo->ruta();
  for (const QString& ajeno : ajenos_)
    ruta += (ruta.isEmpty() ? u""_s : u"/"_s) + ajeno;
  return ruta;
}

void Lectura::avisar(CodigoAviso codigo, const QString& elemento, const QString& valor, const QString& cambio,
                     std::size_t linea) {
  AvisoLectura aviso{codigo, elemento, valor.simplified(), cambio};
  aviso.linea = linea == 0 ? xml_.linea() : linea;
  if (enAdeudo_) {
    aviso.adeudo = adeudo_;
    aviso.referencia = Texto(leidos(Grado::Adeudo)[0]);
  }
  alAvisar_(std::move(aviso));
}

}  // namespace

MensajeLeido LeerMensaje(const std::filesystem::path& ruta, const remesa::AvanceLectura& avance) {
  MensajeLeido mensaje;
  Lectura lectura(ruta, [&](AvisoLectura aviso) { mensaje.avisos.push_back(std::move(aviso)); });
  if (QString rechazo = lectura.leer(avance); !rechazo.isEmpty()) return {{}, {}, std::move(rechazo)};
  mensaje.registros = lectura.remesa().terminar(lectura.presentador());
  return mensaje;
}

MensajeEnFichero LeerMensajeEnFichero(const std::filesystem::path& ruta, const std::filesystem::path& carpeta,
                                      const remesa::AvanceLectura& avance) {
  ResumenAvisos avisos;
  Lectura lectura(
      ruta, [&](const AvisoLectura& aviso) { avisos.dar(aviso); },
      RemesaLeida(std::make_unique<ficheros::FicheroProvisional>(carpeta)));
  if (QString rechazo = lectura.leer(avance); !rechazo.isEmpty()) return {{}, {}, std::move(rechazo)};
  auto registros = std::make_unique<ficheros::FicheroProvisional>(carpeta);
  lectura.remesa().terminar(lectura.presentador(), *registros);
  return {std::move(registros), avisos.lineas(), {}};
}

}  // namespace iso20022

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>

#include "comunes/dialogos/MyBox.h"
#include "comunes/impresion/ImprimirListado.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/Subtotales.h"
#include "devoluciones/Textos.h"
#include "ficheros/ErrorEjecucion.h"
#include "ficheros/EscrituraSegura.h"
#include "ui_VentanaDevoluciones.h"
#include "ventanas/devoluciones/VentanaDevoluciones.h"

// Lo que hace cada botón de la ventana de devoluciones.
namespace ventanas {

using namespace Qt::StringLiterals;

namespace {

using Marca = ModeloDevoluciones::Marca;

const QString kTituloListado = u"Listado de devoluciones"_s;
const QString kFicheros = u"@*.Q19;*.xml;*.txt"_s;
/// Más no se leen en una caja: las demás están en los avisos de la ventana.
constexpr qsizetype kMaxEnCaja = 8;

QString Ajuste(const QString& clave) {
  return comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, clave, {});
}

/// Las rutas de lo que devuelve el diálogo al elegir varios.
QStringList Elegidas(const QString& dicho) {
  QStringList partes = dicho.split(QChar(u'\0'), Qt::SkipEmptyParts);
  if (partes.size() < 2) return partes;
  const QDir carpeta(partes.takeFirst());
  for (QString& nombre : partes)
    nombre = carpeta.filePath(nombre);
  return partes;
}

comunes::Avance& Paso(comunes::Avance& avance, std::uintmax_t hecho, std::uintmax_t total) {
  avance.avanzarODetener(static_cast<double>(hecho), static_cast<double>(total));
  return avance;
}

QString EnLineas(QStringList lineas) {
  const qsizetype demas = lineas.size() - kMaxEnCaja;
  if (demas > 0) lineas = lineas.first(kMaxEnCaja) << u"… y %1 más."_s.arg(demas);
  return lineas.join(u";"_s);
}

/// Un texto de fuera en una caja, donde ";" es un cambio de línea.
QString ParaCaja(QString texto) {
  return comunes::SinControles(texto.replace(u';', u','));
}

}  // namespace

void VentanaDevoluciones::elegirFicheros() {
  anadir(Elegidas(comunes::DialogoFichero(true, this, Ajuste(u"OrigenQ19"_s), kFicheros, true, {})));
}

void VentanaDevoluciones::anadir(const QStringList& rutas) {
  if (rutas.isEmpty()) return;
  decir({});
  QStringList noLeidos;
  const std::size_t antes = lote_.size();
  cotejo_.reset();  // es de las que había
  try {
    const comunes::Reloj reloj;
    for (const QString& ruta : rutas) {
      const QString nombre = QFileInfo(ruta).fileName();
      comunes::Avance avance(u"Leyendo %1…"_s.arg(nombre));
      try {
        const devoluciones::FicheroLeido& fichero =
            lote_.leer(comunes::ARuta(ruta),
                       [&](std::uintmax_t leidos, std::uintmax_t total) { Paso(avance, leidos, total); });
        for (const devoluciones::AvisoLectura& aviso : fichero.avisos)
          avisosLectura_ += nombre + u": "_s + devoluciones::TextoAviso(aviso, fichero.forma);
      } catch (const devoluciones::FicheroAjeno& ajeno) {
        noLeidos += ParaCaja(nombre + u": "_s + ajeno.porque + u'.');
      } catch (const ficheros::ErrorEjecucion& error) {
        noLeidos += ParaCaja(nombre + u": "_s + QString::fromStdString(error.texto()) + u'.');
      }
    }
  } catch (const comunes::TrabajoDetenido&) {
    decir(u"Lectura detenida."_s);
  } catch (...) {
    mostrarDesde(antes);
    throw;
  }
  mostrarDesde(antes);
  if (!noLeidos.isEmpty()) comunes::Avisar(EnLineas(noLeidos), this);
}

/// Las que se han leído detrás de esas, con su marca, y todo lo demás.
void VentanaDevoluciones::mostrarDesde(std::size_t antes) {
  std::vector<Marca> marcas = modelo_.marcas();
  marcas.reserve(lote_.size());
  for (std::size_t i = antes; i < lote_.size(); ++i) {
    const devoluciones::Intento intento = devoluciones::IntentoDe(lote_[i]);
    const bool propuesta = intento == devoluciones::Intento::OtraVez && !lote_.estaEnOtro(i);
    marcas.push_back(intento == devoluciones::Intento::Nunca ? Marca::NoAdmite
                     : propuesta                             ? Marca::Puesta
                                                             : Marca::Sin);
  }
  modelo_.ponerMarcas(std::move(marcas));
  if (lote_.size() > antes) avisosBusqueda_.clear();
  rehacer();
}

void VentanaDevoluciones::elegirRemesas() {
  const QStringList rutas =
      Elegidas(comunes::DialogoFichero(true, this, Ajuste(u"DestinoQ19"_s), kFicheros, true, {}));
  if (rutas.isEmpty()) return;
  buscar([&](devoluciones::Cotejo& cotejo) {
    QStringList avisos;
    for (const QString& ruta : rutas) {
      const QString nombre = QFileInfo(ruta).fileName();
      comunes::Avance avance(u"Buscando en %1…"_s.arg(nombre));
      try {
        const bool nueva = cotejo.buscarEn(
            comunes::ARuta(ruta),
            [&](std::uintmax_t leidos, std::uintmax_t total) { Paso(avance, leidos, total); });
        if (!nueva) avisos += u"%1: es copia de otra remesa, se omite."_s.arg(nombre);
      } catch (const devoluciones::FicheroAjeno& ajeno) {
        avisos += nombre + u": "_s + ajeno.porque + u'.';
      } catch (const ficheros::ErrorEjecucion& error) {
        avisos += nombre + u": "_s + QString::fromStdString(error.texto()) + u'.';
      }
    }
    return avisos;
  });
}

void VentanaDevoluciones::elegirCarpeta() {
  const QString carpeta =
      comunes::DialogoCarpeta(this, u"Carpeta con las remesas enviadas"_s, Ajuste(u"DestinoQ19"_s));
  if (carpeta.isEmpty()) return;
  buscar([&](devoluciones::Cotejo& cotejo) {
    comunes::Avance avance(u"Buscando en %1…"_s.arg(QFileInfo(carpeta).fileName()));
    const auto resultado = cotejo.buscarEnCarpeta(
        comunes::ARuta(carpeta),
        [&](std::uintmax_t leidos, std::uintmax_t total) { Paso(avance, leidos, total); });
    QStringList avisos;
    for (const auto& [ruta, causa] : resultado.fallos)
      avisos += comunes::DesdeRuta(ruta.filename()) + u": "_s + QString::fromStdString(causa) + u'.';
    if (resultado.leidas == 0 && resultado.copias.empty())
      avisos += u"En la carpeta no hay ninguna remesa."_s;
    return avisos;
  });
}

void VentanaDevoluciones::buscar(const std::function<QStringList(devoluciones::Cotejo&)>& donde) {
  if (lote_.size() == 0)
    return comunes::Avisar(u"Añada antes un fichero de rechazos o devoluciones."_s, this);
  decir({});
  if (!cotejo_) cotejo_.emplace(lote_);
  try {
    const comunes::Reloj reloj;
    avisosBusqueda_ = donde(*cotejo_);
  } catch (const comunes::TrabajoDetenido&) {
    rehacer();  // con lo que se haya leído
    return decir(u"Búsqueda detenida."_s);
  } catch (...) {
    rehacer();
    throw;
  }
  std::size_t halladas = 0, ambiguas = 0;
  for (std::size_t i = 0; i < lote_.size(); ++i) {
    const auto estado = cotejo_->hallazgo(i).estado;
    halladas += estado == devoluciones::EstadoCotejo::Hallada;
    ambiguas += estado == devoluciones::EstadoCotejo::Ambigua;
  }
  rehacer();
  decir(u"En las remesas: %1 halladas, %2 dudosas, %3 que no están."_s.arg(halladas).arg(ambiguas).arg(
      lote_.size() - halladas - ambiguas));
}

void VentanaDevoluciones::marcarElegidas() {
  if (ui_->Visor->selectionModel()->hasSelection()) modelo_.alternar(elegidasOTodas());
}

void VentanaDevoluciones::presentar() {
  if (!cotejo_)
    return comunes::Avisar(
        u"Para presentarlos otra vez hacen falta sus registros enteros.;;Busque antes en las remesas enviadas."_s,
        this);
  const QDate fecha = ui_->FechaCobro->date();
  devoluciones::PeticionNueva peticion{
      .elegidas = {},
      .fechaCobro = {std::chrono::year(fecha.year()),
                     std::chrono::month(static_cast<unsigned>(fecha.month())),
                     std::chrono::day(static_cast<unsigned>(fecha.day()))},
      .ahora = comunes::Ahora(),
      .conSufijo = ui_->ConSufijo->isChecked()};
  for (std::size_t i = 0; i < modelo_.marcas().size(); ++i)
    if (modelo_.marcas()[i] == Marca::Puesta) peticion.elegidas.push_back(i);
  if (peticion.elegidas.empty()) return comunes::Avisar(u"No hay ningún adeudo marcado."_s, this);
  devoluciones::RemesaNueva nueva = devoluciones::HacerRemesa(lote_, *cotejo_, peticion);
  avisosNueva_.clear();
  for (const devoluciones::Fuera& fuera : nueva.fuera)
    avisosNueva_ += u"Queda fuera %1: %2"_s.arg(devoluciones::TextoQuien(lote_[fuera.devolucion]),
                                                devoluciones::TextoFuera(fuera));
  for (const std::string& nombre : nueva.otrosPresentadores)
    avisosNueva_ += u"Hay adeudos de otro presentador, %1: la remesa lleva el del primero."_s.arg(
        comunes::DesdeWindows1252(nombre));
  mostrarAvisos();
  QStringList lineas;
  for (const QString& aviso : avisosNueva_)
    lineas += ParaCaja(aviso);
  const QString loDemas = lineas.isEmpty() ? QString() : u";;"_s + EnLineas(lineas);
  if (nueva.registros.empty())
    return comunes::Avisar(u"No hay nada que presentar otra vez."_s + loDemas, this);
  const QString cuenta = devoluciones::TextoCuenta({static_cast<std::int64_t>(nueva.adeudos), nueva.importe});
  const QString pregunta =
      u"La remesa nueva lleva %1, con cobro el %2.%3;; ¿ La pone en la remesa acumulada ? "_s.arg(
          cuenta, fecha.toString(u"dd/MM/yyyy"_s), loDemas);
  if (!comunes::Confirmar(pregunta, 1, this)) return;
  if (alPresentar_ && alPresentar_(std::move(nueva.registros)))
    decir(u"En la remesa acumulada: %1. Revísela y guárdela."_s.arg(cuenta));
}

void VentanaDevoluciones::imprimir() {
  decir({});
  comunes::Rejilla visor(u"VisorDevoluciones"_s);
  {
    const comunes::SinRedibujo quieta(visor);
    // En vertical caben hasta las fechas; la cuenta y el mandato, además, en horizontal.
    comunes::PrepararRejilla(
        visor,
        u"Nombre#25;Importe#9>;Referencia#17;Código#6;Motivo#22;Cobro#9;Devolución#10;Cuenta#25;Mandato#15"_s);
    for (int fila = 0; fila < modelo_.rowCount(); ++fila) {
      const QStringList todas = celdas(fila);
      int columna = 0;
      for (const int cual : {0, 1, 3, 5, 6, 8, 9, 2, 4})
        comunes::PonerCelda(visor, visor.FixedRows() + fila, columna++, todas[cual]);
    }
    comunes::Subtotales({}, visor, u"Total"_s, u"Nombre"_s, u"NOSORT"_s, {u"Importe"_s});
  }
  QStringList totales;
  for (const devoluciones::Grupo& grupo : recuento_.porMotivo)
    totales += ParaCaja(devoluciones::TextoGrupoMotivo(grupo));
  const bool todas = static_cast<std::size_t>(modelo_.rowCount()) == lote_.size();
  const QString lineas = todas ? u";"_s + totales.join(u';') : QString();
  int ancho = 0;
  for (int columna = 0; columna < visor.Cols(); ++columna)
    ancho += visor.ColWidth(columna);
  comunes::ListadoImprimible listado;
  listado.padre = this;
  listado.anchoTabla = ancho;
  listado.carpeta = Ajuste(u"DestinoQ19"_s);
  listado.rotulos = [&] { return comunes::RotulosListado{kTituloListado, kTituloListado, kTituloListado}; };
  listado.imprimir = [&](comunes::TrabajoImpresion& trabajo, const comunes::AvanceImpresion& avance) {
    return comunes::ImprimirRejilla(trabajo, visor, kTituloListado, true,
                                    todas ? ui_->Total->text() : ui_->Cuenta->text(), true, -1, -1, false,
                                    true, lineas, avance);
  };
  const comunes::FinListado fin = comunes::ImprimirListado(listado);
  decir(fin.mensaje, fin.documento);
}

void VentanaDevoluciones::copiar() {
  QStringList lineas{devoluciones::TitulosColumnas().join(u'\t')};
  for (const int fila : elegidasOTodas())
    lineas += comunes::SinControles(celdas(fila).join(u"\uE000"_s)).replace(u"\uE000"_s, u"\t"_s);
  QGuiApplication::clipboard()->setText(lineas.join(u'\n'));
  decir(u"Copiadas: %1."_s.arg(lineas.size() - 1));
}

QString VentanaDevoluciones::tablaCsv() const {
  QString tabla = QChar::ByteOrderMark + devoluciones::LineaCsv(devoluciones::TitulosColumnas());
  for (int fila = 0; fila < modelo_.rowCount(); ++fila)
    tabla += devoluciones::LineaCsv(celdas(fila));
  return tabla;
}

void VentanaDevoluciones::guardarCsv() {
  decir({});
  const auto conExtension = [](const QString& elegido) {
    return elegido.endsWith(u".csv"_s, Qt::CaseInsensitive) ? elegido : elegido + u".csv"_s;
  };
  const QString elegido = comunes::DialogoFichero(false, this, Ajuste(u"DestinoQ19"_s), u"csv"_s, false,
                                                  u"Devoluciones.csv"_s, conExtension);
  if (elegido.isEmpty()) return;
  const QString ruta = comunes::RutaAbsoluta(conExtension(elegido));
  ficheros::EscrituraSegura salida(comunes::ARuta(ruta));
  salida.escribir(tablaCsv().toStdString());
  salida.confirmar();
  decir(u"Tabla escrita en %1"_s.arg(QDir::toNativeSeparators(ruta)));
}

}  // namespace ventanas

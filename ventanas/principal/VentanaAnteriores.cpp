#include "ventanas/principal/VentanaAnteriores.h"

#include <QPushButton>
#include <algorithm>
#include <chrono>
#include <utility>

#include "comunes/dialogos/VistaRejilla.h"
#include "comunes/impresion/ImprimirListado.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/ModeloRejilla.h"
#include "ui_VentanaAnteriores.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

const QString kTituloAnteriores = u"Cobros anteriores"_s;
/// Más no los lee nadie.
constexpr std::size_t kMaxApariciones = 5000;

}  // namespace

VentanaAnteriores::VentanaAnteriores(QString quien, std::vector<anteriores::FicheroHallado> ficheros,
                                     const anteriores::Filtro& filtro, QWidget* padre)
    : QDialog(padre),
      ui_(std::make_unique<Ui::VentanaAnteriores>()),
      quien_(std::move(quien)),
      rejilla_(u"VisorAnteriores"_s),
      busqueda_(std::make_shared<Busqueda>()) {
  ui_->setupUi(this);
  comunes::PrepararRejilla(
      rejilla_,
      u"Fecha#12=;Qué es#10;Importe#11>;Motivo#24;Concepto#30;Deudor#26;Referencia#20;Mandato#20;"
      "Cuenta#26;Fichero#40;Registro#8>;Acreedor#18"_s);
  rejilla_.PonerRows(rejilla_.FixedRows());
  modelo_ = std::make_unique<comunes::ModeloRejilla>(rejilla_);
  comunes::PrepararVistaRejilla(*ui_->Visor, *modelo_);
  comunes::FuentesVentana(*this);
  comunes::DisponerVentana(*this);
  connect(ui_->cmdImprimir, &QPushButton::clicked, this, &VentanaAnteriores::imprimir);
  connect(ui_->cmdDetener, &QPushButton::clicked, this, &VentanaAnteriores::detener);
  connect(ui_->cmdCerrar, &QPushButton::clicked, this, &QDialog::reject);
  connect(&mirada_, &QTimer::timeout, this, &VentanaAnteriores::mirar);
  ui_->cmdImprimir->setEnabled(false);
  buscador_.empezar(
      [busqueda = busqueda_, ficheros = std::move(ficheros), filtro](const HiloSuelto::Seguir& seguir) {
        auto halladas = anteriores::BuscarApariciones(
            ficheros, filtro,
            [&](std::uintmax_t leidos, std::uintmax_t total) {
              busqueda->leidos = leidos;
              busqueda->total = total;
              return seguir();
            },
            &busqueda->omitidos);
        busqueda->halladas = std::move(halladas);
      });
  using namespace std::chrono_literals;
  mirada_.start(100ms);
  mirar();
}

VentanaAnteriores::~VentanaAnteriores() {
  buscador_.dejarDelTodo();
  ui_->Visor->setModel(nullptr);
}

void VentanaAnteriores::mirar() {
  if (buscador_.enMarcha()) {
    const std::uintmax_t total = busqueda_->total;
    ui_->Resumen->setText(u"%1. Buscando en lo enviado antes… %2 %"_s.arg(quien_).arg(
        total == 0 ? 0 : busqueda_->leidos * 100 / total));
    return;
  }
  apariciones_ = std::move(busqueda_->halladas);
  const auto devueltos =
      static_cast<std::uint64_t>(std::ranges::count_if(apariciones_, &anteriores::Aparicion::vuelta));
  QString texto =
      apariciones_.empty()
          ? u"No está en lo enviado antes."_s
          : u"%1 y %2."_s.arg(TextoCuenta(apariciones_.size() - devueltos, u"cobro"_s, u"cobros"_s),
                              TextoCuenta(devueltos, u"devolución"_s, u"devoluciones"_s));
  if (apariciones_.size() > kMaxApariciones) {
    apariciones_.erase(apariciones_.begin(), apariciones_.end() - kMaxApariciones);
    texto += u" Se muestran los últimos %1."_s.arg(kMaxApariciones);
  }
  if (!busqueda_->omitidos.empty())
    texto += u" No se han podido leer %1."_s.arg(
        TextoCuenta(busqueda_->omitidos.size(), u"fichero"_s, u"ficheros"_s));
  terminar(texto);
}

void VentanaAnteriores::detener() {
  buscador_.dejar();
  terminar(u"Búsqueda detenida."_s);
}

void VentanaAnteriores::terminar(const QString& comoAcaba) {
  mirada_.stop();
  ui_->cmdDetener->hide();
  ui_->Resumen->setText(quien_ + u". "_s + comoAcaba);
  ui_->cmdImprimir->setEnabled(!apariciones_.empty());
  const comunes::SinRedibujo quieta(rejilla_);
  rejilla_.PonerRows(rejilla_.FixedRows() + static_cast<int>(apariciones_.size()));
  int fila = rejilla_.FixedRows();
  for (const anteriores::Aparicion& aparicion : apariciones_) {
    int columna = 0;
    for (const QString& valor : anteriores::ValoresAparicion(aparicion))
      rejilla_.PonerTextMatrix(fila, columna++, valor);
    if (aparicion.vuelta) rejilla_.PonerEstilo(fila, 1, {.Negrita = true});
    ++fila;
  }
}

void VentanaAnteriores::imprimir() {
  comunes::Rejilla visor(u"VisorListado"_s);
  {
    const comunes::SinRedibujo quieta(visor);
    // En vertical caben hasta el motivo; en horizontal, todas, con el fichero sin su carpeta.
    comunes::PrepararRejilla(
        visor,
        u"Fecha#10=;Qué es#10;Importe#9>;Deudor#20;Referencia#15;Motivo#20;Concepto#16;Mandato#14;Fichero#18"_s);
    int fila = visor.FixedRows();
    for (const anteriores::Aparicion& aparicion : apariciones_) {
      QStringList todas = anteriores::ValoresAparicion(aparicion);
      constexpr int kFichero = 9;
      todas[kFichero] = comunes::DesdeRuta(aparicion.ruta.filename());
      int columna = 0;
      for (const int cual : {0, 1, 2, 5, 6, 3, 4, 7, kFichero})
        comunes::PonerCelda(visor, fila, columna++, todas[cual]);
      ++fila;
    }
  }
  int ancho = 0;
  for (int columna = 0; columna < visor.Cols(); ++columna)
    ancho += visor.ColWidth(columna);
  comunes::ListadoImprimible listado;
  listado.padre = this;
  listado.anchoTabla = ancho;
  listado.carpeta = comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, u"DestinoQ19"_s, {});
  listado.rotulos = [] {
    return comunes::RotulosListado{kTituloAnteriores, kTituloAnteriores, kTituloAnteriores};
  };
  listado.imprimir = [&](comunes::TrabajoImpresion& trabajo, const comunes::AvanceImpresion& avance) {
    return comunes::ImprimirRejilla(trabajo, visor, kTituloAnteriores, true, quien_, true, -1, -1, false,
                                    true, {}, avance);
  };
  const comunes::FinListado fin = comunes::ImprimirListado(listado);
  if (!fin.mensaje.isEmpty()) ui_->Resumen->setText(fin.mensaje);
}

}  // namespace principal

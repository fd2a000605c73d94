#include "ventanas/principal/frmUnirQ19.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QSplitter>

#include "comunes/plataforma/Enlace.h"
#include "comunes/plataforma/Iconos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/AccesibleDisco.h"
#include "ventanas/principal/AccesibleLista.h"
#include "ventanas/principal/BarraBuscar.h"
#include "ventanas/principal/Herramientas.h"
#include "ventanas/principal/LecturaRegistros.h"
#include "ventanas/principal/Navegador.h"

namespace principal {

using namespace Qt::StringLiterals;

frmUnirQ19::frmUnirQ19(const QString& lineaOrdenes, QWidget* padre)
    : QMainWindow(padre), ui_(std::make_unique<Ui::frmUnirQ19>()) {
  comunes::RutaAjustes =
      QDir::toNativeSeparators(QCoreApplication::applicationDirPath()) + QDir::separator() + u"Tarvo.INI"_s;
  // Antes de crear las listas: al llenarse ya piden su interfaz.
  PrepararAccesibilidadDisco();
  PrepararAccesibilidadListas();
  ui_->setupUi(this);
  prepararControles();
  comunes::FuentesVentana(*this);
  conectar();
  leerAjustes();
  prepararAntecedentes();
  ui_->Importado->hide();
  ui_->AbrirDevoluciones->hide();
  ui_->VisorPrt->hide();
  ajustarAPantalla();
  tomarTamano();
  comunes::DisponerVentana(*this);
  mirarAcumulado();
  // Como un evento más: si falla, la aplicación lo informa y la ventana sigue.
  if (!lineaOrdenes.isEmpty())
    QMetaObject::invokeMethod(
        this, [this, lineaOrdenes] { cargarInicial(lineaOrdenes); }, Qt::QueuedConnection);
}

frmUnirQ19::~frmUnirQ19() = default;

void frmUnirQ19::prepararControles() {
  using comunes::Pictograma;
  const std::pair<QPushButton*, Pictograma> botones[] = {
      {ui_->Importar, Pictograma::Importar},    {ui_->Empezar, Pictograma::Empezar},
      {ui_->Guardar, Pictograma::Guardar},      {ui_->cmdInsertar, Pictograma::Insertar},
      {ui_->cmdEliminar, Pictograma::Eliminar}, {ui_->cmdImprimir, Pictograma::Imprimir},
      {ui_->cmdComprobar, Pictograma::Aceptar}, {ui_->Salir, Pictograma::Salir},
  };
  for (const auto& [boton, pictograma] : botones) {
    boton->setIcon(comunes::Icono(pictograma));
    boton->setIconSize({20, 20});
  }
  // "IMPORTADO" aparece y desaparece sin mover lo de alrededor.
  QSizePolicy sitio = ui_->Importado->sizePolicy();
  sitio.setRetainSizeWhenHidden(true);
  ui_->Importado->setSizePolicy(sitio);
  ui_->AvisoPreview->enlace().setText(u"Conservar acreedores y fechas"_s);
  setTabOrder(ui_->Ficheros, ui_->AvisoPreview->boton());
  setTabOrder(ui_->AvisoPreview->boton(), &ui_->AvisoPreview->enlace());
  setTabOrder(&ui_->AvisoPreview->enlace(), ui_->AbrirDevoluciones);
  setTabOrder(ui_->AbrirDevoluciones, ui_->VerTexto);
  setTabOrder(ui_->VerTexto, ui_->VerColumnas);
  setTabOrder(ui_->VerColumnas, ui_->Preview);
  prepararLineaAcumulado();
  prepararLugarVacio();
  buscar_ = new BarraBuscar({ui_->Acumulado, ui_->Preview}, ui_->Central);

  // QSplitter deja a sus hijos en el orden inverso; las ayudas técnicas los leen en el que están.
  for (const QSplitter* divisor : {ui_->DivisorArchivos, ui_->DivisorCarpetas, ui_->DivisorListas})
    for (int i = 0; i < divisor->count(); ++i)
      divisor->widget(i)->raise();
  ui_->DivisorArchivos->setStretchFactor(1, 1);
  ui_->DivisorArchivos->setSizes({230, 900});
  ui_->DivisorCarpetas->setSizes({220, 300});
  ui_->DivisorListas->setSizes({260, 340});

  // Designer no coloca nada dentro de una barra de estado: las dos etiquetas vienen sueltas.
  ui_->Estado->addWidget(ui_->EstadoMensaje, 1);
  ui_->Estado->addWidget(ui_->AbrirListado);
  ui_->AbrirListado->hide();
  ui_->Estado->addWidget(ui_->VerComprobacion);
  ui_->VerComprobacion->hide();
  ui_->Estado->addWidget(ui_->Deshacer);
  ui_->Deshacer->hide();
  ui_->Estado->addPermanentWidget(ui_->EstadoPosicion);
}

void frmUnirQ19::conectar() {
  ui_->InfoPreview->ponerPorPartes();
  navegador_ = new Navegador(ui_->Disco, ui_->Carpetas, ui_->Ficheros, this);
  herramientas_ = new Herramientas(*ui_, *this);
  prepararVariosFicheros();
  prepararPasos();
  connect(ui_->Bloques, &QCheckBox::toggled, this, &frmUnirQ19::cambiarBloques);
  connect(&ui_->AvisoPreview->enlace(), &QPushButton::clicked, this, [this] {
    ui_->Bloques->setFocus();
    if (!conBloques()) ui_->Bloques->click();
  });
  prepararMenuRemesa();
  connect(ui_->Empezar, &QPushButton::clicked, this, &frmUnirQ19::empezar);
  connect(ui_->Guardar, &QPushButton::clicked, this, &frmUnirQ19::guardar);
  connect(ui_->cmdInsertar, &QPushButton::clicked, this, &frmUnirQ19::insertar);
  connect(ui_->cmdEliminar, &QPushButton::clicked, this, &frmUnirQ19::eliminar);
  connect(ui_->cmdImprimir, &QPushButton::clicked, this, &frmUnirQ19::imprimir);
  connect(ui_->AbrirListado, &QPushButton::clicked, this, &frmUnirQ19::abrirListado);
  connect(ui_->VerComprobacion, &QPushButton::clicked, this, &frmUnirQ19::comprobarGuardado);
  connect(ui_->cmdComprobar, &QPushButton::clicked, this, &frmUnirQ19::comprobar);
  connect(ui_->mnuComprobar, &QAction::triggered, this, &frmUnirQ19::comprobar);
  connect(ui_->mnuDevoluciones, &QAction::triggered, this, [this] { abrirDevoluciones({}); });
  connect(ui_->AbrirDevoluciones, &QPushButton::clicked, this, [this] { abrirDevoluciones({devueltos_}); });
  connect(ui_->Ficheros, &QListView::doubleClicked, this, [this] {
    if (!devueltos_.isEmpty()) abrirDevoluciones({devueltos_});
  });
  connect(ui_->Salir, &QPushButton::clicked, this, &QWidget::close);
  connect(ui_->Acumulado, &VistaRegistros::dobleClic, this, [this](int fila) { editar(fila); });
  lectura_ = new LecturaRegistros(*ui_, *this);
  connect(lectura_, &LecturaRegistros::dicho, this, &frmUnirQ19::decir);
}

void frmUnirQ19::leerAjustes() {
  const auto ajuste = [](const char* clave, const QString& defecto) {
    return comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, QLatin1String(clave), defecto);
  };
  navegador_->iniciar(ajuste("OrigenQ19", u"C:\\"_s).left(2), ajuste("OrigenQ19", {}),
                      ajuste("ExtensionQ19", u"*.Q19"_s));
  const auto si = [&](const char* clave) {
    const QString valor = ajuste(clave, {});
    return valor.startsWith(u'S', Qt::CaseInsensitive) || valor == u"1";
  };
  ui_->SoloAdeudos->setChecked(si("SoloAdeudosQ19"));
  ui_->Bloques->setChecked(si("BloquesQ19"));
  lectura_->ponerColumnas(ajuste("VistaQ19", {}).trimmed().startsWith(u'C', Qt::CaseInsensitive));
  ui_->Ficheros->setFocus();
}

void frmUnirQ19::closeEvent(QCloseEvent* evento) {
  evento->setAccepted(herramientas_->cerrarTodas());
}

namespace {

/// Los ficheros y carpetas que se arrastran.
QStringList Arrastrados(const QMimeData* datos) {
  QStringList rutas;
  const QList<QUrl> urls = datos->urls();
  for (const QUrl& url : urls)
    if (url.isLocalFile()) rutas << QDir::toNativeSeparators(url.toLocalFile());
  return rutas;
}

}  // namespace

void frmUnirQ19::dragEnterEvent(QDragEnterEvent* evento) {
  if (!Arrastrados(evento->mimeData()).isEmpty()) evento->acceptProposedAction();
}

void frmUnirQ19::dropEvent(QDropEvent* evento) {
  const QStringList rutas = Arrastrados(evento->mimeData());
  if (rutas.isEmpty()) return;
  evento->setDropAction(Qt::CopyAction);
  evento->accept();
  // Fuera de este evento: una caja modal dejaría esperando al programa del que viene.
  QMetaObject::invokeMethod(
      this, [this, rutas] { soltar(rutas); }, Qt::QueuedConnection);
}

}  // namespace principal

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QUrl>
#include <algorithm>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Enlace.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "remesa/Identificacion.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/BarraBuscar.h"
#include "ventanas/principal/LugarVacio.h"
#include "ventanas/principal/Navegador.h"
#include "ventanas/principal/TextosObservacion.h"
#include "ventanas/principal/VentanaSeparar.h"
#include "ventanas/principal/frmUnirQ19.h"

namespace principal {

using namespace Qt::StringLiterals;

// Los rótulos y el orden están en el formulario; aquí, lo que hace cada orden del menú.
void frmUnirQ19::prepararMenuRemesa() {
  // Las que tienen botón son su botón: el menú las enseña con su tecla.
  for (const auto& [accion, boton] :
       std::initializer_list<std::pair<QAction*, QAbstractButton*>>{{ui_->mnuImportar, ui_->Importar},
                                                                    {ui_->mnuBloques, ui_->Bloques},
                                                                    {ui_->mnuEmpezar, ui_->Empezar},
                                                                    {ui_->mnuInsertar, ui_->cmdInsertar},
                                                                    {ui_->mnuEliminar, ui_->cmdEliminar},
                                                                    {ui_->mnuImprimir, ui_->cmdImprimir},
                                                                    {ui_->mnuGuardar, ui_->Guardar},
                                                                    {ui_->mnuSalir, ui_->Salir}})
    connect(accion, &QAction::triggered, boton, &QAbstractButton::click);
  // La casilla cambia también por su cuenta.
  connect(ui_->menuRemesa, &QMenu::aboutToShow, this, [this] { ui_->mnuBloques->setChecked(conBloques()); });
  connect(ui_->Bloques, &QCheckBox::toggled, ui_->mnuBloques, &QAction::setChecked);
  // Sus teclas (F2, Insert, Supr) son las de la lista, y solo en ella.
  ui_->Acumulado->addActions({ui_->mnuEditar, ui_->mnuInsertar, ui_->mnuEliminar});
  connect(ui_->mnuEditar, &QAction::triggered, this, [this] {
    const int fila = ui_->Acumulado->actual();
    fila >= 0 ? editar(fila) : decir(u"Señale antes un registro de la remesa."_s);
  });
  connect(ui_->mnuAbrir, &QAction::triggered, this, &frmUnirQ19::elegirCarpetaOFichero);
  connect(ui_->mnuActualizar, &QAction::triggered, navegador_, &Navegador::refrescar);
  connect(ui_->mnuCorregir, &QAction::triggered, this, [this] { corregir(); });
  connect(ui_->mnuFechaCobro, &QAction::triggered, this, &frmUnirQ19::cambiarFechaCobro);
  connect(ui_->mnuRenovar, &QAction::triggered, this, &frmUnirQ19::renovarIdentificacion);
  connect(ui_->mnuBuscar, &QAction::triggered, buscar_, &BarraBuscar::abrir);
  connect(ui_->mnuSiguiente, &QAction::triggered, buscar_, &BarraBuscar::siguiente);
  connect(ui_->mnuAnterior, &QAction::triggered, buscar_, &BarraBuscar::anterior);
  connect(ui_->mnuIrARegistro, &QAction::triggered, buscar_, &BarraBuscar::irARegistro);
  connect(ui_->mnuSeparar, &QAction::triggered, this, &frmUnirQ19::separarRemesa);
  connect(ui_->mnuExportarXml, &QAction::triggered, this, &frmUnirQ19::exportarXml);
}

void frmUnirQ19::elegirCarpetaOFichero() {
  const QString patron = comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, u"ExtensionQ19"_s, u"*.Q19"_s);
  const QString ruta = comunes::DialogoCarpetaOFichero(
      this, u"Elegir carpeta o fichero"_s, ui_->Carpetas->ruta(),
      u"|Remesas (%1)|%1|Mensajes XML|*.xml|Todos los ficheros|*"_s.arg(patron));
  if (ruta.isEmpty()) return;
  navegador_->irA(ruta);
  ui_->Ficheros->setFocus();
  if (QFileInfo(ruta).isDir()) return;
  elegir(ruta);
  if (!devueltos_.isEmpty()) abrirDevoluciones({devueltos_});
}

QString frmUnirQ19::carpetaEjemplos() {
  // En Windows y, en Debian, donde los pone el paquete; sin instalar, los del código fuente.
  for (const QString& donde :
       {u"ejemplos"_s, u"../../share/doc/unirq19/examples"_s, u"../../../ejemplos"_s}) {
    const QDir carpeta(QCoreApplication::applicationDirPath() + u'/' + donde);
    if (carpeta.exists()) return QDir::toNativeSeparators(carpeta.canonicalPath());
  }
  return {};
}

void frmUnirQ19::prepararLugarVacio() {
  lugar_ = new LugarVacio(*ui_->Acumulado);
  const QString ejemplos = carpetaEjemplos();
  lugar_->verEjemplos->setVisible(!ejemplos.isEmpty());
  connect(lugar_->verEjemplos, &QPushButton::clicked, this, [this, ejemplos] {
    navegador_->irA(ejemplos);
    ui_->Ficheros->setFocus();
  });
  connect(lugar_->elegirCarpeta, &QPushButton::clicked, this, &frmUnirQ19::elegirCarpetaOFichero);
  connect(lugar_->verComprobacion, &QPushButton::clicked, this, &frmUnirQ19::comprobarGuardado);
  connect(lugar_->abrirCarpeta, &QPushButton::clicked, this, [this] {
    const QString carpeta = QFileInfo(guardado_).absolutePath();
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(carpeta)))
      decir(u"No hay ningún programa que abra %1"_s.arg(QDir::toNativeSeparators(carpeta)));
  });
  connect(lugar_->deshacer, &QPushButton::clicked, this, &frmUnirQ19::deshacer);
  QWidget* anterior = ui_->Acumulado;
  for (QWidget* enlace : {lugar_->verEjemplos, lugar_->elegirCarpeta, lugar_->verComprobacion,
                          lugar_->abrirCarpeta, lugar_->deshacer}) {
    setTabOrder(anterior, enlace);
    anterior = enlace;
  }
}

void frmUnirQ19::renovarIdentificacion() {
  VistaRegistros& acumulado = *ui_->Acumulado;
  decir({});
  const remesa::ListaRegistros& lista = acumulado.lista();
  const auto cual = std::ranges::find(lista, remesa::CodigoRegistro::Presentador, remesa::Codigo);
  if (cual == lista.end())
    return comunes::Avisar(
        u"La remesa no tiene cabecera del presentador (01): no hay identificación que renovar."_s);
  const auto fila = static_cast<std::size_t>(cual - lista.begin());
  std::string registro(*cual);
  remesa::AjustarLongitud(registro);
  remesa::RenovarIdentificacion(registro, comunes::Ahora());
  comoUnPaso(u"renovar la identificación"_s, [&] {
    acumulado.modelo().editable().sustituir(fila, registro);
    acumulado.modelo().avisarCambio(static_cast<int>(fila));
    mirarAcumulado();
  });
  decir(u"Identificación del fichero: %1"_s.arg(
      comunes::DesdeWindows1252(remesa::Recortar(LeerCampo(registro, remesa::kIdentificacionFichero)))));
}

void frmUnirQ19::separarRemesa() {
  decir({});
  const remesa::ListaRegistros& lista = ui_->Acumulado->lista();
  if (lista.empty()) return comunes::Avisar(u"La remesa está vacía: no hay nada que separar."_s);
  VentanaSeparar ventana(lista, this);
  if (!ventana.sePuede()) return comunes::Avisar(ventana.impedimento());
  if (ventana.exec() != QDialog::Accepted) return;
  navegador_->refrescar();
  decir(u"%1 en %2"_s.arg(TextoCuenta(ventana.escritos(), u"fichero escrito"_s, u"ficheros escritos"_s),
                          ventana.carpeta()));
}

}  // namespace principal

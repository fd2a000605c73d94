#include "ventanas/principal/MenusArchivos.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QMenu>
#include <utility>

#include "comunes/impresion/ImprimirListado.h"
#include "comunes/plataforma/Texto.h"
#include "ventanas/principal/ListaCarpetas.h"
#include "ventanas/principal/ListaFicheros.h"
#include "ventanas/principal/Navegador.h"
#include "ventanas/principal/TomarRemesa.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

/// El nombre en un rótulo, donde "&" subraya.
QString EnRotulo(QString nombre) {
  return comunes::ConMarcasEscritas(nombre.replace(u'&', u"&&"_s));
}

}  // namespace

MenusArchivos::MenusArchivos(ListaFicheros& ficheros, ListaCarpetas& carpetas, Navegador& navegador,
                             OrdenesArchivo ordenes, QObject* padre)
    : QObject(padre),
      ficheros_(ficheros),
      carpetas_(carpetas),
      navegador_(navegador),
      ordenes_(std::move(ordenes)) {
  connect(&ficheros_, &ListaFicheros::menuPedido, this, &MenusArchivos::deFichero);
  connect(&carpetas_, &ListaCarpetas::menuPedido, this, &MenusArchivos::deCarpeta);
}

/// Lo que se ordena espera a que el menú haya acabado: puede abrir una caja, y con ella el menú se borra.
void MenusArchivos::poner(QMenu& menu, const QString& rotulo, const std::function<void()>& orden) const {
  connect(menu.addAction(rotulo), &QAction::triggered, this, orden, Qt::QueuedConnection);
}

void MenusArchivos::deFichero(const QString& nombre, const QPoint& donde) {
  auto* menu = new QMenu(&ficheros_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  if (!nombre.isEmpty()) {
    const QString ruta = navegador_.rutaDe(nombre);
    ponerImportar(*menu, nombre, ruta);
    poner(*menu, u"&Ver en la vista previa"_s, [this, ruta] { ordenes_.ver(ruta); });
    menu->addSeparator();
    ponerCopiar(*menu, ruta);
  }
  ponerMostrar(*menu, u"Mostrar en la &carpeta"_s, carpetas_.ruta());
  menu->addSeparator();
  ponerRefrescar(*menu);
  menu->popup(donde);
}

void MenusArchivos::ponerImportar(QMenu& menu, const QString& nombre, const QString& ruta) {
  if (TraeDevoluciones(ruta)) {
    poner(menu, u"Abrir %1 en &Devoluciones"_s.arg(EnRotulo(nombre)),
          [this, ruta] { ordenes_.abrirDevoluciones(ruta); });
  } else if (ordenes_.importado(ruta)) {
    menu.addAction(u"%1 ya está importado"_s.arg(EnRotulo(nombre)))->setEnabled(false);
  } else {
    poner(menu, u"&Importar %1"_s.arg(EnRotulo(nombre)), [this, ruta] { ordenes_.importar({ruta}); });
  }
  const QStringList elegidos = navegador_.elegidos();
  if (elegidos.size() > 1)
    poner(menu, u"Importar los %1 &elegidos"_s.arg(elegidos.size()),
          [this, elegidos] { ordenes_.importar(elegidos); });
}

void MenusArchivos::deCarpeta(const QString& ruta, const QPoint& donde) {
  auto* menu = new QMenu(&carpetas_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const QString abierta = QDir::fromNativeSeparators(carpetas_.ruta());
  if (!ruta.isEmpty() && ruta != abierta)
    poner(*menu, u"&Abrir %1"_s.arg(EnRotulo(QDir(ruta).isRoot() ? ruta : QFileInfo(ruta).fileName())),
          [this, ruta] { carpetas_.ponerRuta(ruta); });
  if (!QDir(abierta).isRoot())
    poner(*menu, u"&Subir a la carpeta de encima\tRetroceso"_s,
          [this, abierta] { carpetas_.ponerRuta(QFileInfo(abierta).path()); });
  menu->addSeparator();
  const QString cual = ruta.isEmpty() ? abierta : ruta;
  ponerCopiar(*menu, cual);
  ponerMostrar(*menu, u"&Mostrar en el explorador de ficheros"_s, cual);
  menu->addSeparator();
  ponerRefrescar(*menu);
  menu->popup(donde);
}

void MenusArchivos::ponerCopiar(QMenu& menu, const QString& ruta) const {
  const auto copiar = [this](const QString& texto) {
    QGuiApplication::clipboard()->setText(texto);
    ordenes_.decir(u"Copiado: %1"_s.arg(texto));
  };
  const QString nombre = QDir(ruta).isRoot() ? QDir::toNativeSeparators(ruta) : QFileInfo(ruta).fileName();
  poner(menu, u"Copiar el &nombre"_s, [copiar, nombre] { copiar(nombre); });
  poner(menu, u"Copiar la &ruta"_s, [copiar, ruta] { copiar(QDir::toNativeSeparators(ruta)); });
}

void MenusArchivos::ponerMostrar(QMenu& menu, const QString& rotulo, const QString& carpeta) {
  poner(menu, rotulo, [this, carpeta] {
    if (const QString fallo = comunes::AbrirDocumento(carpeta); !fallo.isEmpty()) ordenes_.decir(fallo);
  });
}

void MenusArchivos::ponerRefrescar(QMenu& menu) {
  poner(menu, u"Volver a &leer la carpeta\tF5"_s, [this] { navegador_.refrescar(); });
}

}  // namespace principal

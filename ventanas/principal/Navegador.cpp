#include "ventanas/principal/Navegador.h"

#include <QDir>

#include "ventanas/principal/ListaCarpetas.h"
#include "ventanas/principal/ListaDiscos.h"
#include "ventanas/principal/ListaFicheros.h"

namespace principal {

Navegador::Navegador(ListaDiscos* discos, ListaCarpetas* carpetas, ListaFicheros* ficheros, QObject* padre)
    : QObject(padre), discos_(discos), carpetas_(carpetas), ficheros_(ficheros) {
  // Al copiar muchos ficheros llegan muchos avisos seguidos: se vuelve a leer una vez, al cesar.
  espera_.setSingleShot(true);
  espera_.setInterval(150);
  connect(&espera_, &QTimer::timeout, this, &Navegador::refrescar);
  connect(&vigia_, &QFileSystemWatcher::directoryChanged, &espera_, qOverload<>(&QTimer::start));
  connect(discos_, &ListaDiscos::cambio, this, &Navegador::alCambiarDisco);
  connect(carpetas_, &ListaCarpetas::cambio, this, &Navegador::alCambiarCarpeta);
  connect(ficheros_, &ListaFicheros::elegido, this,
          [this](const QString& nombre) { emit elegido(rutaDe(nombre)); });
}

void Navegador::iniciar(const QString& letra, const QString& origen, const QString& patron) {
  ficheros_->ponerPatron(patron);
  const QString unidad = UnidadPorLetra(letra);
  const QString inicial = unidad.isEmpty() ? QDir::homePath() : CarpetaDeUnidad(unidad);
  if (carpetas_->ponerRuta(origen)) return;
  for (const QString& otra : {inicial, QDir::homePath(), QDir::rootPath()})
    if (carpetas_->ponerRuta(otra)) return;
}

void Navegador::irA(const QString& ruta) {
  const QFileInfo informe(ruta);
  if (informe.isDir()) {
    carpetas_->ponerRuta(ruta);
  } else if (carpetas_->ponerRuta(informe.absolutePath())) {
    ficheros_->refrescar();
    ficheros_->marcar(informe.fileName());
  }
}

QString Navegador::rutaDe(const QString& nombre) const {
  return carpetas_->ruta() + QDir::separator() + nombre;
}

void Navegador::elegirVarios(const QStringList& rutas) {
  if (rutas.isEmpty() || !carpetas_->ponerRuta(QFileInfo(rutas.first()).absolutePath())) return;
  ficheros_->refrescar();
  QStringList nombres;
  for (const QString& ruta : rutas)
    if (const QFileInfo informe(ruta); QDir::toNativeSeparators(informe.absolutePath()) == carpetas_->ruta())
      nombres << informe.fileName();
  ficheros_->marcarVarios(nombres);
}

QStringList Navegador::elegidos() const {
  QStringList rutas;
  const QStringList nombres = ficheros_->marcados();
  rutas.reserve(nombres.size());
  for (const QString& nombre : nombres)
    rutas << rutaDe(nombre);
  return rutas;
}

void Navegador::dejar(const QString& ruta) {
  ficheros_->desmarcar(QFileInfo(ruta).fileName());
}

void Navegador::resaltar(const QString& ruta) {
  const QFileInfo informe(ruta);
  const bool aqui = !ruta.isEmpty() && QDir::toNativeSeparators(informe.absolutePath()) == carpetas_->ruta();
  ficheros_->resaltar(aqui ? informe.fileName() : QString());
}

void Navegador::refrescar() {
  carpetas_->refrescar();
  ficheros_->refrescar();
}

void Navegador::alCambiarDisco() {
  carpetas_->setEnabled(false);
  ficheros_->setEnabled(false);
  // Una unidad sin disco o sin permiso se pasa por alto: todo vuelve a donde estaba.
  if (!carpetas_->ponerRuta(CarpetaDeUnidad(discos_->unidad()))) discos_->mostrarLaDe(carpetas_->ruta());
  carpetas_->setEnabled(true);
  ficheros_->setEnabled(true);
}

void Navegador::alCambiarCarpeta() {
  ficheros_->setEnabled(false);
  discos_->mostrarLaDe(carpetas_->ruta());
  if (!vigia_.directories().isEmpty()) vigia_.removePaths(vigia_.directories());
  vigia_.addPath(carpetas_->ruta());
  ficheros_->ponerCarpeta(carpetas_->ruta());
  ficheros_->setEnabled(true);
}

}  // namespace principal

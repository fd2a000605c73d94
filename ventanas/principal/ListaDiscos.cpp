#include "ventanas/principal/ListaDiscos.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QSignalBlocker>
#include <QStorageInfo>

namespace principal {

using namespace Qt::StringLiterals;

namespace {

bool EsDelSistema(const QStorageInfo& volumen) {
  static const QSet<QByteArray> tipos = {
      "autofs",   "bpf",        "binfmt_misc", "cgroup",    "cgroup2", "configfs", "debugfs", "devpts",
      "devtmpfs", "efivarfs",   "fusectl",     "hugetlbfs", "mqueue",  "nsfs",     "proc",    "pstore",
      "ramfs",    "rpc_pipefs", "securityfs",  "squashfs",  "sysfs",   "tmpfs",    "tracefs"};
  if (volumen.isRoot()) return false;
  const QString raiz = volumen.rootPath();
  for (const char* propia : {"/boot", "/dev", "/etc", "/proc", "/sys", "/snap"})
    if (raiz == QLatin1String(propia) || raiz.startsWith(QLatin1String(propia) + u'/')) return true;
  return tipos.contains(volumen.fileSystemType()) || !QFileInfo(raiz).isDir();
}

QString Texto(const QStorageInfo& volumen) {
  QString raiz = QDir::toNativeSeparators(volumen.rootPath());
  if (raiz.endsWith(R"(:\)"_L1)) raiz.chop(1);
  const QString nombre = volumen.name();
  return nombre.isEmpty() ? raiz : raiz + u" ["_s + nombre + u']';
}

}  // namespace

QString CarpetaDeUnidad(const QString& raiz) {
  const bool letra = raiz.size() >= 2 && raiz.at(0).isLetter() && raiz.at(1) == u':';
  return letra ? QFileInfo(raiz.left(2)).absoluteFilePath() : raiz;
}

QString UnidadPorLetra(const QString& letra) {
  if (letra.size() < 2) return {};
  const QFileInfoList unidades = QDir::drives();
  for (const QFileInfo& unidad : unidades)
    if (unidad.absoluteFilePath().startsWith(letra, Qt::CaseInsensitive)) return unidad.absoluteFilePath();
  return {};
}

ListaDiscos::ListaDiscos(QWidget* padre) : QComboBox(padre) {
  llenar();
  connect(this, &QComboBox::activated, this, [this](int i) {
    const QString elegida = itemData(i).toString();
    if (elegida == mostrada_) return;
    mostrada_ = elegida;
    emit cambio();
  });
}

void ListaDiscos::llenar() {
  const QSignalBlocker callada(this);
  clear();
  const QList<QStorageInfo> volumenes = QStorageInfo::mountedVolumes();
  for (const QStorageInfo& volumen : volumenes)
    if (volumen.isValid() && volumen.isReady() && !EsDelSistema(volumen) && findData(volumen.rootPath()) < 0)
      addItem(Texto(volumen), volumen.rootPath());
  if (!mostrada_.isEmpty() && findData(mostrada_) < 0) addItem(Texto(QStorageInfo(mostrada_)), mostrada_);
  setCurrentIndex(findData(mostrada_));
}

void ListaDiscos::mostrarLaDe(const QString& carpeta) {
  mostrada_ = QStorageInfo(carpeta).rootPath();
  llenar();
}

void ListaDiscos::showPopup() {
  // Una memoria que se conecta después de arrancar también debe salir.
  llenar();
  QComboBox::showPopup();
}

}  // namespace principal

#include "comunes/plataforma/Explorar.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QIdentityProxyModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Texto.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr int kCarpetaElegida = 2;  // además de lo que un diálogo contesta de por sí

/// Filtro de QFileDialog: los patrones van entre paréntesis al final, que el diálogo no enseña.
QString filtroQt(const FiltroFicheros& filtro) {
  QStringList patrones = filtro.patrones.split(u';', Qt::SkipEmptyParts);
  for (QString& patron : patrones) {
    patron = patron.trimmed();
    // En la plataforma original "*.*" son todos, también los que no llevan punto.
    if (patron == u"*.*"_s) patron = u"*"_s;
  }
  if (patrones.isEmpty()) patrones.append(u"*"_s);
  return filtro.descripcion + u" ("_s + patrones.join(u' ') + u')';
}

/// Las fechas, los tamaños y los tipos, en el idioma del diálogo: el toolkit los escribe en el del sistema.
class DatosEnEspanol : public QIdentityProxyModel {
 public:
  using QIdentityProxyModel::QIdentityProxyModel;

  QVariant data(const QModelIndex& indice, int papel) const override {
    const auto* ficheros = qobject_cast<const QFileSystemModel*>(sourceModel());
    if (papel != Qt::DisplayRole || ficheros == nullptr) return QIdentityProxyModel::data(indice, papel);
    const QModelIndex suyo = mapToSource(indice);
    const QLocale usuario = LocaleUsuario();
    const QLocale idioma = usuario.language() == QLocale::Spanish ? usuario : QLocale(u"es_ES"_s);
    if (indice.column() == kColumnaTamano && !ficheros->isDir(suyo))
      return idioma.formattedDataSize(ficheros->size(suyo), 1, QLocale::DataSizeTraditionalFormat);
    if (indice.column() == kColumnaTipo)
      return ficheros->isDir(suyo) ? u"Carpeta"_s
                                   : (u"Fichero "_s + ficheros->fileInfo(suyo).suffix().toUpper()).trimmed();
    if (indice.column() == kColumnaFecha)
      return idioma.toString(ficheros->lastModified(suyo), QLocale::ShortFormat);
    return QIdentityProxyModel::data(indice, papel);
  }

 private:
  static constexpr int kColumnaTamano = 1;
  static constexpr int kColumnaTipo = 2;
  static constexpr int kColumnaFecha = 3;
};

/// El diálogo del toolkit da por carpeta, y apaga "Guardar", la ruta entera de un fichero que existe en la
/// que enseña. Lo que no valga lo dice al aceptar.
void dejarGuardar(QFileDialog& dialogo) {
  auto* nombre = dialogo.findChild<QLineEdit*>();
  auto* botones = dialogo.findChild<QDialogButtonBox*>();
  QPushButton* guardar = botones != nullptr ? botones->button(QDialogButtonBox::Save) : nullptr;
  if (nombre == nullptr || guardar == nullptr) return;
  QObject::connect(
      nombre, &QLineEdit::textChanged, guardar,
      [guardar](const QString& texto) {
        if (QFileInfo(texto).isAbsolute()) guardar->setEnabled(true);
      },
      Qt::QueuedConnection);
}

/// Un botón más, que acepta la carpeta resaltada o, sin ella, la que se ve.
void ofrecerCarpeta(QFileDialog& dialogo) {
  auto* botones = dialogo.findChild<QDialogButtonBox*>();
  QPushButton* boton = botones->addButton(u"Elegir la &carpeta"_s, QDialogButtonBox::ActionRole);
  boton->setObjectName(u"ElegirEstaCarpeta"_s);
  // `done` y no `accept`, que en una carpeta entra.
  QObject::connect(boton, &QPushButton::clicked, &dialogo,
                   [&dialogo] { static_cast<QDialog&>(dialogo).done(kCarpetaElegida); });
}

QString carpetaDe(const QFileDialog& dialogo) {
  const QFileInfo resaltado(dialogo.selectedFiles().value(0));
  return resaltado.isDir() ? resaltado.filePath() : dialogo.directory().absolutePath();
}

QStringList elegirConDialogo(const PeticionFicheros& peticion) {
  QFileDialog dialogo(peticion.propietario, peticion.titulo, peticion.carpeta);
  dialogo.setObjectName(u"DialogoFichero"_s);
  dialogo.setAcceptMode(peticion.abrir ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  const bool varios = peticion.abrir && peticion.multiple;
  dialogo.setFileMode(varios ? QFileDialog::ExistingFiles : QFileDialog::AnyFile);
  dialogo.setOption(QFileDialog::DontConfirmOverwrite);
  dialogo.setOption(QFileDialog::HideNameFilterDetails);
  const bool delSistema = DialogoDelSistema() && !peticion.valeCarpeta;
  dialogo.setOption(QFileDialog::DontUseNativeDialog, !delSistema);
  if (!delSistema) {
    dialogo.setProxyModel(new DatosEnEspanol(&dialogo));
    if (!peticion.abrir) dejarGuardar(dialogo);
    if (peticion.valeCarpeta) ofrecerCarpeta(dialogo);
  }
  QStringList filtros;
  for (const FiltroFicheros& filtro : peticion.filtros)
    filtros.append(filtroQt(filtro));
  if (!filtros.isEmpty()) dialogo.setNameFilters(filtros);
  if (!peticion.nombre.isEmpty()) dialogo.selectFile(peticion.nombre);
  const int respuesta = dialogo.exec();
  if (respuesta == kCarpetaElegida) return {carpetaDe(dialogo)};
  return respuesta == QDialog::Accepted ? dialogo.selectedFiles() : QStringList();
}

SelectorFicheros& selector() {
  static SelectorFicheros actual = elegirConDialogo;
  return actual;
}

QString carpetaInicial(const QString& carpeta) {
  const QString pedida = carpeta.trimmed();
  if (!pedida.isEmpty() && QFileInfo(pedida).isDir()) return pedida;
  const QString raiz = u"C:\\"_s;
  return QFileInfo(raiz).isDir() ? raiz : QDir::homePath();
}

bool sustituir(const PeticionFicheros& peticion, const QString& ruta, const AvisoSustituir& aviso) {
  QMessageBox caja(QMessageBox::Question, peticion.titulo, QString(), QMessageBox::NoButton,
                   peticion.propietario);
  caja.setObjectName(u"PreguntaSustituir"_s);
  caja.setTextFormat(Qt::PlainText);
  const QString ademas = aviso ? aviso(ruta) : QString();
  caja.setText(u"El fichero ya existe:\n%1\n\n%2¿Quiere sustituirlo?"_s.arg(
      ConMarcasEscritas(QDir::toNativeSeparators(ruta)), ademas.isEmpty() ? ademas : ademas + u"\n\n"_s));
  const QPushButton* si = caja.addButton(u"&Sí"_s, QMessageBox::YesRole);
  QPushButton* no = caja.addButton(u"&No"_s, QMessageBox::NoRole);
  caja.setDefaultButton(no);
  caja.setEscapeButton(no);
  caja.exec();
  return caja.clickedButton() == si;
}

QString resultadoMultiple(const QStringList& elegidas) {
  const QChar nulo;
  QString todo = QDir::toNativeSeparators(QFileInfo(elegidas.first()).absolutePath()) + nulo;
  for (const QString& ruta : elegidas)
    todo += QFileInfo(ruta).fileName() + nulo;
  return todo + nulo;
}

}  // namespace

SelectorFicheros PonerSelectorFicheros(SelectorFicheros nuevo) {
  return std::exchange(selector(), nuevo ? std::move(nuevo) : SelectorFicheros(elegirConDialogo));
}

QString DialogoCarpeta(QWidget* Propietario, const QString& Titulo, const QString& Carpeta) {
  QFileDialog dialogo(Propietario, Titulo, Carpeta);
  dialogo.setObjectName(u"DialogoCarpeta"_s);
  dialogo.setFileMode(QFileDialog::Directory);
  dialogo.setOption(QFileDialog::ShowDirsOnly);
  dialogo.setOption(QFileDialog::DontUseNativeDialog, !DialogoDelSistema());
  return dialogo.exec() == QDialog::Accepted ? dialogo.selectedFiles().value(0) : QString();
}

QString DialogoCarpetaOFichero(QWidget* Propietario, const QString& Titulo, const QString& Carpeta,
                               const QString& Filtro) {
  const QStringList elegidas = selector()(
      {true, Propietario, Titulo, carpetaInicial(Carpeta), ConstruirFiltro(Filtro), false, {}, true});
  return elegidas.isEmpty() ? QString() : RutaAbsoluta(elegidas.first());
}

QString DialogoFichero(bool Abrir, QWidget* Propietario, const QString& Carpeta, const QString& Filtro,
                       bool Multiple, const QString& Nombre, const ReglaNombre& Regla,
                       const AvisoSustituir& Aviso) {
  const QString carpetaActual = QDir::currentPath();
  PeticionFicheros peticion{Abrir,
                            Propietario,
                            Abrir ? u"Abrir Fichero"_s : u"Guardar Fichero"_s,
                            carpetaInicial(Carpeta),
                            ConstruirFiltro(Filtro),
                            Multiple,
                            Nombre};
  for (;;) {
    const QStringList elegidas = selector()(peticion);
    if (elegidas.isEmpty()) return {};
    QDir::setCurrent(carpetaActual);
    if (Multiple) return resultadoMultiple(elegidas);
    const QString elegida = RutaAbsoluta(elegidas.first());
    const QFileInfo final(Regla ? Regla(elegida) : elegida);
    if (!Regla || !final.exists() || final.isDir() || sustituir(peticion, final.filePath(), Aviso))
      return elegida;
    peticion.carpeta = QFileInfo(elegida).absolutePath();
    peticion.nombre = QFileInfo(elegida).fileName();
  }
}

}  // namespace comunes

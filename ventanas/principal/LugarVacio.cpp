#include "ventanas/principal/LugarVacio.h"

#include <QApplication>
#include <QBoxLayout>
#include <QContextMenuEvent>
#include <QLabel>

#include "comunes/plataforma/Enlace.h"
#include "comunes/plataforma/Iconos.h"
#include "comunes/plataforma/Texto.h"
#include "ventanas/principal/EtiquetaRecortada.h"
#include "ventanas/principal/VistaRegistros.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

constexpr int kMargen = 14;  // píxeles
constexpr int kEntreLineas = 5;
constexpr int kEntreEnlaces = 14;

QLabel* Linea(const QString& texto) {
  auto* linea = new QLabel(texto);
  linea->setTextFormat(Qt::PlainText);
  linea->setWordWrap(true);
  return linea;
}

comunes::Enlace* NuevoEnlace(const QString& nombre, const QString& rotulo, const QString& ayuda) {
  auto* enlace = new comunes::Enlace;
  enlace->setObjectName(nombre);
  enlace->setText(rotulo);
  enlace->setToolTip(ayuda);
  return enlace;
}

}  // namespace

LugarVacio::LugarVacio(VistaRegistros& lista)
    : QScrollArea(lista.parentWidget()),
      verEjemplos(NuevoEnlace(u"VerEjemplos"_s, u"Ver los ejemplos"_s,
                              u"Ir a la carpeta con remesas inventadas para probar"_s)),
      elegirCarpeta(NuevoEnlace(u"ElegirCarpeta"_s, u"Elegir carpeta…"_s,
                                u"Ir a la carpeta donde están sus remesas (Ctrl+O)"_s)),
      verComprobacion(NuevoEnlace(u"VerComprobacionGuardado"_s, u"Ver la comprobación"_s,
                                  u"Ver los errores y avisos del fichero que se acaba de guardar"_s)),
      abrirCarpeta(
          NuevoEnlace(u"AbrirCarpeta"_s, u"Abrir la carpeta"_s, u"Enseñar el fichero en su carpeta"_s)),
      deshacer(NuevoEnlace(u"DeshacerGuardar"_s, u"Deshacer"_s,
                           u"Volver a tener la remesa. El fichero guardado no se toca (Ctrl+Z)"_s)),
      lista_(lista),
      ruta_(new EtiquetaRecortada),
      cuanto_(Linea({})),
      veredicto_(Linea({})) {
  setObjectName(u"LugarVacio"_s);
  setAccessibleName(u"Remesa vacía"_s);
  setFrameShape(NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  viewport()->setBackgroundRole(QPalette::Base);

  pasos_ =
      pagina(u"La remesa está vacía"_s,
             {Linea(u"1. Pulse un fichero en la lista de la izquierda: sus registros se ven arriba."_s),
              Linea(u"2. Pulse «Importar»: sus adeudos pasan aquí. Repita con los demás ficheros."_s),
              Linea(u"3. Revise el total, pulse «Guardar» y lleve al banco el fichero que se escribe."_s)},
             {verEjemplos, elegirCarpeta});
  guardado_ =
      pagina(u"Remesa guardada"_s, {ruta_, cuanto_, veredicto_}, {verComprobacion, abrirCarpeta, deshacer});
  guardado_->hide();
  auto* todo = new QWidget;
  todo->setBackgroundRole(QPalette::Base);
  auto* disposicion = new QVBoxLayout(todo);
  disposicion->setContentsMargins(kMargen, kMargen, kMargen, kMargen);
  disposicion->addWidget(pasos_);
  disposicion->addWidget(guardado_);
  disposicion->addStretch(1);
  setWidget(todo);

  lista.installEventFilter(this);
  lista.viewport()->installEventFilter(this);
  connect(lista.model(), &QAbstractItemModel::modelReset, this, &LugarVacio::mostrarSiVacia);
  mostrarSiVacia();
}

QWidget* LugarVacio::pagina(const QString& titulo, std::initializer_list<QLabel*> textos,
                            std::initializer_list<comunes::Enlace*> enlaces) {
  auto* nueva = new QWidget(this);
  auto* lineas = new QVBoxLayout(nueva);
  lineas->setContentsMargins(0, 0, 0, 0);
  lineas->setSpacing(kEntreLineas);
  QLabel* rotulo = Linea(titulo);
  QFont letra = rotulo->font();
  letra.setBold(true);
  rotulo->setFont(letra);
  lineas->addWidget(rotulo);
  for (QLabel* texto : textos)
    lineas->addWidget(texto);
  auto* fila = new QHBoxLayout;
  fila->setSpacing(kEntreEnlaces);
  for (comunes::Enlace* enlace : enlaces)
    fila->addWidget(enlace);
  fila->addStretch(1);
  lineas->addLayout(fila);
  return nueva;
}

bool LugarVacio::conGuardado() const {
  return !guardado_->isHidden();
}

void LugarVacio::olvidarGuardado() {
  if (!conGuardado()) return;
  guardado_->hide();
  pasos_->show();
}

void LugarVacio::ponerGuardado(const QString& ruta, const QString& cuanto, bool deshacible) {
  ruta_->setText(comunes::ConMarcasEscritas(ruta));
  cuanto_->setText(cuanto);
  cuanto_->setVisible(!cuanto.isEmpty());
  deshacer->setVisible(deshacible);
  ponerVeredicto(u"Comprobando…"_s, false);
  pasos_->hide();
  guardado_->show();
}

void LugarVacio::ponerVeredicto(const QString& veredicto, bool hayErrores) {
  veredicto_->setText(veredicto);
  QPalette colores;
  if (hayErrores)
    colores.setColor(QPalette::Text, comunes::ColorDeIcono(comunes::Pictograma::Error, palette()));
  veredicto_->setPalette(colores);
}

void LugarVacio::mostrarSiVacia() {
  const bool vacia = lista_.lista().empty();
  if (!vacia && isAncestorOf(QApplication::focusWidget())) lista_.setFocus();
  colocar();
  setVisible(vacia);
}

void LugarVacio::colocar() {
  const QWidget& zona = *lista_.viewport();
  setGeometry(QRect(zona.mapTo(parentWidget(), QPoint()), zona.size()));
  raise();
}

bool LugarVacio::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() == QEvent::Resize || evento->type() == QEvent::Move) colocar();
  return QScrollArea::eventFilter(objeto, evento);
}

void LugarVacio::contextMenuEvent(QContextMenuEvent* evento) {
  QContextMenuEvent suyo(evento->reason(), lista_.viewport()->mapFromGlobal(evento->globalPos()),
                         evento->globalPos(), evento->modifiers());
  QApplication::sendEvent(lista_.viewport(), &suyo);
}

void LugarVacio::mousePressEvent(QMouseEvent*) {
  lista_.setFocus(Qt::MouseFocusReason);
}

}  // namespace principal

#include "ventanas/principal/BarraBuscar.h"

#include <QAccessible>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QShortcut>
#include <algorithm>
#include <cmath>
#include <utility>

#include "comunes/dialogos/MyBox.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_BarraBuscar.h"
#include "ventanas/principal/Hallador.h"
#include "ventanas/principal/TextoBuscado.h"
#include "ventanas/principal/VistaRegistros.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

QString Numero(std::size_t cuantos) {
  return comunes::FormatoNumero(static_cast<double>(cuantos), 0);
}

}  // namespace

BarraBuscar::BarraBuscar(const QList<VistaRegistros*>& listas, QWidget* padre)
    : QWidget(padre), ui_(std::make_unique<Ui::BarraBuscar>()), listas_(listas), vista_(listas.first()) {
  ui_->setupUi(this);
  ui_->Buscado->setAccessibleName(ui_->Buscado->placeholderText());
  ui_->Buscado->installEventFilter(this);
  connect(ui_->Buscado, &QLineEdit::textEdited, this, [this] { buscar(Pendiente::Primero); });
  connect(ui_->Buscado, &QLineEdit::textChanged, this, [this](const QString& texto) {
    if (texto.isEmpty()) buscar(Pendiente::Nada);  // también con el botón de borrar
  });
  connect(ui_->BuscarSiguiente, &QPushButton::clicked, this, [this] { pedir(Pendiente::Siguiente); });
  connect(ui_->BuscarAnterior, &QPushButton::clicked, this, [this] { pedir(Pendiente::Anterior); });
  connect(ui_->BuscarTodos, &QPushButton::clicked, this, [this] { pedir(Pendiente::Todos); });
  connect(ui_->CerrarBuscar, &QPushButton::clicked, this, &BarraBuscar::cerrar);
  escape_ = new QShortcut(Qt::Key_Escape, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut);
  connect(escape_, &QShortcut::activated, this, &BarraBuscar::escape);
  for (VistaRegistros* lista : listas_) {
    lista->installEventFilter(this);
    connect(lista->selectionModel(), &QItemSelectionModel::currentChanged, this, [this, lista] {
      if (isHidden() || lista != vista_ || yendo_) return;
      vuelta_.clear();
      ancla_ = std::max(vista_->actual(), 0);
      contar();
    });
  }
  hide();
}

BarraBuscar::~BarraBuscar() = default;

void BarraBuscar::estrechar() {
  for (const auto& [boton, signo] : std::initializer_list<std::pair<QPushButton*, QString>>{
           {ui_->BuscarAnterior, u"▲"_s}, {ui_->BuscarSiguiente, u"▼"_s}}) {
    boton->setAccessibleName(boton->text());
    boton->setText(signo);
  }
  ui_->BuscarTodos->setAccessibleName(u"Seleccionar todos"_s);
  ui_->BuscarTodos->setText(u"&Todos"_s);
  constexpr int kAire = 16;  // píxeles
  for (QPushButton* boton : {ui_->BuscarAnterior, ui_->BuscarSiguiente, ui_->BuscarTodos, ui_->CerrarBuscar})
    boton->setFixedWidth(boton->fontMetrics().horizontalAdvance(boton->text()) + kAire);
}

VistaRegistros& BarraBuscar::lista() const {
  const auto enfocada = std::ranges::find(listas_, window()->focusWidget());
  if (enfocada != listas_.end()) return **enfocada;
  return isHidden() ? *listas_.first() : *vista_;
}

void BarraBuscar::ponerSobre(VistaRegistros& lista) {
  if (!isHidden() && vista_ == &lista) return;
  QWidget* foco = window()->focusWidget();
  if (!isAncestorOf(foco)) anterior_ = foco;
  vista_ = &lista;
  auto* caja = qobject_cast<QBoxLayout*>(lista.parentWidget()->layout());
  caja->insertWidget(caja->indexOf(&lista), this);
  // En el orden del tabulador, delante de su lista.
  QWidget* delante = lista.previousInFocusChain();
  for (QWidget* control : std::initializer_list<QWidget*>{
           ui_->Buscado, ui_->BuscarAnterior, ui_->BuscarSiguiente, ui_->BuscarTodos, ui_->CerrarBuscar}) {
    setTabOrder(delante, control);
    delante = control;
  }
  setTabOrder(delante, &lista);
  show();
  hallador_ = std::make_unique<Hallador>(lista.modelo());
  connect(hallador_.get(), &Hallador::adelantado, this, &BarraBuscar::atender);
  // Una orden puede cambiarla varias veces seguidas.
  connect(
      hallador_.get(), &Hallador::caducado, this,
      [this] {
        if (!isHidden() && hallador_->mirados() == 0 && !hallador_->buscando()) buscar(Pendiente::Nada);
      },
      Qt::QueuedConnection);
  ancla_ = std::max(lista.actual(), 0);
}

void BarraBuscar::abrir() {
  VistaRegistros& donde = lista();
  const bool otra = isHidden() || vista_ != &donde;
  ponerSobre(donde);
  ui_->Buscado->setFocus();
  ui_->Buscado->selectAll();
  if (otra) buscar(Pendiente::Nada);
}

void BarraBuscar::siguiente() {
  ponerSobre(lista());
  pedir(Pendiente::Siguiente);
}

void BarraBuscar::anterior() {
  ponerSobre(lista());
  pedir(Pendiente::Anterior);
}

void BarraBuscar::irARegistro() {
  VistaRegistros& donde = lista();
  const auto hay = donde.lista().size();
  if (hay == 0) return comunes::Avisar(u"La lista está vacía: no hay ningún registro al que ir."_s);
  const auto numero = [](const QString& escrito) {
    const auto leido = comunes::LeerNumero(escrito);
    return leido && *leido == std::floor(*leido) ? *leido : 0.0;
  };
  comunes::GuiaPeticion guia;
  guia.ejemplo = u"De 1 a %1"_s.arg(Numero(hay));
  guia.objecion = [&](const QString& escrito) {
    const double cual = numero(escrito);
    return cual >= 1 && cual <= static_cast<double>(hay)
               ? QString()
               : u"Ha de ser un número de 1 a %1."_s.arg(Numero(hay));
  };
  const QString escrito = comunes::MyInputBox(
      u"Número del registro"_s, u"Ir al registro"_s, comunes::kIconoPregunta, u"T(T) A(I) L(12)"_s,
      donde.actual() < 0 ? QString() : QString::number(donde.actual() + 1), -1, -1, window(), {}, guia);
  const double cual = numero(escrito);
  if (cual < 1 || cual > static_cast<double>(donde.lista().size())) return;
  donde.setFocus();
  donde.seleccionarSolo(static_cast<int>(cual) - 1);
  donde.scrollTo(donde.currentIndex(), QAbstractItemView::PositionAtCenter);
}

void BarraBuscar::cerrar() {
  const bool hallado =
      !isHidden() && hallador_ != nullptr &&
      std::ranges::binary_search(hallador_->hallados(), static_cast<std::size_t>(vista_->actual()));
  hide();
  hallador_.reset();
  QWidget* foco = hallado || anterior_ == nullptr || !anterior_->isVisible() ? vista_ : anterior_;
  foco->setFocus();
}

void BarraBuscar::escape() {
  if (hallador_ == nullptr || !hallador_->buscando()) return cerrar();
  hallador_->detener();
  detenida_ = true;
  pendiente_ = Pendiente::Nada;
  contar();
}

void BarraBuscar::buscar(Pendiente que) {
  if (hallador_ == nullptr) return;
  pendiente_ = que;
  detenida_ = false;
  vuelta_.clear();
  hallador_->buscar(BusquedaDe(ui_->Buscado->text()));
  contar();
}

void BarraBuscar::pedir(Pendiente que) {
  if (hallador_->busqueda().vacia() || (hallador_->mirados() == 0 && !hallador_->buscando())) {
    if (BusquedaDe(ui_->Buscado->text()).vacia()) return abrir();
    buscar(que);
    return;
  }
  // Lo recién escrito y aún sin encontrar: el primero es el que se quiere.
  if (pendiente_ != Pendiente::Primero) pendiente_ = que;
  atender();
}

void BarraBuscar::atender() {
  const std::vector<std::size_t>& hallados = hallador_->hallados();
  const bool buscando = hallador_->buscando();
  const auto haciaDelante = [&](auto donde) {
    if (donde == hallados.end() && (buscando || hallados.empty())) return;
    vuelta_ = donde == hallados.end() ? u"se ha vuelto al principio"_s : QString();
    ir(donde == hallados.end() ? hallados.front() : *donde);
  };
  const int actual = vista_->actual();
  switch (pendiente_) {
    case Pendiente::Nada:
      break;
    case Pendiente::Primero:
      haciaDelante(std::ranges::lower_bound(hallados, static_cast<std::size_t>(ancla_)));
      break;
    case Pendiente::Siguiente:
      haciaDelante(actual < 0 ? hallados.begin()
                              : std::ranges::upper_bound(hallados, static_cast<std::size_t>(actual)));
      break;
    case Pendiente::Anterior: {
      const auto aqui = actual < 0 ? hallados.begin()
                                   : std::ranges::lower_bound(hallados, static_cast<std::size_t>(actual));
      // Antes de saber que es el último, o que hasta aquí no hay más, hay que mirarlo todo.
      if (hallados.empty() || (aqui == hallados.begin() && buscando)) break;
      vuelta_ = aqui == hallados.begin() ? u"se ha vuelto al final"_s : QString();
      ir(aqui == hallados.begin() ? hallados.back() : *(aqui - 1));
      break;
    }
    case Pendiente::Todos:
      if (!buscando) seleccionarTodos();
      break;
  }
  if (!buscando) pendiente_ = Pendiente::Nada;
  contar();
  if (buscando) return;
  QAccessibleEvent anuncio(ui_->Hallados, QAccessible::Alert);
  QAccessible::updateAccessibility(&anuncio);
}

void BarraBuscar::ir(std::size_t cual) {
  yendo_ = true;
  vista_->seleccionarSolo(static_cast<int>(cual));
  vista_->scrollTo(vista_->currentIndex());
  if (const auto donde = hallador_->busqueda().en(vista_->lista()[cual])) {
    vista_->mostrarPosicion(donde->hasta);
    vista_->mostrarPosicion(donde->desde);
  }
  yendo_ = false;
  if (pendiente_ != Pendiente::Primero) ancla_ = static_cast<int>(cual);
  pendiente_ = Pendiente::Nada;
}

void BarraBuscar::seleccionarTodos() {
  const std::vector<std::size_t>& hallados = hallador_->hallados();
  if (hallados.empty()) return;
  yendo_ = true;
  vista_->clearSelection();
  vista_->seleccionar(hallados);
  if (!std::ranges::binary_search(hallados, static_cast<std::size_t>(vista_->actual())))
    vista_->ponerActual(static_cast<int>(hallados.front()));
  yendo_ = false;
  vista_->scrollTo(vista_->currentIndex());
  vista_->setFocus();
}

/// "3 de 12", y lo que haya que saber: que se sigue buscando, que se ha dado la vuelta o que no hay nada.
void BarraBuscar::contar() {
  // Recién cambiada la lista, lo que se ve vale hasta que se busque en ella.
  if (hallador_->mirados() == 0 && !hallador_->buscando() && !hallador_->busqueda().vacia() &&
      !vista_->lista().empty())
    return;
  const std::vector<std::size_t>& hallados = hallador_->hallados();
  const auto aqui =
      std::ranges::lower_bound(hallados, static_cast<std::size_t>(std::max(vista_->actual(), 0)));
  const bool esta = aqui != hallados.end() && static_cast<int>(*aqui) == vista_->actual();
  QString texto;
  bool nada = false;
  if (!hallador_->busqueda().vacia()) {
    texto = Numero(hallados.size());
    if (esta)
      texto = u"%1 de %2"_s.arg(Numero(static_cast<std::size_t>(aqui - hallados.begin()) + 1), texto);
    else if (!hallador_->buscando())
      texto += hallados.size() == 1 ? u" resultado"_s : u" resultados"_s;
    nada = hallados.empty() && !hallador_->buscando();
    if (nada) texto = u"Sin resultados"_s;
    if (hallador_->buscando()) texto += u'…';
    if (detenida_) texto += u", detenida en el registro %1"_s.arg(Numero(hallador_->mirados()));
    if (esta && !vuelta_.isEmpty()) texto += u" · "_s + vuelta_;
  }
  QPalette paleta;
  QFont letra = font();
  if (nada) paleta.setColor(QPalette::WindowText, comunes::ColorAviso(palette()));
  letra.setBold(nada);
  ui_->Hallados->setPalette(paleta);
  ui_->Hallados->setFont(letra);
  ui_->Hallados->setText(texto);
  ui_->Hallados->setToolTip(texto);
}

void BarraBuscar::changeEvent(QEvent* evento) {
  QWidget::changeEvent(evento);
  if (evento->type() == QEvent::PaletteChange && hallador_ != nullptr) contar();
}

bool BarraBuscar::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() != QEvent::KeyPress) return QWidget::eventFilter(objeto, evento);
  const auto* tecla = static_cast<QKeyEvent*>(evento);
  const bool intro = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
  if (objeto == ui_->Buscado && intro) {
    pedir((tecla->modifiers() & Qt::ShiftModifier) ? Pendiente::Anterior : Pendiente::Siguiente);
    return true;
  }
  if (objeto == vista_ && tecla->key() == Qt::Key_Escape && !isHidden()) {
    escape();
    return true;
  }
  return QWidget::eventFilter(objeto, evento);
}

}  // namespace principal

#include "ventanas/principal/LecturaRegistros.h"

#include <QAction>
#include <QEvent>
#include <QMenu>

#include "comunes/impresion/Progreso.h"
#include "remesa/Adeudos.h"
#include "ui_frmUnirQ19.h"
#include "ventanas/principal/CabeceraColumnas.h"
#include "ventanas/principal/CopiaRegistros.h"
#include "ventanas/principal/RegistroEnPalabras.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

LecturaRegistros::LecturaRegistros(const Ui::frmUnirQ19& ui, QWidget& principal)
    : QObject(&principal), ui_(ui), ultima_(ui.Acumulado) {
  ui_.Preview->cabecera().igualar(ui_.Acumulado->cabecera());
  for (VistaRegistros* lista : {ui_.Preview, ui_.Acumulado}) {
    lista->installEventFilter(this);
    connect(lista, &VistaRegistros::actualCambiado, this, [this, lista] { mostrarActual(*lista); });
    connect(lista, &VistaRegistros::bajoRaton, this,
            [this, lista](int fila, int posicion) { mostrarBajoRaton(*lista, fila, posicion); });
    connect(lista, &VistaRegistros::copiaPedida, this, [this, lista](bool tabla) { copiar(*lista, tabla); });
    connect(lista, &VistaRegistros::menuPedido, this,
            [this, lista](const QPoint& donde) { mostrarMenu(*lista, donde); });
    mostrarActual(*lista);
  }
  for (EtiquetaRecortada* franja : {ui_.FranjaPreview, ui_.FranjaAcumulado})
    franja->ponerRecorte(Qt::ElideRight);
  ui_.EstadoPosicion->ponerRecorte(Qt::ElideRight);
  // Caben un nombre de campo y casi todos los valores; lo que dice la última orden cede el sitio.
  ui_.EstadoPosicion->ponerPedidos(90);
  connect(ui_.mnuColumnas, &QAction::triggered, this, &LecturaRegistros::ponerColumnas);
  connect(ui_.VerColumnas, &QAbstractButton::toggled, this, &LecturaRegistros::ponerColumnas);
  connect(ui_.mnuCopiarTexto, &QAction::triggered, this, [this] { copiar(*ultima_, false); });
  connect(ui_.mnuCopiarTabla, &QAction::triggered, this, [this] { copiar(*ultima_, true); });
}

void LecturaRegistros::ponerColumnas(bool columnas) {
  (columnas ? ui_.VerColumnas : ui_.VerTexto)->setChecked(true);
  ui_.mnuColumnas->setChecked(columnas);
  for (VistaRegistros* lista : {ui_.Preview, ui_.Acumulado})
    lista->ponerModo(columnas ? VistaRegistros::Modo::Columnas : VistaRegistros::Modo::Texto);
}

void LecturaRegistros::plegar(bool plegada) {
  plegada_ = plegada;
  ui_.FranjaPreview->setVisible(!plegada);
  QBoxLayout* antes =
      plegada ? ui_.disposicionAcumulado : static_cast<QBoxLayout*>(ui_.disposicionTituloAcumulado);
  antes->removeWidget(ui_.FranjaAcumulado);
  if (plegada)
    ui_.disposicionTituloAcumulado->addWidget(ui_.FranjaAcumulado);
  else
    ui_.disposicionAcumulado->insertWidget(ui_.disposicionAcumulado->indexOf(ui_.Acumulado) + 1,
                                           ui_.FranjaAcumulado);
  ui_.disposicionTituloAcumulado->setStretchFactor(ui_.FranjaAcumulado, 1);
  for (const VistaRegistros* lista : {ui_.Preview, ui_.Acumulado})
    mostrarActual(*lista);
}

bool LecturaRegistros::eventFilter(QObject* objeto, QEvent* evento) {
  if (evento->type() == QEvent::FocusIn)
    if (auto* lista = qobject_cast<VistaRegistros*>(objeto)) {
      ultima_ = lista;
      mostrarActual(*lista);
    }
  return QObject::eventFilter(objeto, evento);
}

void LecturaRegistros::mostrarActual(const VistaRegistros& lista) {
  if (plegada_ && &lista != ultima_) return;
  const bool arriba = !plegada_ && &lista == ui_.Preview;
  const int actual = lista.actual();
  QString texto;
  if (actual >= 0)
    texto = EnPalabras(lista.lista()[static_cast<std::size_t>(actual)]);
  else if (!lista.lista().empty())
    texto = u"Señale un registro para leerlo aquí"_s;
  EtiquetaRecortada& franja = *(arriba ? ui_.FranjaPreview : ui_.FranjaAcumulado);
  franja.setText(texto);
  franja.setAccessibleDescription(&lista == ui_.Preview ? u"Registro actual de la vista previa"_s
                                                        : u"Registro actual de la remesa"_s);
}

void LecturaRegistros::mostrarBajoRaton(const VistaRegistros& lista, int fila, int posicion) {
  QStringList partes;
  // Sobre la regla vale el registro actual.
  const int cual = fila >= 0 ? fila : lista.actual();
  if (posicion > 0) {
    if (cual >= 0) partes << u"Registro %1"_s.arg(cual + 1);
    if (lista.modo() == VistaRegistros::Modo::Texto) partes << u"Posición %1"_s.arg(posicion);
  }
  if (posicion > 0 && cual >= 0) {
    const std::string_view registro = lista.lista()[static_cast<std::size_t>(cual)];
    if (const remesa::Campo* campo = remesa::CampoEn(registro, posicion)) {
      QString texto =
          u"%1 (%2-%3)"_s
              .arg(QString::fromUtf8(campo->nombre.data(), static_cast<qsizetype>(campo->nombre.size())))
              .arg(campo->donde.desde)
              .arg(campo->donde.hasta);
      if (const QString valor = ValorEnPalabras(registro, *campo); !valor.isEmpty()) texto += u": "_s + valor;
      partes << texto;
    }
  }
  ui_.EstadoPosicion->setText(partes.join(u" · "_s));
}

void LecturaRegistros::copiar(const VistaRegistros& lista, bool tabla) {
  try {
    const std::size_t copiados = Copiar(lista, tabla ? Copia::Tabla : Copia::Texto);
    emit dicho(copiados == 0
                   ? u"Ningún registro señalado: no se ha copiado nada."_s
                   : TextoCuenta(copiados, u"registro copiado"_s, u"registros copiados"_s) +
                         (tabla ? u", como tabla para una hoja de cálculo."_s : u", como texto."_s));
  } catch (const comunes::TrabajoDetenido&) {
    emit dicho(u"Copia detenida: el portapapeles sigue como estaba."_s);
  }
}

void LecturaRegistros::mostrarMenu(VistaRegistros& lista, const QPoint& donde) {
  if (QApplication::activePopupWidget()) return;  // la tecla y el sistema lo piden a la vez
  const std::vector<std::size_t> senalados = Senalados(lista);
  QMenu menu(&lista);
  // Lo elegido se hace con el menú ya cerrado: algunas órdenes abren ventanas que lo dejarían esperando.
  const auto anadir = [&](const QString& rotulo, auto orden) {
    connect(menu.addAction(rotulo), &QAction::triggered, this, orden, Qt::QueuedConnection);
  };
  if (&lista == ui_.Acumulado) {
    const int actual = lista.actual();
    if (actual >= 0) {
      const std::string_view registro = lista.lista()[static_cast<std::size_t>(actual)];
      anadir(u"&Editar el registro %1…\tIntro"_s.arg(actual + 1),
             [&lista] { emit lista.dobleClic(lista.actual()); });
      if (remesa::EsDuplicable(registro))
        anadir(u"&Insertar tipo 03\tInsert"_s, [this] { ui_.cmdInsertar->click(); });
    }
    const auto seleccion = lista.seleccion();
    const auto adeudos = std::ranges::count_if(seleccion, [&lista](std::size_t i) {
      return remesa::Codigo(lista.lista()[i]) == remesa::CodigoRegistro::Adeudo;
    });
    if (adeudos > 0)
      anadir(u"E&liminar tipo 03 (%1)\tSupr"_s.arg(adeudos), [this] { ui_.cmdEliminar->click(); });
    if (!menu.isEmpty()) menu.addSeparator();
  }
  if (!senalados.empty()) {
    anadir(u"&Copiar como texto\tCtrl+C"_s, [this, &lista] { copiar(lista, false); });
    anadir(u"Copiar como &tabla para una hoja de cálculo\tCtrl+Mayús+C"_s,
           [this, &lista] { copiar(lista, true); });
    menu.addSeparator();
  }
  if (const int actual = lista.actual();
      actual >= 0 &&
      remesa::Codigo(lista.lista()[static_cast<std::size_t>(actual)]) == remesa::CodigoRegistro::Adeudo) {
    anadir(ui_.mnuAnteriores->text(), [this] { ui_.mnuAnteriores->trigger(); });
    menu.addSeparator();
  }
  if (lista.modo() == VistaRegistros::Modo::Columnas)
    lista.cabecera().llenarMenu(*menu.addMenu(u"C&olumnas"_s));
  menu.addAction(ui_.mnuColumnas);
  menu.exec(donde);
}

}  // namespace principal

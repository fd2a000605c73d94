#include "ventanas/principal/VistaRegistros.h"

#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QRadioButton>
#include <QScrollBar>

#include "EnEspana.h"
#include "VentanaPrincipal.h"
#include "ventanas/principal/AccesibleLista.h"
#include "ventanas/principal/CabeceraColumnas.h"
#include "ventanas/principal/CopiaRegistros.h"
#include "ventanas/principal/ReglaPosiciones.h"

using namespace principal;

using Lectura = pruebas::Carpeta;

TEST(VistaRegistros, LoQueSobraSeVeYLoInvisibleConSuSigno) {
  VistaRegistros vista;
  std::string larga(60'000'000, 'x');  // NOLINT(bugprone-string-constructor)
  larga[0] = '\0';
  larga[1] = '\n';
  larga[2] = '\x81';
  larga[3] = '\xD1';
  larga[4] = '\x80';
  vista.poner(pruebas::Lista({larga, "corta"}));
  const QString texto = vista.model()->index(0, 0).data().toString();
  EXPECT_EQ(texto.size(), Columnas::kMaxima);
  EXPECT_EQ(vista.columnas().ultima(), Columnas::kMaxima);
  EXPECT_EQ(texto.left(6), QString::fromUtf8("␀␊\uFFFDÑ€x"));
  EXPECT_EQ(vista.model()->index(1, 0).data().toString(), "corta");
  QAccessibleInterface* lista = QAccessible::queryAccessibleInterface(&vista);
  EXPECT_EQ(lista->child(0)->text(QAccessible::Name), texto);
  vista.poner(pruebas::Lista({"corta", std::string(610, 'x')}));
  EXPECT_EQ(vista.columnas().ultima(), 610);
}

TEST(VistaRegistros, ReglaYPosicionBajoElRaton) {
  VistaRegistros vista;
  QFont fuente("Courier New");
  vista.setFont(fuente);
  vista.resize(400, 200);
  vista.poner(pruebas::Lista(std::vector<std::string>(5, pruebas::Presentador())));
  vista.show();
  std::vector<std::pair<int, int>> vistas;
  QObject::connect(&vista, &VistaRegistros::bajoRaton, [&](int fila, int posicion) {
    vistas.push_back({fila, posicion});
  });
  const Columnas& columnas = vista.columnas();
  const auto mover = [](QWidget* donde, QPoint punto) {
    QMouseEvent evento(QEvent::MouseMove, punto, donde->mapToGlobal(punto), Qt::NoButton, {}, {});
    QApplication::sendEvent(donde, &evento);
  };
  auto* regla = vista.findChild<ReglaPosiciones*>();
  EXPECT_EQ(regla->geometry().bottom() + 1, vista.viewport()->geometry().top());
  for (const int desplazada : {0, 12 * columnas.ancho()}) {
    vista.horizontalScrollBar()->setValue(desplazada);
    vistas.clear();
    const int x = columnas.x(20) - desplazada;
    mover(vista.viewport(), {x, columnas.alto() + 1});
    mover(regla, {x + columnas.ancho() - 1, 3});
    mover(vista.viewport(), {x + columnas.ancho(), columnas.alto() + 1});
    EXPECT_EQ(vistas, (std::vector<std::pair<int, int>>{{1, 20}, {-1, 20}, {1, 21}}));
  }
  vista.horizontalScrollBar()->setValue(vista.horizontalScrollBar()->maximum());
  vistas.clear();
  mover(vista.viewport(), {columnas.x(600) - vista.desplazamiento(), 2});
  EXPECT_EQ(vistas, (std::vector<std::pair<int, int>>{{0, 600}})) << "se llega a la última";
}

TEST(VistaRegistros, SeleccionDeUnaVezYFilaActual) {
  VistaRegistros vista;
  vista.setSelectionMode(QAbstractItemView::ExtendedSelection);
  vista.poner(pruebas::Lista(std::vector<std::string>(30'000, "03")));
  vista.show();
  std::vector<std::size_t> alternas;
  for (std::size_t i = 1; i < 30'000; i += 3)
    alternas.push_back(i);
  QElapsedTimer reloj;
  reloj.start();
  vista.seleccionar(alternas);
  EXPECT_EQ(vista.seleccion(), alternas);
  EXPECT_LT(reloj.elapsed(), 1000) << "diez mil intervalos";
  vista.seleccionar(std::vector<std::size_t>{});
  EXPECT_TRUE(vista.seleccion().empty());

  // Una ayuda técnica selecciona una fila: es la actual. Vaciar la lista deja -1.
  vista.selectionModel()->select(vista.model()->index(7, 0), QItemSelectionModel::ClearAndSelect);
  EXPECT_EQ(vista.actual(), 7);
  vista.seleccionar(std::vector<std::size_t>{9});
  vista.ponerActual(-1);
  EXPECT_EQ(vista.actual(), -1);
  EXPECT_EQ(vista.seleccion(), std::vector<std::size_t>{9});

  int abiertas = 0;
  QObject::connect(&vista, &VistaRegistros::dobleClic, [&](int fila) { abiertas += fila; });
  for (const int tecla : {Qt::Key_Return, Qt::Key_F2})
    QTest::keyClick(&vista, static_cast<Qt::Key>(tecla));
  EXPECT_EQ(abiertas, 0) << "sin registro actual no se abre nada";
  vista.ponerActual(5);
  for (const int tecla : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2})
    QTest::keyClick(&vista, static_cast<Qt::Key>(tecla));
  EXPECT_EQ(abiertas, 15);
  vista.scrollTo(vista.currentIndex());
  const QPoint fila = vista.visualRect(vista.currentIndex()).topLeft() + QPoint(9, 9);
  for (const Qt::MouseButton boton : {Qt::MiddleButton, Qt::RightButton, Qt::LeftButton}) {
    QTest::mouseClick(vista.viewport(), boton, {}, fila);
    QTest::mouseDClick(vista.viewport(), boton, {}, fila);
  }
  EXPECT_EQ(abiertas, 20) << "solo el botón izquierdo abre";
  vista.poner({});
  EXPECT_EQ(vista.actual(), -1);
}

TEST(VistaRegistros, LasAyudasTecnicasLaManejanEntera) {
  PrepararAccesibilidadListas();
  VistaRegistros vista;
  vista.setSelectionMode(QAbstractItemView::ExtendedSelection);
  vista.resize(400, 300);
  vista.poner(pruebas::Lista(std::vector<std::string>(5, pruebas::Presentador())));
  vista.show();
  QList<int> abiertas;
  QObject::connect(&vista, &VistaRegistros::dobleClic, [&](int fila) { abiertas << fila; });
  QAccessibleInterface* lista = QAccessible::queryAccessibleInterface(&vista);
  const auto hacer = [&](int fila, const QString& accion) {
    lista->child(fila)->actionInterface()->doAction(accion);
    QCoreApplication::processEvents();
  };
  EXPECT_TRUE(lista->actionInterface()->actionNames().contains(QAccessibleActionInterface::setFocusAction()));
  const QRect zona(vista.viewport()->mapToGlobal(QPoint(0, 0)), vista.viewport()->size());
  const QRect fila = lista->child(2)->rect();
  EXPECT_TRUE(zona.contains(fila)) << "un clic en su centro cae en ella";
  EXPECT_EQ(lista->indexOfChild(lista->childAt(fila.center().x(), fila.center().y())), 2);
  hacer(1, QAccessibleActionInterface::toggleAction());
  hacer(3, QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(lista->tableInterface()->selectedRows(), (QList<int>{1, 3}));
  hacer(2, QAccessibleActionInterface::pressAction());
  EXPECT_EQ(vista.seleccion(), std::vector<std::size_t>{2});
  EXPECT_EQ(abiertas, QList<int>{2});
  vista.poner(pruebas::Lista({pruebas::Presentador(), "otro"}));
  EXPECT_EQ(lista->childCount(), 2);
  EXPECT_EQ(lista->child(1)->text(QAccessible::Name), "otro");
  EXPECT_EQ(lista->child(2), nullptr);
}

TEST(VistaRegistros, EnColumnasSonLosMismosRegistros) {
  PrepararAccesibilidadListas();
  const pruebas::EnEspana espana;
  VistaRegistros vista;
  vista.setSelectionMode(QAbstractItemView::ExtendedSelection);
  vista.resize(900, 200);
  std::vector<std::string> registros{pruebas::Presentador()};
  for (int i = 1; i <= 50; ++i) {
    registros.push_back(pruebas::Adeudo("R" + std::to_string(i), remesa::CifrasDe(i * 100 + 5, 11)));
    remesa::EscribirCampo(registros.back(), remesa::kNombreDeudor, i == 21 ? "=1+1" : "Ana");
  }
  vista.poner(pruebas::Lista(registros));
  vista.show();
  vista.seleccionar(std::vector<std::size_t>{20, 21, 22});
  vista.ponerActual(21);
  vista.verticalScrollBar()->setValue(19);
  vista.ponerModo(VistaRegistros::Modo::Columnas);
  EXPECT_EQ(vista.seleccion(), (std::vector<std::size_t>{20, 21, 22}));
  EXPECT_EQ(vista.actual(), 21);
  EXPECT_EQ(vista.verticalScrollBar()->value(), 19) << "se sigue viendo lo mismo";
  QAccessibleInterface* lista = QAccessible::queryAccessibleInterface(&vista);
  EXPECT_EQ(lista->child(21)->text(QAccessible::Name), "22 · Adeudo · =1+1 · 21,05 · R21");
  EXPECT_EQ(lista->child(21)->text(QAccessible::Description), "=1+1 · 21,05 € · sin cuenta");

  // El campo que hay bajo el ratón es el de su columna, y un clic con el derecho cambia o no la selección.
  CabeceraColumnas& cabecera = vista.cabecera();
  const auto celda = [&](int fila, Columna columna) {
    return QPoint(cabecera.sectionViewportPosition(static_cast<int>(columna)) + 3,
                  vista.visualRect(vista.model()->index(fila, 0)).center().y());
  };
  std::pair<int, int> bajo;
  QObject::connect(&vista, &VistaRegistros::bajoRaton, [&](int fila, int posicion) {
    bajo = {fila, posicion};
  });
  int menus = 0;
  QObject::connect(&vista, &VistaRegistros::menuPedido, [&] { ++menus; });
  const auto derecho = [&](int fila) {
    const QPoint punto = celda(fila, Columna::Nombre);
    QTest::mouseClick(vista.viewport(), Qt::RightButton, {}, punto);
    QContextMenuEvent evento(QContextMenuEvent::Mouse, punto, vista.viewport()->mapToGlobal(punto));
    QApplication::sendEvent(vista.viewport(), &evento);
  };
  const QPoint importe = celda(21, Columna::Importe);
  QMouseEvent mover(QEvent::MouseMove, importe, vista.viewport()->mapToGlobal(importe), Qt::NoButton, {}, {});
  QApplication::sendEvent(vista.viewport(), &mover);
  EXPECT_EQ(bajo, (std::pair{21, remesa::kImporteAdeudo.desde}));
  derecho(22);
  EXPECT_EQ(vista.seleccion(), (std::vector<std::size_t>{20, 21, 22})) << "lo ya seleccionado se queda";
  derecho(23);
  EXPECT_EQ(vista.seleccion(), std::vector<std::size_t>{23});
  QTest::keyClick(&vista, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_EQ(menus, 3);

  cabecera.hideSection(static_cast<int>(Columna::Numero));
  vista.seleccionar(std::vector<std::size_t>{21, 22});
  EXPECT_EQ(Copiar(vista, Copia::Tabla), 2U);
  const QStringList lineas = QGuiApplication::clipboard()->text().split('\n');
  EXPECT_TRUE(lineas[0].startsWith("Registro\tNombre\tImporte\t"));
  EXPECT_TRUE(lineas[1].startsWith("Adeudo\t'=1+1\t21,05\t\tR21\t"));
  Copiar(vista, Copia::Texto);
  EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), registros[21] + "\n" + registros[22] + "\n");
}

TEST_F(Lectura, LasDosListasSeLeenIgualYLaFranjaDiceElActual) {
  const pruebas::EnEspana espana;
  escribir("una.Q19", pruebas::Fichero(pruebas::Remesa("20261201", {"00000005210"})));
  pruebas::Ventana ventana(carpeta_);
  ventana.importar("una.Q19");
  ventana.Acumulado->seleccionarSolo(2);
  EXPECT_EQ(ventana.texto("FranjaAcumulado"), "sin nombre · 52,10 € · sin cuenta");
  QTest::keyClick(&ventana.frm, Qt::Key_T, Qt::ControlModifier);
  for (const VistaRegistros* lista : {ventana.Preview, ventana.Acumulado})
    EXPECT_EQ(lista->modo(), VistaRegistros::Modo::Columnas);
  ventana.Preview->cabecera().hideSection(4);
  EXPECT_TRUE(ventana.Acumulado->cabecera().isSectionHidden(4));
  QTest::mouseClick(ventana.hijo<QRadioButton>("VerTexto"), Qt::LeftButton);
  EXPECT_EQ(ventana.Acumulado->modo(), VistaRegistros::Modo::Texto);
}

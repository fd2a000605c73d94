#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QTimer>
#include <array>

#include "VentanaPrincipal.h"
#include "ventanas/principal/Historia.h"

using namespace pruebas;
using namespace Qt::StringLiterals;
using principal::EstadoAcumulacion;
using principal::Historia;

namespace {

class Pasos : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    std::filesystem::copy(DIR_PROYECTO "/app/Tarvo.INI", carpeta_ / "Tarvo.INI");
    escribir("enero.Q19", Fichero(Remesa("20260405", {"00000001000", "00000002000"})));
    escribir("febrero.Q19", Fichero(Remesa("20260505", {"00000000345"})));
  }
};

/// Lo que un paso deja a la vista.
struct Foto {
  explicit Foto(Ventana& v)
      : lista(v.acumulado()),
        seleccion(v.Acumulado->seleccion()),
        actual(v.Acumulado->actual()),
        linea(v.texto("InfoAcumulado").section(u" · "_s, 0, 2)),
        importado(v.importado()),
        bloques(v.hijo<QCheckBox>("Bloques")->isChecked()) {}
  bool operator==(const Foto&) const = default;

  std::vector<std::string> lista;
  std::vector<std::size_t> seleccion;
  int actual;
  QString linea;
  bool importado, bloques;
};

}  // namespace

TEST_F(Pasos, CadaOrdenSeDeshaceYSeRehace) {
  Ventana v(carpeta_, comunes::DesdeRuta(carpeta_ / "enero.Q19"));
  const ConDestino destino(carpeta_ / "salida.Q19");
  Cajas cajas{"Si"};
  v.elegir("febrero.Q19");
  const auto menu = [&](const char* cual) { v.hijo<QAction>(cual)->trigger(); };
  const std::pair<QString, std::function<void()>> ordenes[] = {
      {u"importar febrero.Q19"_s, [&] { v.pulsar("Importar"); }},
      {u"insertar un adeudo"_s, [&] { menu("mnuInsertar"); }},
      {u"cambiar el registro 4"_s,
       [&] {
         QTimer::singleShot(0, [] {
           auto* editor = QApplication::activeModalWidget();
           editor->findChild<QLineEdit*>("cpo8")->setText("00000000099");
           QTest::mouseClick(editor->findChild<QPushButton*>("cmdAceptar"), Qt::LeftButton);
         });
         menu("mnuEditar");
       }},
      {u"recalcular los totales"_s, [&] { menu("mnuRecalcular"); }},
      {u"conservar acreedores y fechas"_s, [&] { menu("mnuBloques"); }},
      {u"renovar la identificación"_s, [&] { menu("mnuRenovar"); }},
      {u"eliminar 1 adeudo"_s, [&] { menu("mnuEliminar"); }},
      {u"vaciar tras guardar"_s, [&] { menu("mnuGuardar"); }},
      {u"importar febrero.Q19"_s, [&] { v.pulsar("Importar"); }},
      {u"empezar"_s, [&] { menu("mnuEmpezar"); }},
  };
  // Antes de cada orden se señala algo: al deshacerla ha de volver.
  std::vector<Foto> antes, despues;
  for (const auto& [que, orden] : ordenes) {
    const bool deAdeudo = que.startsWith("insertar") || que.startsWith("cambiar");
    const int fila = deAdeudo || antes.size() % 2 == 0 ? 3 : 2;
    if (!v.acumulado().empty()) v.Acumulado->seleccionarSolo(fila);
    antes.emplace_back(v);
    orden();
    despues.emplace_back(v);
    EXPECT_NE(antes.back().lista, despues.back().lista) << que.toStdString();
    EXPECT_EQ(v.hijo<QAction>("mnuDeshacer")->text(), u"&Deshacer "_s + que);
  }
  const std::string guardado = leer(carpeta_ / "salida.Q19");

  for (int vuelta = 0; vuelta < 2; ++vuelta) {
    for (std::size_t i = std::size(ordenes); i-- > 0;) {
      menu("mnuDeshacer");
      EXPECT_EQ(Foto(v).lista, antes[i].lista) << ordenes[i].first.toStdString();
      EXPECT_TRUE(Foto(v) == antes[i]) << ordenes[i].first.toStdString();
      EXPECT_EQ(v.hijo<QAction>("mnuRehacer")->text(), u"Re&hacer "_s + ordenes[i].first);
    }
    for (std::size_t i = 0; i < std::size(ordenes); ++i) {
      menu("mnuRehacer");
      EXPECT_EQ(Foto(v).lista, despues[i].lista) << ordenes[i].first.toStdString();
      EXPECT_EQ(Foto(v).importado, despues[i].importado) << ordenes[i].first.toStdString();
      EXPECT_EQ(Foto(v).linea, despues[i].linea) << ordenes[i].first.toStdString();
    }
  }
  EXPECT_EQ(leer(carpeta_ / "salida.Q19"), guardado) << "deshacer no toca lo guardado";
  // Antes que todo, lo que se cargó al arrancar.
  for (std::size_t i = 0; i <= std::size(ordenes); ++i)
    menu("mnuDeshacer");
  EXPECT_TRUE(v.acumulado().empty());
  EXPECT_EQ(v.hijo<QAction>("mnuDeshacer")->text(), "&Deshacer");
  menu("mnuDeshacer");
  EXPECT_EQ(v.texto("EstadoMensaje"), "No hay nada que deshacer.");
}

TEST_F(Pasos, SeDiceLoQueSeVaYElEnlaceLoDevuelve) {
  Ventana v(carpeta_);
  const ConDestino destino(carpeta_ / "salida.Q19");
  Cajas cajas{"Si", "Si"};
  v.importar("enero.Q19");
  auto* enlace = v.hijo("Deshacer");
  auto* lugar = v.hijo<QWidget>("LugarVacio");
  auto* enLugar = v.hijo("DeshacerGuardar");
  const auto lleno = v.acumulado();
  v.Acumulado->seleccionarSolo(2);
  for (const auto& [boton, dicho] : {std::pair{"cmdEliminar", u"Se ha eliminado 1 adeudo (10,00 €)."_s},
                                     {"Empezar", u"Remesa vaciada: 1 fichero, 2 adeudos, 30,00 €."_s},
                                     {"Guardar", u" (1 fichero, 2 adeudos, 30,00 €) en "_s}}) {
    EXPECT_FALSE(enlace->isVisible()) << boton;
    v.pulsar(boton);
    EXPECT_TRUE(v.texto("EstadoMensaje").contains(dicho)) << v.texto("EstadoMensaje").toStdString();
    EXPECT_TRUE(enlace->isVisible()) << boton;
    EXPECT_EQ(lugar->isVisible(), boton != std::string("cmdEliminar")) << boton;
    EXPECT_EQ(enLugar->isVisible(), boton == std::string("Guardar"));
    QTest::mouseClick(enLugar->isVisible() ? enLugar : enlace, Qt::LeftButton);
    EXPECT_EQ(v.acumulado(), lleno) << boton;
    EXPECT_FALSE(lugar->isVisible()) << boton;
  }
  // Guardar otra vez y dar otra orden: lo guardado y sus enlaces se van, aunque la comprobación llegue luego.
  v.pulsar("Guardar");
  v.elegir("febrero.Q19");
  v.veredicto();
  EXPECT_TRUE(lugar->isVisible());
  EXPECT_FALSE(enLugar->isVisible());
  EXPECT_FALSE(enlace->isVisible());
  // Guardar una remesa vacía no es un paso: no hay qué deshacer.
  std::filesystem::remove(carpeta_ / "salida.Q19");
  v.pulsar("Guardar");
  EXPECT_FALSE(enlace->isVisible());
  EXPECT_TRUE(v.hijo("AbrirCarpeta")->isVisible());

  EXPECT_TRUE(v.Ficheros->accessibleDescription().isEmpty());
  std::filesystem::create_directory(carpeta_ / "nada");
  v.Carpetas->ponerRuta(comunes::DesdeRuta(carpeta_ / "nada"));
  EXPECT_EQ(v.Ficheros->accessibleDescription(), "Ningún fichero cumple *.Q19");
}

// Lo que no cabe se va por el más antiguo, pero no el último vaciado.
TEST(Historia, ElTopeDejaElUltimoVaciado) {
  constexpr std::size_t kRegistros = 1000;
  EstadoAcumulacion actual;
  const auto cambiar = [&](EstadoAcumulacion& otro) { std::swap(actual, otro); };
  const auto de = [](std::size_t cuantos, char letra) {
    remesa::ListaRegistros lista;
    for (std::size_t i = 0; i < cuantos; ++i)
      lista.anadir(std::string(8, letra));
    return lista;
  };
  for (const bool vaciando : {false, true}) {
    Historia historia(cambiar, nullptr, 6 * 20 * kRegistros);
    actual = {};
    std::vector<remesa::ListaRegistros> estados;
    for (int i = 0; i < 30; ++i) {
      estados.push_back(actual.lista);
      const bool vacia = vaciando && i == 4;
      const EstadoAcumulacion antes = actual;
      actual.lista = vacia ? remesa::ListaRegistros() : de(kRegistros, static_cast<char>('a' + i));
      historia.apuntar(u"paso %1"_s.arg(i), antes, actual.lista, {});
      const auto ocupado = historia.ocupacion(std::array{&std::as_const(actual.lista)});
      EXPECT_LE(ocupado.propia, 6 * 20 * kRegistros);
      EXPECT_LE(ocupado.registros, 6 * 20 * kRegistros);
    }
    std::vector<int> deshechos;
    while (!historia.porDeshacer().isEmpty()) {
      deshechos.push_back(historia.porDeshacer().section(' ', 1).toInt());
      historia.deshacer();
      EXPECT_EQ(actual.lista, estados[static_cast<std::size_t>(deshechos.back())]);
    }
    EXPECT_GE(deshechos.size(), 5u);
    EXPECT_EQ(deshechos.back() == 4, vaciando) << deshechos.back();
    while (!historia.porRehacer().isEmpty())
      historia.rehacer();
    EXPECT_EQ(Bytes(actual.lista), Bytes(de(kRegistros, static_cast<char>('a' + 29))));
  }
}

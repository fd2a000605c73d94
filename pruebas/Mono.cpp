// El operador más torpe: teclas, pulsaciones y respuestas al azar a las ventanas de verdad. MONO_SEMILLA y
// MONO_PASOS dicen qué hace y cuánto; MONO_DIARIO, un fichero donde se apunta cada paso antes de darlo.

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDir>
#include <QDrag>
#include <QEventLoop>
#include <QFile>
#include <QPointer>
#include <QScopedValueRollback>
#include <QTimer>
#include <QUndoStack>
#include <cstdio>
#include <ctime>
#include <random>

#include "VentanaPrincipal.h"
#include "comunes/impresion/Impresora.h"
#include "remesa/Adeudos.h"
#include "remesa/Fichero.h"
#include "remesa/Fusion.h"

using namespace pruebas;

namespace {

using namespace Qt::StringLiterals;

using Registros = std::vector<std::string>;

Registros Filtrados(const Registros& registros, std::initializer_list<std::string_view> codigos,
                    bool dentro) {
  Registros quedan;
  for (const std::string& r : registros)
    if ((std::ranges::count(codigos, std::string_view(r).substr(0, 2)) > 0) == dentro) quedan.push_back(r);
  return quedan;
}
Registros SinTotales(const Registros& registros) {
  return Filtrados(registros, {"04", "05", "99"}, false);
}
std::size_t Adeudos(const Registros& registros) {
  return Filtrados(registros, {"03"}, true).size();
}

/// En qué se distinguen; las listas enteras no las lee nadie.
testing::AssertionResult Iguales(const Registros& unos, const Registros& otros) {
  if (unos == otros) return testing::AssertionSuccess();
  const auto [uno, otro] = std::ranges::mismatch(unos, otros);
  return testing::AssertionFailure() << unos.size() << " registros y " << otros.size()
                                     << "; se distinguen en el " << uno - unos.begin() + 1 << ":\n"
                                     << (uno == unos.end() ? "nada" : *uno) << '\n'
                                     << (otro == otros.end() ? "nada" : *otro);
}

/// Lleva la cuenta de lo acumulado por su lado: todo cambio de la lista ha de ser uno de los que una orden
/// hace, y un paso; deshacer y rehacer llevan a las listas de antes y de después de cada uno.
class Vigia : public QObject {
 public:
  explicit Vigia(Ventana& v) : v_(v) {
    const QAbstractItemModel* modelo = v.Acumulado->model();
    connect(modelo, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
      EXPECT_TRUE(Iguales(v_.acumulado(), lista_)) << "cambió sin avisar";
      seleccion_ = v_.Acumulado->seleccion();
    });
    connect(modelo, &QAbstractItemModel::modelReset, this, [this] {
      apuntar([this, seleccion = seleccion_, previo = Bytes(v_.Preview->lista()),
               antes = std::exchange(lista_, v_.acumulado()),
               ahora = lista_] { alRenovar(seleccion, previo, antes, ahora); });
    });
    connect(modelo, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex& desde, const QModelIndex& hasta) {
              apuntar([this, desde = desde.row(), hasta = hasta.row(),
                       antes = std::exchange(lista_, v_.acumulado()),
                       ahora = lista_] { alReescribir(antes, ahora, desde, hasta); });
            });
    connect(pila_, &QUndoStack::indexChanged, this, &Vigia::alDarPaso);
  }

  /// El operador ha elegido dónde guardar la remesa.
  void alGuardar(const QString& ruta) { guardando_ = ruta; }

  /// Entre orden y orden.
  void comprobar() {
    guardando_.clear();
    ASSERT_TRUE(Iguales(v_.acumulado(), lista_));
    ASSERT_TRUE(Iguales(lista_, pasos_[static_cast<std::size_t>(pila_->index())].lista)) << "sin ser un paso";
    cambios_.clear();
    if (lista_.empty()) return;
    remesa::ListaRegistros otra = Lista(lista_);
    const bool caben = NumeroError([&] { remesa::RecalcularTotales(otra); }) == 0;
    ASSERT_TRUE(!recalculada_ || !caben || Bytes(otra) == lista_) << "los totales no son los suyos";
    const remesa::Resumen resumen = remesa::Resumir(v_.Acumulado->lista());
    ASSERT_TRUE(v_.texto("InfoAcumulado").contains(u" adeudo"_s));
    const QString dicho = v_.texto("InfoAcumulado").section(u" · "_s, 1, 1).section(' ', 0, 0).remove('.');
    ASSERT_EQ(dicho.toULongLong(), resumen.adeudos) << v_.texto("InfoAcumulado").toStdString();
  }

  int importados = 0, duplicados = 0, eliminados = 0, editados = 0, guardados = 0, deshechos = 0;

 private:
  struct Paso {
    const QUndoCommand* orden;
    Registros lista;  ///< Como quedó.
  };

  // Qué orden es lo dice el paso, cuando acaba: hasta entonces, lo que ha hecho espera.
  void apuntar(std::function<void()> cambio) { cambios_.push_back(std::move(cambio)); }

  void alDarPaso(int indice) {
    const auto i = static_cast<std::size_t>(indice);
    const bool otraVez = i < pasos_.size() && (i == 0 || pila_->command(indice - 1) == pasos_[i].orden);
    if (otraVez) {
      EXPECT_TRUE(Iguales(lista_, pasos_[i].lista)) << "al deshacer o rehacer";
      cambios_.clear();
      recalculada_ = false;
      ++deshechos;
      return;
    }
    pasos_.resize(i);
    pasos_.push_back({pila_->command(indice - 1), lista_});
    // De las demás órdenes solo se sabe que son un paso: lo que hacen lo dicen sus pruebas.
    const QString que = pila_->undoText();
    const char* const sabidas[] = {
        "abrir",     "importar", "insertar", "eliminar", "empezar", "vaciar", "cambiar el registro",
        "recalcular"};
    const bool sabida =
        std::ranges::any_of(sabidas, [&](const char* una) { return que.startsWith(QLatin1String(una)); });
    if (!sabida) {
      cambios_.clear();
      recalculada_ = false;
    }
    for (const auto& cambio : std::exchange(cambios_, {}))
      cambio();
  }

  void alRenovar(const std::vector<std::size_t>& seleccion, const Registros& previo, const Registros& antes,
                 const Registros& ahora) {
    recalculada_ = true;
    const QString que = pila_->undoText();
    if (que.startsWith(u"empezar"_s) || que.startsWith(u"vaciar"_s)) {
      EXPECT_TRUE(ahora.empty());
      if (que.startsWith(u"vaciar"_s)) comprobarGuardado(antes);
    } else if (que.startsWith(u"eliminar"_s)) {
      EXPECT_TRUE(Iguales(ahora, sinSeleccionados(antes, seleccion)));
      eliminados += static_cast<int>(antes.size() - ahora.size());
    } else if (que.startsWith(u"insertar"_s)) {
      EXPECT_TRUE(esDuplicado(antes, ahora));
      ++duplicados;
    } else if (que.startsWith(u"recalcular"_s)) {
      EXPECT_TRUE(Iguales(SinTotales(ahora), SinTotales(antes)));
    } else if (que.contains(u" fichero"_s)) {
      // De varios elegidos, o del menú de uno que no se ve: lo que había sigue delante, y lo demás son
      // adeudos.
      const Registros hay = SinTotales(antes), son = SinTotales(ahora);
      ASSERT_LE(hay.size(), son.size());
      EXPECT_TRUE(std::equal(hay.begin(), hay.end(), son.begin()));
      const Registros nuevos(son.begin() + static_cast<std::ptrdiff_t>(hay.size()), son.end());
      const bool soloAdeudos = std::ranges::all_of(nuevos, [](const auto& r) { return r.starts_with("03"); });
      EXPECT_TRUE(soloAdeudos || antes.empty());
      importados += static_cast<int>(Adeudos(nuevos));
    } else {
      Registros esperada = SinTotales(antes);
      const Registros nuevos =
          antes.empty() ? Filtrados(previo, {"01", "02", "03"}, true) : Filtrados(previo, {"03"}, true);
      esperada.insert(esperada.end(), nuevos.begin(), nuevos.end());
      EXPECT_TRUE(Iguales(SinTotales(ahora), esperada)) << que.toStdString();
      importados += static_cast<int>(Adeudos(nuevos));
    }
  }

  void alReescribir(const Registros& antes, const Registros& ahora, int desde, int hasta) {
    ASSERT_EQ(ahora.size(), antes.size());
    const auto fila = static_cast<std::size_t>(desde);
    if (desde == hasta) {
      for (std::size_t i = 0; i < ahora.size(); ++i)
        ASSERT_TRUE(i == fila || ahora[i] == antes[i]) << "se editaba el " << fila << ", no el " << i;
      ++editados;
      recalculada_ = false;
      return;
    }
    EXPECT_TRUE(Iguales(SinTotales(ahora), SinTotales(antes))) << "el recálculo solo toca totales";
  }

  static Registros sinSeleccionados(const Registros& antes, const std::vector<std::size_t>& seleccion) {
    Registros quedan;
    for (std::size_t i = 0; i < antes.size(); ++i)
      if (antes[i].substr(0, 2) != "03" || std::ranges::count(seleccion, i) == 0) quedan.push_back(antes[i]);
    return quedan;
  }

  static bool esDuplicado(const Registros& antes, const Registros& ahora) {
    if (ahora.size() != antes.size() + 1) return false;
    const auto distinto = std::ranges::mismatch(antes, ahora).in1 - antes.begin();
    Registros esperada = antes;
    if (distinto == 0) return false;
    esperada.insert(esperada.begin() + distinto, antes[static_cast<std::size_t>(distinto) - 1]);
    return esperada == ahora;
  }

  void comprobarGuardado(Registros registros) {
    std::string bytes;
    for (std::string& registro : registros) {
      registro.resize(600, ' ');
      bytes += registro + "\r\n";
    }
    std::ifstream fichero(comunes::ARuta(guardando_), std::ios::binary);
    EXPECT_TRUE(std::string(std::istreambuf_iterator<char>(fichero), {}) == bytes)
        << guardando_.toStdString();
    ++guardados;
  }

  Ventana& v_;
  QUndoStack* pila_ = v_.frm.findChild<QUndoStack*>();
  std::vector<Paso> pasos_{{nullptr, {}}};  // pasos_[i]: lo que hay con `i` pasos dados
  std::vector<std::function<void()>> cambios_;
  Registros lista_;
  std::vector<std::size_t> seleccion_;
  bool recalculada_ = true;
  QString guardando_;
};

class Mono : public QObject {
 public:
  Mono(Ventana& v, const std::filesystem::path& carpeta, unsigned semilla, int pasos)
      : v_(v), vigia_(v), carpeta_(comunes::DesdeRuta(carpeta)), azar_(semilla), pasos_(pasos) {
    if (const QString nombre = qEnvironmentVariable("MONO_DIARIO"); !nombre.isEmpty()) {
      diario_.setFileName(nombre);
      EXPECT_TRUE(diario_.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    }
    comunes::PonerSelectorFicheros([this](const auto& peticion) { return elegirFichero(peticion); });
    comunes::PonerNombresImpresoras([] { return QStringList(); });
  }
  ~Mono() override {
    comunes::PonerSelectorFicheros({});
    comunes::PonerNombresImpresoras({});
  }

  const Vigia& vigia() const { return vigia_; }

  void correr() {
    programar();
    bucle_.exec();
  }

 private:
  int hasta(int tope) { return static_cast<int>(azar_() % static_cast<unsigned>(tope)); }
  bool vez(int deCien) { return hasta(100) < deCien; }
  template <typename Lista>
  auto alguno(const Lista& lista) {
    return *(std::begin(lista) + hasta(static_cast<int>(std::size(lista))));
  }

  // Un reloj nuevo cada vez: el que está sonando no vuelve a sonar dentro de lo que se abra desde él.
  void programar() { QTimer::singleShot(vez(3) ? 20 : 0, this, &Mono::paso); }

  void paso() {
    const double ahora = static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
    if (ultimo_ > 0 && ahora - ultimo_ > kColgado)
      ADD_FAILURE() << ahora - ultimo_ << " s sin atender tras " << ultima_;
    ultimo_ = ahora;
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr && hondura_ == 0 && !editando()) {
      vigia_.comprobar();
      if (dados_ >= pasos_ || testing::Test::HasFailure()) return bucle_.quit();
      if (!v_.frm.isVisible()) v_.frm.show();
    }
    programar();
    // También si la orden falla, que su excepción pasa por aquí.
    const QScopedValueRollback dentro(hondura_, hondura_ + 1);
    ++dados_;
    enModal_ = modal != nullptr ? enModal_ + 1 : 0;
    // Ni para siempre en la misma caja ni unas encima de otras sin fin.
    if (modal != nullptr && (dados_ >= pasos_ || hondura_ > 12 || enModal_ > 150))
      salirDe(*modal);
    else
      actuar(modal);
  }

  /// Un editor ya cerrado que aún no ha vuelto a quien lo abrió: su orden no ha acabado.
  static bool editando() {
    const QWidgetList ventanas = QApplication::topLevelWidgets();
    return std::ranges::any_of(ventanas, [](const QWidget* v) { return v->inherits("editor::EdiSEPA"); });
  }

  void apuntar(const QString& que) {
    ultima_ = u"paso %1: %2"_s.arg(dados_).arg(que).toStdString();
    if (diario_.isOpen()) diario_.write((ultima_ + '\n').c_str());
  }

  void salirDe(QWidget& modal) {
    apuntar("salir de " + modal.objectName() + modal.metaObject()->className());
    if (vez(50)) return void(modal.close());
    if (vez(50)) return QTest::keyClick(&modal, Qt::Key_Escape);
    responder(modal);
  }

  void responder(QWidget& caja) {
    QList<QPushButton*> botones;
    for (QPushButton* boton : caja.findChildren<QPushButton*>())
      if (boton->isVisible() && boton->isEnabled()) botones += boton;
    if (!botones.isEmpty()) pulsar(alguno(botones), Qt::LeftButton);
  }

  void actuar(QWidget* modal) {
    QWidget* ventana = QApplication::activePopupWidget();
    // Una caja que se acaba de cerrar y aún no ha vuelto; o un arrastre, que con sucesos de mentira no acaba
    // nunca.
    sinVentana_ = hondura_ > 1 && modal == nullptr && ventana == nullptr ? sinVentana_ + 1 : 0;
    if (sinVentana_ > 100) QDrag::cancel();
    if (sinVentana_ > 0) return;
    if (ventana != nullptr && dados_ >= pasos_) return void(ventana->close());
    if (ventana == nullptr) ventana = modal;
    if (ventana == nullptr) {
      if (vez(1)) return estropear();
      if (vez(30)) return ordenar();
      QWidgetList visibles;
      for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->windowType() != Qt::ToolTip) visibles += w;
      ventana = visibles.isEmpty() || vez(50) ? &v_.frm : alguno(visibles);
    } else if (ventana == modal && modal->findChildren<QPushButton*>().size() < 12 && vez(25)) {
      apuntar("responder a " + modal->objectName());
      return responder(*modal);
    }
    QWidgetList controles{ventana};
    for (QWidget* w : ventana->findChildren<QWidget*>())
      if (w->isVisible() && w->isEnabled() && w->window() == ventana->window()) controles += w;
    QWidget* control = alguno(controles);
    // Las que vacían o cierran, menos, para que haya algo que perder.
    if ((control->objectName() == "Empezar" || control->objectName() == "Salir") && vez(80)) return;
    if (vez(45))
      return teclear(ventana->focusWidget() != nullptr && vez(80) ? ventana->focusWidget() : control);
    pulsar(control, vez(90) ? Qt::LeftButton : Qt::RightButton);
  }

  void pulsar(const QPointer<QWidget>& w, Qt::MouseButton boton) {
    static constexpr Qt::KeyboardModifier kTeclas[] = {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier,
                                                       Qt::ControlModifier};
    const QPoint donde(hasta(std::max(1, w->width())), hasta(std::max(1, w->height())));
    const Qt::KeyboardModifier tecla = alguno(kTeclas);
    apuntar(u"pulsar %1 (%2) en %3,%4"_s.arg(w->objectName(), w->metaObject()->className())
                .arg(donde.x())
                .arg(donde.y()));
    const bool doble = boton == Qt::LeftButton && vez(20);
    QTest::mousePress(w, boton, tecla, donde);
    if (w && vez(10))
      QTest::mouseMove(w, QPoint(hasta(std::max(1, w->width())), hasta(std::max(1, w->height()))));
    if (w) QTest::mouseRelease(w, boton, tecla, donde);
    if (w && doble) {
      QTest::mouseDClick(w, boton, tecla, donde);
      if (w) QTest::mouseRelease(w, boton, tecla, donde);
    }
    if (w && boton == Qt::RightButton) {
      QContextMenuEvent menu(QContextMenuEvent::Mouse, donde, w->mapToGlobal(donde));
      QApplication::sendEvent(w, &menu);
    }
  }

  void teclear(QWidget* w) {
    static constexpr Qt::Key kTeclas[] = {
        Qt::Key_Tab,      Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Enter,     Qt::Key_Escape, Qt::Key_Up,
        Qt::Key_Down,     Qt::Key_Left,    Qt::Key_Right,  Qt::Key_Home,      Qt::Key_End,    Qt::Key_PageUp,
        Qt::Key_PageDown, Qt::Key_Insert,  Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_F1,     Qt::Key_F2,
        Qt::Key_F3,       Qt::Key_F4,      Qt::Key_F5,     Qt::Key_Space,     Qt::Key_Menu,   Qt::Key_A,
        Qt::Key_C,        Qt::Key_F,       Qt::Key_G,      Qt::Key_V,         Qt::Key_X,      Qt::Key_Y,
        Qt::Key_Z,        Qt::Key_S,       Qt::Key_N,      Qt::Key_Plus,      Qt::Key_Minus};
    static constexpr Qt::KeyboardModifier kModos[] = {Qt::NoModifier,      Qt::NoModifier,
                                                      Qt::NoModifier,      Qt::ShiftModifier,
                                                      Qt::ControlModifier, Qt::AltModifier};
    static const QString kTextos[] = {
        "0",      "7",    "12345678",        "ñ",         "€", "Ÿ",          "ES91", "20260405", ",", "-",
        "\u00AD", "日本", QString(700, 'W'), "a\tb\r\nc", "",  "01/01/2026", "*.Q19"};
    if (vez(30)) {
      const QString texto = alguno(kTextos);
      apuntar("escribir " + texto.left(10) + " en " + w->objectName());
      if (vez(30)) {
        QApplication::clipboard()->setText(texto);
        return QTest::keyClick(w, Qt::Key_V, Qt::ControlModifier);
      }
      const QPointer<QWidget> vivo = w;
      for (const QChar c : texto.left(20))
        if (vivo) QTest::sendKeyEvent(QTest::Click, vivo, Qt::Key_unknown, QString(c), Qt::NoModifier);
      return;
    }
    const Qt::Key tecla = alguno(kTeclas);
    const Qt::KeyboardModifier modo = alguno(kModos);
    apuntar(u"tecla %1 en %2 (%3)"_s.arg(QKeySequence(modo | tecla).toString(), w->objectName(),
                                         w->metaObject()->className()));
    QTest::keyClick(w, tecla, modo);
  }

  /// Lo que el operador quiere hacer, para que pase algo.
  void ordenar() {
    static constexpr const char* kBotones[] = {"Importar",    "Importar",    "Importar",    "cmdInsertar",
                                               "cmdEliminar", "cmdEliminar", "cmdImprimir", "Guardar"};
    static constexpr const char* kMenus[] = {
        "mnuComprobar", "mnuComprobar", "mnuTextos",   "mnuTablas",   "mnuCalculadora", "mnuTelefonos",
        "mnuContenido", "mnuAcercaDe",  "mnuDeshacer", "mnuDeshacer", "mnuRehacer",     "mnuRecalcular"};
    if (vez(5)) v_.Carpetas->ponerRuta(carpeta_ + "/entradas");
    const int que = hasta(10);
    if (que < 3) {
      apuntar("elegir fichero");
      const int filas = v_.Ficheros->model()->rowCount();
      if (filas > 0)
        QTest::mouseClick(v_.Ficheros->viewport(), Qt::LeftButton, {},
                          v_.Ficheros->visualRect(v_.Ficheros->model()->index(hasta(filas), 0)).center());
    } else if (que < 6) {
      const char* boton = alguno(kBotones);
      apuntar(boton);
      v_.pulsar(boton);
    } else if (que < 9) {
      apuntar("señalar");
      const int filas = v_.Acumulado->model()->rowCount();
      for (int i = hasta(4); i >= 0 && filas > 0; --i)
        v_.Acumulado->selectionModel()->setCurrentIndex(
            v_.Acumulado->model()->index(hasta(filas), 0),
            vez(50) ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect);
      if (vez(20)) QTest::keyClick(v_.Acumulado, Qt::Key_Return);
    } else {
      const char* menu = alguno(kMenus);
      apuntar(menu);
      v_.hijo<QAction>(menu)->trigger();
    }
  }

  /// Otro programa toca los ficheros.
  void estropear() {
    const QStringList nombres = QDir(carpeta_ + "/entradas").entryList(QDir::Files);
    const QString ruta = carpeta_ + "/entradas/" + (nombres.isEmpty() ? u"nuevo.Q19"_s : alguno(nombres));
    apuntar("estropear " + ruta);
    QFile f(ruta);
    switch (hasta(3)) {
      case 0:
        f.remove();
        break;
      case 1:
        f.resize(f.size() / 2);
        break;
      default:
        QFile::copy(u"" DIR_EJEMPLOS u"/gimnasio-acuario.Q19"_s, ruta + QString::number(hasta(5)) + ".Q19");
    }
  }

  QStringList elegirFichero(const comunes::PeticionFicheros& peticion) {
    if (vez(25)) return {};
    const QStringList entradas = QDir(carpeta_ + "/entradas").entryList(QDir::Files);
    static const char* const kSalidas[] = {"uno",      "dos.Q19", "tres.pdf",
                                           "no hay/x", "carpeta", "entradas/uno.Q19"};
    const bool entrada = peticion.abrir && !entradas.isEmpty() && vez(90);
    const QString ruta = carpeta_ + (entrada ? "/entradas/" + alguno(entradas) : u"/"_s + alguno(kSalidas));
    apuntar("elegir " + ruta);
    if (!peticion.abrir && peticion.propietario == &v_.frm &&
        peticion.filtros.value(0).patrones.contains("q19", Qt::CaseInsensitive))
      vigia_.alGuardar(comunes::QuitarExtension(ruta) + ".Q19");
    return {ruta};
  }

  static constexpr double kColgado = 5;  // segundos de procesador

  Ventana& v_;
  Vigia vigia_;
  QString carpeta_;
  std::mt19937 azar_;
  int pasos_;
  int dados_ = 0, hondura_ = 0, enModal_ = 0, sinVentana_ = 0;
  double ultimo_ = 0;
  std::string ultima_;
  QFile diario_;
  QEventLoop bucle_;
};

class PruebaMono : public Carpeta {
 protected:
  void SetUp() override {
    Carpeta::SetUp();
    qputenv("XDG_DATA_HOME", carpeta_.string().c_str());
    std::filesystem::create_directories(carpeta_ / "carpeta.Q19");
    std::filesystem::create_directory(carpeta_ / "entradas");
    std::filesystem::copy(DIR_PROYECTO "/app/Tarvo.INI", carpeta_ / "Tarvo.INI");
    for (const auto& entrada : std::filesystem::directory_iterator(DIR_EJEMPLOS))
      if (entrada.path().extension() == ".Q19") std::filesystem::copy(entrada, carpeta_ / "entradas");
    const std::string bytes = leer(carpeta_ / "entradas" / "gimnasio-acuario.Q19");
    escribir("entradas/solo-cr.Q19", Fichero(Remesa("20260405", {"00000001000", "00000000345"}), "\r"));
    escribir("entradas/solo-lf.Q19", Fichero(Remesa("20260405", {"00000001000"}), "\n"));
    escribir("entradas/cortada.Q19", bytes.substr(0, 602 * 7 + 250));
    escribir("entradas/enorme.Q19", Fichero(Remesa("20260405", {"02147483000"})));
    escribir("entradas/rara.Q19",
             Fichero({Presentador(), "", "03", "77 raro", Adeudo("UNO", "-1"), Total("99")}));
    escribir("entradas/texto.txt", "uno\r\ndos\r\n");
  }
};

int DelEntorno(const char* nombre, int defecto) {
  const int valor = qEnvironmentVariableIntValue(nombre);
  return valor > 0 ? valor : defecto;
}

TEST_F(PruebaMono, NadaDeLoQueHagaPierdeLoAcumulado) {
  const int semilla = DelEntorno("MONO_SEMILLA", 1914);
  const int pasos = DelEntorno("MONO_PASOS", 3000);
  std::printf("MONO_SEMILLA=%d MONO_PASOS=%d\n", semilla, pasos);
  QApplication::setQuitOnLastWindowClosed(false);
  Ventana v(carpeta_);
  v.Carpetas->ponerRuta(comunes::DesdeRuta(carpeta_ / "entradas"));
  // El vigía sabe lo que hace cada orden sobre la lista tal cual; la reunión por bloques tiene su propio
  // modelo.
  v.hijo<QWidget>("Bloques")->setEnabled(false);
  Mono mono(v, carpeta_, static_cast<unsigned>(semilla), pasos);
  mono.correr();
  const Vigia& hecho = mono.vigia();
  // Y al acabar, todo lo hecho hacia atrás y otra vez hacia delante.
  const auto repetir = [&](const char* accion, const char* rotulo) {
    while (v.hijo<QAction>(accion)->text() != QLatin1String(rotulo) && !HasFailure())
      v.hijo<QAction>(accion)->trigger();
  };
  repetir("mnuRehacer", "Re&hacer");
  const auto rehecho = v.acumulado();
  repetir("mnuDeshacer", "&Deshacer");
  EXPECT_TRUE(v.acumulado().empty());
  repetir("mnuRehacer", "Re&hacer");
  EXPECT_TRUE(Iguales(v.acumulado(), rehecho));
  std::printf(
      "adeudos importados %d, duplicados %d, eliminados %d; registros editados %d; guardados %d; deshechos "
      "%d\n",
      hecho.importados, hecho.duplicados, hecho.eliminados, hecho.editados, hecho.guardados, hecho.deshechos);
  if (pasos < 3000) return;
  // Si no, no ha probado nada.
  for (const int cuantos : {hecho.importados, hecho.duplicados, hecho.eliminados, hecho.editados,
                            hecho.guardados, hecho.deshechos})
    EXPECT_GT(cuantos, 0);
}

}  // namespace

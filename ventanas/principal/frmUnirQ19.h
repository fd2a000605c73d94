#pragma once

#include <QHash>
#include <QMainWindow>
#include <QMap>
#include <QPointer>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "remesa/BloquesListas.h"
#include "remesa/ListaRegistros.h"
#include "remesa/ObservacionesBloques.h"
#include "ventanas/principal/Antecedentes.h"
#include "ventanas/principal/Historia.h"
#include "ventanas/principal/Veredicto.h"

namespace Ui {
class frmUnirQ19;
}

namespace remesa {
struct Hallazgo;
}

namespace comunes {
class Enlace;
}

namespace principal {

class BarraBuscar;
class VentanaCorregir;
class VentanaHallazgos;
class VentanaXml;
class VigiaVeredicto;
struct OrigenHallazgos;
struct RemesaTomada;
class Tanda;
class Herramientas;
class LecturaRegistros;
class LugarVacio;
class Navegador;
class VistaRegistros;

/// Ventana principal: se buscan ficheros Q19, se previsualizan, se importan en la acumulación, se corrige
/// esta y se guarda. `lineaOrdenes` es la línea de órdenes entera; si no está vacía nombra un fichero que se
/// carga en la acumulación en cuanto la ventana empieza a atender eventos. Los errores de sus controladores
/// no se recogen aquí: los informa la aplicación.
class frmUnirQ19 : public QMainWindow {
  Q_OBJECT

 public:
  explicit frmUnirQ19(const QString& lineaOrdenes, QWidget* padre = nullptr);
  ~frmUnirQ19() override;

 protected:
  void closeEvent(QCloseEvent* evento) override;
  void dragEnterEvent(QDragEnterEvent* evento) override;
  void dropEvent(QDropEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;

 private:
  // Preparación
  void prepararControles();
  void conectar();
  void leerAjustes();

  // Tamaños (Pantalla.cpp)
  /// En una pantalla pequeña o muy ampliada, todo se junta para que quepa.
  void ajustarAPantalla();
  /// De partida: lo que piden los registros, si la pantalla lo tiene.
  void tomarTamano();
  /// En una ventana baja, lo que se puede decir en una línea se dice en una.
  void plegar(bool plegada);

  // Carga (Carga.cpp)
  bool EsQ19(const QString& ruta);
  /// Sobre `Preview` se dice qué fichero se ha rechazado y por qué, hasta que se elija otro.
  void rechazar(const QString& ruta, const QString& porque);
  /// Distingue el contenido de un fichero del que tenga después.
  static QString Marca(const QString& ruta);
  /// false si el operador lo detiene, y entonces todo sigue como estaba.
  bool CargarFichero(const QString& ruta, VistaRegistros& lista);
  void ponerLeida(const QString& ruta, RemesaTomada leida, VistaRegistros& lista);
  void cargarInicial(const QString& lineaOrdenes);
  void elegir(const QString& ruta);
  /// Lo que hay en `Preview` es ahora ese fichero.
  void previsualizado(const QString& ruta, const QString& marca);

  // Varios ficheros a la vez (VariosFicheros.cpp)
  void prepararVariosFicheros();
  QString verSinAvisar(const QString& ruta);
  void verElUltimo(const QString& ruta);
  /// Los importa en su orden, como un solo paso; los que no valen se apartan y se dicen.
  void importarFicheros(const QStringList& rutas);
  void leerPara(Tanda& tanda, const QString& ruta, const QString& titulo) const;
  /// Ficheros y carpetas soltados sobre la ventana: se eligen, y no se importa nada.
  void soltar(const QStringList& rutas);

  // Órdenes (Ordenes.cpp)
  void importar();
  /// Añade los registros a la acumulación; false si no se puede, tras decirlo.
  bool juntar(const remesa::ListaRegistros& previo);
  void empezar();
  void insertar();
  void eliminar();
  void quitar(const std::vector<std::size_t>& seleccion);
  /// Con `posicion` (desde 1), el editor empieza en el campo que la tiene.
  void editar(int fila, int posicion = 0);
  void RecalcularTotales();

  // Deshacer y rehacer (Pasos.cpp)
  void prepararPasos();
  /// Da la orden, que cambia la acumulación, como un solo paso que se puede deshacer: "Deshacer `que`".
  /// Dentro de otro paso, es parte de él. Si la orden no cambia la acumulación no hay
  /// paso; si lanza, lo hay con lo que dejase hecho. Devuelve si lo hay.
  bool comoUnPaso(const QString& que, const std::function<void()>& orden);
  EstadoAcumulacion fotografiar() const;
  void intercambiar(EstadoAcumulacion& estado);
  /// Como comoUnPaso, pero el paso empieza en `antes`.
  bool pasoDesde(EstadoAcumulacion antes, const QString& que, const std::function<void()>& orden);
  /// Apunta el paso desde `antes` si la acumulación es otra.
  bool apuntarPaso(const QString& que, EstadoAcumulacion antes);
  void deshacer();
  void rehacer();
  /// Dice lo que se ha ido, con un enlace que lo deshace hasta la orden siguiente.
  void decirConDeshacer(const QString& texto);

  // Órdenes mientras se conservan los bloques (OrdenesBloques.cpp)
  bool conBloques() const;
  void cambiarBloques(bool conservar);
  void mirarDuenos();
  /// false, tras decirlo con `queNo` detrás, si un adeudo no tiene dueño: todo sigue como estaba.
  bool reunir(const remesa::ListaRegistros& previo, const QString& queNo);
  bool reunirVarios(std::span<const remesa::ListaRegistros* const> previos, const QString& queNo);
  void recalcularBloques();
  void insertarConBloques(std::size_t i);
  void eliminarConBloques(const std::vector<std::size_t>& conTodo);
  /// Lo que la pregunta de eliminar dice de los opcionales que no estaban en la selección.
  static QString sobreOpcionales(const std::vector<std::size_t>& seleccion,
                                 const std::vector<std::size_t>& conTodo);
  void ponerConBloques(remesa::ListaRegistros lista, const remesa::Procedencia& procedencia);
  void ponerYSenalar(remesa::ListaRegistros lista, std::optional<std::size_t> cual);
  void contarBloques(const remesa::Resumen& resumen, remesa::IndiceBloques indice);
  QString textoBloques() const;
  std::vector<remesa::Observacion> observarConBloques() const;

  // Menú "Remesa" (MenuRemesa.cpp)
  void prepararMenuRemesa();
  /// Va a la carpeta que se elija o, si es un fichero, a la suya, y lo elige.
  void elegirCarpetaOFichero();
  /// Donde están las remesas inventadas; "" si no se han instalado.
  static QString carpetaEjemplos();
  void prepararLugarVacio();
  void renovarIdentificacion();
  void separarRemesa();
  void exportarXml();  // ExportarXml.cpp

  // Guardar.cpp
  void guardar();
  /// Lo que se perdería al guardar una remesa vacía sobre el fichero `ruta`; nada si no lo está.
  QString loQueSePierde(const QString& ruta) const;
  /// Lo que se guardó por última vez, y dónde.
  QString dondeGuardado() const;
  void contarGuardado(const Veredicto::Resultado& resultado);

  // Lo que dice la línea de la remesa (LineaAcumulado.cpp)
  void prepararLineaAcumulado();
  void mostrarVeredicto();
  /// De qué serían los adeudos de lo previsualizado si se importara ahora; vacío si no se mezclan.
  QString loQueMezcla() const;
  /// Lo que se mezcló al importar, mientras siga en la acumulación.
  QStringList avisoMezcla() const;
  void recalcularAhora();

  // OrdenComprobar.cpp
  void comprobar();
  void comprobarAcumulado(bool comoGuardada = false);
  void comprobarPreview();
  void comprobarGuardado();
  /// Enseña arriba el registro del hallazgo, del fichero `ruta`, que se lee otra vez si no es el que se ve.
  bool irEnPreview(const QString& ruta, const remesa::Hallazgo& hallazgo);
  void mostrarComprobaciones(OrigenHallazgos comprobada, const VistaRegistros* lista);

  // OrdenAnteriores.cpp
  void prepararAntecedentes();
  void mostrarAntecedentes();
  void atenderAntecedentes();
  /// Lo que se guardó antes con los mismos adeudos; vacío si nada.
  QStringList avisoGuardada() const;
  void verAnteriores();

  // OrdenCorregir.cpp
  /// Ofrece corregir esos hallazgos de la acumulación; ninguno, todos los que se pueda.
  void corregir(const std::vector<remesa::Hallazgo>& elegidos = {});
  void hacerCorrecciones(const VentanaCorregir& ventana, bool sinTotales);

  // FechaCobro.cpp
  void cambiarFechaCobro();

  // Devoluciones.cpp
  /// Abre la ventana de devoluciones, y en ella esos ficheros.
  void abrirDevoluciones(const QStringList& rutas);
  /// Apunta si el fichero que se elige trae lo que devuelve el banco; entonces hay un enlace que lo abre.
  bool mirarDevoluciones(const QString& ruta);
  void ponerDevueltos(const QString& ruta);
  /// Qué es el fichero de devoluciones previsualizado; vacío si no lo es.
  QString avisoDevoluciones() const;
  bool presentarOtraVez(remesa::ListaRegistros nueva);

  // Imprimir.cpp
  void imprimir();
  /// Dice que el listado llevará registros que no son adeudos; false si el operador no lo quiere así.
  bool confirmarOtros();
  void abrirListado();

  // Lo que se cuenta al operador (Informacion.cpp)
  bool importadoVisible() const;
  void mirarAcumulado();
  void mostrarObservaciones();
  /// Lo que hay que decir de `Preview`, y si se puede ofrecer conservar los bloques.
  struct AvisosPreview {
    QStringList textos;
    bool otroBloque = false;
  };
  AvisosPreview avisosPreview() const;
  void decir(const QString& texto);
  /// Ficheros, adeudos e importe de la acumulación; "" si está vacía.
  QString loQueHay() const;

  std::unique_ptr<Ui::frmUnirQ19> ui_;
  Navegador* navegador_ = nullptr;
  Herramientas* herramientas_ = nullptr;
  LecturaRegistros* lectura_ = nullptr;
  bool plegada_ = false;
  Historia* historia_ = nullptr;
  LugarVacio* lugar_ = nullptr;
  bool enPaso_ = false;  ///< Se está dando una orden que es un paso.

  QString FicherosImportados;  ///< "[RUTA]" de cada fichero importado, en mayúsculas.
  QString FicheroActual;       ///< Ruta del último fichero cargado, en mayúsculas.

  QString rutaActual_;  ///< La misma, tal como se escribe.
  QPointer<VentanaHallazgos> comprobaciones_;
  QPointer<VentanaXml> exportacion_;
  QString guardado_;                         ///< Último fichero guardado,
  QString cuantoGuardado_;                   ///< con estos ficheros, adeudos e importe.
  std::unique_ptr<Veredicto> veredicto_;     ///< Su comprobación.
  QString listado_;                          ///< Último listado escrito en un fichero.
  QString rutaPreview_;                      ///< Ruta de lo que muestra `Preview`.
  QString devueltos_;                        ///< El último elegido, si trae lo que devuelve el banco.
  QString rechazo_;                          ///< El último fichero elegido no se ha tomado, y por qué.
  QStringList perdidas_;                     ///< Del último XML leído, lo que sus registros no tienen.
  QString marcaPreview_;                     ///< Fecha y tamaño de ese fichero cuando se leyó.
  QHash<QString, QString> rutasImportadas_;  ///< De la ruta en mayúsculas a la ruta.
  /// Lo que mezcló cada importación, por los ficheros que había importados con ella: mientras la lista de los
  /// de ahora empiece así, sigue en la acumulación.
  QMap<QString, QString> mezclas_;
  BarraBuscar* buscar_ = nullptr;
  VigiaVeredicto* vigia_ = nullptr;
  Antecedentes* antecedentes_ = nullptr;
  Antecedentes::Comparada comparadaGuardada_;  ///< Lo de antes, de la que se guardó.
  comunes::Enlace* enlaceAntecedentes_ = nullptr;
  remesa::Resumen resumenPreview_;
  remesa::Resumen resumenAcumulado_;
  remesa::IndiceBloques indiceAcumulado_;  ///< Solo mientras se conservan los bloques.
};

}  // namespace principal

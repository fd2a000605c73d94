#pragma once

#include <QObject>
#include <QString>
#include <functional>

class QMenu;

namespace principal {

class ListaCarpetas;
class ListaFicheros;
class Navegador;

/// Lo que la ventana hace con un fichero cuando se pide desde su menú.
struct OrdenesArchivo {
  std::function<void(const QString& ruta)> ver;
  std::function<void(const QStringList& rutas)> importar;
  std::function<void(const QString& ruta)> abrirDevoluciones;
  std::function<bool(const QString& ruta)> importado;
  std::function<void(const QString& que)> decir;
};

/// Los menús del botón derecho de las listas de ficheros y de carpetas, también con la tecla Menú y con
/// Mayús+F10. Son de la fila en que se piden, y pedirlos no elige nada.
class MenusArchivos : public QObject {
  Q_OBJECT

 public:
  MenusArchivos(ListaFicheros& ficheros, ListaCarpetas& carpetas, Navegador& navegador,
                OrdenesArchivo ordenes, QObject* padre);

 private:
  void poner(QMenu& menu, const QString& rotulo, const std::function<void()>& orden) const;
  void deFichero(const QString& nombre, const QPoint& donde);
  void deCarpeta(const QString& ruta, const QPoint& donde);
  void ponerImportar(QMenu& menu, const QString& nombre, const QString& ruta);
  void ponerCopiar(QMenu& menu, const QString& ruta) const;
  void ponerMostrar(QMenu& menu, const QString& rotulo, const QString& carpeta);
  void ponerRefrescar(QMenu& menu);

  ListaFicheros& ficheros_;
  ListaCarpetas& carpetas_;
  Navegador& navegador_;
  OrdenesArchivo ordenes_;
};

}  // namespace principal

#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace principal {

class ListaDiscos;
class ListaCarpetas;
class ListaFicheros;

/// Une las tres listas con que se buscan ficheros: unidad, carpeta y fichero.
class Navegador : public QObject {
  Q_OBJECT

 public:
  Navegador(ListaDiscos* discos, ListaCarpetas* carpetas, ListaFicheros* ficheros, QObject* padre);

  /// Coloca las listas en `origen`; lo que no exista se pasa por alto. `letra`: unidad, dos caracteres.
  void iniciar(const QString& letra, const QString& origen, const QString& patron);
  /// Lleva las listas a donde está un fichero, o a una carpeta, sin elegir nada.
  void irA(const QString& ruta);
  /// Resalta en la lista el fichero de esa ruta, si está en la carpeta abierta, y ningún otro.
  void resaltar(const QString& ruta);
  void refrescar();
  /// Elige, de esos ficheros, los que se enseñan de la carpeta del primero; no avisa con `elegido`.
  void elegirVarios(const QStringList& rutas);
  /// Las rutas de los elegidos, en el orden de la lista.
  QStringList elegidos() const;
  /// Quita un fichero de los elegidos.
  void dejar(const QString& ruta);
  /// La ruta con que se elige un fichero de la carpeta abierta.
  QString rutaDe(const QString& nombre) const;

 signals:
  /// Ruta del fichero que eligió el operador; de varios, del último.
  void elegido(const QString& ruta);

 private:
  void alCambiarDisco();
  void alCambiarCarpeta();

  ListaDiscos* discos_;
  ListaCarpetas* carpetas_;
  ListaFicheros* ficheros_;
  QFileSystemWatcher vigia_;
  QTimer espera_;
};

}  // namespace principal

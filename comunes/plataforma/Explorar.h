#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

class QWidget;

namespace comunes {

/// Lo anterior al último "." de toda la ruta; sin punto, el nombre entero.
QString QuitarExtension(const QString& Nombre);

struct FiltroFicheros {
  QString descripcion;
  QString patrones;  ///< separados por ";"
};
/// Filtros de un diálogo. `Filtro`: extensión sola ("q19"), "@" + patrones o "|" + parejas
/// descripción|patrón; las parejas acaban en la primera descripción vacía.
QList<FiltroFicheros> ConstruirFiltro(const QString& Filtro);

/// true donde el diálogo de ficheros del sistema habla el idioma del usuario (Windows); en los demás se usa
/// el del toolkit, que va en español.
bool DialogoDelSistema();

/// Del nombre que eligió el operador, el nombre con que se escribirá de verdad.
using ReglaNombre = std::function<QString(const QString&)>;

/// Lo que hay que saber, además, antes de sustituir el fichero `ruta`; vacío si nada.
using AvisoSustituir = std::function<QString(const QString& ruta)>;

/// Diálogo de abrir (`Abrir`) o guardar. Sin `Carpeta`, o si no existe, empieza en "C:\" y, donde no la hay,
/// en la del usuario. Devuelve la ruta elegida o "" si se cancela; con `Multiple`, carpeta, NUL, cada nombre
/// seguido de NUL y un NUL final. Con `Regla`, pregunta antes de sustituir un fichero que exista con el
/// nombre final, con lo que diga `Aviso`, y vuelve a abrirse si se responde "No"; lo devuelto es lo elegido,
/// sin aplicar la regla.
QString DialogoFichero(bool Abrir, QWidget* Propietario, const QString& Carpeta, const QString& Filtro,
                       bool Multiple, const QString& Nombre, const ReglaNombre& Regla = {},
                       const AvisoSustituir& Aviso = {});

/// La carpeta que elija el operador, empezando en `Carpeta`; "" si cancela.
QString DialogoCarpeta(QWidget* Propietario, const QString& Titulo, const QString& Carpeta);

/// La carpeta o el fichero que exista y que elija el operador, empezando en `Carpeta`; "" si cancela. Es
/// siempre el diálogo del toolkit: los de los sistemas eligen una cosa o la otra.
QString DialogoCarpetaOFichero(QWidget* Propietario, const QString& Titulo, const QString& Carpeta,
                               const QString& Filtro);

/// Lo que se pide al selector de ficheros; la carpeta ya existe.
struct PeticionFicheros {
  bool abrir;
  QWidget* propietario;
  QString titulo;
  QString carpeta;
  QList<FiltroFicheros> filtros;
  bool multiple;
  QString nombre;
  bool valeCarpeta = false;  ///< Lo elegido puede ser una carpeta.
};
/// Devuelve las rutas elegidas; ninguna, si se cancela.
using SelectorFicheros = std::function<QStringList(const PeticionFicheros&)>;
/// Cambia el selector (una prueba) y devuelve el anterior; vacío, el QFileDialog "DialogoFichero".
SelectorFicheros PonerSelectorFicheros(SelectorFicheros nuevo);

}  // namespace comunes

#pragma once

#include <QHash>
#include <QImage>
#include <QTextBrowser>
#include <QTimer>

namespace comunes {

/// Visor de un tema de ayuda: no sale a la red ni lee nada fuera de la carpeta del tema, y no abre enlaces en
/// otros programas.
class VisorAyuda : public QTextBrowser {
  Q_OBJECT

 public:
  explicit VisorAyuda(QWidget* padre = nullptr);

  /// Un título del tema: su nivel (1 el mayor), su texto y dónde está.
  struct Seccion {
    int nivel = 0;
    QString titulo;
    int posicion = 0;
  };
  QList<Seccion> Secciones() const;
  /// Posición de lo que se ve arriba.
  int Posicion() const;
  /// Lleva arriba lo que hay en esa posición; con Atras() se vuelve.
  void IrA(int posicion);

  /// Enseña el tema, o por qué no se puede.
  void Cargar(const QString& ruta);
  /// Nombre del tema: el título del documento, el que lo encabeza o el del fichero.
  QString Titulo() const;
  /// Lleva arriba el título que se enlaza con ese nombre ("primer-uso"); false si no lo hay.
  bool IrASeccion(const QString& nombre);

  /// Vuelve a donde se estaba antes del último enlace o título seguido; si no lo hay, no hace nada.
  void Atras();
  bool HayAtras() const { return !anteriores_.isEmpty(); }

  QVariant loadResource(int tipo, const QUrl& nombre) override;

 signals:
  void cargado();
  void movido();

 protected:
  void resizeEvent(QResizeEvent* evento) override;

 private:
  struct Sitio {
    QString ruta;
    int desplazamiento = 0;
  };
  void Abrir(const QString& ruta);
  void Recordar();
  void LlevarArriba(int posicion);
  QImage Ajustada(const QImage& imagen) const;
  void AjustarImagenes();
  QString RutaPermitida(const QUrl& enlace) const;
  void Seguir(const QUrl& enlace);

  QString ruta_;
  QList<Sitio> anteriores_;
  QHash<QUrl, QImage> imagenes_;  ///< A su tamaño; se ven reducidas a la anchura que haya.
  int anchura_ = 0;               ///< Del visor, cuando se redujeron.
  QTimer ajuste_;
};

}  // namespace comunes

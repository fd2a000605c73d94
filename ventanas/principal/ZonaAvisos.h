#pragma once

#include <QLabel>

namespace comunes {
class Enlace;
}

namespace principal {

/// Sitio fijo para avisos: el texto se reparte en las líneas que tiene, con el ancho que tenga, y lo que no
/// cabe queda detrás de «más…», que lo enseña entero; con el ratón encima también se lee entero. El alto no
/// depende del texto: lo que hay debajo no se mueve. El texto puede venir de fuera: nunca es marcado. Las
/// ayudas técnicas leen el entero, y se les anuncia cuando cambia.
class ZonaAvisos : public QLabel {
  Q_OBJECT
  Q_PROPERTY(int lineas READ lineas WRITE ponerLineas)

 public:
  explicit ZonaAvisos(QWidget* padre = nullptr);

  int lineas() const { return lineas_; }
  void ponerLineas(int lineas);
  /// Con `conEnlace`, detrás de los avisos está el enlace.
  void ponerAvisos(const QStringList& avisos, bool conEnlace = false);
  /// Lo que se ofrece hacer por lo que se avisa; sin rótulo hasta que alguien se lo ponga.
  comunes::Enlace& enlace() { return *enlace_; }
  /// «más…», para el orden del tabulador.
  QWidget* boton() const;

  QSize minimumSizeHint() const override;
  QSize sizeHint() const override { return minimumSizeHint(); }

 protected:
  void changeEvent(QEvent* evento) override;
  bool event(QEvent* evento) override;
  void paintEvent(QPaintEvent* evento) override;
  void resizeEvent(QResizeEvent* evento) override;

 private:
  void repartir();
  void colocarEnlaces(bool cabe);
  void ensenarEntero(const QPoint& donde);

  int lineas_ = 2;
  QStringList partes_;  ///< el texto, por líneas
  comunes::Enlace* mas_;
  comunes::Enlace* enlace_;
};

}  // namespace principal

#pragma once

#include <QPlainTextEdit>

namespace herramientas {

/// Caja de texto que copia y pega sin cambiar los espacios duros, y que avisa del gesto de encriptar: el
/// botón derecho, solo con Ctrl, sobre un texto seleccionado.
class CajaEditor : public QPlainTextEdit {
  Q_OBJECT

 public:
  using QPlainTextEdit::QPlainTextEdit;

 signals:
  void gestoEncriptar();

 protected:
  QMimeData* createMimeDataFromSelection() const override;
  void insertFromMimeData(const QMimeData* datos) override;
  void keyPressEvent(QKeyEvent* suceso) override;
  void mousePressEvent(QMouseEvent* suceso) override;
  void contextMenuEvent(QContextMenuEvent* suceso) override;

 private:
  bool EsGesto(Qt::KeyboardModifiers teclas) const;
};

}  // namespace herramientas

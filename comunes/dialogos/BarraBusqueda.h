#pragma once

#include <QTextCursor>
#include <QTextDocument>
#include <QWidget>
#include <functional>
#include <memory>

class QShortcut;

namespace comunes {

namespace Ui {
class BarraBusqueda;
}

/// Barra para buscar en la caja de texto de su ventana: Ctrl+F la abre, Entrar o F3 buscan hacia delante y
/// Mayús+F3 hacia atrás; al llegar a un extremo se sigue por el otro. Escape la cierra. Nace oculta.
class BarraBusqueda : public QWidget {
  Q_OBJECT

 public:
  explicit BarraBusqueda(QWidget* padre = nullptr);
  ~BarraBusqueda() override;

  /// `caja`: un QPlainTextEdit o un QTextEdit, dueño del foco cuando la barra se cierra.
  template <typename Caja>
  void Conectar(Caja* caja) {
    caja_ = caja;
    buscar_ = [caja](const QString& texto, QTextDocument::FindFlags sentido) {
      if (caja->find(texto, sentido)) return true;
      const auto donde = caja->textCursor();
      caja->moveCursor(sentido ? QTextCursor::End : QTextCursor::Start);
      if (caja->find(texto, sentido)) return true;
      caja->setTextCursor(donde);
      return false;
    };
  }

  void Abrir();

 protected:
  void showEvent(QShowEvent* suceso) override;
  void hideEvent(QHideEvent* suceso) override;

 private:
  void Buscar(QTextDocument::FindFlags sentido);

  std::unique_ptr<Ui::BarraBusqueda> ui_;
  QShortcut* escape_;
  QWidget* caja_ = nullptr;
  std::function<bool(const QString&, QTextDocument::FindFlags)> buscar_;
};

}  // namespace comunes

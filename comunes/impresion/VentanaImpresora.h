#pragma once

#include <QDialog>
#include <QPageLayout>
#include <memory>

#include "comunes/impresion/Impresora.h"

namespace Ui {
class Impresora;
}

namespace comunes {

inline constexpr int kCopiasMaximas = 99;

QStringList NombresDeImpresoras();
/// La activada la última vez; antes, la del sistema y, si no tiene ninguna, "Documento PDF".
QString NombreImpresoraActual();
/// Impresora con esos ajustes. Lanza std::runtime_error si no admite la orientación.
std::unique_ptr<QPrinter> CrearImpresora(const QString& nombre, QPageLayout::Orientation orientacion,
                                         int copias);

/// La ventana `Impresora`: deja elegir impresora, orientación y copias; lo elegido queda en
/// AjustesDeImpresora().
class Impresora : public QDialog {
  Q_OBJECT
 public:
  explicit Impresora(const PeticionImpresora& peticion);
  ~Impresora() override;

  /// Lo mismo que un clic en `ModoPapel`.
  void girarPapel();

 public slots:
  void accept() override;
  void reject() override;

 private:
  void llenar(bool soloPDF);
  void cambiarVista();
  void seleccionar(const QString& nombre);
  void mostrarOrientacion();
  void comprobarAncho();
  void propiedades();
  void vistaPrevia();
  bool pidePDF() const;
  QString seleccionada() const;
  bool horizontal() const { return horizontal_; }

  PeticionImpresora peticion_;
  std::unique_ptr<::Ui::Impresora> ui_;
  bool horizontal_ = false;
};

}  // namespace comunes

#pragma once

#include <QTextBrowser>

namespace comunes {

/// Visor de un tema de ayuda: no sale a la red ni lee nada fuera de la carpeta del tema, y no abre enlaces en
/// otros programas.
class VisorAyuda : public QTextBrowser {
  Q_OBJECT

 public:
  explicit VisorAyuda(QWidget* padre = nullptr);

  /// Enseña el tema, o por qué no se puede.
  void Cargar(const QString& ruta);
  /// Nombre del tema: el título del documento o el del fichero.
  QString Titulo() const;
  /// Lleva arriba el título que se enlaza con ese nombre ("primer-uso").
  void IrASeccion(const QString& nombre);
  /// Busca desde donde se está y, llegado al final, desde el principio. false si no aparece.
  bool Buscar(const QString& texto, bool haciaAtras);

  QVariant loadResource(int tipo, const QUrl& nombre) override;

 signals:
  void cargado();

 private:
  QString RutaPermitida(const QUrl& enlace) const;
  void Seguir(const QUrl& enlace);

  QString ruta_;
};

}  // namespace comunes

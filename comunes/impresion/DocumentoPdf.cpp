#include "comunes/impresion/DocumentoPdf.h"

#include <QIODevice>
#include <QPdfWriter>
#include <exception>
#include <string_view>

#include "comunes/impresion/Trabajo.h"
#include "ficheros/EscrituraSegura.h"

namespace comunes {

namespace {

const QMarginsF kMargenes(73 / kTwipsPunto, 567 / kTwipsPunto, 73 / kTwipsPunto, 567 / kTwipsPunto);

/// Escribe en una EscrituraSegura. El toolkit no deja pasar excepciones: se guarda la primera.
class Salida : public QIODevice {
 public:
  explicit Salida(const std::filesystem::path& destino) : escritura_(destino) { open(WriteOnly); }

  bool isSequential() const override { return true; }
  void comprobar() {
    if (error_) std::rethrow_exception(error_);
  }
  void confirmar() {
    comprobar();
    escritura_.confirmar();
  }

 protected:
  qint64 readData(char* /*bytes*/, qint64 /*cuantos*/) override { return -1; }
  qint64 writeData(const char* bytes, qint64 cuantos) override {
    if (error_) return -1;
    try {
      escritura_.escribir(std::string_view(bytes, static_cast<std::size_t>(cuantos)));
      return cuantos;
    } catch (...) {
      error_ = std::current_exception();
      return -1;
    }
  }

 private:
  ficheros::EscrituraSegura escritura_;
  std::exception_ptr error_;
};

}  // namespace

struct DocumentoPdf::Interior {
  Interior(const std::filesystem::path& destino, bool apaisado, const QString& titulo)
      : salida(destino), pdf(&salida) {
    pdf.setResolution(1440);
    pdf.setTitle(titulo);
    pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                  apaisado ? QPageLayout::Landscape : QPageLayout::Portrait, kMargenes));
    trabajo = std::make_unique<TrabajoImpresion>(pdf);
  }
  // El orden importa: el trabajo acaba antes que el PDF y este antes que su salida.
  Salida salida;
  QPdfWriter pdf;
  std::unique_ptr<TrabajoImpresion> trabajo;
};

DocumentoPdf::DocumentoPdf(const std::filesystem::path& destino, bool apaisado, const QString& titulo)
    : interior_(std::make_unique<Interior>(destino, apaisado, titulo)) {}

DocumentoPdf::~DocumentoPdf() = default;

TrabajoImpresion& DocumentoPdf::trabajo() {
  return *interior_->trabajo;
}

void DocumentoPdf::comprobar() {
  interior_->salida.comprobar();
}

void DocumentoPdf::confirmar() {
  interior_->trabajo->Terminar();
  interior_->salida.confirmar();
}

}  // namespace comunes

#include "comunes/impresion/DocumentoPdf.h"

#include <QIODevice>
#include <QPdfWriter>
#include <QtGlobal>
#include <atomic>
#include <exception>
#include <string_view>

#include "comunes/impresion/Trabajo.h"
#include "ficheros/ErrorEjecucion.h"
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

/// Si le falta memoria para comprimir una página, el PDF del toolkit la deja en blanco, lo avisa y sigue: de
/// ese aviso se hace un error. Solo puede haber uno.
class Vigia {
 public:
  Vigia() {
    paginaPerdida_ = false;
    anterior_ =
        qInstallMessageHandler([](QtMsgType tipo, const QMessageLogContext& donde, const QString& texto) {
          if (texto.startsWith(u"QPdf") || texto.startsWith(u"qCompress")) paginaPerdida_ = true;
          if (anterior_) anterior_(tipo, donde, texto);
        });
  }
  ~Vigia() { qInstallMessageHandler(anterior_); }
  Vigia(const Vigia&) = delete;
  Vigia& operator=(const Vigia&) = delete;

  static void comprobar() {
    if (paginaPerdida_) throw ficheros::ErrorEjecucion(ficheros::kMemoriaInsuficiente);
  }

 private:
  static inline std::atomic<bool> paginaPerdida_ = false;
  static inline QtMessageHandler anterior_ = nullptr;
};

/// Lo que se guarda para acabar el documento, que también se acaba cuando ya no se quiere: al escribir en él
/// sus letras el toolkit no mira si le han dado la memoria que pide.
constexpr std::size_t kReserva = std::size_t{8} << 20;

}  // namespace

struct DocumentoPdf::Interior {
  Interior(const std::filesystem::path& destino, bool apaisado, const QString& titulo)
      : salida(destino), pdf(&salida), reserva(std::make_unique_for_overwrite<char[]>(kReserva)) {
    pdf.setResolution(1440);
    pdf.setTitle(titulo);
    pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                  apaisado ? QPageLayout::Landscape : QPageLayout::Portrait, kMargenes));
    trabajo = std::make_unique<TrabajoImpresion>(pdf);
  }
  // El orden importa: el trabajo acaba antes que el PDF y este antes que su salida.
  Vigia vigia;
  Salida salida;
  QPdfWriter pdf;
  std::unique_ptr<TrabajoImpresion> trabajo;
  std::unique_ptr<char[]> reserva;
};

DocumentoPdf::DocumentoPdf(const std::filesystem::path& destino, bool apaisado, const QString& titulo)
    : interior_(std::make_unique<Interior>(destino, apaisado, titulo)) {}

DocumentoPdf::~DocumentoPdf() = default;

TrabajoImpresion& DocumentoPdf::trabajo() {
  return *interior_->trabajo;
}

void DocumentoPdf::comprobar() {
  interior_->salida.comprobar();
  Vigia::comprobar();
}

void DocumentoPdf::confirmar() {
  interior_->reserva.reset();
  interior_->trabajo->Terminar();
  Vigia::comprobar();
  interior_->salida.confirmar();
}

}  // namespace comunes

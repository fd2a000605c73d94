#include "comunes/herramientas/FicheroAgenda.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

#include "comunes/plataforma/LecturaTexto.h"
#include "comunes/plataforma/Texto.h"
#include "ficheros/Cerrojo.h"
#include "ficheros/ErrorEjecucion.h"
#include "ficheros/EscrituraSegura.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMaximoAgenda = 64 * 1024 * 1024;
constexpr int kEspera = 5'000;  // ms
constexpr int kPausa = 10;      // ms

}  // namespace

QString RutaAgenda() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).filePath(u"Telefonos.csv"_s);
}

FicheroAgenda::FicheroAgenda(QString ruta) : ruta_(std::move(ruta)) {}

bool FicheroAgenda::releer() {
  const QByteArray bytes = QFileInfo::exists(ruta_) ? comunes::LeerBytes(ruta_, kMaximoAgenda) : QByteArray();
  if (bytes == bytes_) return false;
  const std::optional<Agenda> leida = LeerAgenda(bytes);
  if (!leida) throw ficheros::ErrorEjecucion(ficheros::kFormatoNoValido, comunes::ARuta(ruta_));
  agenda_ = *leida;
  bytes_ = bytes;
  return true;
}

void FicheroAgenda::cambiar(const std::function<void(Agenda&)>& cambio) {
  const std::filesystem::path ruta = comunes::ARuta(ruta_);
  if (!QDir().mkpath(QFileInfo(ruta_).path())) throw ficheros::ErrorEjecucion(ficheros::kErrorDeAcceso, ruta);
  ficheros::Cerrojo cerrojo(comunes::ARuta(ruta_ + u".lock"_s));
  const QDeadlineTimer limite(kEspera);
  while (!cerrojo.poner()) {
    if (limite.hasExpired()) throw ficheros::ErrorEjecucion(ficheros::kPermisoDenegado, ruta);
    QThread::msleep(kPausa);
  }
  releer();
  Agenda nueva = agenda_;
  cambio(nueva);
  const QByteArray bytes = EscribirAgenda(nueva);
  if (bytes == bytes_) return;
  ficheros::EscrituraSegura salida(ruta);
  salida.escribir({bytes.data(), static_cast<std::size_t>(bytes.size())});
  salida.confirmar();
  agenda_ = std::move(nueva);
  bytes_ = bytes;
}

}  // namespace herramientas

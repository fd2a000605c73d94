#include "comunes/herramientas/FicheroAgenda.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStandardPaths>
#include <QSysInfo>
#include <QThread>

#include "comunes/plataforma/LecturaTexto.h"
#include "comunes/plataforma/Texto.h"
#include "ficheros/Cerrojo.h"
#include "ficheros/ErrorEjecucion.h"
#include "ficheros/EscrituraSegura.h"
#include "ficheros/Rutas.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kMaximoAgenda = 64 * 1024 * 1024;
constexpr qint64 kEspera = 5'000;  // ms
constexpr int kPausa = 10;         // ms

/// Quién es este programa, para los que esperen.
QString Quien() {
  const QString usuario = qEnvironmentVariable("USER", qEnvironmentVariable("USERNAME", u"otro programa"_s));
  return u"%1, en el equipo %2 (proceso %3)"_s.arg(usuario, QSysInfo::machineHostName())
      .arg(QCoreApplication::applicationPid());
}

/// Lo escribe otro programa, o cualquiera: en una línea y sin lo que un mensaje toma por otra cosa.
QString QuienLoTiene(const ficheros::Cerrojo& cerrojo) {
  QString quien = comunes::SinControles(QString::fromStdString(cerrojo.quienLoTiene())).simplified();
  quien.replace(u';', u',');
  return quien.isEmpty() ? u"otro programa"_s : quien;
}

void EsperarTurno(ficheros::Cerrojo& cerrojo, const std::filesystem::path& ruta,
                  const FicheroAgenda::Espera& esperar) {
  QElapsedTimer reloj;
  reloj.start();
  while (!cerrojo.poner()) {
    const QString quien = QuienLoTiene(cerrojo);
    const qint64 llevado = reloj.elapsed();
    if (llevado >= kEspera || (esperar && !esperar(quien, llevado, kEspera)))
      throw AgendaOcupada(ruta, quien);
    QThread::msleep(kPausa);
  }
}

}  // namespace

AgendaOcupada::AgendaOcupada(const std::filesystem::path& ruta, QString quien)
    : ErrorEjecucion(ficheros::kErrorDeAcceso, ruta, "la tiene " + quien.toStdString()),
      quien_(std::move(quien)) {}

QString RutaAgenda() {
  return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).filePath(u"Telefonos.csv"_s);
}

FicheroAgenda::FicheroAgenda(QString ruta) : ruta_(std::move(ruta)) {}

bool FicheroAgenda::releer() {
  // Solo la que no existe está vacía: guardar sobre otra que ahora no se deja mirar la perdería.
  const bool existe = ficheros::IdentidadDe(comunes::ARuta(ruta_)).has_value();
  const QByteArray bytes = existe ? comunes::LeerBytes(ruta_, kMaximoAgenda) : QByteArray();
  if (bytes == bytes_) return false;
  const std::optional<Agenda> leida = LeerAgenda(bytes);
  if (!leida) throw ficheros::ErrorEjecucion(ficheros::kFormatoNoValido, comunes::ARuta(ruta_));
  agenda_ = *leida;
  bytes_ = bytes;
  return true;
}

void FicheroAgenda::cambiar(const std::function<void(Agenda&)>& cambio, const Espera& esperar) {
  const std::filesystem::path ruta = comunes::ARuta(ruta_);
  if (!QDir().mkpath(QFileInfo(ruta_).path())) throw ficheros::ErrorEjecucion(ficheros::kErrorDeAcceso, ruta);
  ficheros::Cerrojo cerrojo(comunes::ARuta(ruta_ + u".lock"_s), Quien().toStdString());
  EsperarTurno(cerrojo, ruta, esperar);
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

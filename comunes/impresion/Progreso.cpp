#include "comunes/impresion/Progreso.h"

#include <QCoreApplication>
#include <QPointer>
#include <algorithm>
#include <cmath>

#include "comunes/impresion/VentanaProgreso.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ui_Progreso.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr double kSegundosDia = 86400.0;
constexpr qint64 kEsperaMs = 500;
constexpr qint64 kAtencionMs = 50;
constexpr int kMilesimas = 1000;
constexpr float kMaximoBarra = 1e9F;
const QString kMarcaInicio = u"INICIO"_s;

double temporizadorFijo = -1;

/// Format(v, "#.00 ") + "%": sin cero delante del punto, y con punto en cualquier idioma.
QString porcentaje(double valor) {
  QString texto = QString::number(valor, 'f', 2);
  if (texto.startsWith(u"0."_s)) texto.remove(0, 1);
  if (texto.startsWith(u"-0."_s)) texto.remove(1, 1);
  return texto + u" %"_s;
}

// La destruye quien la crea, no el fin del proceso: entonces la aplicación ya no está.
QPointer<Progreso> ventana;

}  // namespace

double Temporizador() {
  return temporizadorFijo >= 0 ? temporizadorFijo : QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

void PonerTemporizador(double segundos) {
  temporizadorFijo = segundos;
}

QString TextoTiempo(double segundos) {
  const auto total = static_cast<qint64>(std::max(0.0, segundos));
  const QString resto =
      u"%1:%2"_s.arg(total / 60 % 60, 2, 10, QChar(u'0')).arg(total % 60, 2, 10, QChar(u'0'));
  return total >= 3600 ? u"%1:%2"_s.arg(total / 3600).arg(resto) : resto;
}

Progreso::Progreso() : ui_(std::make_unique<::Ui::Progreso>()) {
  ui_->setupUi(this);
  setWindowModality(Qt::ApplicationModal);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  FuentesVentana(*this);
}

Progreso::~Progreso() = default;

void Progreso::iniciar(float min, float max, const QString& titulo) {
  minimo_ = min;
  maximoBarra_ = max;
  const bool acotado = max > min;
  ui_->Barra->setRange(acotado ? enBarra(min) : 0, acotado ? enBarra(max) : 0);
  ui_->Barra->setValue(ui_->Barra->minimum());
  ui_->Barra->setProperty("Tag", kMarcaInicio);
  ui_->BarraTitulo->setText(ConMarcasEscritas(titulo));
  setWindowTitle(titulo);
  ui_->BarraPor->clear();
  ui_->BarraTra->clear();
  ui_->BarraEst->clear();
  horaInicio_ = QString::number(Temporizador(), 'f', 3);
  pasos_ = 0;
  detenido_ = false;
  ui_->cmdDetener->setEnabled(true);
  adjustSize();
  show();
  DisponerVentana(*this);
}

/// La barra cuenta con enteros de 32 bits: un recorrido que no cabe en ellos, o de menos de dos pasos, va en
/// milésimas.
int Progreso::enBarra(float valor) const {
  const double recorrido = double(maximoBarra_) - double(minimo_);
  if (minimo_ >= -kMaximoBarra && maximoBarra_ <= kMaximoBarra && recorrido >= 2)
    return static_cast<int>(valor);
  return static_cast<int>((double(valor) - double(minimo_)) / recorrido * kMilesimas);
}

void Progreso::avanzar(float valor, bool forzar) {
  if (ui_->Barra->property("Tag").toString() == kMarcaInicio) {
    maximo_ = maximoBarra_;
    ui_->Barra->setProperty("Tag", QString());
  }
  pasos_ += 1;
  if (pasos_ >= maximo_ / 100 || valor == maximoBarra_ || forzar) redibujar(valor);
}

void Progreso::redibujar(float valor) {
  if (valor >= minimo_ && valor <= maximoBarra_) ui_->Barra->setValue(enBarra(valor));
  if (maximo_ != 0) ui_->BarraPor->setText(porcentaje(double(valor) * 100 / double(maximo_)));
  pasos_ = 0;
  const double pasado = transcurridos();
  ui_->BarraTra->setText(TextoTiempo(pasado));
  if (valor > 0) ui_->BarraEst->setText(TextoTiempo(double(maximo_) * pasado / double(valor)));
}

double Progreso::transcurridos() const {
  const double pasado = Temporizador() - horaInicio_.toDouble();
  return pasado < 0 ? pasado + kSegundosDia : pasado;
}

// Esc y el botón de cerrar piden que el trabajo pare; la ventana la quita quien lo hace, cuando haya parado.
void Progreso::reject() {
  detenido_ = true;
  ui_->BarraTitulo->setText(u"Deteniendo…"_s);
  ui_->cmdDetener->setEnabled(false);
}

void IniciarProgreso(float min, float max, const QString& title) {
  if (!ventana) ventana = new Progreso;
  ventana->iniciar(min, max, title);
  QCoreApplication::processEvents();
}

void BarraProgreso(float value, bool force) {
  if (ventana) ventana->avanzar(value, force);
  QCoreApplication::processEvents();
}

void TerminarProgreso() {
  delete ventana.data();
}

bool ProgresoDetenido() {
  return ventana && ventana->detenido();
}

Avance::Avance(QString titulo) : titulo_(std::move(titulo)) {
  desdeInicio_.start();
}

Avance::~Avance() {
  if (visible_) TerminarProgreso();
}

bool Avance::avanzar(double hecho, double total) {
  if (!visible_) {
    if (desdeInicio_.elapsed() < kEsperaMs) return true;
    // En milésimas: una barra de 32 bits no alcanza a los bytes de un fichero grande.
    IniciarProgreso(0, kMilesimas, titulo_);
    visible_ = true;
    ultima_ = -1;
  }
  const int milesima = total > 0 ? static_cast<int>(hecho / total * kMilesimas) : 0;
  if (milesima == ultima_ && !desdeAtencion_.hasExpired(kAtencionMs)) return true;
  ultima_ = milesima;
  desdeAtencion_.start();
  BarraProgreso(static_cast<float>(milesima), true);
  return !ProgresoDetenido();
}

void Avance::avanzarODetener(double hecho, double total) {
  if (!avanzar(hecho, total)) throw TrabajoDetenido();
}

}  // namespace comunes

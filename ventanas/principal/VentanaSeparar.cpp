#include "ventanas/principal/VentanaSeparar.h"

#include <QDir>
#include <QPushButton>

#include "comunes/dialogos/MyBox.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "ficheros/ErrorEjecucion.h"
#include "ui_VentanaSeparar.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

VentanaSeparar::VentanaSeparar(const remesa::ListaRegistros& lista, QWidget* padre)
    : QDialog(padre), ui_(std::make_unique<Ui::VentanaSeparar>()), fuente_(lista) {
  repartir(lista);
  if (!sePuede()) return;
  ui_->setupUi(this);
  comunes::FuentesVentana(*this);
  ui_->Carpeta->setText(QDir::toNativeSeparators(
      comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, u"DestinoQ19"_s, QString())));
  ui_->cmdAceptar->setDefault(true);
  for (const QRadioButton* opcion : {ui_->PorBloque, ui_->PorAcreedor, ui_->PorFecha, ui_->Cada})
    connect(opcion, &QRadioButton::toggled, this, [this](bool elegida) {
      if (elegida) contar();
    });
  connect(ui_->Cuantos, &QSpinBox::valueChanged, this, [this] {
    ui_->Cada->setChecked(true);
    contar();
  });
  connect(ui_->cmdCarpeta, &QPushButton::clicked, this, &VentanaSeparar::elegirCarpeta);
  connect(ui_->cmdAceptar, &QPushButton::clicked, this, &VentanaSeparar::accept);
  connect(ui_->cmdCancelar, &QPushButton::clicked, this, &VentanaSeparar::reject);
  contar();
}

VentanaSeparar::~VentanaSeparar() = default;

QString VentanaSeparar::carpeta() const {
  return ui_->Carpeta->text().trimmed();
}

void VentanaSeparar::repartir(const remesa::ListaRegistros& lista) {
  const comunes::Reloj reloj;
  reparto_.empezarFichero();
  for (std::size_t i = 0; i < lista.size(); ++i) {
    lista.anticipar(i);
    reparto_.dar(lista[i], i);
  }
  reparto_.terminarFichero(lista.size());
  if (const std::size_t cual = reparto_.indice().avisos().sinDueno; cual != 0)
    impedimento_ =
        u"El registro %1 de la remesa es un adeudo que no tiene delante ninguna cabecera de acreedor (02): "
        u"no "
        "se sabe de quién es y la remesa no se puede separar."_s.arg(
            comunes::FormatoNumero(static_cast<double>(cual), 0));
  else if (!reparto_.presentador())
    impedimento_ =
        u"La remesa no tiene cabecera del presentador (01), que va en cada parte: no se puede separar."_s;
  else if (reparto_.indice().vivos() == 0)
    impedimento_ = u"La remesa no tiene adeudos que separar."_s;
  else
    reparto_.ordenar();
}

remesa::Separacion VentanaSeparar::como() const {
  remesa::Separacion como{.cada = static_cast<std::size_t>(ui_->Cuantos->value()),
                          .sustituir = ui_->Sustituir->isChecked()};
  como.por = ui_->PorAcreedor->isChecked() ? remesa::SepararPor::Acreedor
             : ui_->PorFecha->isChecked()  ? remesa::SepararPor::Fecha
             : ui_->Cada->isChecked()      ? remesa::SepararPor::Cada
                                           : remesa::SepararPor::Bloque;
  return como;
}

void VentanaSeparar::contar() {
  const comunes::Reloj reloj;
  partes_ = Separar(reparto_, como());
  const QString primera = comunes::DesdeWindows1252(partes_.front().nombre);
  ui_->Resumen->setText(partes_.size() == 1 ? u"Se escribirá un fichero: %1"_s.arg(primera)
                                            : u"Se escribirán %1, de %2 a %3"_s.arg(
                                                  TextoCuenta(partes_.size(), u"fichero"_s, u"ficheros"_s),
                                                  primera, comunes::DesdeWindows1252(partes_.back().nombre)));
}

void VentanaSeparar::elegirCarpeta() {
  const QString elegida = comunes::DialogoCarpeta(this, u"Carpeta para las partes"_s, carpeta());
  if (!elegida.isEmpty()) ui_->Carpeta->setText(QDir::toNativeSeparators(elegida));
}

void VentanaSeparar::accept() {
  if (carpeta().isEmpty()) {
    comunes::Avisar(u"Diga en qué carpeta se escriben."_s, this);
    return ui_->Carpeta->setFocus();
  }
  try {
    const comunes::Reloj reloj;
    comunes::Avance avance(u"Separando la remesa…"_s);
    const bool escritas =
        EscribirPartes(reparto_, partes_, fuente_, comunes::ARuta(comunes::RutaAbsoluta(carpeta())), como(),
                       comunes::Ahora(), {}, [&](std::size_t escritos, std::size_t total) {
                         return avance.avanzar(static_cast<double>(escritos), static_cast<double>(total));
                       });
    if (!escritas) return;
  } catch (const ficheros::ErrorEjecucion& error) {
    if (error.numero() != ficheros::kYaExiste) throw;
    comunes::Avisar(u"Ya existe %1.;;Elija otra carpeta o marque que se sustituyan."_s.arg(
                        comunes::DesdeRuta(error.fichero().filename())),
                    this);
    return;
  }
  QDialog::accept();
}

}  // namespace principal

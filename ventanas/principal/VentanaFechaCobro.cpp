#include "ventanas/principal/VentanaFechaCobro.h"

#include <QPushButton>
#include <algorithm>

#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "remesa/FechaCobro.h"
#include "ui_VentanaFechaCobro.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

QDate EnQDate(remesa::Dia dia) {
  return {static_cast<int>(dia.year()), static_cast<int>(static_cast<unsigned>(dia.month())),
          static_cast<int>(static_cast<unsigned>(dia.day()))};
}

remesa::Dia EnDia(QDate fecha) {
  return {std::chrono::year(fecha.year()), std::chrono::month(static_cast<unsigned>(fecha.month())),
          std::chrono::day(static_cast<unsigned>(fecha.day()))};
}

/// "01/12/2026 · GIMNASIO ACUARIO · ES08000E77846772"
QString NombreBloque(std::string_view cabecera) {
  const auto dice = [&](remesa::Posiciones donde) {
    return comunes::SinControles(
        comunes::DesdeWindows1252(remesa::Recortar(remesa::LeerCampo(cabecera, donde))));
  };
  const std::string fecha(remesa::LeerCampo(cabecera, remesa::kFechaCobro));
  const QString dia = remesa::LeerFecha(fecha) ? comunes::DesdeWindows1252(remesa::FechaQ19(fecha))
                                               : u"«%1»"_s.arg(comunes::DesdeWindows1252(fecha));
  return u"%1 · %2 · %3"_s.arg(dia, dice(remesa::kNombreAcreedor), dice(remesa::kIdentificadorAcreedor));
}

}  // namespace

VentanaFechaCobro::VentanaFechaCobro(const remesa::ListaRegistros& lista, int actual, remesa::Dia hoy,
                                     QWidget* padre)
    : QDialog(padre),
      ui_(std::make_unique<Ui::VentanaFechaCobro>()),
      hoy_(hoy),
      cabeceras_(remesa::Cabeceras(lista)) {
  ui_->setupUi(this);
  comunes::FuentesVentana(*this);
  llenarBloques(lista, actual);
  ui_->Fecha->setDisplayFormat(u"dd/MM/yyyy"_s);
  proponer();
  connect(ui_->Bloque, &QComboBox::currentIndexChanged, this, &VentanaFechaCobro::proponer);
  connect(ui_->Fecha, &QDateEdit::dateChanged, this, &VentanaFechaCobro::advertir);
  connect(ui_->cmdAceptar, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
  ui_->Fecha->setFocus();
  ui_->Fecha->setSelectedSection(QDateTimeEdit::DaySection);
}

VentanaFechaCobro::~VentanaFechaCobro() = default;

void VentanaFechaCobro::llenarBloques(const remesa::ListaRegistros& lista, int actual) {
  int suyo = 0;
  fechas_.reserve(cabeceras_.size());
  for (const std::size_t i : cabeceras_) {
    if (actual >= 0 && i <= static_cast<std::size_t>(actual)) suyo = ui_->Bloque->count();
    fechas_.emplace_back(remesa::LeerCampo(lista[i], remesa::kFechaCobro));
    ui_->Bloque->addItem(NombreBloque(lista[i]));
  }
  if (cabeceras_.size() > 1) ui_->Bloque->addItem(u"Los %1 bloques"_s.arg(cabeceras_.size()));
  ui_->Bloque->setCurrentIndex(suyo);
}

std::vector<std::size_t> VentanaFechaCobro::cabeceras() const {
  const auto cual = static_cast<std::size_t>(ui_->Bloque->currentIndex());
  if (cual >= cabeceras_.size()) return cabeceras_;
  return {cabeceras_[cual]};
}

std::string VentanaFechaCobro::fecha() const {
  return remesa::EscribirFecha(EnDia(ui_->Fecha->date()));
}

/// El día hábil siguiente a la fecha que no vale o, si vale, el primero en que se puede cobrar.
void VentanaFechaCobro::proponer() {
  const auto cual = static_cast<std::size_t>(ui_->Bloque->currentIndex());
  const auto cobro = remesa::LeerFecha(cual < fechas_.size() ? fechas_[cual] : std::string());
  remesa::Dia propuesta = remesa::HabilDeCobro(hoy_, hoy_);
  const bool cercana = cobro && *cobro > hoy_ && *cobro <= hoy_ + remesa::kCobroLejano;
  if (cercana && remesa::HabilDesde(*cobro) != *cobro) propuesta = remesa::HabilDesde(*cobro);
  ui_->Fecha->setDate(EnQDate(propuesta));
  advertir();
}

void VentanaFechaCobro::advertir() {
  const remesa::Dia dia = EnDia(ui_->Fecha->date());
  QString texto;
  if (dia <= hoy_)
    texto = u"Un adeudo se presenta, a más tardar, la víspera: el banco no la admitirá."_s;
  else if (remesa::EsFinDeSemana(dia))
    texto = u"Es sábado o domingo: el banco cobrará otro día."_s;
  else if (remesa::Festivo(dia) != remesa::FestivoTarget::Ninguno)
    texto = u"Es fiesta del sistema de pagos europeo: el banco cobrará otro día."_s;
  else if (dia > hoy_ + remesa::kCobroLejano)
    texto = u"Es dentro de más de 14 meses: compruebe el año."_s;
  ui_->Aviso->setText(texto);
}

}  // namespace principal
